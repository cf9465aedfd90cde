#include "component/agents/atomar_agent.h"

#include <array>

#include "component/host/basic_services.h"

#include "component/agents/keyword_flags.h"
#include "component/agents/related_objects.h"
#include "component/management/general_services.h"

/// The flags that every sub-agent's section can hold, in the groups in which they are written.
struct MeroAtomarAgent::FlagKeyword {
    using Entry = MeroKeywordFlag<MeroAtomarAgent>;

    static constexpr std::array NameOptions{
        Entry{"hide-name", &MeroAtomarAgent::nameVisible, false},
        Entry{"lock-name", &MeroAtomarAgent::nameEditable, false},
    };
    static constexpr std::array AnalysisOptions{
        Entry{"hide-algorithms", &MeroAtomarAgent::hideAlgorithms, true},
    };
    static constexpr std::array ResultDisplay{
        Entry{"dont-show-result", &MeroAtomarAgent::showResult, false},
        Entry{"hide-show-result", &MeroAtomarAgent::showResultVisible, false},
        Entry{"lock-show-result", &MeroAtomarAgent::showResultEditable, false},
    };
    static constexpr std::array HistoryDisplay{
        Entry{"dont-show-history", &MeroAtomarAgent::showHistory, false},
        Entry{"hide-show-history", &MeroAtomarAgent::showHistoryVisible, false},
        Entry{"lock-show-history", &MeroAtomarAgent::showHistoryEditable, false},
    };
    static constexpr std::array Histories{
        Entry{"history-mem", &MeroAtomarAgent::historyMem, true},
        Entry{"history-disk", &MeroAtomarAgent::historyDisk, true},
    };
    static constexpr std::array HistoryOptions{
        Entry{"hide-history-mem", &MeroAtomarAgent::historyMemVisible, false},
        Entry{"lock-history-mem", &MeroAtomarAgent::historyMemEditable, false},
        Entry{"hide-history-disk", &MeroAtomarAgent::historyDiskVisible, false},
        Entry{"lock-history-disk", &MeroAtomarAgent::historyDiskEditable, false},
    };
    static constexpr std::array<std::span<const Entry>, 6> All{
        NameOptions, AnalysisOptions, ResultDisplay, HistoryDisplay, Histories, HistoryOptions};
};

MeroAtomarAgent::MeroAtomarAgent() = default;

MeroAtomarAgent::~MeroAtomarAgent() {
    const MeroWaitCursor wait;
    resultSet.reset();
    limitedResultSet.reset();
}

bool MeroAtomarAgent::initAgent(MeroId model, MeroSuperAgent* owner) {
    modelId = model;
    ownerSuperAgent = owner;
    setDefaultValues();
    return true;
}

void MeroAtomarAgent::setCommonDefaultValues(const MeroAnalysisFlags& defaultAnalyses,
                                             const SV::String& defaultName) {
    for (const auto& table : FlagKeyword::All) {
        for (const auto& [keyword, field, whenContained] : table) {
            this->*field = !whenContained;
        }
    }
    historyFile = {};
    analyses = defaultAnalyses;
    name = defaultName;
    resultKind = ResultKindNumber;
}

int MeroAtomarAgent::readNameAndType(MeroKilnParser* parser) {
    if (parser == nullptr) {
        displayErrorMessage("aeagents", __LINE__);
        return StatusRefused;
    }
    if (getTypeOfKeyword(parser->GetKeyword()) != getAgentType()) {
        return StatusWrongSection;
    }
    if (!parser->IsContained("name")) {
        return showStatusMessage(StatusBadDefinition);
    }
    name = parser->GetStrValue("name");
    return StatusOk;
}

int MeroAtomarAgent::readDefinition(MeroKilnParser* parser) {
    const int status = readNameAndType(parser);
    if (status != StatusOk) {
        return status;
    }
    for (const auto& table : FlagKeyword::All) {
        readKeywordFlags<MeroAtomarAgent>(*parser, *this, table);
    }
    if (historyMem && historyDisk) {
        showStatusMessage(StatusBadDefinition);
        historyDisk = false;
    }
    if (parser->IsContained("history-file")) {
        historyFile = parser->GetStrValue("history-file");
    }
    readAnalyses(*parser);
    return StatusOk;
}

void MeroAtomarAgent::readNameOptions(const MeroKilnParser& parser) {
    readKeywordFlags<MeroAtomarAgent>(parser, *this, FlagKeyword::NameOptions);
    readKeywordFlags<MeroAtomarAgent>(parser, *this, FlagKeyword::AnalysisOptions);
}

