#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mero {

/// What a definition text says of its sub-agents, for lists and reports.
struct SubAgentSection {
    std::string keyword;
    std::string name;
    std::string historyFile;  ///< empty without a history on disk
};

/// The sections of a text, in order; none if it can't be read.
[[nodiscard]] std::vector<SubAgentSection> sectionsOf(std::string_view definition);

/// The text without the words that ask for a history, in memory or on disk.
[[nodiscard]] std::string withoutHistories(std::string_view definition);

}  // namespace mero
