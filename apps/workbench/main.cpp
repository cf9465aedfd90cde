#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>
#include <QSettings>

#include "component/host/sv_peer.h"

#include "apps/workbench/main_window.h"
#include "platform/resources/messages.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/qt_toolkit.h"

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QCoreApplication::setOrganizationName("Mero");
    QCoreApplication::setApplicationName("mero-workbench");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Example:\n  mero-workbench shop.mero\n\n"
        "Imports, simulates and measures business processes, and shows what was measured.");
    const QCommandLineOption language("language", "Language of the windows, such as de", "CODE",
                                      QLocale().name());
    parser.addOption(language);
    parser.addHelpOption();
    parser.addPositionalArgument("REPO", "Repository to open; it is made if it isn't there");
    parser.process(application);
    if (mero::setLanguage(parser.value(language).toStdString())) {
        QLocale::setDefault(QLocale(parser.value(language)));
    }
    mero::qt::applyLook(application, QSettings().value("window/dark", mero::qt::isDark()).toBool());
    mero::qt::QtToolkit toolkit;
    SV::Toolkit::SetGlobal(&toolkit);
    int status = 0;
    {
        mero::MainWindow window;
        window.show();
        if (!parser.positionalArguments().isEmpty()) {
            window.openRepository(parser.positionalArguments().front(), mero::RepositoryFile::Use::Create);
        }
        status = QApplication::exec();
    }
    SV::Toolkit::SetGlobal(nullptr);
    return status;
}
