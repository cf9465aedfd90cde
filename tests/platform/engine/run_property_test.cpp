#include <map>
#include <random>
#include <set>

#include "platform/time/calendar_text.h"
#include "tests/platform/engine/event_log.h"
#include "tests/platform/engine/work_load_fixture.h"

namespace mero {
namespace {

/// Checks what holds for every run, event by event.
class RunChecker : public EventSink {
public:
    explicit RunChecker(const Repository& checkedRepository) : repository(checkedRepository) {}

    void record(const SimEvent& event) override {
        EXPECT_GE(event.time, lastTime);
        lastTime = event.time;
        const std::string pass(event.passKey->view());
        switch (event.code) {
            case EventProcessStart:
                EXPECT_TRUE(live.insert(std::string(event.key->view())).second);
                ++started;
                break;
            case EventProcessEnd:
            case EventInstanceDropped:
                EXPECT_EQ(live.erase(std::string(event.key->view())), 1U);
                ++(event.code == EventProcessEnd ? finished : dropped);
                break;
            case EventObjectReached:
                EXPECT_TRUE(reached.insert(pass).second) << "a pass is reached once";
                break;
            case EventWorkStart:
                EXPECT_EQ(reached.count(pass), 1U) << "a pass is reached before it is worked on";
                begin(pass, event);
                break;
            case EventWorkResumed:
                EXPECT_EQ(suspended.erase(pass), 1U);
                begin(pass, event);
                break;
            case EventWorkSuspended:
                end(pass, event);
                suspended.insert(pass);
                break;
            case EventWorkEnd:
                end(pass, event);
                reached.erase(pass);
                break;
            case EventResourceBound:
                EXPECT_TRUE(bound.emplace(event.resourceId, pass).second) << "a resource is bound once";
                break;
            case EventResourceFreed:
                EXPECT_EQ(bound[event.resourceId], pass);
                bound.erase(event.resourceId);
                break;
            default:
                break;
        }
        EXPECT_TRUE(event.key->IsEmpty() || live.count(std::string(event.mainKey->view())) != 0 ||
                    event.code == EventProcessEnd || event.code == EventInstanceDropped)
            << "nothing is sent of an instance that isn't live";
    }

    std::int64_t lastTime = 0;
    std::uint64_t started = 0;
    std::uint64_t finished = 0;
    std::uint64_t dropped = 0;
    std::set<std::string> live;
    std::map<MeroId, std::string> bound;

private:
    void begin(const std::string& pass, const SimEvent& event) {
        if (event.executiveId != MeroNoId) {
            EXPECT_TRUE(working.emplace(event.executiveId, pass).second)
                << "a worker does one thing at a time";
            since[event.executiveId] = event.time;
        }
    }
    void end(const std::string& pass, const SimEvent& event) {
        if (event.executiveId == MeroNoId) {
            return;
        }
        EXPECT_EQ(working[event.executiveId], pass);
        working.erase(event.executiveId);
        const std::int64_t from = since[event.executiveId];
        const SV::String text = repository.textOf(*repository.findObject(event.executiveId), "Calendar");
        EXPECT_EQ(calendarOf(text).workBetween(from, event.time), event.time - from)
            << "nobody works outside of his calendar";
    }
    const WorkingCalendar& calendarOf(const SV::String& text) {
        auto place = calendars.find(std::string(text.view()));
        if (place == calendars.end()) {
            place = calendars.emplace(std::string(text.view()), readCalendarText(text.view()).value()).first;
        }
        return place->second;
    }

    const Repository& repository;
    std::set<std::string> reached;
    std::set<std::string> suspended;
    std::map<MeroId, std::string> working;
    std::map<MeroId, std::int64_t> since;
    std::map<std::string, WorkingCalendar> calendars;
};

/// Processes with a bit of everything, made by chance.
class RunPropertyTest : public WorkLoadFixture, public testing::WithParamInterface<std::uint32_t> {
protected:
    int draw(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random); }
    std::string pick(std::initializer_list<const char*> words) {
        return *(words.begin() + draw(0, static_cast<int>(words.size()) - 1));
    }

    void makeStaff() {
        for (const char* role : {"A", "B"}) {
            roles.push_back(staff.add("Role", role));
        }
        for (int number = 0; number < draw(1, 6); ++number) {
            const MeroId worker = staff.add(
                "Worker", "W" + std::to_string(number),
                {{"Calendar", text(pick({"CALENDAR DAILY hours:\"00:00-24:00\"",
                                         "CALENDAR DAILY hours:\"08:00-12:00 13:00-17:00\"",
                                         "CALENDAR WEEKLY days:\"mon wed\" hours:\"22:00-24:00\""}))},
                 {"Availability", std::int32_t{draw(50, 100)}}});
            staff.relate("Has role", worker, roles[static_cast<std::size_t>(number) % 2]);
            if (draw(0, 1) == 0) {
                staff.relate("Has role", worker, roles[1 - static_cast<std::size_t>(number) % 2]);
            }
        }
        staff.add("Equipment", "Van");
        staff.add("Equipment", "Press", {{"Calendar", text("CALENDAR DAILY hours:\"06:00-23:00\"")}});
    }

