#include <gtest/gtest.h>

#include "component/host/sv_datetime.h"

namespace {

TEST(DateTest, CountsDaysOfTheYearWithLeapYears) {
    EXPECT_EQ(SV::Date(1, 1, 2026).GetDayOfYear(), 1);
    EXPECT_EQ(SV::Date(31, 12, 2026).GetDayOfYear(), 365);
    EXPECT_EQ(SV::Date(31, 12, 2028).GetDayOfYear(), 366);
    EXPECT_TRUE(SV::Date(29, 2, 2028).IsValid());
    EXPECT_FALSE(SV::Date(29, 2, 2026).IsValid());
    EXPECT_FALSE(SV::Date(0, 1, 2026).IsValid());
    EXPECT_TRUE(SV::Date::Today().IsValid());
}

TEST(InternationalTest, WritesDatesAndTimesWithLeadingZeros) {
    const SV::Date date(2, 11, 2026);
    EXPECT_EQ(SV::International::GetDate(date, true).view(), "2026-11-02");
    EXPECT_EQ(SV::International::GetDate(date, false).view(), "26-11-02");
    const SV::Time time(8, 5, 9);
    EXPECT_EQ(time.GetTime(), 8050900);
    EXPECT_EQ(SV::International::GetTime(time, true, false).view(), "08:05:09");
    EXPECT_EQ(SV::International::GetTime(time, false, false).view(), "08:05");
    EXPECT_EQ(SV::International::GetTime(SV::Time(8050942), true, true).view(), "08:05:09.42");
}

}  // namespace
