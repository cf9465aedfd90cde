#include "component/agents/event_processing_agent.h"

#include <array>
#include <limits>

#include "component/host/basic_services.h"
#include "component/host/repository.h"

#include "component/agents/history_header.h"
#include "component/agents/keyword_flags.h"
#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr SV::ResId RunEndMessage{0x2005190};
constexpr SV::ResId InconsistentRun{0x20051B0};
constexpr SV::ResId ModelLabel{0x20051B1};
constexpr SV::ResId AgentAborted{0x20051B2};
constexpr SV::ResId RestartMessage{0x20051B4};

const SV::String Quote = "\"";

}  // namespace

MeroEventMessage::MeroEventMessage(SV::ResId message)
    : shown(gAgentManagement != nullptr && gAgentManagement->hasEventMessage()) {
    if (shown) {
        gAgentManagement->showEventMessage(SV::String(message));
    }
}

MeroEventMessage::~MeroEventMessage() {
    if (shown && gAgentManagement != nullptr) {
        gAgentManagement->hideEventMessage();
    }
}

MeroEventProcessingAgent::MeroEventProcessingAgent() {
    scopeObjects = true;
    scopeVisible = true;
    scopeEditable = true;
    scopeAllObjectsVisible = true;
    scopeAllObjectsEditable = true;
}

MeroEventProcessingAgent::~MeroEventProcessingAgent() {
    const MeroWaitCursor wait;
    calendar.reset();
    instances.clear();
}

void MeroEventProcessingAgent::observeClass(MeroCoreVarType number) {
    observedClassSet.insert(Mero_GetCoreVar(number));
}

void MeroEventProcessingAgent::observeAllClasses() {
    for (const MeroCoreVarType number :
         {CoreActivity, CoreCall, CoreProcessAgentBase, CoreVariable, CoreEventBasedGateway, CoreStartEvent,
          CoreIntermediateEvent, CoreEndEvent, CoreParallelGateway, CoreInclusiveGateway,
          CoreExclusiveGateway, CoreFlowNode, CoreExecutive, CoreGroup, CoreResource,
          CoreEnvironmentAgentBase}) {
        observeClass(number);
    }
}

bool MeroEventProcessingAgent::initAgent(MeroId model, MeroSuperAgent* owner) {
    MeroAtomarAgent::initAgent(model, owner);
    MeroId modelClass = MeroNoId;
    auto* const manager = MeroCoreModelingManager::GetGlobal();
    if (manager == nullptr || manager->enhanced().classOf(modelId, modelClass) != RepositoryOk) {
        displayErrorMessage("aeagents", __LINE__);
        return false;
    }
    modelIsEnvironment = modelClass == ClassCodeEnvironmentModel;
    return true;
}

// Definition

const char* MeroEventProcessingAgent::scopeWord() const {
    if (!scopeObjects) {
        return "process";
    }
    return scopeAllObjects ? "allobjects" : "mainobjects";
}

int MeroEventProcessingAgent::readDefinition(MeroKilnParser* parser) {
    const int commonStatus = MeroAtomarAgent::readDefinition(parser);
    if (commonStatus == StatusRefused || commonStatus == StatusWrongSection) {
        return commonStatus;
    }
    const auto firstFailure = [commonStatus](int status) {
        return commonStatus != StatusOk ? commonStatus : status;
    };
    if (!parser->IsContained("resultscope")) {
        return firstFailure(showStatusMessage(StatusBadDefinition));
    }
    scopeVisible = !parser->IsContained("hide-resultscope");
    scopeEditable = !parser->IsContained("lock-resultscope");
    const SV::String word = parser->GetModifier("resultscope");
    const bool all = word == "allobjects";
    if (!all && word != "mainobjects" && word != "process") {
        return firstFailure(showStatusMessage(StatusBadDefinition));
    }
    scopeObjects = word != "process";
    scopeAllObjects = all;
    return commonStatus;
}

SV::String& MeroEventProcessingAgent::getDefinitionText(SV::String& text) {
    MeroAtomarAgent::getDefinitionText(text);
    text += SV::String("\n resultscope:") + scopeWord();
    if (!scopeVisible) {
        text += "\n hide-resultscope";
    }
    if (!scopeEditable) {
        text += "\n lock-resultscope";
    }
    return text;
}

bool MeroEventProcessingAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    return MeroAtomarAgent::isEqualToDefinition(parser) && parser.IsContained("resultscope") &&
           parser.GetModifier("resultscope") == scopeWord();
}

// Events

bool MeroEventProcessingAgent::readTime(const MeroSimEvent& event, double& time) {
    std::int64_t seconds = 0;
    event.getTime(&seconds);
    time = static_cast<double>(seconds);
    return time <= std::numeric_limits<double>::max();
}

MeroAgentProcessInstance* MeroEventProcessingAgent::findInstance(const SV::String& mainKey) {
    return instances.find(mainKey);
}

const std::vector<MeroAgentSubProcessInstance*>& MeroEventProcessingAgent::instancesOf(
    MeroAgentProcessInstance& process) {
    process.getInstances(instanceBuffer);
    return instanceBuffer;
}

bool MeroEventProcessingAgent::isInCalendarInterval(double time) {
    if (calendar == nullptr) {
        return false;
    }
    std::int64_t end = 0;
    int inInterval = 0;
    if (calendar->isInCurrentInterval(static_cast<std::int64_t>(time), end, inInterval) != 0) {
        abortAgent();
        return false;
    }
    return inInterval != 0;
}

