#include "bench/agent_run.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <span>
#include <vector>

#include "component/host/core_variables.h"
#include "component/host/sv_datetime.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"

namespace {

struct BenchModel {
    MeroId model;
    std::vector<MeroId> tasks;
    MeroId environment;
    std::vector<MeroId> workers;
};

constexpr const char* WholeDays = "CALENDAR DAILY hours:\"00:00-24:00\"";

/// Adds objects of one class, with an attribute each.
std::vector<MeroId> addObjects(mero::Repository& repository, MeroId model, const mero::Library::Class& type,
                               std::size_t count, const char* attribute, const SV::String& text) {
    const MeroId attributeId = repository.library().findAttribute(type.id, attribute)->id;
    std::vector<MeroId> made;
    for (std::size_t number = 0; number < count; ++number) {
        const SV::String name(std::string(type.name) + " " + std::to_string(number));
        made.push_back(repository.addObject(model, type.id, name).value());
        (void)repository.setValue(made.back(), attributeId, text);
    }
    return made;
}

BenchModel makeModel(mero::Repository& repository, const RunShape& shape, const std::string& definition) {
    const auto& library = repository.library();
    const auto* const task = library.findClass(ClassCodeProcessLibrary, "Task");
    const auto* const worker = library.findClass(ClassCodeEnvironmentLibrary, "Worker");
    const auto* const agentClass = library.findClass(ClassCodeProcessLibrary, "Process agent");
    BenchModel made{
        repository.addModel("Order", 0, mero::ModelAccess::Write, true).value(), {}, MeroNoId, {}};
    made.tasks =
        addObjects(repository, made.model, *task, shape.objects, "Execution time", "00:000:00:10:00");
    if (shape.workers != 0) {
        made.environment = repository.addModel("Staff", 1, mero::ModelAccess::Write, true).value();
        made.workers =
            addObjects(repository, made.environment, *worker, shape.workers, "Calendar", WholeDays);
    }
    const MeroId agent = repository.addObject(made.model, agentClass->id, "Measures").value();
    const auto setText = [&](const char* name, const SV::String& text) {
        (void)repository.setValue(agent, library.findAttribute(agentClass->id, name)->id, text);
    };
    setText("Definition", SV::String(definition));
    setText("Objects", "all \"Activity\"");
    setText("Calendar", WholeDays);
    return made;
}

std::span<const std::int32_t> passEvents(const RunShape& shape) {
    static constexpr std::int32_t Unassigned[] = {EventObjectReached, EventWorkStart, EventWorkEnd};
    static constexpr std::int32_t Assigned[] = {EventObjectReached, EventExecutiveAssigned, EventWorkStart,
                                                EventWorkEnd};
    return shape.workers == 0 ? std::span<const std::int32_t>(Unassigned) : Assigned;
}

/// The events of one instance, one after the other.
class Instance {
public:
    Instance(const RunShape& runShape, const BenchModel& benchModel) : shape(runShape), model(benchModel) {}

    void begin(std::size_t number) {
        key = SV::String(std::to_string(number));
        passKey = key;
        step = 0;
        firstObject = number * shape.objectsOfInstance;
    }
    /// False behind the last event.
    bool next(mero::SimEvent& event) {
        if (step == shape.eventsOfInstance()) {
            return false;
        }
        event = {};
        event.mainModelId = model.model;
        event.modelId = model.model;
        event.mainKey = &key;
        event.key = &key;
        if (step == 0 || step == shape.eventsOfInstance() - 1) {
            event.code = step == 0 ? EventProcessStart : EventProcessEnd;
        } else {
            setPass(event, (step - 1) / passEvents(shape).size(), (step - 1) % passEvents(shape).size());
        }
        ++step;
        return true;
    }

private:
    void setPass(mero::SimEvent& event, std::size_t pass, std::size_t eventOfPass) {
        event.code = passEvents(shape)[eventOfPass];
        event.objectId = model.tasks[(firstObject + pass) % shape.objects];
        if (shape.workers != 0) {
            if (eventOfPass == 0) {
                passKey = SV::String(std::string(key.view()) + "." + std::to_string(pass));
            }
            event.executiveId = model.workers[pass % shape.workers];
            event.assignedExecutiveId = event.executiveId;
        }
        event.passKey = &passKey;
    }

