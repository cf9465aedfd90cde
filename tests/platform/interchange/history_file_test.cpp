#include "platform/interchange/history_file.h"

#include <gtest/gtest.h>

namespace mero {

namespace {

TEST(HistoryFile, ReadsHeaderAndReadings) {
    const std::string longName(5000, 'x');
    const auto read = readHistoryFile(
        "# Frequency of \"M\"\n# second line\n      4711;       3600;    12.500000; Check; order # 1\r\n"
        "         7; 0;    -0.000001; " +
            longName + "\n\n        12;          5;          inf; ?",
        "h.txt");
    ASSERT_TRUE(read) << read.error().text;
    EXPECT_EQ(read.value().header, (std::vector<std::string>{"Frequency of \"M\"", "second line"}));
    ASSERT_EQ(read.value().readings.size(), 3U);
    EXPECT_EQ(read.value().readings[0].objectId, 4711);
    EXPECT_EQ(read.value().readings[0].time, 3600.0);
    EXPECT_EQ(read.value().readings[0].value, 12.5);
    EXPECT_EQ(read.value().readings[0].name, "Check; order # 1");
    EXPECT_EQ(read.value().readings[1].value, -0.000001);
    EXPECT_EQ(read.value().readings[1].name, longName);
}

TEST(HistoryFile, GarbledLinesAreRefusedWithTheirNumber) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"# h\n1; 2; 3; A\nnonsense\n",
         "h.txt:3: an identifier is expected in the first field: \"nonsense\""},
        {"1; 2; 3; A\n# late header\n", "h.txt:2: an identifier"},
        {"1; 2,5; 3; A", "h.txt:1: a time in seconds is expected in the second field"},
        {"1; 2; 3,5; A", "h.txt:1: a number is expected in the third field"},
        {"1; 2", "h.txt:1: a number is expected in the third field"},
        {"99999999999; 2; 3; A", "h.txt:1: an identifier"},
        {std::string("1; 2; 3\0; A", 11), "h.txt:1: a number"}};
    for (const auto& [text, error] : table) {
        const auto read = readHistoryFile(text, "h.txt");
        ASSERT_FALSE(read) << text;
        EXPECT_TRUE(read.error().text.starts_with(error)) << read.error().text;
    }
    EXPECT_TRUE(readHistoryFile("", "h.txt"));
}

}  // namespace

}  // namespace mero
