#include "apps/mero/text_table.h"

#include <gtest/gtest.h>
#include <sstream>

#include "apps/mero/spark_line.h"

namespace mero {

namespace {

std::string printed(const TextTable& table, std::size_t width, bool colours = false) {
    std::ostringstream out;
    std::ostringstream err;
    Console console{out, err};
    console.width = width;
    console.colours = colours;
    printTable(table, console, CharacterSet::Ascii);
    return out.str();
}

TextTable smallTable() {
    TextTable table;
    table.headers = {"Counts"};
    table.labelTitle = "Object";
    table.columns = {"Mean", "Count"};
    table.rows = {{0, "Order", {"1", "2"}}, {1, "Prüfen", {"-", "10"}}};
    table.summary = {{0, "Sum", {"1", "12"}}};
    return table;
}

TEST(TextTableTest, IndentsTheHierarchyAndAlignsNumbersRight) {
    EXPECT_EQ(printed(smallTable(), 80),
              "Counts\n"
              "Object    Mean  Count\n"
              "---------------------\n"
              "Order        1      2\n"
              "  Prüfen     -     10\n"
              "---------------------\n"
              "Sum          1     12\n");
}

TEST(TextTableTest, PutsColumnsThatDoNotFitBelow) {
    const std::string text = printed(smallTable(), 17);
    EXPECT_NE(text.find("Object    Mean\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nObject    Count\n"), std::string::npos) << text;
}

TEST(TextTableTest, CutsLongLabelsAndKeepsControlCharactersOut) {
    TextTable table = smallTable();
    table.rows[0].label = "A name that is much longer\nthan the terminal is wide";
    std::istringstream lines(printed(table, 40));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(displayWidth(line), 40U) << line;
    }
}

TEST(TextTableTest, UsesColoursOnlyWhereTheyAreWanted) {
    EXPECT_EQ(printed(smallTable(), 80).find('\033'), std::string::npos);
    EXPECT_NE(printed(smallTable(), 80, true).find("\033[1mCounts\033[0m"), std::string::npos);
}

TEST(TextTableTest, GivesAColumnTheDecimalsThatItNeeds) {
    struct Case {
        std::vector<std::string> cells;
        std::vector<std::string> aligned;
    };
    for (const Case& sample :
         {Case{{"1", "2"}, {"1", "2"}}, Case{{"1.5", "2", "-"}, {"1.5", "2.0", "-"}},
          Case{{"0.3333333333333333", "12"}, {"0.3333", "12.0000"}}, Case{{"0.00012345678"}, {"0.0001235"}},
          Case{{"00:000:00:30:00", "nan"}, {"00:000:00:30:00", "nan"}},
          Case{{"1e+300", "2.5"}, {"1e+300", "2.5"}}}) {
        std::vector<std::string> cells = sample.cells;
        alignDecimals(cells);
        EXPECT_EQ(cells, sample.aligned);
    }
}

TEST(DisplayWidthTest, CountsWhatATerminalShows) {
    EXPECT_EQ(displayWidth("abc"), 3U);
    EXPECT_EQ(displayWidth("Ära"), 3U);
    EXPECT_EQ(displayWidth("処理"), 4U);
    EXPECT_EQ(displayWidth("e\xcc\x81"), 1U);
    EXPECT_EQ(displayWidth("\xff\xfe"), 2U);
    EXPECT_EQ(cutToWidth("処理する", 5, CharacterSet::Ascii), "処理~");
    EXPECT_EQ(cutToWidth("abc", 3, CharacterSet::Ascii), "abc");
}

TEST(SparkLineTest, HoldsTheLastValueOfEachStretch) {
    EXPECT_EQ(sparkLine({{0, 0}, {5, 7}, {10, 0}}, 4, CharacterSet::Ascii), "_##_");
    EXPECT_EQ(sparkLine({{3, 2}}, 3, CharacterSet::Ascii), "___");
    EXPECT_EQ(sparkLine({}, 3, CharacterSet::Ascii), "");
}

}  // namespace

}  // namespace mero
