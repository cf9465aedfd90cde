#include "apps/mero/simulate_command.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "component/host/core_time.h"
#include "component/host/core_variables.h"

#include "apps/mero/event_recorder.h"
#include "apps/mero/progress_bar.h"
#include "apps/mero/repository_file.h"
#include "apps/mero/run_report.h"
#include "apps/mero/run_settings.h"
#include "platform/engine/simulation.h"

namespace mero {

namespace {

void tellSummary(const RunSummary& summary, const Console& console) {
    console.tell(fmt::format(
        "{} instances started, {} finished, {} dropped, {} unfinished; {} events, fingerprint {:016x}",
        summary.started, summary.finished, summary.dropped, summary.unfinished, summary.events,
        summary.fingerprint));
    for (const auto& [report, count] : summary.reports) {
        console.tell(fmt::format("{} ({} {})", report, count, count == 1 ? "time" : "times"));
    }
    if (summary.cancelled) {
        console.tell("interrupted: the results are of the instances so far");
    }
}

/// A process without an end event isn't wrong, but it may be unfinished work of the modeller.
void tellMissingEnds(const Repository& repository, const std::vector<MeroId>& models,
                     const Console& console) {
    const MeroId endEvent = repository.library().coreVariable(CoreEndEvent);
    for (const MeroId model : models) {
        if (!repository.findModel(model)->objects.empty() &&
            repository.objectsOfClass(model, endEvent).empty()) {
            console.tell(
                fmt::format("model \"{}\" has no end event: an instance ends when nothing is left to do",
                            repository.findModel(model)->name.view()));
        }
    }
}

/// The time text has been checked.
std::int64_t secondsOf(const std::string& timeText, const RunOptions& options) {
    MeroCoreTime time(0.0, options.daysPerYear, options.hoursPerDay);
    return static_cast<std::int64_t>(time._s2d(SV::String(timeText)));
}

}  // namespace

CLI::App* SimulateCommand::describe(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "simulate",
        "Example:\n  mero simulate shop.mero --models Order --instances 1000 --seed 7\n\n"
        "Simulates processes and shows what their agents measure. The same seed gives the same run.");
    options.describe(*command);
    command->add_option("--instances", instances, "Process instances of each main model")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1'000'000'000'000}).description(""))
        ->type_name("N");
    command->add_option("--until", until, "End of the run at the latest, YY:DDD:HH:MM:SS behind its start")
        ->type_name("TIME");
    command
        ->add_option(
            "--warm-up", warmUp,
            "The results begin with this time of a static work load, YY:DDD:HH:MM:SS behind its start")
        ->type_name("TIME");
    command->add_option("--seed", seed, "Begin of the random numbers")->capture_default_str()->type_name("N");
    return command;
}

Result<void> SimulateCommand::checkUsage() const {
    if (instances == 0 && until.empty()) {
        return Error{"the run has no end: --instances or --until is missing"};
    }
    if (!until.empty() && !MeroCoreTime::isTime(SV::String(until))) {
        return Error{"--until: \"" + until + "\" isn't a time YY:DDD:HH:MM:SS"};
    }
    if (!warmUp.empty() && !MeroCoreTime::isTime(SV::String(warmUp))) {
        return Error{"--warm-up: \"" + warmUp + "\" isn't a time YY:DDD:HH:MM:SS"};
    }
    return options.check();
}

RunDescription SimulateCommand::descriptionOf(const RunSummary& summary, const RunPlan& plan,
                                              const Repository& repository) const {
    RunDescription run = describeRun(options, plan, repository);
    run.title = fmt::format("simulation of {}, {} instances, seed {}", fmt::join(run.models, ", "),
                            summary.started, seed);
    run.isSimulation = true;
    run.seed = seed;
    run.fingerprint = summary.fingerprint;
    return run;
}

Result<void> SimulateCommand::run(Console& console) {
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
    SimulationSettings settings;
    settings.analysis = static_cast<Analysis>(options.analysis);
    settings.models = plan.value().models;
    settings.environment = plan.value().environment;
    settings.instances = instances;
    settings.seed = seed;
    settings.timeBase = {options.daysPerYear, options.hoursPerDay};
    if (!until.empty()) {
        settings.until = secondsOf(until, options);
    }
    if (!warmUp.empty()) {
        settings.warmUp = secondsOf(warmUp, options);
    }
    if (plan.value().start) {
        settings.startOffset = secondsOfYear(*plan.value().start);
    }
    const Result<Simulation> simulation = Simulation::prepare(repository, settings);
    if (!simulation) {
        return simulation.error();
    }
    tellMissingEnds(repository, settings.models, console);
    for (const std::string& problem : simulation.value().problems()) {
        console.tell(problem);
    }
    ControlComponent control;
    auto recorder = EventRecorder::open(options.recordFile, repository, plan.value().environment, control);
    if (!recorder) {
        return recorder.error();
    }

    timing.begin("run");
    MeasuredRun run(repository, options, plan.value(), console);
    run.start(control);
    RunSummary summary;
    {
        ProgressBar progress(console, "simulating instances");
        const std::uint64_t total = instances * settings.models.size();
        summary = simulation.value().run(control, [&](std::uint64_t started, std::int64_t) {
            progress.show(started, total);
            return console.interrupted == nullptr || !console.interrupted();
        });
    }
    timing.begin("results");
    const RunResults results = run.finish();
    if (Result<void> recorded = recorder.value()->finish(); !recorded) {
        return recorded;
    }
    printResults(results, options, descriptionOf(summary, plan.value(), repository), console);
    tellSummary(summary, console);
    if (!options.recordFile.empty()) {
        console.tell("events written to " + options.recordFile);
    }
    if (options.timing) {
        timing.tell(control.eventCount(), console);
    }
    return {};
}

}  // namespace mero
