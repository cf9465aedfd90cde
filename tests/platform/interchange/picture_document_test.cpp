#include "platform/interchange/picture_document.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace mero {

namespace {

std::vector<Picture> somePictures() {
    ProcessPicture process;
    process.diagram.name = "Order \"A\"";
    process.diagram.extent = {0, 0, 300, 100};
    DiagramShape shape{
        7, ShapeKind::EventBasedGateway, {1.5, -2, 50, 50}, "Wait?", "", "", false, true, false, false};
    process.diagram.shapes.push_back(shape);
    shape = {8, ShapeKind::IntermediateEvent, {100, 0, 36, 36}, "", "timer", "", true, false, true, true};
    process.diagram.shapes.push_back(shape);
    process.diagram.edges.push_back({9, 7, 8, {{51.5, 23}, {100, 18}}, "later", true, 2.5});
    process.measure = {"Counts", "Frequency", MeasureOverlay::Unit::Seconds, "run 1", 250, 8, {{7, 0.1}}};
    const ChartCaption caption{"Frequency", "seed 1", MeasureOverlay::Unit::Number, 365, 24};
    return {
        {"order-frequency", process},
        {"bars", BarPicture{caption, {"F", "A"}, {{"Check", {1.0, std::nan("")}}}}},
        {"curves", CurvePicture{caption, {{"Check", {{0, 1}, {60, 2.5}}}}, MeasureOverlay::Unit::Seconds}}};
}

TEST(PictureDocument, ReadsBackWhatWasWritten) {
    const std::vector<Picture> pictures = somePictures();
    const std::string text = writePictures(pictures);
    const auto read = readPictures(text, "pictures");
    ASSERT_TRUE(read) << read.error().text;
    EXPECT_EQ(writePictures(read.value()), text);
    const auto& process = std::get<ProcessPicture>(read.value()[0].content);
    EXPECT_EQ(process.diagram.shapes[1].kind, ShapeKind::IntermediateEvent);
    EXPECT_EQ(process.diagram.shapes[1].marker, "timer");
    EXPECT_FALSE(process.diagram.shapes[1].isInterrupting);
    EXPECT_EQ(process.diagram.edges[0].points, (DrawLine{{51.5, 23}, {100, 18}}));
    EXPECT_EQ(process.diagram.edges[0].taken, 2.5);
    EXPECT_EQ(process.measure.unit, MeasureOverlay::Unit::Seconds);
    EXPECT_EQ(process.measure.hoursPerDay, 8.0);
    EXPECT_EQ(process.measure.values.at(7), 0.1);
    EXPECT_TRUE(std::isnan(std::get<BarPicture>(read.value()[1].content).items[0].values[1]));
}

TEST(PictureDocument, RefusesWhatItDoesntKnowWithThePlace) {
    const std::string good = writePictures(somePictures());
    const auto refusal = [&](const std::string& what, const std::string& by) {
        std::string text = good;
        text.replace(text.find(what), what.size(), by);
        const auto read = readPictures(text, "order.json");
        return read ? std::string("read") : read.error().text;
    };
    EXPECT_NE(refusal("mero-pictures", "other").find("order.json"), std::string::npos);
    EXPECT_NE(refusal("\"eventBased\"", "\"cloud\"").find("pictures[0].shapes[0].kind"), std::string::npos);
    EXPECT_NE(refusal("\"bars\",\"cap", "\"pies\",\"cap").find("pictures[1].kind"), std::string::npos);
    EXPECT_NE(refusal("[51.5,23.0],", "").find("points"), std::string::npos);
    EXPECT_NE(refusal("[\"F\",\"A\"]", "[\"F\"]").find("pictures[1].items[0]"), std::string::npos);
    EXPECT_NE(refusal("[0.0,1.0]", "[0.0]").find("curves[0].points[0]"), std::string::npos);
}

}  // namespace

}  // namespace mero
