#include "apps/mero/replay_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include "apps/mero/event_recorder.h"
#include "apps/mero/progress_bar.h"
#include "apps/mero/repository_file.h"
#include "apps/mero/run_report.h"
#include "apps/mero/weekday_check.h"
#include "platform/engine/trace_replay.h"
#include "platform/interchange/xes_import.h"
#include "platform/interchange/xes_trace.h"

namespace mero {

namespace {

/// A recorded run of either form, of which a log in XES isn't held in memory.
class Recording {
public:
    static Result<std::unique_ptr<Recording>> open(const std::string& name, const Repository& repository,
                                                   const RunPlan& plan) {
        auto recording = std::make_unique<Recording>();
        if (!isXesFile(name)) {
            Result<EventTrace> trace = readEventTraceFile(name, repository, plan.environment);
            if (!trace) {
                return trace.error();
            }
            recording->trace = std::move(trace.value());
            return recording;
        }
        if (plan.models.size() != 1) {
            return Error{"--models: an event log is played in one model"};
        }
        recording->file.open(name, std::ios::binary);
        if (!recording->file) {
            return Error{name + ": can't be opened"};
        }
        recording->log.emplace(recording->file, name, repository, plan.models.front(), plan.environment);
        if (Result<void> prepared = recording->log->prepare(); !prepared) {
            return prepared.error();
        }
        return recording;
    }

    [[nodiscard]] std::size_t size() const { return log ? log->size() : trace.size(); }

    /// False if `progress` stopped it.
    Result<bool> play(ControlComponent& control, const ReplayProgress& progress) {
        return log ? playLog(control, progress) : replayTrace(trace, control, progress);
    }

private:
    Result<bool> playLog(ControlComponent& control, const ReplayProgress& progress) {
        constexpr std::size_t ProgressInterval = 1000;
        SimEvent event;
        for (std::size_t played = 0;; ++played) {
            const Result<bool> more = log->next(event);
            if (!more) {
                return more.error();
            }
            if (!more.value()) {
                return true;
            }
            if (played % ProgressInterval == 0 && !progress(played)) {
                return false;
            }
            control.send(event);
        }
    }

    EventTrace trace;
    std::ifstream file;
    std::optional<XesTrace> log;
};

}  // namespace

CLI::App* ReplayCommand::describe(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "replay",
        "Example:\n  mero replay shop.mero --events run.csv --models Order --analysis path\n\n"
        "Plays a recorded run to the agents and shows what they measure.");
    options.describe(*command);
    command
        ->add_option("--events", eventsFile,
                     "The recorded run: an event trace (CSV) or an event log (.xes, .xes.gz)")
        ->required()
        ->type_name("FILE");
    return command;
}

Result<void> ReplayCommand::run(Console& console) {
    if (Result<void> ready = options.plots.prepare(options.format == ResultFormat::Html, console); !ready) {
        return ready;
    }
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
    const auto recording = Recording::open(eventsFile, repository, plan.value());
    if (!recording) {
        return recording.error();
    }
    tellWrongWeekdays(repository, plan.value(), console);
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
        const std::size_t total = recording.value()->size();
        const Result<bool> whole = recording.value()->play(control, [&](std::size_t played) {
            progress.show(played, total);
            return console.interrupted == nullptr || !console.interrupted();
        });
        if (!whole) {
            return whole.error();
        }
        if (!whole.value()) {
            console.tell("interrupted: the results are of the events so far");
        }
    }
    timing.begin("results");
    const RunResults results = run.finish();
    if (Result<void> recorded = recorder.value()->finish(); !recorded) {
        return recorded;
    }
    RunDescription described = describeRun(options, plan.value(), repository);
    described.title =
        "replay of " + std::filesystem::path(eventsFile).filename().string() + " on " + modelsText(described);
    described.fingerprint = control.fingerprint();
    Result<void> printed = printResults(results, options, described, repository, console);
    if (options.timing) {
        timing.tell(control.eventCount(), console);
    }
    return printed;
}

}  // namespace mero
