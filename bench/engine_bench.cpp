#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/engine/simulation.h"

namespace {

constexpr int Stations = 10;
constexpr int WorkersOfAStation = 5;

/// A process of ten tasks with two ends; each task is done by five workers of its own,
/// 50 in all, who are busy seven tenths of their hours.
class BenchProcess {
public:
    BenchProcess() {
        model = repository.addModel("Order", 0, mero::ModelAccess::Write, true).value();
        environment = repository.addModel("Staff", 1, mero::ModelAccess::Write, true).value();
        const MeroId start = add("Start event", "Begin");
        set(start, "Arrival", "exponential(900)");
        set(start, "Arrival calendar", officeHours);
        MeroId previous = start;
        for (int number = 1; number <= Stations; ++number) {
            const std::string role = "Role " + std::to_string(number);
            const MeroId task = add("Task", "Task " + std::to_string(number));
            set(task, "Duration", "gamma(3200,2560000)");
            set(task, "Performer", "role \"" + role + "\"");
            addWorkers(role);
            flow(previous, task);
            previous = task;
        }
        const MeroId split = add("Exclusive gateway", "Good?");
        flow(previous, split);
        flow(split, add("End event", "Done"), 0.9);
        flow(split, add("End event", "Refused"), 0.1);
    }

    [[nodiscard]] mero::SimulationSettings settings(mero::Analysis analysis, std::uint64_t instances) const {
        mero::SimulationSettings made;
        made.analysis = analysis;
        made.models = {model};
        made.environment = environment;
        made.instances = instances;
        return made;
    }

    mero::Repository repository;

private:
    static constexpr auto officeHours =
        "CALENDAR WEEKLY days:\"mon tue wed thu fri\" hours:\"08:00-12:00 13:00-17:00\"";

    MeroId addTo(MeroId target, MeroId library, std::string_view className, const std::string& name) {
        const auto* const found = repository.library().findClass(library, className);
        return repository.addObject(target, found->id, SV::String(name)).value();
    }
    MeroId add(std::string_view className, const std::string& name) {
        return addTo(model, ClassCodeProcessLibrary, className, name);
    }
    void set(MeroId object, std::string_view attribute, const std::string& text) {
        const MeroId classId = repository.findObject(object)->classId;
        (void)repository.setValue(object, repository.library().findAttribute(classId, attribute)->id,
                                  SV::String(text));
    }
    void flow(MeroId from, MeroId to, double probability = 0.0) {
        const auto* const found =
            repository.library().findRelationClass(ClassCodeProcessLibrary, "Sequence flow");
        const MeroId relation = repository.addRelation(found->id, from, to).value();
        (void)repository.setRelationValue(
            relation, repository.library().findRelationAttribute(found->id, "Probability")->id, probability);
    }
    void addWorkers(const std::string& roleName) {
        const MeroId role = addTo(environment, ClassCodeEnvironmentLibrary, "Role", roleName);
        const auto* const hasRole =
            repository.library().findRelationClass(ClassCodeEnvironmentLibrary, "Has role");
        for (int number = 1; number <= WorkersOfAStation; ++number) {
            const MeroId worker = addTo(environment, ClassCodeEnvironmentLibrary, "Worker",
                                        roleName + " worker " + std::to_string(number));
            set(worker, "Calendar", officeHours);
            (void)repository.addRelation(hasRole->id, worker, role);
        }
    }

    MeroId model = MeroNoId;
    MeroId environment = MeroNoId;
};

/// Whole runs with nobody listening; a run is prepared once.
void simulate(benchmark::State& state, mero::Analysis analysis, std::uint64_t instances) {
    BenchProcess process;
    const auto simulation =
        mero::Simulation::prepare(process.repository, process.settings(analysis, instances));
    if (!simulation) {
        state.SkipWithError(simulation.error().text.c_str());
        return;
    }
    std::uint64_t events = 0;
    for (auto _ : state) {
        mero::ControlComponent control;
        events += simulation.value().run(control).events;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(events));
}

void SimulatePaths(benchmark::State& state) {
    simulate(state, mero::Analysis::Path, 30'000);
}
BENCHMARK(SimulatePaths)->Unit(benchmark::kMillisecond);

void SimulateCapacity(benchmark::State& state) {
    simulate(state, mero::Analysis::Capacity, 30'000);
}
BENCHMARK(SimulateCapacity)->Unit(benchmark::kMillisecond);

/// Fifty workers on calendar time, by instances: the cost of an event doesn't grow with the length of the
/// run.
void SimulateWorkLoad(benchmark::State& state) {
    simulate(state, mero::Analysis::NonStaticWorkLoad, static_cast<std::uint64_t>(state.range(0)));
}
BENCHMARK(SimulateWorkLoad)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);

}  // namespace