bool MeroEventProcessingAgent::isEventRelevant(const MeroRelevanceTest& test, const SV::String& mainKey,
                                               const SV::String& instanceKey, MeroId objectId, double time) {
    if (test.instance) {
        const MeroAgentProcessInstance* const process = findInstance(mainKey);
        if (process == nullptr || !process->hasInstance(instanceKey)) {
            return false;
        }
    }
    if (test.object && !observes(objectId)) {
        return false;
    }
    return !test.calendar || !isWorkLoadAnalysis(analysisType) || isInCalendarInterval(time);
}

bool MeroEventProcessingAgent::isInObservedScope(MeroId calledModel, MeroId callingObject,
                                                 const SV::String& mainKey, const SV::String& instanceKey,
                                                 bool& isOwnModel) {
    isOwnModel = calledModel == modelId;
    if (isOwnModel) {
        return true;
    }
    MeroAgentProcessInstance* const process = observes(calledModel) ? findInstance(mainKey) : nullptr;
    const MeroAgentSubProcessInstance* const caller =
        process != nullptr ? process->getInstance(instanceKey) : nullptr;
    if (caller == nullptr) {
        return false;
    }
    return callingObject == MeroNoId || caller->getModelId() != modelId || observes(callingObject);
}

MeroPlacement MeroEventProcessingAgent::classifyObject(MeroId ownModel, MeroId otherModel) {
    if (!scopeObjects) {
        return MeroPlacement::ProcessOnly;
    }
    return ownModel == otherModel || scopeAllObjects ? MeroPlacement::UnderObject
                                                     : MeroPlacement::UnderCaller;
}

bool MeroEventProcessingAgent::addProcessInstance(MeroId model, const SV::String& instanceKey,
                                                  const SV::String& mainKey, double startTime) {
    MeroAgentProcessInstance* const process =
        instances.add(mainKey, instanceKey, model,
                      startTime == NoStartTime ? MeroAgentProcessInstance::StartNotMeasured : startTime);
    if (process == nullptr) {
        showDuplicateInstance();
    }
    return process != nullptr;
}

// Preparation

int MeroEventProcessingAgent::evaluateObservedObjects() {
    SV::String expression;
    ownerSuperAgent->getObjectsText(expression);
    if (aEvaluateExpression(modelId, expression, observedObjects, OseScopeModel, true, true) != 0) {
        return showStatusMessage(StatusBadObjects);
    }
    return StatusOk;
}

bool MeroEventProcessingAgent::enableHistory() {
    bool enabled = true;
    if (historyMem) {
        enabled = resultSet->enableMemoryHistory(showHistory);
    }
    if (enabled && historyDisk) {
        SV::String header;
        enabled = resultSet->enableDiskHistory(historyFile, getHistoryHeader(header), showHistory);
    }
    if (!enabled) {
        displayErrorMessage("aeagents", __LINE__);
    }
    return enabled;
}

int MeroEventProcessingAgent::makeCalendar() {
    SV::String text;
    ownerSuperAgent->getCalendarText(text);
    calendar = std::make_unique<MeroCalendar>(0, gSimStartTime, 1, 365);
    if (calendar->initializeCalendar(text) != 0) {
        calendar.reset();
        return showStatusMessage(StatusBadCalendar);
    }
    return StatusOk;
}

bool MeroEventProcessingAgent::releaseCalendar() {
    calendar.reset();
    return true;
}

int MeroEventProcessingAgent::isCoveredWholly(double from, double to, bool& covered) {
    if (from > to || calendar == nullptr) {
        displayErrorMessage("aeagents", __LINE__);
        return StatusRefused;
    }
    int result = 0;
    if (calendar->isCoveredWholly(static_cast<std::int64_t>(from), static_cast<std::int64_t>(to), result) !=
        0) {
        return StatusBadCalendar;
    }
    covered = result != 0;
    return StatusOk;
}

SV::String& MeroEventProcessingAgent::getHistoryHeader(SV::String& header) const {
    SV::String ownerName;
    ownerSuperAgent->getName(ownerName);
    return header = makeHistoryHeader(name, modelId, ownerName);
}

// End of a run, restart, failure

void MeroEventProcessingAgent::endRun() {
    const MeroWaitCursor wait;
    const MeroEventMessage message(RunEndMessage);
    if (agentState == AgentRunning) {
        finishMeasure();
    }
    instances.clear();
    clearRunData();
    agentState = AgentFinished;
}

int MeroEventProcessingAgent::clearResults() {
    resultSet.reset();
    limitedResultSet.reset();
    instances.clear();
    clearRunData();
    runPrepared = false;
    agentState = AgentIdle;
    return StatusOk;
}

int MeroEventProcessingAgent::restartAgent() {
    const MeroWaitCursor wait;
    const int status = prepareAgain();
    if (status != StatusOk) {
        abortAgent();
    }
    return status;
}

int MeroEventProcessingAgent::prepareAgain() {
    const MeroEventMessage message(RestartMessage);
    const int status = clearResults();
    return status == StatusOk ? prepareRun(getAnalysisType()) : status;
}

void MeroEventProcessingAgent::abortAgent() {
    failWith(SV::String(AgentAborted) + Quote + name + Quote + "\n\n");
}

void MeroEventProcessingAgent::showDuplicateInstance() {
    SV::String text = SV::String(InconsistentRun) + Quote + name + Quote;
    SV::String modelName;
    if (getAttributeText(modelId, modelName, ClassCodeInstanceName) == StatusOk) {
        text += SV::String("\n(") + SV::String(ModelLabel) + ": " + Quote + modelName + Quote + ")";
    }
    failWith(text + "\n\n");
}

void MeroEventProcessingAgent::failWith(const SV::String& boxText) {
    showErrorBox(boxText);
    agentState = AgentFailed;
    runPrepared = false;
    resultSet.reset();
    if (!releaseCalendar()) {
        displayErrorMessage("aeagents", __LINE__);
    }
}
