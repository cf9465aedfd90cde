#include "apps/mero-plot/picture_files.h"

#include <QDir>
#include <QImage>
#include <QSvgGenerator>

#include "apps/mero-plot/picture_painter.h"

namespace mero {

namespace {

bool savePng(const PicturePainter& painter, const QString& path, int scale) {
    QImage image(painter.size() * scale, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        return false;
    }
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    painter.paint(image);
    return image.save(path);
}

bool saveSvg(const PicturePainter& painter, const QString& path, const QString& title) {
    // The generator doesn't tell of a file that it can't write.
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    {
        constexpr int DotsPerInch = 96;
        QSvgGenerator generator;
        generator.setOutputDevice(&file);
        generator.setTitle(title);
        generator.setResolution(DotsPerInch);
        generator.setSize(painter.size());
        generator.setViewBox(QRect({}, painter.size()));
        painter.paint(generator);
    }
    return file.flush() && file.error() == QFileDevice::NoError;
}

}  // namespace

Result<std::vector<std::string>> savePictures(const std::vector<Picture>& pictures, const QString& folder) {
    std::vector<std::string> files;
    for (const Picture& picture : pictures) {
        const std::unique_ptr<PicturePainter> painter = painterOf(picture);
        const QString name = QString::fromStdString(picture.name);
        const QString base = QDir(folder).filePath(name);
        const auto keep = [&files](const QString& path, bool isSaved) {
            files.push_back(path.toStdString());
            return isSaved;
        };
        if (!keep(base + ".png", savePng(*painter, base + ".png", 1)) ||
            !keep(base + "@2x.png", savePng(*painter, base + "@2x.png", 2)) ||
            !keep(base + ".svg", saveSvg(*painter, base + ".svg", name))) {
            return Error{files.back() + ": can't be written"};
        }
    }
    return files;
}

bool saveProcessPicture(const ProcessPicture& picture, const QString& path) {
    const Picture whole{picture.diagram.name, picture};
    const std::unique_ptr<PicturePainter> painter = painterOf(whole);
    return path.endsWith(".svg", Qt::CaseInsensitive)
               ? saveSvg(*painter, path, QString::fromStdString(whole.name))
               : savePng(*painter, path, 2);
}

}  // namespace mero
