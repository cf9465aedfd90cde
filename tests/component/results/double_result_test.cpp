#include "component/results/double_result.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

MeroDoubleResult makeResult(MeroResultMode mode) {
    return MeroDoubleResult(7, 7, mode, 0);
}

TEST(DoubleResult, CombinesByItsMode) {
    struct Case {
        int mode;
        double expected;
    };
    for (const auto& [mode, expected] :
         {Case{ResultModeLast, 4.0}, Case{ResultModeSum, 7.0}, Case{ResultModeMean, 3.5},
          Case{ResultModeItemMean, 3.5}, Case{17, 4.0}}) {
        MeroDoubleResult result(7, 7, mode, 0);
        const MeroPath path{1, 7};
        result.addToItem(3.0, path);
        result.addToItem(4.0, path);
        result.setDivisorItem(2, path);
        EXPECT_DOUBLE_EQ(result.findItem(path)->getValue(), expected) << mode;
    }
}

TEST(DoubleResult, DivisorsFollowTheRulesOfTheirMode) {
    const MeroPath first{1, 7};
    const MeroPath second{2, 7};
    auto mean = makeResult(ResultModeMean);
    mean.addToItem(8.0, first);
    mean.addToItem(4.0, second);
    EXPECT_TRUE(mean.setDivisorAll(DivisorKept));
    EXPECT_DOUBLE_EQ(mean.getTotal(), 12.0) << "a divisor of 0 leaves the value undivided";
    EXPECT_FALSE(mean.setDivisorAll(0));
    EXPECT_FALSE(mean.setDivisorAll(-3));
    EXPECT_TRUE(mean.setDivisorAll(4));
    EXPECT_DOUBLE_EQ(mean.getTotal(), 3.0);
    EXPECT_TRUE(mean.setDivisorItem(DivisorRaised, first));
    EXPECT_EQ(mean.findItem(first)->getDivisor(), 5);
    EXPECT_EQ(mean.findItem(second)->getDivisor(), 4);
    EXPECT_FALSE(mean.setDivisorItem(2, MeroPath{9}));

    auto sum = makeResult(ResultModeSum);
    sum.addToItem(1.0, first);
    EXPECT_TRUE(sum.setDivisorAll(DivisorKept));
    EXPECT_FALSE(sum.setDivisorAll(2));
    EXPECT_FALSE(sum.setDivisorItem(2, first));
    EXPECT_FALSE(sum.findItem(first)->setDivisor(1));
    EXPECT_FALSE(mean.findItem(first)->setDivisor(-1));
}

TEST(DoubleResult, FindsItemsAmongMany) {
    auto result = makeResult(ResultModeSum);
    for (MeroId id = 300; id > 0; --id) {
        result.addToItem(id, MeroPath{id, 7});
        result.addToItem(id, MeroPath{id, 7});
    }
    ASSERT_EQ(result.getItems().size(), 300U);
    for (MeroId id = 1; id <= 300; ++id) {
        const auto* const item = result.findItem(MeroPath{id, 7});
        ASSERT_NE(item, nullptr);
        EXPECT_DOUBLE_EQ(item->getValue(), 2.0 * id);
    }
    EXPECT_FALSE(result.hasItem(MeroPath{7}));
    EXPECT_FALSE(result.hasItem(MeroPath{7, 301}));
}

TEST(DoubleResult, PathsAreOrderedAsTheirKeysAre) {
    std::mt19937 random(3);
    std::vector<MeroPath> paths{{}, {1, 23}, {12, 3}, {-1}, {-12}, {2147483647}, {-2147483647 - 1}};
    for (int number = 0; number < 60; ++number) {
        MeroPath& path = paths.emplace_back(random() % 4);
        std::ranges::generate(path, [&] { return static_cast<MeroId>(random() % 1200) - 15; });
    }
    for (const MeroPath& left : paths) {
        for (const MeroPath& right : paths) {
            ASSERT_EQ(isBeforeAsPathKey(left, right), getPathKey(left) < getPathKey(right))
                << getPathKey(left).view() << " " << getPathKey(right).view();
        }
    }
}

TEST(DoubleResult, ReadsItemsInTheOrderOfTheirKeysPassAfterPass) {
    auto result = makeResult(ResultModeSum);
    for (const MeroPath& path : {MeroPath{10}, MeroPath{9}, MeroPath{1, 2}, MeroPath{11}, MeroPath{}}) {
        result.addToItem(1.0, path);
    }
    const std::vector<SV::String> expected{"", "9@", "10@", "11@", "1@2@"};
    for (int pass = 0; pass < 2; ++pass) {
        std::vector<SV::String> keys;
        while (const auto* const item = result.getNextItem()) {
            keys.push_back(item->getKey());
        }
        EXPECT_EQ(keys, expected);
    }
    EXPECT_TRUE(result.findItem(MeroPath{9})->addForPath(2.0, MeroPath{9}));
    EXPECT_FALSE(result.findItem(MeroPath{9})->addForPath(2.0, MeroPath{9, 9}));
}

}  // namespace
