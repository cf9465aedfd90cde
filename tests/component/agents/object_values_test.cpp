#include "component/agents/object_values.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <utility>

#include "component/agents/id_filter.h"

namespace {

/// By length, then by bytes, as decimal texts are ordered.
struct BeforeAsText {
    bool operator()(MeroId left, MeroId right) const {
        const std::string leftText = std::to_string(left);
        const std::string rightText = std::to_string(right);
        return std::pair(leftText.size(), leftText) < std::pair(rightText.size(), rightText);
    }
};

TEST(ObjectValues, HoldFewAndManyAlike) {
    std::mt19937 random(3);
    MeroObjectValues values;
    for (const int most : {1, 6, 7, 40, 5, 300}) {
        std::map<MeroId, double, BeforeAsText> expected;
        for (int step = 0; step < 5 * most; ++step) {
            const MeroId object = static_cast<MeroId>(random() % static_cast<unsigned>(most)) * 37 - 50;
            MeroAgentObjectValue* const known = values.find(object);
            ASSERT_EQ(known != nullptr, expected.contains(object));
            (known != nullptr ? *known : values.add(object)).value += step;
            expected[object] += step;
            if (step % 11 == 0) {
                values.sort();
            }
        }
        values.sort();
        auto next = expected.begin();
        for (const auto& [object, value] : values) {
            ASSERT_EQ(object, next->first);
            ASSERT_EQ(value.value, next->second);
            ASSERT_FALSE(value.hasSecondValue());
            ++next;
        }
        ASSERT_EQ(next, expected.end());
        values.clear();
        ASSERT_TRUE(values.empty());
        ASSERT_FALSE(values.contains(expected.begin()->first));
    }
}

TEST(IdFilter, AnswersAsTheSetDoes) {
    MeroIdFilter filter;
    EXPECT_FALSE(filter.contains(0));
    constexpr MeroId Smallest = -2147483647 - 1;
    constexpr MeroId Largest = 2147483647;
    const ISortedSet<MeroId> dense{-3, 0, 1, 63, 64, 200};
    const ISortedSet<MeroId> strewn{Smallest, -1, 5, Largest};
    for (const ISortedSet<MeroId>& ids : {dense, strewn, ISortedSet<MeroId>{Largest}, ISortedSet<MeroId>{}}) {
        filter.assign(ids);
        for (const MeroId id : {Smallest, Smallest + 1, -64, -4, -3,  -2,  -1,  0,   1,           2,      5,
                                62,       63,           64,  65, 199, 200, 201, 256, Largest - 1, Largest}) {
            EXPECT_EQ(filter.contains(id), ids.contains(id)) << id;
        }
        filter.clear(ids);
        for (const MeroId id : ids) {
            EXPECT_FALSE(filter.contains(id)) << id;
            filter.insert(id);
            EXPECT_TRUE(filter.contains(id)) << id;
        }
    }
}

}  // namespace
