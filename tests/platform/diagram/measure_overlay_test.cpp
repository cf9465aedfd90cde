#include "platform/diagram/measure_overlay.h"

#include <gtest/gtest.h>

#include "platform/diagram/colour_scale.h"

namespace mero {

namespace {

TEST(ColourScale, LightnessRunsOneWayInEvenStepsAndTextIsReadable) {
    constexpr int Steps = 64;
    for (const Look look : {Look::Light, Look::Dark}) {
        double before = luminanceOf(magnitudeColour(0.0, look));
        for (int step = 1; step <= Steps; ++step) {
            const Colour colour = magnitudeColour(static_cast<double>(step) / Steps, look);
            const double luminance = luminanceOf(colour);
            EXPECT_TRUE(look == Look::Light ? luminance < before : luminance > before) << step;
            EXPECT_GE(contrastOf(colour, textColourOn(colour)), 4.5) << step;
            before = luminance;
        }
        EXPECT_EQ(magnitudeColour(-1.0, look), magnitudeColour(0.0, look));
        EXPECT_EQ(magnitudeColour(2.0, look), magnitudeColour(1.0, look));
    }
    EXPECT_NEAR(contrastOf({0, 0, 0}, {255, 255, 255}), 21.0, 1e-9);
    for (int grey = 0; grey < 256; ++grey) {
        const auto level = static_cast<std::uint8_t>(grey);
        EXPECT_GE(contrastOf({level, level, level}, textColourOn({level, level, level})), 4.5);
    }
}

TEST(MeasureOverlay, SharesLieBetweenTheExtremesAndDecimalsTellValuesApart) {
    MeasureOverlay overlay;
    EXPECT_EQ(overlay.scale().shareOf(3.0), 1.0);
    EXPECT_EQ(overlay.scale().maximum, 0.0);
    overlay.values = {{1, 10.0}, {2, 20.0}, {3, 40.0}};
    EXPECT_DOUBLE_EQ(overlay.scale().shareOf(10.0), 0.0);
    EXPECT_DOUBLE_EQ(overlay.scale().shareOf(25.0), 0.5);
    EXPECT_DOUBLE_EQ(overlay.scale().shareOf(40.0), 1.0);
    EXPECT_EQ(overlay.scale().decimals, 0);
    for (const auto& [largest, decimals] :
         {std::pair{0.5, 3}, {1.25, 3}, {12.5, 2}, {999.5, 1}, {1234.5, 0}, {123456.5, 0}}) {
        overlay.values = {{1, 0.25}, {2, largest}};
        EXPECT_EQ(overlay.scale().decimals, decimals) << largest;
    }
}

}  // namespace

}  // namespace mero
