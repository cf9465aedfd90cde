#include <algorithm>
#include <utility>

#include "component/host/basic_services.h"
#include "component/host/calendar.h"
#include "component/host/simulation.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/definition_sections.h"
#include "component/agents/super_agent.h"
#include "component/agents/support_agent.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr char ModuleName[] = "aeagents";

constexpr SV::ResId MessageDuplicateName(0x20051AD);

bool isCalendarGood(const SV::String& text) {
    MeroCalendar calendar(0, gSimStartTime, 1, 365);
    return calendar.initializeCalendar(text) == 0;
}

}  // namespace

MeroSubAgentList::~MeroSubAgentList() {
    const MeroWaitCursor wait;
    agents.clear();
}

int MeroSuperAgent::checkAgent(int& definitionOk, int& calendarOk, int& objectsOk, int allowEmpty) {
    const bool emptyAllowed = allowEmpty != 0;
    objectsChanged = objectsChanged || emptyAllowed != objectsAllowEmpty;
    TextChecks texts;
    const int status = fetchChangedTexts(texts);
    if (status != StatusOk) {
        return status;
    }
    const int result = checkTexts(texts, emptyAllowed);
    definitionOk = definitionValid ? 1 : 0;
    calendarOk = calendarValid ? 1 : 0;
    objectsOk = objectsValid ? 1 : 0;
    return result;
}

int MeroSuperAgent::fetchChangedTexts(TextChecks& texts) {
    if (instanceId == MeroNoId) {
        getDefinitionText(texts.definition);
        texts.calendar = calendarText;
        texts.objects = objectsText;
        return StatusOk;
    }
    const bool fetched =
        (!definitionChanged || readText(TextRole::Definition, texts.definition) == StatusOk) &&
        (!objectsChanged || readText(TextRole::Objects, texts.objects) == StatusOk) &&
        (!calendarChanged || readText(TextRole::Calendar, texts.calendar) == StatusOk);
    return fetched ? StatusOk : StatusRepositoryError;
}

int MeroSuperAgent::checkTexts(const TextChecks& texts, bool allowEmpty) {
    definitionValid = definitionChanged ? isDefinitionGood(texts.definition) : definitionValid;
    calendarValid = calendarChanged ? isCalendarGood(texts.calendar) : calendarValid;
    objectsValid = objectsChanged ? areObjectsGood(texts.objects, allowEmpty) : objectsValid;
    objectsAllowEmpty = allowEmpty;
    definitionChanged = false;
    calendarChanged = false;
    objectsChanged = false;
    return definitionValid && calendarValid && objectsValid ? StatusOk : StatusRefused;
}

bool MeroSuperAgent::isDefinitionGood(const SV::String& text) {
    MeroSubAgentList list;
    return parseSubAgents(text, list) == StatusOk;
}

bool MeroSuperAgent::areObjectsGood(const SV::String& text, bool allowEmpty) const {
    if (allowEmpty && text.IsEmpty()) {
        return true;
    }
    ISortedSet<MeroId> objects;
    const bool evaluated = aEvaluateExpression(modelId, text, objects, OseScopeModel, true, true) == 0;
    return evaluated && (allowEmpty || !objects.empty());
}

int MeroSuperAgent::parseSubAgents(const SV::String& text, MeroSubAgentList& list) {
    std::unique_ptr<MeroKilnParser> parser;
    makeParser(text, parser);
    if (parser->Parse() != 0) {
        showParseError(*parser);
        return StatusBadDefinition;
    }
    ISortedSet<SV::String> names;
    for (int index = 0; parser->SetCurElemIndex(index); ++index) {
        if (!isSubAgentSection(*parser)) {
            continue;
        }
        const int type = getTypeOfKeyword(parser->GetKeyword());
        if (type == AgentTypeUnknown) {
            showStatusMessage(StatusBadDefinition);
            return StatusNoSubAgentObject;
        }
        auto agent = createEventAgent(type, modelId, this);
        if (agent == nullptr) {
            showStatusMessage(StatusNoSubAgentObject);
            return StatusNoSubAgentObject;
        }
        agent->readDefinition(parser.get());
        SV::String name;
        agent->getName(name);
        if (!names.insert(name)) {
            showErrorBox(SV::String(MessageDuplicateName) + "\"" + name + "\"\n\n");
            return StatusDuplicateName;
        }
        list.agents.push_back(std::move(agent));
    }
    return StatusOk;
}

