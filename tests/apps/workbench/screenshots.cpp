// Saves pictures of the workbench: mero-workbench-screenshots FOLDER light|dark LANGUAGE

#include <QApplication>
#include <QComboBox>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <iostream>

#include "apps/workbench/main_window.h"
#include "platform/resources/messages.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/qt_toolkit.h"

namespace {

bool saveAll(const QString& folder) {
    const QTemporaryDir repositories;
    mero::MainWindow window;
    window.show();
    const auto save = [&](const char* name) {
        constexpr int UntilAllIsLaidOut = 50;
        QTest::qWait(UntilAllIsLaidOut);
        return window.grab().save(folder + "/" + name + ".png");
    };
    bool isSaved = save("workbench_welcome");
    isSaved = window.openExample(repositories.path()) && isSaved;
    isSaved = save("workbench_model") && isSaved;
    window.simulate();
    isSaved = save("workbench_coloured") && isSaved;
    window.showMeasure(2);
    window.diagramView().zoomBy(2);
    window.diagramView().select(window.diagramView().getDiagram().shapes.front().object);
    isSaved = save("workbench_zoomed") && isSaved;
    window.runPanel().analysisBox().setCurrentIndex(3);
    window.runPanel().setRunning(true);
    window.runPanel().showProgress(0.4, "Simulating: 400,000 of 1,000,000 instances, 2 min 10 s left");
    return save("workbench_running") && isSaved;
}

}  // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    const QStringList given = QApplication::arguments();
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    if (given.size() != 4 || !mero::setLanguage(given[3].toStdString())) {
        std::cerr << "usage: mero-workbench-screenshots FOLDER light|dark LANGUAGE\n";
        return 2;
    }
    QLocale::setDefault(QLocale(given[3]));
    mero::qt::applyLook(application, given[2] == "dark");
    mero::qt::QtToolkit toolkit;
    SV::Toolkit::SetGlobal(&toolkit);
    const bool isSaved = saveAll(given[1]);
    SV::Toolkit::SetGlobal(nullptr);
    return isSaved ? 0 : 1;
}
