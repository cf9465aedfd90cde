#include "component/subagents/frequency_agent.h"

#include <array>

#include "component/host/basic_services.h"
#include "component/host/repository.h"

#include "component/agents/keyword_flags.h"
#include "component/management/general_services.h"

namespace {

constexpr SV::ResId DefaultName{0x2004EAC};
constexpr SV::ResId AmbiguousChoice{0x200517C};

/// What one execution or call counts.
constexpr double OnePass = 1.0;

}  // namespace

struct MeroFrequencyAgent::FlagKeyword {
    using Entry = MeroKeywordFlag<MeroFrequencyAgent>;

    static constexpr std::array Options{
        Entry{"hide-mode", &MeroFrequencyAgent::showMode, false},
        Entry{"lock-mode", &MeroFrequencyAgent::enableMode, false},
        Entry{"ignore-not-executed-objects", &MeroFrequencyAgent::includeNotExecuted, false},
        Entry{"hide-ignore", &MeroFrequencyAgent::showIgnore, false},
        Entry{"lock-ignore", &MeroFrequencyAgent::enableIgnore, false},
    };
};

MeroFrequencyAgent::MeroFrequencyAgent() {
    agentType = AgentTypeFrequency;
    MeroFrequencyAgent::registerObservedClasses();
}

void MeroFrequencyAgent::registerObservedClasses() {
    observeClass(CoreActivity);
    observeClass(CoreCall);
}

// Definition

int MeroFrequencyAgent::setDefaultValues() {
    setCommonDefaultValues({.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true},
                           SV::String(DefaultName));
    valueKind = 3;
    scopeObjects = true;
    scopeAllObjects = false;
    absoluteMode = false;
    showMode = true;
    enableMode = true;
    includeNotExecuted = false;
    showIgnore = true;
    enableIgnore = true;
    return StatusOk;
}

int MeroFrequencyAgent::readDefinition(MeroKilnParser* parser) {
    const int status = MeroEventProcessingAgent::readDefinition(parser);
    if (parser == nullptr) {
        return status;
    }
    const bool absolute = parser->IsContained("absolute");
    const bool relative = parser->IsContained("relative");
    absoluteMode = absolute && !relative;
    if (absolute == relative) {
        showInfoBox(SV::String(AmbiguousChoice));
    }
    readKeywordFlags<MeroFrequencyAgent>(*parser, *this, FlagKeyword::Options);
    return status;
}

SV::String& MeroFrequencyAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    text += absoluteMode ? "\n absolute" : "\n relative";
    appendKeywordFlags<MeroFrequencyAgent>(text, *this, FlagKeyword::Options, MeroSectionLineStart);
    return text;
}

bool MeroFrequencyAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    const bool otherMode = parser.IsContained(absoluteMode ? "relative" : "absolute");
    const bool otherRows = parser.IsContained("ignore-not-executed-objects") && includeNotExecuted;
    return MeroEventProcessingAgent::isEqualToDefinition(parser) && !otherMode && !otherRows;
}

// Preparation

MeroFrequencyAgent::ResultSetTraits MeroFrequencyAgent::getResultSetTraits() const {
    return {ValueTypeAbsolute, absoluteMode ? ResultModeSum : ResultModeMean};
}

int MeroFrequencyAgent::prepareRun(int analysis) {
    notExecuted.clear();
    return MeroMeasuringAgent::prepareRun(analysis);
}

int MeroFrequencyAgent::objectsEvaluated() {
    if (includeNotExecuted && !scopeObjects) {
        notExecuted.add(modelId, {});
    }
    return includeNotExecuted && scopeObjects && !scopeAllObjects ? expectActivities() : StatusOk;
}

int MeroFrequencyAgent::objectsExtended() {
    return includeNotExecuted && scopeObjects && scopeAllObjects ? expectActivities() : StatusOk;
}