int MeroSuperAgent::startRun(int algorithm, MeroControlComponent* engineControl) {
    if (started) {
        return showStatusMessage(StatusRunInProgress);
    }
    started = true;
    analysisType = algorithm;
    control = engineControl;
    if (!settings.active) {
        return StatusNothingToDo;
    }
    if (algorithm < AnalysisPath || algorithm > AnalysisNonStaticWorkLoad) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    if (!isActiveInAnalysis(algorithm)) {
        return StatusNothingToDo;
    }
    daysPerYear = gDaysPerYear;
    hoursPerDay = gHoursPerDay;
    const int status = buildSubAgents();
    if (status != StatusOk) {
        return status;
    }
    for (const auto& agent : subAgents) {
        if (agent->prepareRun(algorithm) == StatusOk && agent->isEventProcessing()) {
            attach(agent->getPassiveComponent());
        }
    }
    if (supportAgent != nullptr) {
        supportAgent->prepareRun(algorithm);
        attach(supportAgent->getPassiveComponent());
    }
    runPrepared = true;
    return StatusOk;
}

int MeroSuperAgent::buildSubAgents() {
    SV::String text;
    if (instanceId == MeroNoId) {
        getDefinitionText(text);
    } else if (readText(TextRole::Definition, text) != StatusOk) {
        return StatusRepositoryError;
    }
    if (makeParser(text, runParser) != StatusOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    if (runParser->Parse() != 0) {
        showParseError(*runParser);
        return StatusBadDefinition;
    }
    for (int index = 0; runParser->SetCurElemIndex(index); ++index) {
        if (!isSubAgentSection(*runParser)) {
            continue;
        }
        auto agent = createEventAgent(getTypeOfKeyword(runParser->GetKeyword()), modelId, this);
        if (agent == nullptr) {
            return showStatusMessage(StatusBadDefinition);
        }
        if (agent->readDefinition(runParser.get()) == StatusOk && agent->isActiveInAnalysis(analysisType)) {
            subAgents.push_back(std::move(agent));
        }
    }
    if (subAgents.empty()) {
        return StatusNothingToDo;
    }
    if (isWorkLoadAnalysis(analysisType)) {
        supportAgent = std::make_unique<MeroSupportAgent>();
        supportAgent->initAgent(modelId, this);
    }
    return StatusOk;
}

int MeroSuperAgent::clearResults() {
    if (!started) {
        return StatusNoRun;
    }
    runPrepared = false;
    started = false;
    analysisType = AnalysisNone;
    int result = StatusOk;
    auto ending = std::exchange(subAgents, {});
    for (auto& agent : ending) {
        const int status = agent->clearResults();
        result = status != StatusRefused ? status : result;
        if (!detach(agent->getPassiveComponent())) {
            result = StatusNotDetached;
        }
        agent.reset();
    }
    if (supportAgent != nullptr) {
        supportAgent->clearResults();
        if (!detach(supportAgent->getPassiveComponent())) {
            result = StatusNotDetached;
        }
        supportAgent.reset();
    }
    attachedComponents.clear();
    control = nullptr;
    return result;
}

void MeroSuperAgent::attach(MeroPassiveComponent* component) {
    if (control != nullptr && component != nullptr) {
        control->AttachPassiveComponent(component);
        attachedComponents.push_back(component);
    }
}

bool MeroSuperAgent::detach(MeroPassiveComponent* component) {
    const auto place = std::find(attachedComponents.begin(), attachedComponents.end(), component);
    if (place == attachedComponents.end()) {
        return true;
    }
    if (control->DetachPassiveComponent(component) == 0) {
        displayErrorMessage(ModuleName, __LINE__);
        return false;
    }
    return true;
}
