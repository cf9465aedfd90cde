#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>

#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/agent_result_windows.h"
#include "component/display/graph_result_window.h"
#include "platform/repository/repository_services.h"
#include "platform/toolkit/qt/window_peer.h"

namespace {

constexpr int Million = 1'000'000;
constexpr int Tasks = 1'000;

using ResultSets = std::vector<std::unique_ptr<MeroAgentResultSet>>;

/// A model with calls and tasks, and results of measures on them.
class Results {
public:
    Results() {
        const auto& library = repository.library();
        const auto* const task = library.findClass(ClassCodeProcessLibrary, "Task");
        model = repository.addModel("Order", 0, mero::ModelAccess::Write, true).value();
        for (int number = 0; number < Tasks; ++number) {
            tasks.push_back(
                repository.addObject(model, task->id, SV::String("Task " + std::to_string(number))).value());
        }
        services = std::make_unique<mero::RepositoryServices>(repository);
    }

    /// `calls` times each task, by the path of the call.
    [[nodiscard]] ResultSets values(int measures, int calls) const {
        ResultSets sets;
        for (int number = 0; number < measures; ++number) {
            sets.push_back(makeSet(number % 2 == 0 ? ResultKindNumber : ResultKindTime,
                                   "Measure " + std::to_string(number)));
            for (int call = 0; call < calls; ++call) {
                for (const MeroId task : tasks) {
                    const MeroPath path{model, tasks[static_cast<std::size_t>(call)], task};
                    sets.back()->addValue({.objectId = task,
                                           .path = path,
                                           .itemKey = task,
                                           .value = call * 1.25 + task % 97,
                                           .sourceAgentType = 1});
                }
            }
        }
        return sets;
    }

    /// In memory, or in `file` if there is one.
    [[nodiscard]] ResultSets history(int points, const std::string& file = "") const {
        ResultSets sets;
        sets.push_back(makeSet(ResultKindNumber, "History"));
        if (file.empty()) {
            sets.back()->enableMemoryHistory(true);
        } else {
            sets.back()->enableDiskHistory(SV::String(file), "# History\n", true);
        }
        for (int point = 0; point < points; ++point) {
            sets.back()->addHistoryPoint(tasks.front(), tasks.front(),
                                         std::sin(point / 1000.0) + (point % 17) / 17.0, point);
        }
        return sets;
    }

private:
    static std::unique_ptr<MeroAgentResultSet> makeSet(MeroResultKind kind, const std::string& name) {
        return std::make_unique<MeroAgentResultSet>(kind, SV::String(name), ValueTypeSingle, true, 1,
                                                    ResultModeSum);
    }

