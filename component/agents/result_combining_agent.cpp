#include "component/agents/result_combining_agent.h"

#include <algorithm>
#include <array>

#include "component/host/basic_services.h"

#include "component/agents/keyword_flags.h"
#include "component/agents/super_agent.h"
#include "component/management/general_services.h"

namespace {

constexpr SV::ResId MissingInput{0x20051AE};

}  // namespace

// Inputs

bool MeroResultCombiningAgent::acceptsInputType(int type) const {
    return type != AgentTypeSuper && !isCombiningType(type);
}

bool MeroResultCombiningAgent::acceptsAgentTypeKeyword(const SV::String& keyword) const {
    return acceptsInputType(getTypeOfKeyword(keyword));
}

bool MeroResultCombiningAgent::setOwner(MeroSuperAgent* owner) {
    if (owner != nullptr) {
        ownerSuperAgent = owner;
    }
    return owner != nullptr;
}

bool MeroResultCombiningAgent::getInputNames(std::vector<SV::String>& names) const {
    if (inputNames.empty()) {
        return false;
    }
    names = inputNames;
    return true;
}

bool MeroResultCombiningAgent::resolveInputs(int& count) {
    inputAgents.clear();
    for (const SV::String& inputName : inputNames) {
        MeroAtomarAgent* const input = ownerSuperAgent->findSubAgentByName(inputName);
        if (input != nullptr && acceptsInputType(input->getAgentType())) {
            inputAgents.push_back(input);
        } else {
            showErrorBox(SV::String(MissingInput) + name + ": \"" + inputName + "\"\n\n");
        }
    }
    count = static_cast<int>(inputAgents.size());
    return inputAgents.size() == inputNames.size();
}

bool MeroResultCombiningAgent::canLimitByRelation() {
    return std::ranges::any_of(inputAgents,
                               [](MeroAtomarAgent* input) { return input->canLimitByRelation(); });
}

bool MeroResultCombiningAgent::isEqualToDefinition([[maybe_unused]] const MeroKilnParser& parser) {
    displayErrorMessage("aeagents", __LINE__);
    return false;
}

// Definition

int MeroResultCombiningAgent::readInputNames(MeroKilnParser* parser, int headStatus) {
    if (headStatus == StatusRefused || headStatus == StatusWrongSection) {
        return headStatus;
    }
    inputNames.clear();
    const int section = parser->GetCurElemIndex();
    int status = StatusOk;
    for (int index = section + 1; status == StatusOk && index < parser->GetElemCount(); ++index) {
        parser->SetCurElemIndex(index);
        if (parser->GetKeyword() != MeroObservedKeyword) {
            break;
        }
        const SV::String inputName = parser->GetStrValue();
        if (inputName.IsEmpty()) {
            status = showStatusMessage(StatusBadDefinition);
        } else {
            inputNames.push_back(inputName);
        }
    }
    parser->SetCurElemIndex(section);
    return headStatus != StatusOk ? headStatus : status;
}

void MeroResultCombiningAgent::appendInputs(SV::String& text) const {
    for (const SV::String& inputName : inputNames) {
        text +=
            SV::String("\n ") + MeroObservedKeyword + " " + MeroKilnParser::GetKilnTextOfStrValue(inputName);
    }
}

int MeroStaticResultCombiningAgent::readDefinition(MeroKilnParser* parser) {
    const int status = readNameAndType(parser);
    if (status == StatusOk) {
        readNameOptions(*parser);
        readDisplayOptions(*parser);
        historyMemVisible = !parser->IsContained("hide-history-mem");
        historyDiskVisible = !parser->IsContained("hide-history-disk");
        readAnalyses(*parser);
    }
    return readInputNames(parser, status);
}

SV::String& MeroStaticResultCombiningAgent::getDefinitionText(SV::String& text) {
    text = getKeywordOfType(getAgentType());
    text += "\n name:" + MeroKilnParser::GetKilnTextOfStrValue(name);
    appendNameOptions(text);
    appendResultDisplay(text);
    text += "\n hide-history-mem\n hide-history-disk\n dont-show-history\n hide-show-history";
    appendAnalysisKeywords(text, analyses, MeroSectionLineStart);
    if (hideAlgorithms) {
        text += "\n hide-algorithms";
    }
    return text;
}

MeroDynamicResultCombiningAgent::MeroDynamicResultCombiningAgent() {
    MeroDynamicResultCombiningAgent::registerObservedClasses();
}
