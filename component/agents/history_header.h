#pragma once

#include "component/host/sv_string.h"
#include "component/host/types.h"

/// Longest stretch of a header line, in bytes, without the "# " in front.
inline constexpr std::size_t HistoryHeaderWidth = 100;

/// Comment lines at the head of a history file: agent, super agent, model, date and time, each line beginning
/// with "# " and ending with a line break.
[[nodiscard]] SV::String makeHistoryHeader(const SV::String& agentName, MeroId modelId,
                                           const SV::String& superAgentName);
/// Breaks every stretch between two line breaks that is longer than the width, the one behind the last line
/// break excepted, and puts "# " before each line.
[[nodiscard]] SV::String wrapAsComment(const SV::String& text);