    MeroId task(ProcessBuilder& model, const std::string& name) {
        return model.add("Task", name,
                         {{"Duration", text(pick({"exponential(2000)", "uniform(0,9000)", "fixed(0)"}))},
                          {"Performer", text(pick({"role \"A\"", "role \"B\"", "all \"Worker\"", ""}))},
                          {"Resources", text(pick({"", "", "all \"Equipment\""}))},
                          {"Priority", std::int32_t{draw(0, 2)}},
                          {"Waiting time", text(pick({"00:000:00:00:00", "00:000:00:10:00"}))},
                          {"Resting time", text(pick({"00:000:00:00:00", "00:000:00:05:00"}))},
                          {"Loop", text(pick({"none", "none", "parallel", "sequential", "standard"}))},
                          {"Loop maximum", std::int32_t{3}},
                          {"Loop probability", 0.3}});
    }

    MeroId makeModel() {
        ProcessBuilder sub(repository, "Sub");
        const MeroId inner = task(sub, "Inner");
        sub.chain({sub.add("Start event", "Begin"), inner});
        sub.flow(inner, sub.add("End event", "Done"), 0.8);
        sub.flow(inner, sub.add("End event", "Failed", {{"Event kind", text("error")}}), 0.2);

        ProcessBuilder model(repository, "Order");
        const MeroId fork = model.add("Inclusive gateway", "Fork");
        const MeroId join = model.add("Inclusive gateway", "Join");
        const MeroId call = model.add("Call activity", "Call", {{"Referenced model", text("Sub")}});
        const MeroId error = model.add("Intermediate event", "Error", {{"Event kind", text("error")}});
        model.attach(error, call);
        const MeroId end = model.add("End event", "End");
        model.chain({model.add("Start event", "Begin", {{"Arrival", text("exponential(3000)")}}),
                     task(model, "First"), fork});
        for (int branch = 0; branch < 3; ++branch) {
            const MeroId work = task(model, "Branch " + std::to_string(branch));
            const MeroId late = model.add("Intermediate event", "Late " + std::to_string(branch),
                                          {{"Event kind", text("timer")},
                                           {"Duration", text("exponential(20000)")},
                                           {"Interrupting", std::int32_t{draw(0, 1)}}});
            model.attach(late, work);
            model.flow(fork, work, 0.6);
            model.flow(work, join);
            model.flow(late, draw(0, 1) == 0 ? end : join);
        }
        model.chain({join, call});
        model.flow(error, model.add("End event", "Stop", {{"Event kind", text("terminate")}}));
        model.flow(call, task(model, "Last"));
        return model.id();
    }

    std::mt19937 random{GetParam()};
    std::vector<MeroId> roles;
};

TEST_P(RunPropertyTest, EveryRunKeepsTheRules) {
    makeStaff();
    settings.models = {makeModel()};
    settings.environment = staff.id();
    settings.seed = GetParam();
    for (const Analysis analysis :
         {Analysis::Capacity, Analysis::StaticWorkLoad, Analysis::NonStaticWorkLoad}) {
        settings.analysis = analysis;
        settings.instances = 100;
        settings.until.reset();
        if (analysis == Analysis::StaticWorkLoad) {
            settings.until = 200'000;
        }
        const auto simulation = Simulation::prepare(repository, settings);
        ASSERT_TRUE(simulation.isGood()) << simulation.error().text;
        RunChecker checker(repository);
        ControlComponent control;
        if (analysis != Analysis::Capacity) {
            control.setSink(&checker);
        }
        const RunSummary summary = simulation.value().run(control);
        EXPECT_EQ(summary.started, summary.finished + summary.dropped + summary.unfinished);
        if (analysis != Analysis::Capacity) {
            EXPECT_EQ(checker.started, summary.started);
            EXPECT_EQ(checker.finished, summary.finished);
            EXPECT_EQ(checker.dropped, summary.dropped);
            EXPECT_EQ(checker.live.size(), summary.unfinished);
        }
        if (analysis == Analysis::NonStaticWorkLoad) {
            EXPECT_EQ(summary.started, 100U);
            EXPECT_EQ(summary.unfinished, 0U);
            EXPECT_TRUE(checker.bound.empty());
        }
        EventLog observer(repository);
        ControlComponent observed;
        observed.AttachPassiveComponent(&observer);
        EXPECT_EQ(simulation.value().run(observed).fingerprint, summary.fingerprint);
    }
}

INSTANTIATE_TEST_SUITE_P(Models, RunPropertyTest, testing::Range(1U, 25U));

}  // namespace
}  // namespace mero
