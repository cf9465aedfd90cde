#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <cstdio>
#include <exception>
#include <iostream>

#include "apps/mero-plot/picture_files.h"
#include "platform/resources/messages.h"
#include "platform/toolkit/qt/palette.h"

namespace {

enum ExitStatus : int { ExitDone = 0, ExitRefused = 1, ExitWrongUsage = 2 };

int refuse(const std::string& reason) {
    std::cerr << "mero-plot: " << reason << '\n';
    return ExitRefused;
}

mero::Result<std::string> readOrder(const QString& path) {
    QFile file(path);
    if (path == "-") {
        static_cast<void>(file.open(stdin, QIODevice::ReadOnly));
    } else if (!file.open(QIODevice::ReadOnly)) {
        return mero::Error{path.toStdString() + ": " + file.errorString().toStdString()};
    }
    return file.readAll().toStdString();
}

int drawPictures(const QString& path, const QString& folder) {
    const mero::Result<std::string> text = readOrder(path);
    if (!text) {
        return refuse(text.error().text);
    }
    const auto pictures = mero::readPictures(text.value(), path == "-" ? "-" : path.toStdString());
    if (!pictures) {
        return refuse(pictures.error().text);
    }
    if (!QDir().mkpath(folder)) {
        return refuse(folder.toStdString() + ": the folder can't be made");
    }
    const auto files = mero::savePictures(pictures.value(), folder);
    if (!files) {
        return refuse(files.error().text);
    }
    for (const std::string& file : files.value()) {
        std::cout << file << '\n';
    }
    return ExitDone;
}

/// What Qt has to say about the machine means nothing to who wants pictures.
void dropHints(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::cerr << "mero-plot: " << text.toStdString() << '\n';
    }
}

int runPlot(int count, char** arguments) {
    // Nothing is shown, so that no display is needed.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(dropHints);
    QApplication application(count, arguments);
    QCoreApplication::setApplicationName("mero-plot");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Example:\n  mero-plot --folder pictures order.json\n\n"
        "Draws the pictures of a description that mero has written: charts, curves and coloured processes,\n"
        "each as PNG at one and two times the usual size and as SVG. Prints the names of the files.");
    const QCommandLineOption folder("folder", "Folder of the pictures, made if it isn't there", "DIR", ".");
    const QCommandLineOption dark("dark", "Light lines on dark paper");
    const QCommandLineOption language("language", "Language of units and numbers, such as de", "CODE", "en");
    parser.addOptions({folder, dark, language});
    parser.addHelpOption();
    parser.addPositionalArgument("FILE", "Description of the pictures; standard input without it");
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1 || !mero::setLanguage(parser.value(language).toStdString())) {
        std::cerr << parser.helpText().toStdString();
        return ExitWrongUsage;
    }
    QLocale::setDefault(QLocale(parser.value(language)));
    mero::qt::applyLook(application, parser.isSet(dark));
    return drawPictures(files.isEmpty() ? QString("-") : files.front(), parser.value(folder));
}

}  // namespace

int main(int count, char** arguments) {
    try {
        return runPlot(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "mero-plot: %s\n", error.what());
        return ExitRefused;
    }
}
