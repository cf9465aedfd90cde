#include "component/host/core_time.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(CoreTimeTest, TellsTimeTexts) {
    for (const char* time : {"00:000:00:00:00", "01:000:00:00:00", "123:0400:30:59:59", "00:000:99:00:00"}) {
        EXPECT_TRUE(MeroCoreTime::isTime(time)) << time;
    }
    for (const char* other :
         {"", "0:000:00:00:00", "00:00:00:00:00", "00:000:0:00:00", "00:000:00:60:00", "00:000:00:00:60",
          "00:000:00:00", "00:000:00:00:00:00", "00:000:00:00:00 ", " 00:000:00:00:00", "-01:000:00:00:00",
          "00:000:00:00:0.5", "aa:000:00:00:00", "00:000:00:00:", "::::"}) {
        EXPECT_FALSE(MeroCoreTime::isTime(other)) << other;
    }
}

TEST(CoreTimeTest, ConvertsInItsBase) {
    const struct {
        double days;
        double hours;
        double seconds;
        const char* text;
    } cases[] = {
        {365, 24, 0, "00:000:00:00:00"},        {365, 24, 31536000, "01:000:00:00:00"},
        {365, 24, 31535999, "00:364:23:59:59"}, {365, 24, 3.1536e9, "100:000:00:00:00"},
        {250, 8, 7200000, "01:000:00:00:00"},   {250, 8, 28800 + 7 * 3600 + 61, "00:001:07:01:01"},
        {200, 7.5, 27000, "00:001:00:00:00"},
    };
    for (const auto& [days, hours, seconds, text] : cases) {
        const MeroCoreTime written(seconds, days, hours);
        EXPECT_EQ(written.asText().view(), text);
        MeroCoreTime read;
        read.setBase(days, hours);
        EXPECT_EQ(read._s2d(text), seconds);
        EXPECT_EQ(read.asDouble(), seconds);
    }
}

TEST(CoreTimeTest, RoundsHalvesUpAndCarries) {
    const MeroCoreTime time;
    EXPECT_EQ(time._d2s(0.5).view(), "00:000:00:00:01");
    EXPECT_EQ(time._d2s(0.49999999999999994).view(), "00:000:00:00:00");
    EXPECT_EQ(time._d2s(59.5).view(), "00:000:00:01:00");
    EXPECT_EQ(time._d2s(31535999.5).view(), "01:000:00:00:00");
    EXPECT_EQ(time._d2s(-0.5).view(), "00:000:00:00:00");
    EXPECT_EQ(time._d2s(-1.6).view(), "-00:000:00:00:02");
}

TEST(CoreTimeTest, KeepsSecondsWhenTheBaseChangesAndReadsOtherTextsAsZero) {
    MeroCoreTime time("00:001:00:00:00");
    time.setBase(250, 8);
    EXPECT_EQ(time.asDouble(), 86400.0);
    EXPECT_EQ(time.asText().view(), "00:003:00:00:00");
    EXPECT_EQ(time._s2d("soon"), 0.0);
    EXPECT_EQ(MeroCoreTime("soon").asText().view(), "00:000:00:00:00");
}

TEST(CoreTimeTest, StandsExtremeValuesAndBases) {
    EXPECT_EQ(MeroCoreTime(1e300, 365, 24).asText().view().substr(0, 3), "317");
    EXPECT_EQ(MeroCoreTime(std::numeric_limits<double>::infinity(), 365, 24).asText().view(), "inf");
    EXPECT_EQ(MeroCoreTime(3661, 0, 0).asText().view(), "00:000:01:01:01");
    EXPECT_EQ(MeroCoreTime(1e9, 365.25, 7.7).asText().view().substr(0, 3), "98:");
}

}  // namespace
