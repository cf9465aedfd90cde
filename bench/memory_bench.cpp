#include <benchmark/benchmark.h>
#include <malloc.h>
#include <string>

#include "bench/agent_run.h"

namespace {

constexpr const char* FrequencyAgent = "AGENT\nFREQUENCY name:\"F\" resultscope:mainobjects relative";

std::size_t allocatedBytes() {
    return mallinfo2().uordblks + mallinfo2().hblkhd;
}

/// Bytes for each live instance with 5 objects.
void MemoryOfALiveInstance(benchmark::State& state) {
    constexpr std::size_t instances = 20'000;
    constexpr std::size_t stepsToLastObject = 1 + 5 * 3;
    for (auto _ : state) {
        BenchScenario scenario({.events = instances * stepsToLastObject, .liveInstances = instances},
                               FrequencyAgent);
        AgentRun run(scenario);
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
        BenchScenario scenario({.events = events, .liveInstances = 10, .passes = 1},
                               std::string(FrequencyAgent) + " history-mem");
        AgentRun run(scenario);
        const std::size_t before = allocatedBytes();
        run.playFirst(run.size());
        state.counters["bytes"] = static_cast<double>(allocatedBytes() - before) / readings;
    }
}
BENCHMARK(MemoryOfAHistoryReading)->Iterations(1);

}  // namespace
