#include "component/host/basic_services.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/definition_sections.h"
#include "component/agents/super_agent.h"
#include "component/management/general_services.h"

namespace {

constexpr char ModuleName[] = "aeagents";

constexpr SV::ResId MessageUnknownSection(0x20051AF);
constexpr SV::ResId LabelDefinition(0x2000921);

}  // namespace

int MeroSuperAgent::makeParser(const SV::String& text, std::unique_ptr<MeroKilnParser>& parser) {
    SV::String attributeName;
    SV::String agentName;
    int status = StatusOk;
    if (instanceId != MeroNoId) {
        status = getAttributeNameText(attributeOf(TextRole::Definition), attributeName);
        const int nameStatus = getName(agentName);
        status = status == StatusOk ? nameStatus : status;
    }
    parser = std::make_unique<MeroKilnParser>(text, attributeName, agentName);
    return status;
}

int MeroSuperAgent::readDefinition(MeroKilnParser* parser) {
    if (parser == nullptr || !isSuperAgentSection(*parser)) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    definitionChanged = true;
    definitionUnread = false;
    settings.read(*parser);
    analyses = readAnalysisKeywords(*parser);
    if (!analyses.any()) {
        analyses = {.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true};
    }
    if (instanceId == MeroNoId) {
        return StatusOk;
    }
    SV::String text;
    getOwnDefinitionText(text);
    const int status = appendSections(*parser, parser->GetCurElemIndex() + 1, text);
    if (status != StatusOk) {
        return status;
    }
    if (text.CountCodePoints() > MeroDefinitionLimit) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusTextTooLong;
    }
    return storeDefinition(text);
}

int MeroSuperAgent::appendSections(MeroKilnParser& parser, int first, SV::String& text) {
    int result = StatusOk;
    for (int index = first; parser.SetCurElemIndex(index) && !isSuperAgentSection(parser); ++index) {
        if (!isSubAgentSection(parser)) {
            continue;
        }
        const SV::String keyword = parser.GetKeyword();
        if (!isAgentKeyword(keyword, false)) {
            showErrorBox(SV::String(MessageUnknownSection) + "\"" + keyword + "\"");
            continue;
        }
        int status = StatusOk;
        const auto agent = createSubAgent(getTypeOfKeyword(keyword), modelId, this, status);
        if (agent == nullptr) {
            displayErrorMessage(ModuleName, __LINE__);
            result = status == StatusRepositoryError ? status : result;
            continue;
        }
        agent->readDefinition(&parser);
        agent->restrictAnalyses(analyses);
        SV::String section;
        text += "\n" + agent->getDefinitionText(section);
    }
    return result;
}

int MeroSuperAgent::readDefinitionText(const SV::String& text) {
    std::unique_ptr<MeroKilnParser> parser;
    makeParser(text, parser);
    if (parser->Parse() != 0) {
        showParseError(*parser);
        return StatusBadDefinition;
    }
    parser->SetCurElemIndex(0);
    return readDefinition(parser.get());
}

SV::String& MeroSuperAgent::getOwnDefinitionText(SV::String& text) {
    text = getKeywordOfType(AgentTypeSuper);
    appendAnalysisKeywords(text, analyses, "\n");
    settings.append(text);
    return text;
}

SV::String& MeroSuperAgent::getDefinitionText(SV::String& text) {
    if (instanceId == MeroNoId) {
        return getOwnDefinitionText(text);
    }
    text = {};
    SV::String stored;
    SV::String name;
    if (definitionUnread || readText(TextRole::Definition, stored) != StatusOk || getName(name) != StatusOk) {
        return text;
    }
    MeroKilnParser parser(stored, SV::String(LabelDefinition), name);
    if (parser.Parse() != 0) {
        showParseError(parser);
        return text;
    }
    int first = 0;
    if (parser.SetCurElemIndex(0) && isSuperAgentSection(parser)) {
        getOwnDefinitionText(text);
        first = 1;
    }
    if (appendSections(parser, first, text) != StatusOk) {
        text = {};
    }
    return text;
}

int MeroSuperAgent::getSubAgentNames(std::vector<SV::String>& names, bool onlyWithResult) {
    SV::String text;
    if (instanceId != MeroNoId && readText(TextRole::Definition, text) != StatusOk) {
        return StatusRefused;
    }
    makeParser(text, runParser);
    if (runParser->Parse() != 0) {
        showParseError(*runParser);
        return StatusRefused;
    }
    for (int index = 0; runParser->SetCurElemIndex(index); ++index) {
        if (!isSubAgentSection(*runParser)) {
            continue;
        }
        if (!runParser->IsContained("name")) {
            displayErrorMessage(ModuleName, __LINE__);
            return StatusRefused;
        }
        if (!onlyWithResult || !runParser->IsContained("dont-show-result")) {
            names.push_back(runParser->GetStrValue("name"));
        }
    }
    return StatusOk;
}
