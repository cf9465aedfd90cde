#include "component/agents/definition_sections.h"

#include "component/management/general_services.h"

bool isSuperAgentSection(const MeroKilnParser& parser) {
    return isSuperAgentType(getTypeOfKeyword(parser.GetKeyword()));
}

bool isSubAgentSection(const MeroKilnParser& parser) {
    return !isSuperAgentSection(parser) && parser.GetKeyword() != MeroObservedKeyword;
}
