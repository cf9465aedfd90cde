#include "apps/mero/agent_definitions.h"

#include "component/host/kiln_parser.h"

#include "component/management/general_services.h"

namespace mero {

std::vector<SubAgentSection> sectionsOf(std::string_view definition) {
    std::vector<SubAgentSection> sections;
    MeroKilnParser parser(SV::String(definition), SV::String("definition"), SV::String());
    if (parser.Parse() != 0) {
        return sections;
    }
    for (int index = 0; index < parser.GetElemCount(); ++index) {
        parser.SetCurElemIndex(index);
        if (!isAgentKeyword(parser.GetKeyword(), false)) {
            continue;
        }
        SubAgentSection section{
            std::string(parser.GetKeyword().view()), std::string(parser.GetStrValue("name").view()), {}};
        if (parser.IsContained("history-disk")) {
            section.historyFile = parser.GetStrValue("history-file").view();
        }
        sections.push_back(std::move(section));
    }
    return sections;
}

}  // namespace mero
