#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/result_table.h"
#include "platform/support/result.h"

namespace mero {

/// All that one replication tells the process that gathers them.
struct ReplicationOutcome {
    RunRecord record;
    std::map<std::string, std::uint64_t>
        reports;                        ///< oddities of the run with the instances they happened to
    std::vector<std::string> messages;  ///< lines for the user
    bool hasAgents = false;
    std::vector<ResultTable> tables;
};

/// The outcome as bytes that any machine reads back to the same values, bit for bit.
[[nodiscard]] std::string bytesOf(const ReplicationOutcome& outcome);
[[nodiscard]] Result<ReplicationOutcome> readOutcome(std::string_view bytes);

}  // namespace mero
