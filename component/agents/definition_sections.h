#pragma once

#include "component/host/kiln_parser.h"

/// True if the parser stands on a super agent's own section.
[[nodiscard]] bool isSuperAgentSection(const MeroKilnParser& parser);

/// True for a section of a sub-agent, also of an unknown one.
[[nodiscard]] bool isSubAgentSection(const MeroKilnParser& parser);
