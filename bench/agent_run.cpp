#include "bench/agent_run.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/engine/trace_replay.h"

namespace {

struct BenchModel {
    MeroId model;
    std::vector<MeroId> tasks;
};

BenchModel makeModel(mero::Repository& repository, std::size_t objects, const std::string& definition) {
    const auto& library = repository.library();
    const auto* const task = library.findClass(ClassCodeProcessLibrary, "Task");
    const auto* const agentClass = library.findClass(ClassCodeProcessLibrary, "Process agent");
    BenchModel made{repository.addModel("Order", 0, mero::ModelAccess::Write, true).value(), {}};
    for (std::size_t number = 0; number < objects; ++number) {
        made.tasks.push_back(
            repository.addObject(made.model, task->id, SV::String("Task " + std::to_string(number))).value());
    }
    const MeroId agent = repository.addObject(made.model, agentClass->id, "Measures").value();
    const auto setText = [&](const char* name, const SV::String& text) {
        (void)repository.setValue(agent, library.findAttribute(agentClass->id, name)->id, text);
    };
    setText("Definition", SV::String(definition));
    setText("Objects", "all \"Activity\"");
    return made;
}

/// The events of one instance, one after the other.
class Instance {
public:
    Instance(const RunShape& runShape, const BenchModel& benchModel) : shape(runShape), model(benchModel) {}

    void begin(std::size_t number) {
        key = SV::String(std::to_string(number));
        step = 0;
    }
    /// False behind the last event.
    bool next(mero::SimEvent& event) {
        constexpr std::int32_t passEvents[] = {EventObjectReached, EventWorkStart, EventWorkEnd};
        const std::size_t passSteps = shape.passes * shape.objects * std::size(passEvents);
        if (step > passSteps + 1) {
            return false;
        }
        event.mainModelId = model.model;
        event.modelId = model.model;
        event.mainKey = &key;
        event.key = &key;
        if (step == 0 || step == passSteps + 1) {
            event.code = step == 0 ? EventProcessStart : EventProcessEnd;
            event.objectId = MeroNoId;
            event.passKey = &mero::NoKey;
        } else {
            event.code = passEvents[(step - 1) % std::size(passEvents)];
            event.objectId = model.tasks[(step - 1) / std::size(passEvents) % shape.objects];
            event.passKey = &key;
        }
        ++step;
        return true;
    }

private:
    RunShape shape;
    const BenchModel& model;
    SV::String key;
    std::size_t step = 0;
};

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
        event.time = static_cast<std::int64_t>(trace.size() / 10);
        trace.append(event);
    }
    return trace;
}

void sendCode(mero::ControlComponent& control, std::int32_t code) {
    mero::SimEvent event;
    event.code = code;
    control.send(event);
}

}  // namespace

AgentRun::AgentRun(const RunShape& shape, const std::string& definition) {
    const BenchModel model = makeModel(repository, shape.objects, definition);
    services = std::make_unique<mero::RepositoryServices>(repository);
    management = std::make_unique<MeroAgentManagement>();
    trace = makeTrace(shape, model);
    const ISequence<MeroId> attributes{0, 0, 0, 0};
    if (management->simStart(1, &control, attributes, {model.model}, 0, nullptr, 365.0, 24.0) != StatusOk) {
        std::fputs("the run of the benchmark doesn't start\n", stderr);
        std::abort();
    }
}

AgentRun::~AgentRun() {
    management->simEnd();
}

void AgentRun::play() {
    sendCode(control, EventRunStart);
    mero::replayTrace(trace, control);
    sendCode(control, EventRunEnd);
}

void AgentRun::playFirst(std::size_t count) {
    sendCode(control, EventRunStart);
    mero::SimEvent event;
    for (std::size_t index = 0; index < count; ++index) {
        trace.read(index, event);
        control.send(event);
    }
}