    mero::Repository repository;
    std::unique_ptr<mero::RepositoryServices> services;
    MeroId model = MeroNoId;
    std::vector<MeroId> tasks;
};

std::vector<MeroAgentResultSet*> pointersTo(const ResultSets& sets) {
    std::vector<MeroAgentResultSet*> pointers;
    for (const auto& set : sets) {
        pointers.push_back(set.get());
    }
    return pointers;
}

MeroResultOptions withSummary() {
    MeroResultOptions options;
    options.sumChecked = true;
    return options;
}

/// Arguments: measures, calls of a thousand tasks.
void fillBrowser(benchmark::State& state) {
    const Results results;
    const ResultSets sets =
        results.values(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    MeroSuperAgent agent;
    MeroAgentResultWindows windows(agent);
    windows.setOptions(withSummary());
    for (auto _ : state) {
        auto objects = std::make_unique<MeroAgentBrowserObjects>();
        bool isEmpty = true;
        benchmark::DoNotOptimize(
            windows.fillBrowser(*objects, DisplayDetail, isEmpty, pointersTo(sets), 2.0));
        state.PauseTiming();
        objects.reset();
        state.ResumeTiming();
    }
    state.counters["cells"] =
        benchmark::Counter(static_cast<double>(state.iterations() * state.range(0) * state.range(1) * Tasks),
                           benchmark::Counter::kIsRate);
}
BENCHMARK(fillBrowser)->Args({10, 100})->Args({1, 1000})->Unit(benchmark::kMillisecond);

/// From a filled table of a million rows to the first picture of its window.
void openTable(benchmark::State& state) {
    const Results results;
    const ResultSets sets = results.values(1, 1000);
    MeroSuperAgent agent;
    MeroAgentResultWindows windows(agent);
    for (auto _ : state) {
        state.PauseTiming();
        auto objects = std::make_unique<MeroAgentBrowserObjects>();
        bool isEmpty = true;
        windows.fillBrowser(*objects, DisplayDetail, isEmpty, pointersTo(sets), 1.0);
        state.ResumeTiming();
        auto window = std::make_unique<MeroAgentBrowserWindow>(
            nullptr, windows, MeroResultView{"Values", DisplayDetail, 1.0, {}}, "Results",
            std::move(objects));
        window->Show();
        benchmark::DoNotOptimize(mero::qt::widgetOf(window.get())->grab());
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(openTable)->Unit(benchmark::kMillisecond);

/// A click on a button that expands all of it.
void expandTable(benchmark::State& state) {
    const Results results;
    const ResultSets sets = results.values(1, 1000);
    MeroSuperAgent agent;
    MeroAgentResultWindows windows(agent);
    windows.showResult(nullptr, pointersTo(sets), "Values", DisplayDetail, 1.0, {});
    MeroAgentBrowserWindow& window = *windows.getBrowserWindows().front();
    for (auto _ : state) {
        window.getObjects().expandAll();
        benchmark::DoNotOptimize(mero::qt::widgetOf(&window)->grab());
        window.getObjects().shrinkAll();
    }
}
BENCHMARK(expandTable)->Unit(benchmark::kMillisecond);

/// A text that no row holds.
void searchTable(benchmark::State& state) {
    const Results results;
    const ResultSets sets = results.values(1, 1000);
    MeroSuperAgent agent;
    MeroAgentResultWindows windows(agent);
    MeroAgentBrowserObjects objects;
    bool isEmpty = true;
    windows.fillBrowser(objects, DisplayDetail, isEmpty, pointersTo(sets), 1.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(objects.findText("nowhere", 0));
    }
}
BENCHMARK(searchTable)->Unit(benchmark::kMillisecond);

/// From a history in memory to the first picture of its curve.
void openGraph(benchmark::State& state) {
    const Results results;
    const ResultSets sets = results.history(static_cast<int>(state.range(0)));
    MeroSuperAgent agent;
    for (auto _ : state) {
        MeroAgentResultWindows windows(agent);
        windows.showResult(nullptr, pointersTo(sets), "Values", DisplayHistory, 1.0, {});
        benchmark::DoNotOptimize(mero::qt::widgetOf(windows.getGraphWindow())->grab());
    }
}
BENCHMARK(openGraph)->Arg(Million)->Arg(10 * Million)->Unit(benchmark::kMillisecond);

void openGraphOfFile(benchmark::State& state) {
    const Results results;
    const auto file = std::filesystem::temp_directory_path() / "mero_bench.hist";
    const ResultSets sets = results.history(static_cast<int>(state.range(0)), file.string());
    MeroSuperAgent agent;
    for (auto _ : state) {
        MeroAgentResultWindows windows(agent);
        windows.showResult(nullptr, pointersTo(sets), "Values", DisplayHistory, 1.0, {});
        benchmark::DoNotOptimize(mero::qt::widgetOf(windows.getGraphWindow())->grab());
    }
    std::filesystem::remove(file);
}
BENCHMARK(openGraphOfFile)->Arg(Million)->Unit(benchmark::kMillisecond);

/// The legend's choice of the one curve, as often as the user likes.
void showCurve(benchmark::State& state) {
    const Results results;
    const ResultSets sets = results.history(static_cast<int>(state.range(0)));
    MeroSuperAgent agent;
    MeroAgentResultWindows windows(agent);
    windows.showResult(nullptr, pointersTo(sets), "Values", DisplayHistory, 1.0, {});
    for (auto _ : state) {
        windows.getGraphWindow()->getLegend().userSelect(0);
        benchmark::DoNotOptimize(mero::qt::widgetOf(windows.getGraphWindow())->grab());
    }
}
BENCHMARK(showCurve)->Arg(10 * Million)->Unit(benchmark::kMillisecond);

}  // namespace
