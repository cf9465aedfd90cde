#include "tests/platform/toolkit/qt/picture_program.h"

#include <QApplication>
#include <QLocale>
#include <QTest>
#include <iostream>

#include "platform/resources/messages.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/qt_toolkit.h"
#include "tests/platform/toolkit/qt/widget_driver.h"

namespace mero::test {

void PictureFolder::save(const SV::Window& window, const std::string& name) {
    constexpr int UntilAllIsDrawn = 80;
    QTest::qWait(UntilAllIsDrawn);
    const std::string file = path + "/" + name + ".png";
    QWidget* const shown = widgetFor(window);
    if (shown == nullptr || !shown->grab().save(QString::fromStdString(file))) {
        std::cerr << file << " can't be written\n";
        complete = false;
    }
}

int savePictures(int count, char** arguments, const std::function<void(PictureFolder&)>& makePictures) {
    QApplication application(count, arguments);
    const QStringList given = QApplication::arguments();
    if (given.size() != 4) {
        std::cerr << "usage: " << arguments[0] << " FOLDER light|dark LANGUAGE\n";
        return 2;
    }
    if (!setLanguage(given[3].toStdString())) {
        std::cerr << "there are no texts in this language\n";
        return 1;
    }
    QLocale::setDefault(QLocale(given[3]));
    qt::applyLook(application, given[2] == "dark");
    qt::QtToolkit toolkit;
    SV::Toolkit* const before = SV::Toolkit::SetGlobal(&toolkit);
    PictureFolder folder(given[1].toStdString());
    makePictures(folder);
    SV::Toolkit::SetGlobal(before);
    return folder.isComplete() ? 0 : 1;
}

}  // namespace mero::test
