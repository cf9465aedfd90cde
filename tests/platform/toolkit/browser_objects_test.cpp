#include "component/host/browser_objects.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

constexpr MeroId NoParent = MeroShrinkExpandBrowserObjects::NoParent;

std::vector<MeroId> shownRows(const MeroShrinkExpandBrowserObjects& objects) {
    std::vector<MeroId> rows;
    for (int row = 0; row < objects.getNumberOfRows(); ++row) {
        rows.push_back(objects.getRowId(row));
    }
    return rows;
}

TEST(BrowserObjectsTest, ANewRowStandsBehindTheLastDescendantOfItsParent) {
    MeroShrinkExpandBrowserObjects objects;
    objects.addColumn("F", 80, 1, 2);
    EXPECT_TRUE(objects.addRow(NoParent, 1, {"1. Order", "-"}));
    EXPECT_TRUE(objects.addRow(NoParent, 2, {"2. Ship", "-"}));
    EXPECT_TRUE(objects.addRow(1, 3, {"1.1. Check", "-"}));
    EXPECT_TRUE(objects.addRow(3, 4, {"1.1.1. Call", "-"}));
    EXPECT_TRUE(objects.addRow(1, 5, {"1.2. Pack", "-"}));
    EXPECT_TRUE(objects.addRow(NoParent, 6, {"Sum", "7"}));
    EXPECT_EQ(shownRows(objects), (std::vector<MeroId>{1, 3, 4, 5, 2, 6}));
    EXPECT_EQ(objects.getRowDepth(2), 2);
    EXPECT_EQ(objects.getRowDepth(4), 0);

    int number = 0;
    ASSERT_TRUE(objects.getRowNum(5, number));
    EXPECT_EQ(number, 4);
    EXPECT_TRUE(objects.replaceField("3", number - 1, 1, 1));
    EXPECT_EQ(objects.getField(3, 1).view(), "3");
    EXPECT_EQ(objects.getDataColumn(1), (std::vector<SV::String>{"-", "-", "-", "3", "-", "7"}));
}

TEST(BrowserObjectsTest, RefusesWhatIsNotInTheTable) {
    MeroShrinkExpandBrowserObjects objects;
    objects.addColumn("F", 80, 1, 2);
    EXPECT_TRUE(objects.addRow(NoParent, 900, {"a"}));
    EXPECT_FALSE(objects.addRow(NoParent, 900, {"again"}));
    EXPECT_FALSE(objects.addRow(7, 901, {"orphan"}));
    EXPECT_EQ(objects.getNumberOfRows(), 1);
    EXPECT_FALSE(objects.replaceField("x", 1, 1, 1));
    EXPECT_FALSE(objects.replaceField("x", 0, 2, 1));
    EXPECT_FALSE(objects.replaceField("x", -1, 0, 1));
    EXPECT_TRUE(objects.getField(5, 5).IsEmpty());
    EXPECT_TRUE(objects.getDataColumn(2).empty());
    int number = 0;
    EXPECT_FALSE(objects.getRowNum(1, number));
}

TEST(BrowserObjectsTest, AColumnAddedLaterStandsInTheRowsThatAreThere) {
    MeroShrinkExpandBrowserObjects objects;
    objects.addRow(NoParent, 1, {"a"});
    objects.addColumn("F", 80, 1, 2);
    EXPECT_EQ(objects.getNumberOfColumns(), 1);
    EXPECT_TRUE(objects.replaceField("5", 0, 1, 1));
    EXPECT_EQ(objects.getField(0, 1).view(), "5");
    EXPECT_EQ(objects.getColumnTitle(1).view(), "F");
}

/// Adds rows at random places and asks for the place of each from `firstAsked` on.
void growRandomTree(int rows, MeroId firstAsked) {
    MeroShrinkExpandBrowserObjects objects;
    std::vector<MeroId> expected;
    std::vector<int> depths(static_cast<std::size_t>(rows) + 1, -1);
    std::mt19937 random(7);
    for (MeroId row = 1; row <= rows; ++row) {
        const MeroId parent = row % 5 == 0 || row == 1
                                  ? NoParent
                                  : static_cast<MeroId>(random() % (static_cast<unsigned>(row) - 1)) + 1;
        auto place = expected.end();
        if (parent != NoParent) {
            const int depth = depths[static_cast<std::size_t>(parent)];
            place = std::find(expected.begin(), expected.end(), parent) + 1;
            while (place != expected.end() && depths[static_cast<std::size_t>(*place)] > depth) {
                ++place;
            }
            depths[static_cast<std::size_t>(row)] = depth + 1;
        } else {
            depths[static_cast<std::size_t>(row)] = 0;
        }
        const int number = static_cast<int>(place - expected.begin()) + 1;
        expected.insert(place, row);
        ASSERT_TRUE(objects.addRow(parent, row, {"x"}));
        if (row >= firstAsked) {
            int found = 0;
            ASSERT_TRUE(objects.getRowNum(row, found));
            ASSERT_EQ(found, number);
        }
    }
    EXPECT_EQ(shownRows(objects), expected);
}

TEST(BrowserObjectsTest, KeepsTheOrderOfALargeRandomTreeWheneverItIsAskedFor) {
    constexpr int Rows = 6000;
    for (const MeroId firstAsked : {1, Rows / 2, Rows + 1}) {
        SCOPED_TRACE(firstAsked);
        growRandomTree(Rows, firstAsked);
    }
}

}  // namespace
