#include "apps/mero/replicated_simulation.h"

#include <optional>
#include <sstream>

#include "apps/mero/agent_definitions.h"
#include "apps/mero/measured_run.h"
#include "apps/mero/progress_bar.h"

namespace mero {

namespace {

/// Takes the histories out of the definitions of all agents.
void dropHistories(Repository& repository) {
    const Library& library = repository.library();
    for (const MeroId model : repository.modelIds()) {
        for (const MeroId id : repository.findModel(model)->objects) {
            const Object& agent = *repository.findObject(id);
            if (!library.findClass(agent.classId)->agent) {
                continue;
            }
            const Library::Attribute* const attribute = library.findAttribute(agent.classId, "Definition");
            const SV::String text = repository.textOf(agent, "Definition");
            const std::string without = withoutHistories(text.view());
            if (attribute != nullptr && without != text.view()) {
                // A shorter text is as good as the one that was there.
                static_cast<void>(repository.setValue(id, attribute->id, SV::String(without)));
            }
        }
    }
}

/// Lines that a console was told, without the name of the program.
std::vector<std::string> linesOf(const std::string& told) {
    constexpr std::string_view Begin = "mero: ";
    std::vector<std::string> lines;
    std::istringstream stream(told);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line.starts_with(Begin) ? line.substr(Begin.size()) : line);
    }
    return lines;
}

}  // namespace

ReplicationOutcome ReplicatedSimulation::replicate(std::uint64_t number) const {
    dropHistories(repository);
    std::ostringstream out;
    std::ostringstream told;
    const Console console{out, told};
    ControlComponent control;
    MeasuredRun run(repository, options, plan, console);
    run.start(control);
    RunSummary summary = simulation.run(control, {}, number);
    RunResults results = run.finish();
    ReplicationOutcome outcome;
    outcome.record = {number,          seedOfReplication(seed, number),
                      summary.started, summary.finished,
                      summary.dropped, summary.unfinished,
                      summary.events,  summary.fingerprint};
    outcome.reports = std::move(summary.reports);
    outcome.messages = linesOf(told.str());
    outcome.hasAgents = !results.document.agents.empty();
    outcome.tables = std::move(results.tables);
    return outcome;
}

Result<bool> ReplicatedSimulation::run(ReplicationTransport& transport, std::uint64_t count, std::size_t jobs,
                                       ReplicationSummary& summary, const Console& console) const {
    std::optional<Error> failure;
    std::uint64_t done = 0;
    ProgressBar progress(console, "simulating replications");
    ReplicationOrder order;
    order.count = count;
    order.jobs = jobs;
    order.work = [this](std::uint64_t number) { return bytesOf(replicate(number)); };
    order.take = [&](const FinishedReplication& finished) {
        Result<ReplicationOutcome> outcome = finished.outcome
                                                 ? readOutcome(finished.outcome.value())
                                                 : Result<ReplicationOutcome>(finished.outcome.error());
        if (!outcome) {
            failure = Error{"replication " + std::to_string(finished.number) + ": " + outcome.error().text};
            return false;
        }
        summary.add(std::move(outcome.value()));
        progress.show(++done, count);
        return true;
    };
    order.goesOn = [&] { return console.interrupted == nullptr || !console.interrupted(); };
    Result<bool> isFirst = transport.run(order);
    if (failure) {
        return *failure;
    }
    if (isFirst && isFirst.value() && summary.runs().empty()) {
        return Error{"interrupted before the first replication had finished"};
    }
    return isFirst;
}

}  // namespace mero
