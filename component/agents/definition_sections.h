#pragma once

#include "component/host/kiln_parser.h"

#include "component/management/general_services.h"

/// True if the parser stands on a super agent's own section.
[[nodiscard]] inline bool isSuperAgentSection(const MeroKilnParser& parser) {
    return isSuperAgentType(getTypeOfKeyword(parser.GetKeyword()));
}

/// True for a section of a sub-agent, also of an unknown one.
[[nodiscard]] inline bool isSubAgentSection(const MeroKilnParser& parser) {
    return !isSuperAgentSection(parser) && parser.GetKeyword() != MeroObservedKeyword;
}
