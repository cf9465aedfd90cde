#include "component/agents/process_instance.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string_view>
#include <vector>

#include "platform/toolkit/internal_errors.h"

namespace {

constexpr MeroId ModelA = 1;
constexpr MeroId ModelB = 2;
constexpr MeroId ModelC = 3;

class ProcessInstance : public testing::Test {
protected:
    void SetUp() override {
        mero::InternalErrorLog::GetGlobal().clear();
        process.begin("top", "top", ModelA, 5.0);
    }
    bool add(const char* key, const char* caller, MeroId model,
             MeroCollecting collecting = MeroCollecting::ByItself) {
        return process.addSubProcess(key, caller, model, collecting);
    }
    void value(const char* key, MeroId object, double amount) {
        EXPECT_TRUE(process.addFirstValue(key, object, amount, MeroValueUse::Accumulate));
    }
    [[nodiscard]] MeroPath path(const char* key) {
        const MeroPathView callPath = process.getInstance(key)->getCallPath();
        return {callPath.begin(), callPath.end()};
    }
    [[nodiscard]] std::optional<double> sum(const char* key, MeroId object = MeroNoId) {
        return process.getInstance(key)->sumFirstValues(object);
    }

    MeroAgentProcessInstance process;
};

TEST_F(ProcessInstance, ACallOfAModelInThePathCutsThePathBack) {
    ASSERT_TRUE(add("b", "top", ModelB));
    ASSERT_TRUE(add("c", "b", ModelC));
    ASSERT_TRUE(add("b2", "c", ModelB));
    ASSERT_TRUE(add("a2", "b", ModelA));
    EXPECT_EQ(path("c"), (MeroPath{ModelA, ModelB, ModelC}));
    EXPECT_EQ(path("b2"), (MeroPath{ModelA}));
    EXPECT_EQ(path("a2"), MeroPath{});
    EXPECT_EQ(&process.getInstance("b2")->getCollector(), process.getInstance("top"))
        << "an equal path collects where it stands already";
    EXPECT_FALSE(add("x", "nobody", ModelB));
    EXPECT_TRUE(add("b", "nobody", ModelB)) << "a key that is there stays";
}

TEST_F(ProcessInstance, EqualPathsCollectInOnePlace) {
    add("b1", "top", ModelB);
    add("b2", "top", ModelB);
    add("merged", "b2", ModelC, MeroCollecting::ByCollectorOfCaller);
    value("b1", 7, 1.0);
    value("b2", 7, 2.0);
    value("merged", 7, 4.0);
    EXPECT_DOUBLE_EQ(process.getValue("b1", 7)->value, 7.0);
    EXPECT_EQ(process.getInstanceModelId("merged"), ModelB);
    EXPECT_TRUE(process.getInstance("b2")->isCollected());
    EXPECT_EQ(sum("b2"), std::nullopt);
    EXPECT_EQ(process.getValue("b1", 8), nullptr);
    EXPECT_FALSE(process.addFirstValue("nobody", 7, 1.0, MeroValueUse::Replace));
}

TEST_F(ProcessInstance, SumsFollowEveryChangeBelow) {
    add("b", "top", ModelB);
    add("c", "b", ModelC);
    value("top", 7, 1.0);
    value("b", 7, 2.0);
    value("c", 8, 4.0);
    EXPECT_DOUBLE_EQ(*sum("top"), 7.0);
    EXPECT_DOUBLE_EQ(*sum("top", 7), 3.0);
    value("c", 8, 8.0);
    EXPECT_DOUBLE_EQ(*sum("top"), 15.0);
    EXPECT_TRUE(process.removeSubProcess("c", false));
    EXPECT_DOUBLE_EQ(*sum("top"), 3.0);
    process.getInstance("b")->clearValues();
    EXPECT_DOUBLE_EQ(*sum("top"), 1.0);
    EXPECT_TRUE(mero::InternalErrorLog::GetGlobal().getErrors().empty());
}

TEST_F(ProcessInstance, SumsHoldWhicheverOfSeveralIsTakenOut) {
    const std::vector<const char*> keys{"first", "middle", "last"};
    for (const char* const gone : keys) {
        process.begin("top", "top", ModelA, 5.0);
        double left = 0.0;
        for (std::size_t index = 0; index < keys.size(); ++index) {
            add(keys[index], "top", 10 + static_cast<MeroId>(index));
            const double amount = static_cast<double>(1U << index);
            value(keys[index], 7, amount);
            left += keys[index] == gone ? 0.0 : amount;
        }
        EXPECT_TRUE(process.removeSubProcess(gone, false));
        EXPECT_DOUBLE_EQ(*sum("top"), left) << gone;
        add("added", "top", 20);
        value("added", 7, 8.0);
        EXPECT_DOUBLE_EQ(*sum("top"), left + 8.0) << gone;
        for (const char* const key : {"first", "middle", "last", "added"}) {
            EXPECT_EQ(process.removeSubProcess(key, false), key != std::string_view(gone)) << key;
        }
        EXPECT_DOUBLE_EQ(*sum("top"), 0.0);
    }
}

TEST_F(ProcessInstance, HoldsTheSameWhetherFewOrManyInstancesAreThere) {
    std::mt19937 random(11);
    std::map<int, MeroId> alive;  // model by key
    const auto remove = [&](std::map<int, MeroId>::iterator entry) {
        const MeroId model = entry->second;
        const SV::String key(std::int32_t{entry->first});
        const bool collects = !process.getInstance(key)->isCollected();
        ASSERT_EQ(process.removeSubProcess(key, false), collects);
        if (collects) {
            std::erase_if(alive, [model](const auto& other) { return other.second == model; });
        }
    };
    for (int step = 0; step < 20000; ++step) {
        const int number = static_cast<int>(random() % 40);
        const SV::String key(std::int32_t{number});
        const std::size_t hash = key.hash();
        process.prefetchForPass(hash);
        ASSERT_EQ(process.hasInstance(key), alive.contains(number));
        const auto known = alive.find(number);
        if (known == alive.end()) {
            const auto model = static_cast<MeroId>(100 + random() % 12);
            ASSERT_TRUE(process.addSubProcess(key, "top", model, MeroCollecting::ByItself));
            const bool first =
                std::ranges::none_of(alive, [model](const auto& other) { return other.second == model; });
            ASSERT_EQ(process.getInstance(key)->isCollected(), !first);
            ASSERT_EQ(process.getInstanceModelId(key), model);
            alive.emplace(number, model);
        } else if (random() % 3 != 0) {
            remove(known);
        }
        if (random() % 200 == 0) {
            process.prefetchForEnd();
            process.begin("top", "top", ModelA, 5.0);
            alive.clear();
        }
        std::vector<MeroAgentSubProcessInstance*> inOrder;
        process.getInstances(inOrder);
        ASSERT_EQ(inOrder.size(), alive.size() + 1);
    }
}

TEST_F(ProcessInstance, SecondValuesCountForAllObjectsOrForNone) {
    auto& top = *process.getInstance("top");
    value("top", 7, 3.0);
    EXPECT_EQ(top.sumSecondValues(MeroNoId), std::nullopt);
    EXPECT_DOUBLE_EQ(process.getValue("top", 7)->getSecondValue(), 0.0);
    process.addSecondValue("top", 7, 2.0, MeroValueUse::Accumulate);
    process.addSecondValue("top", 7, 3.0, MeroValueUse::Accumulate);
    EXPECT_DOUBLE_EQ(*top.sumSecondValues(MeroNoId), 5.0);
    value("top", 6, 3.0);
    EXPECT_EQ(top.sumSecondValues(MeroNoId), std::nullopt) << "the first object in order has none";
}

TEST_F(ProcessInstance, TakingAnInstanceOutTakesWhatItCollects) {
    add("b", "top", ModelB);
    add("b2", "top", ModelB);
    add("merged", "b", ModelC, MeroCollecting::ByCollectorOfCaller);
    add("child", "b", 9);
    EXPECT_FALSE(process.removeSubProcess("b2", false)) << "it is collected elsewhere, so attached nowhere";
    EXPECT_EQ(mero::InternalErrorLog::GetGlobal().getErrors().size(), 1U);
    EXPECT_TRUE(process.removeSubProcess("b", false));
    for (const char* const gone : {"b", "b2", "merged"}) {
        EXPECT_FALSE(process.hasInstance(gone)) << gone;
    }
    EXPECT_TRUE(process.hasInstance("child"));
    EXPECT_EQ(process.getInstance("child")->getParent(), nullptr);
    EXPECT_FALSE(process.removeSubProcess("b", false));
    EXPECT_TRUE(add("b3", "top", ModelB)) << "the path is free again";
    EXPECT_FALSE(process.getInstance("b3")->isCollected());
}

TEST_F(ProcessInstance, WalksInTheOrderOfKeysAndDecimalTexts) {
    for (const char* const key : {"10", "9", "a", "11"}) {
        add(key, "top", ModelB);
    }
    for (const MeroId object : {100, 20, 3}) {
        value("top", object, 1.0);
    }
    std::vector<SV::String> keys;
    std::vector<MeroAgentSubProcessInstance*> inOrder;
    process.getInstances(inOrder);
    keys.reserve(inOrder.size());
    for (const auto* const instance : inOrder) {
        keys.push_back(instance->getKey());
    }
    EXPECT_EQ(keys, (std::vector<SV::String>{"9", "a", "10", "11", "top"}));
    std::vector<MeroId> objects;
    for (const auto& [object, entry] : process.getInstance("top")->getValues()) {
        objects.push_back(object);
    }
    EXPECT_EQ(objects, (std::vector<MeroId>{3, 20, 100}));
}

TEST_F(ProcessInstance, AnUnmeasuredStartIsNone) {
    EXPECT_EQ(process.getStartTime(), 5.0);
    process.begin("next", "next", ModelB, MeroAgentProcessInstance::StartNotMeasured);
    EXPECT_EQ(process.getStartTime(), std::nullopt);
    EXPECT_FALSE(process.hasInstance("top")) << "a process that begins anew has nothing of the one before";
}

}  // namespace
