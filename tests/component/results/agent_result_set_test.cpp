#include "component/results/agent_result_set.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "component/host/sv_boxes.h"

#include "component/results/reading_batch.h"
#include "platform/toolkit/internal_errors.h"

namespace {

MeroAgentResultSet makeSet(MeroResultMode mode, bool shown = true, MeroResultKind kind = ResultKindNumber) {
    return MeroAgentResultSet(kind, "F", ValueTypeAbsolute, shown, 1, mode);
}

bool add(MeroAgentResultSet& set, MeroId object, double value, double time, int count = DivisorKept,
         MeroHistoryUse history = MeroHistoryUse::Kept) {
    const MeroPath path{1, object};
    return set.addValue({.objectId = object,
                         .path = path,
                         .itemKey = object,
                         .value = value,
                         .time = time,
                         .count = count,
                         .history = history});
}

std::vector<double> readHistory(MeroAgentResultSet& set) {
    std::vector<double> readings;
    MeroSequenceResult* const history = set.getHistory(true);
    MeroSequenceEntry entry;
    while (history != nullptr && history->getNext(entry)) {
        readings.insert(readings.end(), {static_cast<double>(entry.objectId), entry.time, entry.value});
    }
    return readings;
}

TEST(AgentResultSet, FirstEntryOfAnObjectIsItsValueLaterOnesTheRunningTotal) {
    auto set = makeSet(ResultModeSum);
    set.enableMemoryHistory(true);
    add(set, 9, 2.0, 1.0);
    add(set, 8, 5.0, 2.0);
    add(set, 9, 3.0, 3.0);
    EXPECT_EQ(readHistory(set), (std::vector<double>{8, 2, 5, 9, 1, 2, 9, 3, 5}));
    EXPECT_EQ(readHistory(set), (std::vector<double>{8, 2, 5, 9, 1, 2, 9, 3, 5}))
        << "each pass reads the same";
    add(set, 7, 1.0, 4.0);
    EXPECT_EQ(readHistory(set), (std::vector<double>{7, 4, 1, 8, 2, 5, 9, 1, 2, 9, 3, 5}));
}

TEST(AgentResultSet, ReadingsAddedTogetherCountAsThoseAddedOneByOne) {
    constexpr MeroId Objects = 5000;  // more than are taken for few
    constexpr MeroId Worker = 9999;
    auto together = makeSet(ResultModeItemMean);
    auto oneByOne = makeSet(ResultModeItemMean);
    MeroReadingBatch batch;
    for (int round = 0; round < 3; ++round) {
        for (MeroId object = 1; object <= Objects; ++object) {
            const MeroId key = object % 3 == 0 ? Worker : object;
            const MeroPath path{1, object, object % 2};
            const MeroReading reading{.objectId = key,
                                      .path = MeroPathView(path).first(round == 2 ? 2 : 3),
                                      .itemKey = key,
                                      .value = object * 0.5 + round,
                                      .count = DivisorRaised};
            oneByOne.addValue(reading);
            batch.add(reading);
            if (object % 7 == 0) {
                batch.addTo(together);
            }
        }
        batch.addTo(together);
    }
    const auto expected = oneByOne.getResults(true);
    const auto got = together.getResults(true);
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t number = 0; number < got.size(); ++number) {
        EXPECT_EQ(got[number]->getItemKey(), expected[number]->getItemKey());
        EXPECT_TRUE(std::ranges::equal(
            got[number]->getItems(), expected[number]->getItems(), [](const auto* left, const auto* right) {
                return left->getKey() == right->getKey() && left->getValue() == right->getValue();
            }));
    }
}

TEST(AgentResultSet, AMeanNeedsItsCountForTheHistory) {
    auto set = makeSet(ResultModeMean);
    set.enableMemoryHistory(true);
    mero::InternalErrorLog::GetGlobal().clear();
    EXPECT_TRUE(add(set, 9, 2.0, 1.0, 1));
    EXPECT_TRUE(add(set, 9, 4.0, 2.0, 2));
    EXPECT_FALSE(add(set, 9, 4.0, 3.0, DivisorKept));
    ASSERT_EQ(mero::InternalErrorLog::GetGlobal().getErrors().size(), 1U);
    EXPECT_EQ(readHistory(set), (std::vector<double>{9, 1, 2, 9, 2, 3}));
}