void MeroAtomarAgent::appendNameOptions(SV::String& text) const {
    appendKeywordFlags<MeroAtomarAgent>(text, *this, FlagKeyword::NameOptions, MeroSectionLineStart);
}

void MeroAtomarAgent::readDisplayOptions(const MeroKilnParser& parser) {
    readKeywordFlags<MeroAtomarAgent>(parser, *this, FlagKeyword::ResultDisplay);
    readKeywordFlags<MeroAtomarAgent>(parser, *this, FlagKeyword::HistoryDisplay);
}

void MeroAtomarAgent::appendResultDisplay(SV::String& text) const {
    appendKeywordFlags<MeroAtomarAgent>(text, *this, FlagKeyword::ResultDisplay, MeroSectionLineStart);
}

void MeroAtomarAgent::readAnalyses(const MeroKilnParser& parser) {
    const MeroAnalysisFlags named = readAnalysisKeywords(parser);
    if (named.any()) {
        analyses = named;
    }
}

SV::String& MeroAtomarAgent::getDefinitionText(SV::String& text) {
    text = getKeywordOfType(getAgentType());
    text += "\n name:" + MeroKilnParser::GetKilnTextOfStrValue(name);
    for (const auto& table : {std::span<const FlagKeyword::Entry>(FlagKeyword::NameOptions),
                              std::span<const FlagKeyword::Entry>(FlagKeyword::AnalysisOptions),
                              std::span<const FlagKeyword::Entry>(FlagKeyword::ResultDisplay),
                              std::span<const FlagKeyword::Entry>(FlagKeyword::HistoryDisplay)}) {
        appendKeywordFlags<MeroAtomarAgent>(text, *this, table, MeroSectionLineStart);
    }
    if (historyMem || historyDisk) {
        text += historyMem ? "\n history-mem" : "\n history-disk";
    }
    appendKeywordFlags<MeroAtomarAgent>(text, *this, FlagKeyword::HistoryOptions, MeroSectionLineStart);
    if (!historyFile.IsEmpty()) {
        text += "\n history-file:" + MeroKilnParser::GetKilnTextOfStrValue(historyFile);
    }
    appendAnalysisKeywords(text, analyses, MeroSectionLineStart);
    return text;
}

bool MeroAtomarAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    if (getTypeOfKeyword(parser.GetKeyword()) != getAgentType()) {
        return false;
    }
    const bool sameName = !parser.IsContained("name") || parser.GetStrValue("name") == name;
    const bool sameHistories = parser.IsContained("history-mem") == historyMem &&
                               parser.IsContained("history-disk") == historyDisk &&
                               parser.GetStrValue("history-file") == historyFile;
    const bool sameShown = parser.IsContained("dont-show-history") != showHistory &&
                           parser.IsContained("dont-show-result") != showResult;
    const bool sameVolume = parser.IsContained("volume-analysis") == analyses.volume ||
                            parser.IsContained("capacity-analysis") == analyses.volume;
    const bool sameOthers = parser.IsContained("path-analysis") == analyses.path &&
                            parser.IsContained("wlstatic-analysis") == analyses.staticWorkLoad &&
                            parser.IsContained("wlnonstatic-analysis") == analyses.nonStaticWorkLoad;
    return sameName && sameHistories && sameShown && sameVolume && sameOthers;
}

int MeroAtomarAgent::getName(SV::String& nameOut) {
    nameOut = name;
    return StatusOk;
}

int MeroAtomarAgent::setName(const SV::String& newName) {
    name = newName;
    return StatusOk;
}

bool MeroAtomarAgent::hasObjectResults(bool ignoreShowFlag) {
    return resultSet != nullptr && resultSet->hasObjectResults(ignoreShowFlag);
}

bool MeroAtomarAgent::hasHistory(bool ignoreShowFlag) {
    return resultSet != nullptr && resultSet->hasHistory(ignoreShowFlag);
}

MeroAgentResultSet* MeroAtomarAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    return runPrepared ? resultSet.get() : nullptr;
}

bool MeroAtomarAgent::clearResultValues() {
    return resultSet != nullptr && resultSet->clearValues();
}

int MeroAtomarAgent::getValueKind() const {
    if (valueKind == 1) {
        displayErrorMessage("aeagents", __LINE__);
    }
    return valueKind;
}

int MeroAtomarAgent::widenObservedObjects(MeroId classId, MeroId baseClassId) {
    return widenByRelations(observedObjects, classId, baseClassId);
}
