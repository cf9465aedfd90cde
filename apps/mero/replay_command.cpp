#include "apps/mero/replay_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>

#include "apps/mero/event_recorder.h"
#include "apps/mero/progress_bar.h"
#include "apps/mero/repository_file.h"
#include "apps/mero/run_report.h"
#include "platform/engine/trace_replay.h"

namespace mero {

CLI::App* ReplayCommand::describe(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "replay",
        "Example:\n  mero replay shop.mero --events run.csv --models Order --analysis path\n\n"
        "Plays a recorded run to the agents and shows what they measure.");
    options.describe(*command, RunOptions::Analyses::All);
    command->add_option("--events", eventsFile, "The recorded run: an event trace (CSV)")
        ->required()
        ->type_name("FILE");
    return command;
}

Result<void> ReplayCommand::run(Console& console) {
    RunTiming timing;
    timing.begin("load");
    const auto file = RepositoryFile::open(options.repositoryFile, RepositoryFile::Use::Read);
    if (!file) {
        return file.error();
    }
    Repository& repository = file.value()->repository();
    const Result<RunPlan> plan = planRun(options, repository);
    if (!plan) {
        return plan.error();
    }
    const Result<EventTrace> trace = readEventTraceFile(eventsFile, repository, plan.value().environment);
    if (!trace) {
        return trace.error();
    }
    ControlComponent control;
    auto recorder = EventRecorder::open(options.recordFile, repository, plan.value().environment, control);
    if (!recorder) {
        return recorder.error();
    }

    timing.begin("run");
    MeasuredRun run(repository, options, plan.value(), console);
    run.start(control);
    {
        ProgressBar progress(console, "replaying events");
        const std::size_t total = trace.value().size();
        if (!replayTrace(trace.value(), control, [&](std::size_t played) {
                progress.show(played, total);
                return console.interrupted == nullptr || !console.interrupted();
            })) {
            console.tell("interrupted: the results are of the events so far");
        }
    }
    timing.begin("results");
    const RunResults results = run.finish();
    if (Result<void> recorded = recorder.value()->finish(); !recorded) {
        return recorded;
    }
    printResults(results, options, "replay of " + std::filesystem::path(eventsFile).filename().string(),
                 console);
    if (options.timing) {
        timing.tell(control.eventCount(), console);
    }
    return {};
}

}  // namespace mero