TEST(AgentResultSet, AValueKeptOutMakesAnEmptyHistory) {
    auto set = makeSet(ResultModeSum);
    set.enableMemoryHistory(false);
    EXPECT_FALSE(set.hasHistory(true));
    add(set, 9, 0.0, 0.0, DivisorKept, MeroHistoryUse::Left);
    EXPECT_TRUE(set.hasHistory(true));
    EXPECT_FALSE(set.hasHistory(false));
    EXPECT_EQ(set.getHistory(), nullptr);
    EXPECT_TRUE(readHistory(set).empty());
}

TEST(AgentResultSet, ClearedValuesLeaveHistoryAndObjects) {
    auto set = makeSet(ResultModeSum);
    set.enableMemoryHistory(true);
    add(set, 9, 2.0, 1.0);
    set.clearValues();
    ISortedSet<MeroId> ids;
    set.getItemKeys(ids);
    EXPECT_TRUE(ids.empty());
    set.getObjectIds(ids);
    EXPECT_EQ(ids, (ISortedSet<MeroId>{9}));
    EXPECT_FALSE(set.hasObjectResults(true));
    EXPECT_TRUE(set.hasHistory(false));
}

TEST(AgentResultSet, OnlyOneHistoryCanBeOn) {
    auto memory = makeSet(ResultModeSum);
    EXPECT_TRUE(memory.enableMemoryHistory(true));
    EXPECT_FALSE(memory.enableDiskHistory("f", "# \n", true));
    auto disk = makeSet(ResultModeSum);
    EXPECT_TRUE(disk.enableDiskHistory("f", "# \n", true));
    EXPECT_FALSE(disk.enableMemoryHistory(true));
    auto none = makeSet(ResultModeSum);
    EXPECT_FALSE(none.addHistoryPoint(9, 9, 1.0, 1.0));
}

TEST(AgentResultSet, ShowsOnlyWhatMayBeShown) {
    auto hidden = makeSet(ResultModeSum, false);
    auto kindless = makeSet(ResultModeSum, true, ResultKindNone);
    add(hidden, 9, 2.0, 1.0);
    add(kindless, 9, 2.0, 1.0);
    EXPECT_FALSE(hidden.hasObjectResults(false));
    EXPECT_TRUE(hidden.hasObjectResults(true));
    EXPECT_EQ(hidden.findResult(9, false), nullptr);
    EXPECT_NE(hidden.findResultByObject(9, true), nullptr);
    EXPECT_FALSE(kindless.hasObjectResults(true));
    EXPECT_TRUE(kindless.getResults(true).empty());
    EXPECT_NE(kindless.findItem(MeroPath{1, 9}, 9), nullptr);
}

TEST(AgentResultSet, UpdatesOnlyWhatIsThere) {
    auto set = makeSet(ResultModeLast);
    const MeroPath path{1, 9};
    EXPECT_FALSE(set.updateValue({.objectId = 9, .path = path, .itemKey = 9, .value = 1.0}));
    add(set, 9, 1.0, 1.0);
    EXPECT_TRUE(set.updateValue({.objectId = 9, .path = path, .itemKey = 9, .value = 3.0}));
    EXPECT_DOUBLE_EQ(set.findItem(path, 9)->getValue(), 3.0);
    EXPECT_FALSE(set.setDivisor(2));
}

TEST(AgentResultSet, AHistoryThatCannotBeWrittenIsGivenUpTheValuesGoOn) {
    SV::BoxDesk::GetGlobal().clearRecords();
    for (const char* const file : {"/nonexistent-folder/history.txt", "/dev/full"}) {
        auto set = makeSet(ResultModeSum);
        set.enableDiskHistory(file, "# head\n", true);
        SV::BoxDesk::GetGlobal().clearRecords();
        for (int reading = 0; reading < 5000; ++reading) {
            EXPECT_TRUE(add(set, 9, 1.0, reading));
        }
        EXPECT_EQ(set.getHistory(true), nullptr) << file;
        EXPECT_FALSE(set.hasHistory(true)) << file;
        EXPECT_DOUBLE_EQ(set.findResult(9, false)->getTotal(), 5000.0);
        EXPECT_EQ(SV::BoxDesk::GetGlobal().getRecords().size(), 1U) << file;
    }
}

}  // namespace
