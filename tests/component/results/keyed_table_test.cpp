#include "component/results/keyed_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

#include "component/host/sv_string.h"

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

TEST(KeyedTable, TablesThatShareTextsDoNotMisleadEachOther) {
    std::vector<SV::String> texts;
    for (int number = 0; number < 60; ++number) {
        texts.emplace_back(std::int32_t{number});
    }
    MeroKeyedTable<SV::String, int> tables[2];
    std::map<int, int> expected[2];
    std::mt19937 random(11);
    for (int step = 0; step < 20000; ++step) {
        const auto which = random() % 2;
        const auto number = static_cast<int>(random() % texts.size());
        // Now and then a text of its own, as a reader of another source would bring it.
        const SV::String other(std::int32_t{number});
        const SV::String& key = random() % 4 == 0 ? other : texts[static_cast<std::size_t>(number)];
        const int* const found = tables[which].find(key);
        ASSERT_EQ(found != nullptr, expected[which].contains(number));
        if (found == nullptr) {
            tables[which].add(key, step);
            expected[which].emplace(number, step);
        } else if (random() % 2 == 0) {
            ASSERT_TRUE(tables[which].erase(key));
            expected[which].erase(number);
        } else {
            ASSERT_EQ(*found, expected[which].at(number));
        }
    }
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
