#include "apps/mero/simulate_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <thread>

#include "component/host/core_time.h"
#include "component/host/core_variables.h"

#include "apps/mero/event_recorder.h"
#include "apps/mero/progress_bar.h"
#include "apps/mero/replicated_simulation.h"
#include "apps/mero/run_settings.h"
#include "apps/mero/weekday_check.h"

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
    command
        ->add_option("--replications", replications,
                     "Repeats the run with so many independent seeds derived from --seed, and gives mean, "
                     "standard deviation and 95 % confidence interval of every value")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{10'000'000}).description(""))
        ->type_name("N");
    command
        ->add_option("--jobs", jobs,
                     transport != nullptr ? "Replications at once in each rank (1)"
                                          : "Replications at once (as many as there are processors)")
        ->check(CLI::Range(std::size_t{1}, std::size_t{4096}).description(""))
        ->type_name("J");
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
    if (Result<void> usable = checkReplications(); !usable) {
        return usable;
    }
    return options.check();
}

Result<void> SimulateCommand::checkReplications() const {
    if (replications == 0 && transport != nullptr) {
        return Error{"--replications is missing: this program shares out replications"};
    }
    if (replications == 0 && jobs != 0) {
        return Error{"--jobs belongs to --replications, which is missing"};
    }
    if (replications != 0 && !options.recordFile.empty()) {
        return Error{"--record-events records one run: leave out --replications, or give the seed of one"};
    }
    return {};
}

SimulationSettings SimulateCommand::settingsOf(const RunPlan& plan) const {
    SimulationSettings settings;
    settings.analysis = static_cast<Analysis>(options.analysis);
    settings.models = plan.models;
    settings.environment = plan.environment;
    settings.instances = instances;
    settings.seed = seed;
    settings.timeBase = {options.daysPerYear, options.hoursPerDay};
    if (!until.empty()) {
        settings.until = secondsOf(until, options);
    }
    if (!warmUp.empty()) {
        settings.warmUp = secondsOf(warmUp, options);
    }
    if (plan.start) {
        settings.startOffset = secondsOfYear(*plan.start);
    }
    return settings;
}

Result<SimulateCommand::Prepared> SimulateCommand::prepare(const Console& console) const {
    auto file = RepositoryFile::open(options.repositoryFile, RepositoryFile::Use::Read);
    if (!file) {
        return file.error();
    }
    Repository& repository = file.value()->repository();
    Result<RunPlan> plan = planRun(options, repository);
    if (!plan) {
        return plan.error();
    }
    Result<Simulation> simulation = Simulation::prepare(repository, settingsOf(plan.value()));
    if (!simulation) {
        return simulation.error();
    }
    tellMissingEnds(repository, plan.value().models, console);
    tellWrongWeekdays(repository, plan.value(), console);
    for (const std::string& problem : simulation.value().problems()) {
        console.tell(problem);
    }
    return Prepared{std::move(file.value()), std::move(plan.value()), std::move(simulation.value())};
}

RunDescription SimulateCommand::describeSimulation(const Prepared& prepared,
                                                   const RunSummary& summary) const {
    RunDescription run = describeRun(options, prepared.plan, prepared.file->repository());
    run.title = fmt::format("simulation of {}, {}{} instances, seed {}", modelsText(run),
                            replications == 0 ? "" : fmt::format("{} replications, ", replications),
                            summary.started, seed);
    run.isSimulation = true;
    run.seed = seed;
    run.fingerprint = summary.fingerprint;
    return run;
}

Result<void> SimulateCommand::run(Console& console) {
    options.isReplicated = replications != 0;
    if (Result<void> ready = options.plots.prepare(options.format == ResultFormat::Html, console); !ready) {
        return ready;
    }
    RunTiming timing;
    timing.begin("load");
    const Result<Prepared> prepared = prepare(console);
    if (!prepared) {
        return prepared.error();
    }
    return options.isReplicated ? runReplications(prepared.value(), timing, console)
                                : runOnce(prepared.value(), timing, console);
}

Result<void> SimulateCommand::runOnce(const Prepared& prepared, RunTiming& timing,
                                      const Console& console) const {
    Repository& repository = prepared.file->repository();
    ControlComponent control;
    auto recorder = EventRecorder::open(options.recordFile, repository, prepared.plan.environment, control);
    if (!recorder) {
        return recorder.error();
    }
    timing.begin("run");
    MeasuredRun run(repository, options, prepared.plan, console);
    run.start(control);
    RunSummary summary;
    {
        ProgressBar progress(console, "simulating instances");
        const std::uint64_t total = instances * prepared.plan.models.size();
        summary = prepared.simulation.run(control, [&](std::uint64_t started, std::int64_t) {
            progress.show(started, total);
            return console.interrupted == nullptr || !console.interrupted();
        });
    }
    timing.begin("results");
    const RunResults results = run.finish();
    if (Result<void> recorded = recorder.value()->finish(); !recorded) {
        return recorded;
    }
    Result<void> printed =
        printResults(results, options, describeSimulation(prepared, summary), repository, console);
    tellSummary(summary, console);
    if (!options.recordFile.empty()) {
        console.tell("events written to " + options.recordFile);
    }
    if (options.timing) {
        timing.tell(control.eventCount(), console);
    }
    return printed;
}

std::size_t SimulateCommand::jobCount() const {
    if (jobs != 0) {
        return jobs;
    }
    return transport != nullptr ? 1 : std::max(1U, std::thread::hardware_concurrency());
}

Result<void> SimulateCommand::runReplications(const Prepared& prepared, RunTiming& timing,
                                              const Console& console) const {
    timing.begin("run");
    ReplicationSummary summary(RunDescription().confidence);
    const ReplicatedSimulation replicated(prepared.file->repository(), prepared.simulation, options,
                                          prepared.plan, seed);
    LocalReplications local;
    const Result<bool> done =
        replicated.run(transport != nullptr ? *transport : local, replications, jobCount(), summary, console);
    if (!done) {
        return done.error();
    }
    if (!done.value()) {
        return {};
    }
    timing.begin("results");
    RunDescription run = describeSimulation(prepared, summary.totals());
    run.isReplicated = true;
    run.runs = summary.runs();
    Result<void> printed = printReplications(summary.tables(), summary.hasAgents(), options, run,
                                             prepared.file->repository(), console);
    summary.tellMessages(console);
    if (summary.runs().size() < replications) {
        console.tell(
            fmt::format("interrupted: the results are of the first {} replications", summary.runs().size()));
    }
    tellSummary(summary.totals(), console);
    if (options.timing) {
        timing.tell(summary.totals().events, console);
    }
    return printed;
}

}  // namespace mero
