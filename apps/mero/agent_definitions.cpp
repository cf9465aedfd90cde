#include "apps/mero/agent_definitions.h"

#include <algorithm>
#include <cctype>

#include "component/host/kiln_parser.h"

#include "component/management/general_services.h"

namespace mero {

namespace {

bool isWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '-' || character == '_';
}

/// End of the string, the word or the single other character that begins at `place`.
std::size_t endOfPiece(std::string_view text, std::size_t place) {
    std::size_t end = place + 1;
    if (text[place] == '"') {
        while (end < text.size() && text[end] != '"') {
            end += text[end] == '\\' ? 2 : 1;
        }
        return std::min(end + 1, text.size());
    }
    if (isWordCharacter(text[place])) {
        while (end < text.size() && isWordCharacter(text[end])) {
            ++end;
        }
    }
    return end;
}

}  // namespace

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

std::string withoutHistories(std::string_view definition) {
    std::string text;
    for (std::size_t place = 0; place < definition.size();) {
        const std::size_t end = endOfPiece(definition, place);
        const std::string_view piece = definition.substr(place, end - place);
        if (piece != "history-mem" && piece != "history-disk") {
            text += piece;
        }
        place = end;
    }
    return text;
}

}  // namespace mero
