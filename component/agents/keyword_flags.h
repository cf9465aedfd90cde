#pragma once

#include <span>

#include "component/host/kiln_parser.h"
#include "component/host/sv_string.h"

/// A keyword of a definition text that stands for a flag of an agent. Reading and writing go by the same
/// table.
template <class Agent>
struct MeroKeywordFlag {
    const char* keyword;
    bool Agent::*field;
    bool whenContained;  ///< value of the field while the text holds the keyword
};

template <class Agent>
void readKeywordFlags(const MeroKilnParser& parser, Agent& agent,
                      std::span<const MeroKeywordFlag<Agent>> table) {
    for (const auto& [keyword, field, whenContained] : table) {
        agent.*field = parser.IsContained(keyword) == whenContained;
    }
}

/// A line for each keyword that the agent's text holds, each beginning with `lineStart`.
template <class Agent>
void appendKeywordFlags(SV::String& text, const Agent& agent, std::span<const MeroKeywordFlag<Agent>> table,
                        const SV::String& lineStart) {
    for (const auto& [keyword, field, whenContained] : table) {
        if (agent.*field == whenContained) {
            text += lineStart + keyword;
        }
    }
}

/// Begins each line of a sub-agent's section.
inline constexpr const char* MeroSectionLineStart = "\n ";
