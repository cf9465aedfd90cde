#include <algorithm>
#include <benchmark/benchmark.h>

#include "bench/agent_run.h"

namespace {

std::string frequencyAgents(int count, const std::string& keywords = "") {
    std::string text = "AGENT";
    for (int number = 0; number < count; ++number) {
        text += "\nFREQUENCY name:\"F" + std::to_string(number) + "\" resultscope:mainobjects relative " +
                keywords;
    }
    return text;
}

void reportEvents(benchmark::State& state, std::size_t events) {
    state.SetItemsProcessed(static_cast<std::int64_t>(events) * state.iterations());
}

void playAll(benchmark::State& state, const RunShape& shape, int agents, const std::string& keywords = "") {
    BenchScenario scenario(shape, frequencyAgents(agents, keywords));
    AgentRun run(scenario);
    for (auto _ : state) {
        run.play();
    }
    reportEvents(state, run.size());
}

/// The main figure: 5 million events, 1,000 live instances, one agent.
void FrequencyOfFiveMillionEvents(benchmark::State& state) {
    playAll(state, {.events = 5'000'000}, 1);
}
BENCHMARK(FrequencyOfFiveMillionEvents)->Unit(benchmark::kMillisecond);

/// The engine's side alone: the same trace with nobody listening.
void ReplayWithoutAgents(benchmark::State& state) {
    BenchScenario scenario({.events = 5'000'000}, "AGENT deactivate");
    AgentRun run(scenario);
    for (auto _ : state) {
        run.play();
    }
    reportEvents(state, run.size());
}
BENCHMARK(ReplayWithoutAgents)->Unit(benchmark::kMillisecond);

void ReplayByLiveInstances(benchmark::State& state) {
    BenchScenario scenario({.events = 5'000'000, .liveInstances = static_cast<std::size_t>(state.range(0))},
                           "AGENT deactivate");
    AgentRun run(scenario);
    for (auto _ : state) {
        run.play();
    }
    reportEvents(state, run.size());
}
BENCHMARK(ReplayByLiveInstances)->RangeMultiplier(10)->Range(100, 1'000'000)->Unit(benchmark::kMillisecond);

RunShape shapeOfLiveInstances(std::size_t count) {
    // Long enough that instances of many generations take turns, whatever their number.
    constexpr std::size_t EventsOfInstance = 100;
    return {.events = std::max<std::size_t>(5'000'000, EventsOfInstance * count), .liveInstances = count};
}

void FrequencyByLiveInstances(benchmark::State& state) {
    playAll(state, shapeOfLiveInstances(static_cast<std::size_t>(state.range(0))), 1);
}
BENCHMARK(FrequencyByLiveInstances)->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond);

void GrowthByLiveInstances(benchmark::State& state) {
    BenchScenario small(shapeOfLiveInstances(100), frequencyAgents(1));
    BenchScenario large(shapeOfLiveInstances(static_cast<std::size_t>(state.range(0))), frequencyAgents(1));
    compareRuns(state, small, large);
}
BENCHMARK(GrowthByLiveInstances)->Arg(100'000)->Iterations(15)->Unit(benchmark::kMillisecond);

void FrequencyByPassesOfAnInstance(benchmark::State& state) {
    playAll(state,
            {.events = 2'000'000,
             .liveInstances = 10,
             .passes = static_cast<std::size_t>(state.range(0)),
             .objects = 1},
            1);
}
BENCHMARK(FrequencyByPassesOfAnInstance)
    ->RangeMultiplier(10)
    ->Range(10, 10'000)
    ->Unit(benchmark::kMillisecond);

void FrequencyByAgents(benchmark::State& state) {
    playAll(state, {.events = 1'000'000}, static_cast<int>(state.range(0)));
}
BENCHMARK(FrequencyByAgents)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);

void FrequencyByObjects(benchmark::State& state) {
    playAll(state,
            {.events = 1'000'000,
             .liveInstances = 100,
             .passes = 1,
             .objects = static_cast<std::size_t>(state.range(0))},
            1);
}
BENCHMARK(FrequencyByObjects)->RangeMultiplier(10)->Range(5, 50'000)->Unit(benchmark::kMillisecond);

}  // namespace
