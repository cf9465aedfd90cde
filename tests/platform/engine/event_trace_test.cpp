#include "platform/engine/event_trace.h"

#include <gtest/gtest.h>
#include <limits>

#include "platform/engine/trace_replay.h"

namespace mero {
namespace {

TEST(EventTrace, EventsReadBackWithAllFields) {
    const SV::String mainKey("main");
    const SV::String key("sub");
    const SV::String pass("pass");
    SimEvent full;
    full.code = std::numeric_limits<std::int32_t>::min();
    full.time = std::numeric_limits<std::int64_t>::max();
    full.mainModelId = 1;
    full.modelId = 2;
    full.calledModelId = 3;
    full.callingObjectId = 4;
    full.objectId = 5;
    full.executiveId = 6;
    full.assignedExecutiveId = 7;
    full.resourceId = 8;
    full.mainKey = &mainKey;
    full.key = &key;
    full.calledKey = &key;
    full.passKey = &pass;
    EventTrace trace;
    trace.append(full);
    trace.append(SimEvent{});

    SimEvent read;
    trace.read(0, read);
    EXPECT_EQ(read.code, full.code);
    EXPECT_EQ(read.time, full.time);
    EXPECT_EQ(read.mainModelId, 1);
    EXPECT_EQ(read.modelId, 2);
    EXPECT_EQ(read.calledModelId, 3);
    EXPECT_EQ(read.callingObjectId, 4);
    EXPECT_EQ(read.objectId, 5);
    EXPECT_EQ(read.executiveId, 6);
    EXPECT_EQ(read.assignedExecutiveId, 7);
    EXPECT_EQ(read.resourceId, 8);
    EXPECT_EQ(*read.mainKey, mainKey);
    EXPECT_EQ(*read.key, key);
    EXPECT_EQ(read.key, read.calledKey);
    EXPECT_EQ(*read.passKey, pass);
    trace.read(1, read);
    EXPECT_EQ(read.code, 0);
    EXPECT_EQ(read.resourceId, 0);
    EXPECT_TRUE(read.passKey->IsEmpty());
}

TEST(EventTrace, KeysStayInPlaceWhileItGrowsAndMoves) {
    EventTrace trace;
    const auto append = [&](int number) {
        const SV::String key(std::to_string(number % 5000));
        SimEvent event;
        event.passKey = &key;
        trace.append(event);
    };
    append(0);
    SimEvent first;
    trace.read(0, first);
    for (int number = 1; number < 20'000; ++number) {
        append(number);
    }
    const EventTrace moved = std::move(trace);
    EXPECT_EQ(first.passKey->view(), "0");
    SimEvent again;
    moved.read(15'000, again);
    EXPECT_EQ(again.passKey, first.passKey);
}

TEST(TraceReplay, StopsWhenToldTo) {
    EventTrace trace;
    for (int index = 0; index < 5000; ++index) {
        trace.append(SimEvent{});
    }
    ControlComponent control;
    EXPECT_FALSE(replayTrace(trace, control, [](std::size_t played) { return played < 2000; }));
    EXPECT_EQ(control.eventCount(), 2000U);
    EXPECT_TRUE(replayTrace(trace, control));
    EXPECT_EQ(control.eventCount(), 7000U);
}

}  // namespace
}  // namespace mero
