#include <algorithm>
#include <benchmark/benchmark.h>
#include <string>
#include <vector>

#include "bench/agent_run.h"

namespace {

struct Measure {
    const char* name;
    const char* section;
    int analysis;
};

/// Every measure in the analysis that it is made for, by main objects and without a history.
const std::vector<Measure> measures{
    {"Frequency", "FREQUENCY relative path-analysis volume-analysis wlstatic-analysis", 1},
    {"CycleTime", "CYCLETIME path-analysis volume-analysis wlstatic-analysis", 1},
    {"CycleTimeOnCalendarTime", "CYCLETIME path-analysis volume-analysis wlstatic-analysis", 3},
    {"AverageAttributeSum",
     "AVGSUM class:\"Task\" attribute:\"Execution time\" attribute-type:time path-analysis volume-analysis "
     "wlstatic-analysis",
     1},
    {"ChangeOfWorker", "RESPCHANGE class:\"Worker\" volume-analysis wlstatic-analysis", 2},
    {"Strain", "STRAIN class:\"Worker\" volume-analysis", 2},
    {"WeightedCost", "WWECOST class:\"Worker\" attribute:\"Hourly wages\" volume-analysis", 2},
    {"UnweightedCost",
     "UWWECOST class:\"Worker\" attribute:\"Hourly wages\" volume-analysis wlstatic-analysis", 2},
    {"UnweightedCostOnCalendarTime",
     "UWWECOST class:\"Worker\" attribute:\"Hourly wages\" volume-analysis wlstatic-analysis", 3},
    {"WorkLoad", "WORKLOAD class:\"Worker\" wlstatic-analysis", 3},
};

std::string definitionOf(const Measure& measure) {
    return std::string("AGENT\n") + measure.section + " name:\"" + measure.name +
           "\" resultscope:mainobjects";
}

/// All of them in one agent, and a formula over two; each takes part where its analysis allows.
std::string definitionOfAll() {
    std::string text = "AGENT";
    for (const Measure& measure : measures) {
        if (std::string(measure.name).find("OnCalendarTime") == std::string::npos) {
            text += definitionOf(measure).substr(5);
        }
    }
    return text +
           "\nFORMULA name:\"Formula\" expression:\"N:\\\"CycleTime\\\" / \\\"Frequency\\\"\" path-analysis "
           "volume-analysis wlstatic-analysis OBSERVED \"CycleTime\" OBSERVED \"Frequency\"";
}

void play(benchmark::State& state, const RunShape& shape, const std::string& definition) {
    BenchScenario scenario(shape, definition);
    AgentRun run(scenario);
    for (auto _ : state) {
        run.play();
        if (run.readResults() == 0) {
            state.SkipWithError("nothing was measured");
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(run.size()) * state.iterations());
}

void AllMeasures(benchmark::State& state) {
    play(state, {.events = 1'000'000, .analysis = static_cast<int>(state.range(0)), .workers = 50},
         definitionOfAll());
}
BENCHMARK(AllMeasures)->ArgName("analysis")->DenseRange(1, 3)->Unit(benchmark::kMillisecond);

/// One measure by the size of one thing: a thousand and a million.
void addSizes(const Measure& measure) {
    const auto add = [&](const char* what, auto&& shapeOf) {
        benchmark::RegisterBenchmark((std::string(measure.name) + "/" + what).c_str(),
                                     [measure, shapeOf](benchmark::State& state) {
                                         const auto shapeOfRun = [&](std::size_t count) {
                                             RunShape shape = shapeOf(count);
                                             shape.analysis = measure.analysis;
                                             shape.workers = 50;
                                             return shape;
                                         };
                                         BenchScenario small(shapeOfRun(1'000), definitionOf(measure));
                                         BenchScenario large(shapeOfRun(1'000'000), definitionOf(measure));
                                         compareRuns(state, small, large);
                                     })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(5);
    };
    static constexpr std::size_t Events = 5'000'000;
    static constexpr std::size_t EventsOfPass = 4;
    // Several instances, one after the other, for each that is alive, and several passes of every object.
    add("LiveInstances", [](std::size_t count) {
        constexpr std::size_t Passes = 4;
        return RunShape{.events = std::max(Events, 2 * count * (Passes * EventsOfPass + 2)),
                        .liveInstances = count,
                        .passes = Passes / 2,
                        .objects = 2};
    });
    add("Objects", [](std::size_t count) {
        return RunShape{.events = std::max(Events, 5 * count * EventsOfPass),
                        .liveInstances = 100,
                        .passes = 1,
                        .objects = count,
                        .objectsOfInstance = 5};
    });
    add("Passes", [](std::size_t count) {
        return RunShape{.events = Events, .liveInstances = 1, .passes = count, .objects = 1};
    });
    add("ThousandsOfEvents", [](std::size_t count) {
        return RunShape{.events = std::min<std::size_t>(count * 1'000, 50'000'000)};
    });
}

const bool added = [] {
    for (const Measure& measure : measures) {
        benchmark::RegisterBenchmark(
            (std::string(measure.name) + "/Alone").c_str(),
            [measure](benchmark::State& state) {
                play(state, {.events = 5'000'000, .analysis = measure.analysis, .workers = 50},
                     definitionOf(measure));
            })
            ->Unit(benchmark::kMillisecond);
        addSizes(measure);
    }
    return true;
}();

}  // namespace
