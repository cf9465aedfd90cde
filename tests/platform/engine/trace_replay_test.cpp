#include "platform/engine/trace_replay.h"

#include <gtest/gtest.h>
#include <vector>

namespace mero {
namespace {

/// What a component hears of a replay: the object of each event.
class Hearer : public MeroPassiveComponent {
public:
    int processEvent(MeroSimEvent* event) override {
        EXPECT_LT(heard.size(), announced.size()) << "every event is announced before it is sent";
        heard.push_back(objectOf(*event));
        return EventHandled;
    }
    void expectEvent(const MeroSimEvent& event) override { announced.push_back(objectOf(event)); }

    std::vector<MeroId> heard;
    std::vector<MeroId> announced;

private:
    static MeroId objectOf(const MeroSimEvent& event) {
        MeroId object = MeroNoId;
        event.getObjectId(&object);
        return object;
    }
};

TEST(TraceReplay, AnnouncesAndSendsEveryEventOnceInOrderWhateverTheLength) {
    for (const MeroId length : {0, 1, 5, 12, 13, 24, 100}) {
        EventTrace trace;
        std::vector<MeroId> objects;
        ControlComponent sender;
        const SV::String key("k");
        for (MeroId object = 1; object <= length; ++object) {
            SimEvent event;
            event.code = EventWorkStart;
            event.time = object;
            event.objectId = object;
            event.mainKey = event.key = &key;
            trace.append(event);
            objects.push_back(object);
            sender.send(event);
        }
        Hearer hearer;
        ControlComponent control;
        control.AttachPassiveComponent(&hearer);
        EXPECT_TRUE(replayTrace(trace, control));
        EXPECT_EQ(hearer.heard, objects);
        EXPECT_EQ(hearer.announced, objects);
        EXPECT_EQ(control.fingerprint(), sender.fingerprint())
            << "digests that are kept are those of the events";
        control.DetachPassiveComponent(&hearer);
    }
}

}  // namespace
}  // namespace mero