    RunShape shape;
    const BenchModel& model;
    SV::String key;
    SV::String passKey;
    std::size_t step = 0;
    std::size_t firstObject = 0;
};

/// Ten events happen in a second.
std::int64_t timeOf(std::size_t event) {
    return static_cast<std::int64_t>(event / 10);
}

mero::EventTrace makeTrace(const RunShape& shape, const BenchModel& model) {
    mero::EventTrace trace;
    trace.reserve(shape.events);
    mero::SimEvent event;
    std::vector<Instance> live(shape.liveInstances, Instance(shape, model));
    std::size_t started = 0;
    for (Instance& instance : live) {
        instance.begin(++started);
    }
    for (std::size_t turn = 0; trace.size() < shape.events; ++turn) {
        Instance& instance = live[turn % live.size()];
        if (!instance.next(event)) {
            instance.begin(++started);
            instance.next(event);
        }
        event.time = timeOf(trace.size());
        trace.append(event);
    }
    return trace;
}

void sendCode(mero::ControlComponent& control, std::int32_t code, std::int64_t time = 0) {
    mero::SimEvent event;
    event.code = code;
    event.time = time;
    control.send(event);
}

/// How far a run has come, and when.
struct Progress {
    std::size_t events = 0;
    std::chrono::steady_clock::time_point time = std::chrono::steady_clock::now();
};

double nanosecondsOfAnEvent(const Progress& from, const Progress& to) {
    const std::chrono::duration<double, std::nano> taken = to.time - from.time;
    return taken.count() / static_cast<double>(to.events - from.events);
}

/// Nanoseconds of an event, at best.
struct EventCosts {
    double inFirstRound = std::numeric_limits<double>::max();
    double later = std::numeric_limits<double>::max();

    /// The end of the run, which frees what agents keep for it, isn't part of an event.
    void measure(BenchScenario& scenario) {
        AgentRun run(scenario);
        const Progress start;
        Progress behindFirstRound;
        Progress last;
        run.play([&](std::size_t played) {
            last = {.events = played};
            if (played <= scenario.eventsOfFirstRound) {
                behindFirstRound = last;
            }
            return true;
        });
        inFirstRound = std::min(inFirstRound, nanosecondsOfAnEvent(start, behindFirstRound));
        later = std::min(later, nanosecondsOfAnEvent(behindFirstRound, last));
    }
};

}  // namespace

void compareRuns(benchmark::State& state, BenchScenario& small, BenchScenario& large) {
    EventCosts ofSmall;
    EventCosts ofLarge;
    for (auto _ : state) {
        ofSmall.measure(small);
        ofLarge.measure(large);
    }
    state.counters["small_ns"] = ofSmall.later;
    state.counters["large_ns"] = ofLarge.later;
    state.counters["growth"] = ofLarge.later / ofSmall.later;
    state.counters["large_first_ns"] = ofLarge.inFirstRound;
}

std::size_t RunShape::eventsOfInstance() const {
    const std::size_t passed = objectsOfInstance != 0 ? objectsOfInstance : objects;
    return passes * passed * passEvents(*this).size() + 2;
}

std::size_t RunShape::eventsOfFirstRound() const {
    const std::size_t instancesForAllObjects = objectsOfInstance != 0 ? objects / objectsOfInstance : 1;
    return eventsOfInstance() * std::max(liveInstances, instancesForAllObjects);
}

BenchScenario::BenchScenario(const RunShape& shape, const std::string& definition)
    : analysis(shape.analysis), eventsOfFirstRound(shape.eventsOfFirstRound()) {
    const BenchModel made = makeModel(repository, shape, definition);
    model = made.model;
    environment = made.environment;
    trace = makeTrace(shape, made);
}

AgentRun::AgentRun(BenchScenario& played)
    : scenario(played), services(played.repository), management(std::make_unique<MeroAgentManagement>()) {
    const auto& library = scenario.repository.library();
    const ISequence<MeroId> attributes{
        library.findAttribute(library.coreVariable(CoreActivity), "Execution time")->id, 0, 0, 0};
    const SV::DateTime start(SV::Date(5, 1, 2026), SV::Time(0, 0));
    if (management->simStart(scenario.analysis, &control, attributes, {scenario.model}, scenario.environment,
                             &start, 365.0, 24.0) != StatusOk) {
        std::fputs("the run of the benchmark doesn't start\n", stderr);
        std::abort();
    }
}

AgentRun::~AgentRun() {
    management->simEnd();
}

void AgentRun::play(const mero::ReplayProgress& progress) {
    if (wasPlayed) {
        sendCode(control, EventRestart);
    }
    wasPlayed = true;
    sendCode(control, EventRunStart);
    mero::replayTrace(scenario.trace, control, progress);
    sendCode(control, EventRunEnd, timeOf(scenario.trace.size()));
}

std::size_t AgentRun::readResults() {
    std::size_t values = 0;
    for (const auto& agent : management->getSuperAgents()) {
        for (const auto& subAgent : agent->getSubAgents()) {
            MeroAgentResultSet* const set = subAgent->getResultSet(
                {.scaled = true, .frequency = 1, .frequencyPeriod = "01:000:00:00:00"});
            values += set != nullptr ? set->getResults(true).size() : 0;
        }
    }
    return values;
}

void AgentRun::playFirst(std::size_t count) {
    sendCode(control, EventRunStart);
    mero::SimEvent event;
    for (std::size_t index = 0; index < count; ++index) {
        scenario.trace.read(index, event);
        control.send(event);
    }
}
