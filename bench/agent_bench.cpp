#include <algorithm>
#include <benchmark/benchmark.h>
#include <malloc.h>

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
    AgentRun run(shape, frequencyAgents(agents, keywords));
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
    AgentRun run({.events = 5'000'000}, "AGENT deactivate");
    for (auto _ : state) {
        run.play();
    }
    reportEvents(state, run.size());
}
BENCHMARK(ReplayWithoutAgents)->Unit(benchmark::kMillisecond);

void ReplayByLiveInstances(benchmark::State& state) {
    AgentRun run({.events = 5'000'000, .liveInstances = static_cast<std::size_t>(state.range(0))},
                 "AGENT deactivate");
    for (auto _ : state) {
        run.play();
    }
    reportEvents(state, run.size());
}
BENCHMARK(ReplayByLiveInstances)->RangeMultiplier(10)->Range(100, 1'000'000)->Unit(benchmark::kMillisecond);

void FrequencyByLiveInstances(benchmark::State& state) {
    // Long enough that instances of many generations take turns, whatever their number.
    constexpr std::size_t EventsOfInstance = 200;
    const auto live = static_cast<std::size_t>(state.range(0));
    playAll(state,
            {.events = std::max<std::size_t>(5'000'000, EventsOfInstance * live), .liveInstances = live}, 1);
}
BENCHMARK(FrequencyByLiveInstances)->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond);

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

std::size_t allocatedBytes() {
    return mallinfo2().uordblks + mallinfo2().hblkhd;
}

/// Bytes for each live instance with 5 objects.
void MemoryOfALiveInstance(benchmark::State& state) {
    constexpr std::size_t instances = 20'000;
    constexpr std::size_t stepsToLastObject = 1 + 5 * 3;
    for (auto _ : state) {
        AgentRun run({.events = instances * stepsToLastObject, .liveInstances = instances},
                     frequencyAgents(1));
        const std::size_t before = allocatedBytes();
        run.playFirst(run.size());
        state.counters["bytes"] = static_cast<double>(allocatedBytes() - before) / instances;
    }
}
BENCHMARK(MemoryOfALiveInstance)->Iterations(1);

/// Bytes for each reading of a history in memory: six readings for each instance that ends.
void MemoryOfAHistoryReading(benchmark::State& state) {
    constexpr std::size_t events = 1'700'000;
    constexpr double readings = events / 17.0 * 6.0;
    for (auto _ : state) {
        AgentRun run({.events = events, .liveInstances = 10, .passes = 1}, frequencyAgents(1, "history-mem"));
        const std::size_t before = allocatedBytes();
        run.playFirst(run.size());
        state.counters["bytes"] = static_cast<double>(allocatedBytes() - before) / readings;
    }
}
BENCHMARK(MemoryOfAHistoryReading)->Iterations(1);

}  // namespace
