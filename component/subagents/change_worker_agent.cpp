#include "component/subagents/change_worker_agent.h"

#include "component/management/general_services.h"
#include "component/subagents/observed_kind.h"

namespace {

constexpr SV::ResId DefaultName{0x2004ECA};
constexpr SV::ResId AnalysisNotServed{0x200517C};

constexpr double OneChange = 1.0;

}  // namespace

void MeroChangeWorkerAgent::MeroPreviousExecutives::clear() {
    key = {};
    alive = false;
    workers.clear();
    lastTime = -1.0;
}

void MeroChangeWorkerAgent::MeroPreviousExecutives::noteWorker(MeroId worker, double time) {
    if (time != lastTime) {
        workers.clear();
        lastTime = time;
    }
    if (!contains(worker)) {
        workers.push_back(worker);
    }
}

MeroChangeWorkerAgent::MeroChangeWorkerAgent() {
    agentType = AgentTypeChangeOfWorker;
    MeroChangeWorkerAgent::registerObservedClasses();
}

void MeroChangeWorkerAgent::registerObservedClasses() {
    observeClass(CoreActivity);
    observeClass(CoreCall);
}

// Definition

int MeroChangeWorkerAgent::setDefaultValues() {
    setCommonDefaultValues({.volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true},
                           SV::String(DefaultName));
    valueKind = 3;
    scopeObjects = false;
    scopeAllObjects = false;
    classOption.setDefaultValues();
    return StatusOk;
}

int MeroChangeWorkerAgent::readDefinition(MeroKilnParser* parser) {
    const int status = MeroEventProcessingAgent::readDefinition(parser);
    if (parser == nullptr) {
        return status;
    }
    if (analyses.path) {
        showInfoBox(SV::String(AnalysisNotServed));
        analyses.path = false;
    }
    classOption.readFlags(*parser);
    const int classStatus = classOption.readClass(*parser, name, CoreEnvironmentLibrary);
    return status != StatusOk ? status : classStatus;
}

SV::String& MeroChangeWorkerAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    classOption.appendClass(text);
    classOption.appendFlags(text);
    return text;
}

bool MeroChangeWorkerAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    return MeroEventProcessingAgent::isEqualToDefinition(parser) && classOption.isEqualClass(parser);
}

bool MeroChangeWorkerAgent::getObjectClass(MeroId& id) const {
    id = classOption.getId();
    return id != MeroNoId;
}

// Preparation

int MeroChangeWorkerAgent::joinObjectsOf([[maybe_unused]] const ISortedSet<MeroId>& calledModels) {
    return StatusOk;
}

int MeroChangeWorkerAgent::prepareCalendar() {
    const int status = makeCalendar();
    return status == StatusOk ? findObservedKind(classOption.getId(), observesExecutives) : status;
}

// Measuring

MeroPlacement MeroChangeWorkerAgent::classifyObject(MeroId ownModel, MeroId otherModel) {
    if (ownModel == otherModel || !scopeObjects) {
        return MeroPlacement::UnderObject;
    }
    return scopeAllObjects ? MeroPlacement::ProcessOnly : MeroPlacement::UnderCaller;
}

void MeroChangeWorkerAgent::enterCall(MeroAgentProcessInstance& process, const Call& call) {
    const MeroPlacement placement = classifyObject(modelId, call.calledModel);
    if (!process.addSubProcess(call.calledKey, call.callerKey, call.calledModel,
                               collectingOf(call, placement, MeroPlacement::UnderObject, modelId))) {
        abortAgent();
    }
}

int MeroChangeWorkerAgent::measure(const MeroSimEvent& event) {
    SV::String mainKey;
    SV::String instanceKey;
    event.getMainInstanceKey(&mainKey);
    event.getInstanceKey(&instanceKey);
    double time = 0.0;
    if (!readTime(event, time)) {
        return EventTimeOutOfRange;
    }
    if (!isEventRelevant({.instance = true, .calendar = true}, mainKey, instanceKey, MeroNoId, time)) {
        return EventHandled;
    }
    MeroAgentProcessInstance& process = *findInstance(mainKey);
    if (event.code == assigningCode()) {
        assign(event, process, instanceKey);
    } else {
        finishStep(event, process, time);
    }
    return EventHandled;
}

void MeroChangeWorkerAgent::assign(const MeroSimEvent& event, MeroAgentProcessInstance& process,
                                   const SV::String& instanceKey) {
    MeroId model = MeroNoId;
    MeroId worker = MeroNoId;
    event.getModelId(&model);
    if (observesExecutives) {
        event.getAssignedExecutiveId(&worker);
    } else {
        event.getResourceId(&worker);
    }
    const MeroId target = classifyObject(modelId, model) == MeroPlacement::UnderObject ? modelId : model;
    const double changed = previousOf(process).isChange(worker) ? OneChange : 0.0;
    process.addFirstValue(instanceKey, target, changed, MeroValueUse::Accumulate);
}

void MeroChangeWorkerAgent::finishStep(const MeroSimEvent& event, MeroAgentProcessInstance& process,
                                       double time) {
    MeroId worker = MeroNoId;
    if (observesExecutives) {
        event.getExecutiveId(&worker);
    } else {
        event.getResourceId(&worker);
    }
    previousOf(process).noteWorker(worker, time);
}

MeroChangeWorkerAgent::MeroPreviousExecutives& MeroChangeWorkerAgent::previousOf(
    MeroAgentProcessInstance& process) {
    std::optional<std::uint32_t>& place = process.getPlaceOfKept();
    if (!place) {
        previousExecutives.add(process.getKey());
        place = previousExecutives.placeOf(process.getKey());
    }
    return *previousExecutives.at(*place);
}

void MeroChangeWorkerAgent::expectRest(const MeroAgentProcessInstance& process,
                                       const MeroComingEvent& event) const {
    MeroMeasuringAgent::expectRest(process, event);
    if (const std::optional<std::uint32_t> place = process.getPlaceOfKept()) {
        __builtin_prefetch(previousExecutives.at(*place));
    } else {
        previousExecutives.prefetchIndex(process.getKey());
    }
}

void MeroChangeWorkerAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        if (instance->isCollected()) {
            continue;
        }
        const MeroId id = instance->getModelId();
        gather(id, instance->getCallPath(), instance->sumFirstValues(MeroNoId).value_or(0.0), end,
               id == modelId ? 1 : 0);
    }
}

// Results

MeroAgentResultSet* MeroChangeWorkerAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    if (resultSet != nullptr) {
        resultSet->setDivisor(finishedProcesses);
    }
    return resultSet.get();
}
