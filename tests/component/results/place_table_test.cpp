#include "component/results/place_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "component/agents/process_instance.h"

namespace {

using LiveProcesses = MeroPlaceTable<MeroAgentProcessInstance>;

TEST(PlaceTable, HoldTheSameAsAMapUnderAnyChangesAndReuseTheirPlaces) {
    LiveProcesses processes;
    // Both tables leave hints with the same texts, so that either misleads the other.
    LiveProcesses others;
    std::map<int, double> expected;
    std::vector<SV::String> keys;
    keys.reserve(300);
    for (int number = 0; number < 300; ++number) {
        keys.emplace_back(std::int32_t{number});
    }
    std::mt19937 random(5);
    for (int step = 0; step < 20000; ++step) {
        const auto number = static_cast<int>(random() % keys.size());
        // Now and then a text of its own, as a reader of another source would bring it.
        const SV::String other(std::int32_t{number});
        const SV::String& key = random() % 4 == 0 ? other : keys[static_cast<std::size_t>(number)];
        if (random() % 3 == 0) {
            if (others.add(key, key, 1, 0.0) == nullptr) {
                ASSERT_TRUE(others.erase(key));
            }
        }
        processes.prefetch(key);
        const MeroAgentProcessInstance* const found = processes.find(key);
        ASSERT_EQ(found != nullptr, expected.contains(number));
        if (found == nullptr) {
            ASSERT_FALSE(processes.erase(key));
            MeroAgentProcessInstance* const added = processes.add(key, key, 1, step);
            ASSERT_NE(added, nullptr);
            ASSERT_TRUE(added->addFirstValue(key, 9, step, MeroValueUse::Accumulate));
            expected[number] = step;
        } else {
            ASSERT_EQ(found->getStartTime(), expected[number]);
            ASSERT_EQ(processes.find(key)->getValue(key, 9)->value, expected[number]);
            ASSERT_EQ(processes.add(key, key, 1, 0.0), nullptr);
            if (random() % 2 == 0) {
                ASSERT_TRUE(processes.erase(key));
                expected.erase(number);
            }
        }
        ASSERT_EQ(processes.size(), expected.size());
    }
    const auto inOrder = processes.inOrderOfKeys();
    ASSERT_EQ(inOrder.size(), expected.size());
    EXPECT_TRUE(std::ranges::equal(inOrder, expected, [](const auto* process, const auto& entry) {
        return process->getKey() == SV::String(std::int32_t{entry.first});
    })) << "numbers in order are texts in order";
    processes.clear();
    EXPECT_TRUE(processes.empty());
    EXPECT_EQ(processes.find(keys[0]), nullptr);
}

TEST(PlaceTable, AFreePlaceHasNoProcessWithoutAKey) {
    LiveProcesses processes;
    processes.add("a", "a", 1, 0.0);
    processes.erase("a");
    EXPECT_EQ(processes.find(""), nullptr);
    ASSERT_NE(processes.add("", "", 1, 3.0), nullptr);
    EXPECT_EQ(processes.find("")->getStartTime(), 3.0);
    EXPECT_EQ(processes.find("a"), nullptr);
}

TEST(PlaceTable, AProcessHasNothingOfTheOneThatLayThereBefore) {
    LiveProcesses processes;
    MeroAgentProcessInstance* const first = processes.add("a", "a", 1, 0.0);
    for (int pass = 0; pass < 30; ++pass) {
        const SV::String key(std::int32_t{pass});
        ASSERT_TRUE(first->addSubProcess(key, "a", 100 + pass, MeroCollecting::ByItself));
        ASSERT_TRUE(first->addFirstValue(key, 7, 1.0, MeroValueUse::Accumulate));
    }
    EXPECT_EQ(first->getInstances().size(), 31U);
    processes.erase("a");
    MeroAgentProcessInstance* const second = processes.add("b", "b", 2, 0.0);
    EXPECT_EQ(second, first);
    EXPECT_EQ(second->getInstances().size(), 1U);
    EXPECT_FALSE(second->hasInstance("0"));
    ASSERT_TRUE(second->addSubProcess("0", "b", 100, MeroCollecting::ByItself));
    EXPECT_TRUE(second->getInstance("0")->getValues().empty());
    EXPECT_FALSE(second->getInstance("0")->isCollected());
    EXPECT_EQ(second->getInstance("0")->sumFirstValues(MeroNoId), 0.0);
}

}  // namespace
