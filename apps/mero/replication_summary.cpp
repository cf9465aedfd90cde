#include "apps/mero/replication_summary.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/toolkit/mixing.h"

namespace mero {

namespace {

std::string namesOf(const std::vector<std::uint64_t>& numbers, std::size_t count) {
    constexpr std::size_t MostNamed = 10;
    if (numbers.size() == count) {
        return count == 1 ? "in replication 1" : fmt::format("in all {} replications", count);
    }
    if (numbers.size() > MostNamed) {
        return fmt::format("in {} replications, {} the first", numbers.size(), numbers.front());
    }
    return fmt::format("in replication{} {}", numbers.size() == 1 ? "" : "s", fmt::join(numbers, ", "));
}

}  // namespace

void ReplicationSummary::add(ReplicationOutcome outcome) {
    const std::uint64_t number = outcome.record.replication;
    waiting.emplace(number, std::move(outcome));
    while (!waiting.empty() && waiting.begin()->first == records.size() + 1) {
        fold(waiting.begin()->second);
        waiting.erase(waiting.begin());
    }
}

void ReplicationSummary::fold(ReplicationOutcome& outcome) {
    const RunRecord& record = outcome.record;
    records.push_back(record);
    sums.started += record.started;
    sums.finished += record.finished;
    sums.dropped += record.dropped;
    sums.unfinished += record.unfinished;
    sums.events += record.events;
    sums.fingerprint = mixBits(sums.fingerprint ^ record.fingerprint);
    for (const auto& [report, count] : outcome.reports) {
        sums.reports[report] += count;
    }
    for (std::string& message : outcome.messages) {
        auto known = std::find_if(messages.begin(), messages.end(),
                                  [&](const auto& entry) { return entry.first == message; });
        if (known == messages.end()) {
            known = messages.emplace(messages.end(), std::move(message), std::vector<std::uint64_t>());
        }
        if (known->second.empty() || known->second.back() != record.replication) {
            known->second.push_back(record.replication);
        }
    }
    agentsSeen = agentsSeen || outcome.hasAgents;
    folded.add(outcome.tables);
}

void ReplicationSummary::tellMessages(const Console& console) const {
    for (const auto& [message, numbers] : messages) {
        console.tell(message + " (" + namesOf(numbers, records.size()) + ")");
    }
}

}  // namespace mero
