#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/diagram/colour_scale.h"
#include "platform/interchange/picture_document.h"

namespace mero {

namespace {

struct PlotRun {
    int status = -1;
    QString out;
    QString err;
};

PlotRun plot(const QStringList& arguments, const std::string& input) {
    QProcess process;
    process.start(MERO_PLOT_PROGRAM, arguments);
    process.write(input.data(), static_cast<qint64>(input.size()));
    process.closeWriteChannel();
    PlotRun run;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit) {
        run.status = process.exitCode();
    }
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

/// Two tasks, of which only the first has a value; its middle lies at 160, 90 of the drawing.
std::vector<Picture> pictures() {
    ProcessPicture process;
    process.diagram.name = "Order";
    process.diagram.extent = {100, 50, 400, 80};
    for (int each = 0; each < 2; ++each) {
        DiagramShape shape;
        shape.object = each + 1;
        shape.bounds = {100.0 + 280 * each, 50, 120, 80};
        process.diagram.shapes.push_back(shape);
    }
    process.diagram.edges.push_back({3, 1, 2, {{220, 90}, {380, 90}}, "", false});
    process.measure.measure = "Frequency";
    process.measure.values = {{1, 250.0}};
    const ChartCaption caption{"Frequency", "seed 1", MeasureOverlay::Unit::Number, 365, 24};
    const ChartCaption timeCaption{"Cycle time", "seed 1", MeasureOverlay::Unit::Seconds, 365, 24};
    return {{"order", process},
            {"bars", BarPicture{caption, {"F"}, {{"Check", {3.0}}, {"Pack", {std::nan("")}}}}},
            {"curves", CurvePicture{timeCaption, {{"Check", {{0, 1}, {60, 2.5}}}, {"Pack", {}}}}}};
}

bool holdsColour(const QImage& image, const Colour& colour) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == qRgb(colour.red, colour.green, colour.blue)) {
                return true;
            }
        }
    }
    return false;
}

TEST(MeroPlot, DrawsEachPictureAsPngInTwoSizesAndAsSvg) {
    const QTemporaryDir folder;
    const PlotRun run = plot({"--folder", folder.filePath("new")}, writePictures(pictures()));
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.count('\n'), 9);
    for (const char* name : {"order", "bars", "curves"}) {
        const QString base = folder.filePath("new/") + name;
        const QImage usual(base + ".png");
        const QImage large(base + "@2x.png");
        EXPECT_GT(usual.width(), 100) << name;
        EXPECT_EQ(large.size(), usual.size() * 2) << name;
        QFile svg(base + ".svg");
        ASSERT_TRUE(svg.open(QIODevice::ReadOnly)) << name;
        const QByteArray document = svg.readAll();
        EXPECT_TRUE(document.contains("</svg>")) << name;
        EXPECT_TRUE(document.contains("viewBox=\"0 0 " + QByteArray::number(usual.width()))) << name;
    }
    QFile svg(folder.filePath("new/order.svg"));
    ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
    const QByteArray document = svg.readAll();
    EXPECT_TRUE(document.contains(">250<")) << "the value stands on the shape";
    EXPECT_TRUE(document.contains("Frequency"));
}

TEST(MeroPlot, FillsShapesByTheirValuesAndFollowsTheLook) {
    const QTemporaryDir folder;
    const std::vector<Picture> one{pictures().front()};
    ASSERT_EQ(plot({"--folder", folder.filePath("light")}, writePictures(one)).status, 0);
    ASSERT_EQ(plot({"--dark", "--folder", folder.filePath("dark")}, writePictures(one)).status, 0);
    const QImage light(folder.filePath("light/order.png"));
    const QImage dark(folder.filePath("dark/order.png"));
    EXPECT_TRUE(holdsColour(light, magnitudeColour(1.0, Look::Light)));
    EXPECT_TRUE(holdsColour(dark, magnitudeColour(1.0, Look::Dark)));
    EXPECT_EQ(light.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_LT(dark.pixelColor(0, 0).lightness(), 60);
}

TEST(MeroPlot, RefusesWhatItCantReadOrWrite) {
    const QTemporaryDir folder;
    const PlotRun garbled = plot({"--folder", folder.path()}, "{\"format\": 1}");
    EXPECT_EQ(garbled.status, 1);
    EXPECT_TRUE(garbled.err.contains("mero-plot: -: format")) << garbled.err.toStdString();
    EXPECT_EQ(plot({folder.filePath("missing.json")}, "").status, 1);
    EXPECT_EQ(plot({"--folder", "/dev/null/pictures"}, writePictures(pictures())).status, 1);
    EXPECT_EQ(plot({"--language", "xx"}, "").status, 2);
    EXPECT_EQ(plot({"--help"}, "").status, 0);
}

}  // namespace

}  // namespace mero
