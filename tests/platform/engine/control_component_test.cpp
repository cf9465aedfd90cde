#include "platform/engine/control_component.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/repository/library.h"

namespace mero {
namespace {

class Listener : public MeroPassiveComponent {
public:
    Listener(std::string listenerName, std::vector<std::string>& sharedLog, std::vector<MeroId> observed = {})
        : name(std::move(listenerName)), log(sharedLog) {
        for (const MeroId id : observed) {
            observedClassSet.insert(id);
        }
    }
    int processEvent(MeroSimEvent* event) override {
        log.push_back(name + std::to_string(event->code));
        if (reaction) {
            reaction();
        }
        return status;
    }

    std::function<void()> reaction;
    int status = EventHandled;

private:
    std::string name;
    std::vector<std::string>& log;
};

MeroId classId(std::string_view name) {
    return Library::standard().findClass(ClassCodeProcessLibrary, name)->id;
}

SimEvent eventOf(std::int32_t code) {
    SimEvent event;
    event.code = code;
    return event;
}

using Log = std::vector<std::string>;

class ControlComponentTest : public testing::Test {
protected:
    void send(std::int32_t code) {
        SimEvent event = eventOf(code);
        control.send(event);
    }

    Log log;
    ControlComponent control;
};

TEST_F(ControlComponentTest, AttachedComponentsHearEventsInOrder) {
    Listener a("a", log);
    Listener b("b", log);
    EXPECT_NE(control.AttachPassiveComponent(&b), 0);
    EXPECT_NE(control.AttachPassiveComponent(&a), 0);
    EXPECT_EQ(control.AttachPassiveComponent(&a), 0);
    EXPECT_EQ(control.AttachPassiveComponent(nullptr), 0);
    send(3);
    EXPECT_NE(control.DetachPassiveComponent(&b), 0);
    EXPECT_EQ(control.DetachPassiveComponent(&b), 0);
    send(6);
    EXPECT_EQ(log, (Log{"b3", "a3", "a6"}));
}

TEST_F(ControlComponentTest, ComponentsMayComeAndGoDuringAnEvent) {
    Listener a("a", log);
    Listener b("b", log);
    Listener c("c", log);
    for (Listener* each : {&a, &b, &c}) {
        control.AttachPassiveComponent(each);
    }
    Listener late("d", log);
    a.reaction = [&] {
        control.DetachPassiveComponent(&a);
        control.DetachPassiveComponent(&b);
        control.AttachPassiveComponent(&late);
    };
    send(1);
    send(2);
    EXPECT_EQ(log, (Log{"a1", "c1", "c2", "d2"}));
}

TEST_F(ControlComponentTest, FilteredEventsReachObserversOfTheClassAndItsSuperClasses) {
    Listener activities("a", log, {classId("Activity")});
    Listener userTasks("u", log, {classId("User task")});
    Listener calls("c", log, {classId("Call")});
    for (Listener* each : {&activities, &userTasks, &calls}) {
        control.AttachPassiveComponent(each);
    }
    const auto sendOf = [&](std::string_view name) {
        SimEvent event = eventOf(17);
        control.sendFiltered(event, control.slotOf(classId(name)));
    };
    sendOf("User task");
    sendOf("Task");
    sendOf("Exclusive gateway");
    SimEvent event = eventOf(11);
    control.sendFiltered(event, ControlComponent::NoClassSlot);
    EXPECT_EQ(log, (Log{"a17", "u17", "a17", "a11", "u11", "c11"}));
    EXPECT_EQ(control.eventCount(), 4U);

    log.clear();
    control.DetachPassiveComponent(&activities);
    sendOf("User task");
    EXPECT_EQ(log, (Log{"u17"}));
}

TEST_F(ControlComponentTest, RefusedTimesAreCounted) {
    Listener a("a", log);
    a.status = EventTimeOutOfRange;
    control.AttachPassiveComponent(&a);
    send(11);
    EXPECT_EQ(control.refusalCount(), 1U);
}

TEST(Fingerprint, DependsOnEveryFieldAndOnTheOrderOnly) {
    const SV::String key("k");
    const std::vector<std::function<void(SimEvent&)>> changes = {
        [](SimEvent& event) { event.code = 5; },
        [](SimEvent& event) { event.time = 5; },
        [](SimEvent& event) { event.mainModelId = 5; },
        [](SimEvent& event) { event.modelId = 5; },
        [](SimEvent& event) { event.calledModelId = 5; },
        [](SimEvent& event) { event.callingObjectId = 5; },
        [](SimEvent& event) { event.objectId = 5; },
        [](SimEvent& event) { event.executiveId = 5; },
        [](SimEvent& event) { event.assignedExecutiveId = 5; },
        [](SimEvent& event) { event.resourceId = 5; },
        [&](SimEvent& event) { event.mainKey = &key; },
        [&](SimEvent& event) { event.key = &key; },
        [&](SimEvent& event) { event.calledKey = &key; },
        [&](SimEvent& event) { event.passKey = &key; },
    };
    const auto fingerprintOf = [](const std::vector<SimEvent>& events) {
        ControlComponent control;
        for (SimEvent event : events) {
            control.send(event);
        }
        return control.fingerprint();
    };
    std::vector<std::uint64_t> seen = {fingerprintOf({SimEvent{}})};
    std::vector<SimEvent> events;
    for (const auto& change : changes) {
        SimEvent event;
        change(event);
        events.push_back(event);
        seen.push_back(fingerprintOf({event}));
    }
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(std::unique(seen.begin(), seen.end()), seen.end());

    const std::uint64_t inOrder = fingerprintOf(events);
    std::swap(events[3], events[4]);
    EXPECT_NE(fingerprintOf(events), inOrder);

    const SV::String sameText(std::string("k"));
    events[10].mainKey = &sameText;
    std::swap(events[3], events[4]);
    EXPECT_EQ(fingerprintOf(events), inOrder);
}

}  // namespace
}  // namespace mero
