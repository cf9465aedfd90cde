#include "component/results/keyed_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

namespace {

TEST(KeyedTable, HoldsTheSameAsAnOrderedMapUnderAnyChanges) {
    MeroKeyedTable<int, int> table;
    std::map<int, int> expected;
    std::mt19937 random(7);
    for (int step = 0; step < 20000; ++step) {
        const int key = static_cast<int>(random() % (step < 10000 ? 12 : 700)) - 3;
        if (random() % 3 == 0) {
            ASSERT_EQ(table.erase(key), expected.erase(key) == 1);
        } else if (int* const known = table.find(key)) {
            ASSERT_EQ(*known, expected.at(key));
            *known = expected[key] = step;
        } else {
            ASSERT_FALSE(expected.contains(key));
            table.add(key, step);
            expected.emplace(key, step);
        }
        if (step % 500 == 0) {
            table.sortBy(std::less<>{});
            ASSERT_TRUE(std::ranges::equal(table, expected, [](const auto& entry, const auto& pair) {
                return entry.key == pair.first && entry.item == pair.second;
            }));
        }
        ASSERT_EQ(table.size(), expected.size());
    }
    table.clear();
    EXPECT_TRUE(table.empty());
    EXPECT_FALSE(table.contains(expected.begin()->first));
}

TEST(KeyedTable, OrdersIdentifiersAsTheirDecimalTexts) {
    const std::vector<std::int32_t> numbers{0,   7,  9,   10,      -1,         -9,
                                            -10, 99, 100, 1000001, 2147483647, -2147483647 - 1};
    for (const std::int32_t left : numbers) {
        for (const std::int32_t right : numbers) {
            const std::string leftText = std::to_string(left);
            const std::string rightText = std::to_string(right);
            const bool before = leftText.size() != rightText.size() ? leftText.size() < rightText.size()
                                                                    : leftText < rightText;
            EXPECT_EQ(isBeforeAsDecimalText(left, right), before) << left << " " << right;
        }
    }
}

}  // namespace