int MeroFrequencyAgent::expectActivities() {
    auto& repository = MeroCoreModelingManager::GetGlobal()->enhanced();
    for (const MeroId id : observedObjects) {
        bool isActivity = false;
        const int code = repository.instanceOf(Mero_GetCoreVar(CoreActivity), id, isActivity);
        if (code != RepositoryOk && code != RepositoryClassUnknown) {
            displayErrorMessage("aeasubag", __LINE__);
            return StatusRepositoryError;
        }
        if (code == RepositoryOk && isActivity) {
            notExecuted.add(id, {});
        }
    }
    return StatusOk;
}

// Measuring

void MeroFrequencyAgent::markExecuted(MeroId id) {
    if (!notExecuted.empty()) {
        notExecuted.erase(id);
    }
}

void MeroFrequencyAgent::countOwnModel(MeroAgentSubProcessInstance& collector, MeroId model) const {
    if (model == modelId && !collector.hasValue(model)) {
        collector.addFirstValue(model, OnePass, MeroValueUse::Replace);
    }
}

void MeroFrequencyAgent::enterCall(MeroAgentProcessInstance& process, const Call& call) {
    if (MeroAgentSubProcessInstance* const collector = process.getCollector(call.callerKey)) {
        countOwnModel(*collector, call.model);
    }
    const MeroPlacement placement = classifyObject(modelId, call.calledModel);
    if (placement == MeroPlacement::UnderObject ||
        (placement == MeroPlacement::UnderCaller && call.model == modelId)) {
        process.addSubProcess(call.calledKey, call.callerKey, call.calledModel, MeroCollecting::ByItself);
        process.addFirstValue(call.calledKey, call.calledModel, OnePass, MeroValueUse::Accumulate);
    }
}

int MeroFrequencyAgent::measure(const MeroSimEvent& event) {
    MeroId object = MeroNoId;
    event.getObjectId(&object);
    if (!observes(object)) {
        return EventHandled;
    }
    SV::String mainKey;
    SV::String instanceKey;
    event.getMainInstanceKey(&mainKey);
    event.getInstanceKey(&instanceKey);
    MeroAgentProcessInstance* const process = findInstance(mainKey);
    MeroAgentSubProcessInstance* const collector =
        process != nullptr ? process->getCollector(instanceKey) : nullptr;
    if (collector == nullptr) {
        return EventHandled;
    }
    double time = 0.0;
    if (!readTime(event, time)) {
        return EventTimeOutOfRange;
    }
    if (!isInWorkingTime(time)) {
        return EventHandled;
    }
    MeroId model = MeroNoId;
    event.getModelId(&model);
    countOwnModel(*collector, model);
    if (classifyObject(modelId, model) == MeroPlacement::UnderObject) {
        collector->addFirstValue(object, OnePass, MeroValueUse::Accumulate);
    }
    markExecuted(object);
    return EventHandled;
}

// Results

void MeroFrequencyAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        for (const auto& [object, value] : instance->getValues()) {
            const bool counts = !scopeObjects || object == modelId;
            gather(object,
                   scopeObjects ? pathOfObject(*instance, object) : MeroPathView(instance->getCallPath()),
                   value.value, end, counts ? 1 : 0);
        }
    }
}

MeroAgentResultSet* MeroFrequencyAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    if (resultSet == nullptr) {
        return nullptr;
    }
    const MeroWaitCursor wait;
    notExecuted.sortBy(std::less<>{});
    for (const auto& [id, nothing] : notExecuted) {
        if (!addRowOfNotExecuted(id)) {
            return nullptr;
        }
    }
    if (!absoluteMode) {
        resultSet->setDivisor(finishedProcesses);
    }
    return resultSet.get();
}

bool MeroFrequencyAgent::addRowOfNotExecuted(MeroId id) {
    MeroId model = MeroNoId;
    const int code = MeroCoreModelingManager::GetGlobal()->enhanced().getModelOfInstance(id, model);
    if (code != RepositoryOk && code != RepositoryClassUnknown) {
        displayErrorMessage("aeasubag", __LINE__);
        return false;
    }
    const MeroPath path = code == RepositoryOk ? MeroPath{model, id} : MeroPath{id};
    return resultSet->addValue({.objectId = id,
                                .path = path,
                                .itemKey = id,
                                .value = 0.0,
                                .count = DivisorKept,
                                .history = MeroHistoryUse::Left,
                                .sourceAgentType = 0});
}
