#include "component/subagents/cycle_time_agent.h"

#include "component/host/basic_services.h"

namespace {

constexpr SV::ResId DefaultName{0x2004F38};

/// What one pass adds to the count of passes.
constexpr double OnePass = 1.0;

}  // namespace

MeroCycleTimeAgent::MeroCycleTimeAgent() {
    agentType = AgentTypeCycleTime;
    MeroCycleTimeAgent::registerObservedClasses();
}

void MeroCycleTimeAgent::registerObservedClasses() {
    observeClass(CoreActivity);
    observeClass(CoreCall);
}

int MeroCycleTimeAgent::setDefaultValues() {
    setCommonDefaultValues({.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true},
                           SV::String(DefaultName));
    valueKind = 3;
    resultKind = ResultKindTime;
    scopeObjects = true;
    scopeAllObjects = false;
    return StatusOk;
}

MeroAgentResultSet* MeroCycleTimeAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    return resultSet.get();
}

void MeroCycleTimeAgent::clearRunData() {
    releaseCalendar();
}

bool MeroCycleTimeAgent::releaseCalendar() {
    instances.clear();
    openPasses.clear();
    return MeroMeasuringAgent::releaseCalendar();
}

// Passes and blocks

void MeroCycleTimeAgent::openPass(const SV::String& passKey, double time) {
    openPasses.add(passKey, time);
}

bool MeroCycleTimeAgent::closePass(MeroAgentProcessInstance& process, const Pass& pass, MeroId object) {
    const auto* const opened = openPasses.find(pass.passKey);
    if (opened == nullptr) {
        return true;
    }
    const double duration = pass.time - opened->getValue();
    openPasses.erase(pass.passKey);
    return process.addFirstValue(pass.instanceKey, object, duration, MeroValueUse::Accumulate) &&
           process.addSecondValue(pass.instanceKey, object, OnePass, MeroValueUse::Accumulate);
}

void MeroCycleTimeAgent::enterBlock(MeroAgentProcessInstance& process, MeroId model, double time) {
    if (auto& block = process.getBlock()) {
        ++block->openCount;
    } else if (model == modelId) {
        block = {time, time};
    }
}

void MeroCycleTimeAgent::leaveBlock(MeroAgentProcessInstance& process, double time) {
    if (auto& block = process.getBlock()) {
        block->endTime = time;
        --block->openCount;
    }
}

bool MeroCycleTimeAgent::closeBlock(MeroAgentProcessInstance& process, const SV::String& instanceKey) {
    auto& block = process.getBlock();
    if (!block) {
        return true;
    }
    const double duration = block->endTime - block->startTime;
    block.reset();
    return process.addFirstValue(instanceKey, modelId, duration, MeroValueUse::Accumulate) &&
           process.addSecondValue(instanceKey, modelId, OnePass, MeroValueUse::Replace);
}

void MeroCycleTimeAgent::closeIdleBlock(const SV::String& mainKey) {
    MeroAgentProcessInstance* const process = findInstance(mainKey);
    if (process != nullptr && process->getBlock() && process->getBlock()->openCount == 0 &&
        !closeBlock(*process, process->getTopInstance().getKey())) {
        instances.erase(mainKey);
    }
}

void MeroCycleTimeAgent::dropInstance(const SV::String& key) {
    instances.erase(key);
    openPasses.erase(key);
}

// Calls

int MeroCycleTimeAgent::startSubProcess(const MeroSimEvent& event) {
    Call call;
    if (!readCall(event, call)) {
        return EventTimeOutOfRange;
    }
    bool isOwnModel = false;
    if (!isInObservedScope(call.calledModel, call.callingObject, call.mainKey, call.callerKey, isOwnModel)) {
        if (call.model == modelId) {
            closeIdleBlock(call.mainKey);
        }
    } else if (!isInWorkingTime(call.time)) {
        instances.erase(call.mainKey);
    } else if (isOwnModel) {
        addProcessInstance(call.calledModel, call.calledKey, call.mainKey, call.time);
    } else if (MeroAgentProcessInstance* const process = findInstance(call.mainKey)) {
        enterCall(*process, call);
    }
    return EventHandled;
}

void MeroCycleTimeAgent::enterCall(MeroAgentProcessInstance& process, const Call& call) {
    const bool byItself = classifyObject(modelId, call.model) == MeroPlacement::UnderObject;
    process.addSubProcess(call.calledKey, call.callerKey, call.calledModel,
                          byItself ? MeroCollecting::ByItself : MeroCollecting::ByCollectorOfCaller);
    openPass(call.calledKey, call.time);
    enterBlock(process, call.model, call.time);
}

int MeroCycleTimeAgent::endSubProcess(const MeroSimEvent& event) {
    Pass pass;
    if (!readPass(event, pass)) {
        return EventTimeOutOfRange;
    }
    if (pass.model == modelId) {
        return EventHandled;
    }
    if (!isEventRelevant({.instance = true, .calendar = true}, pass.mainKey, pass.instanceKey, MeroNoId,
                         pass.time)) {
        openPasses.erase(pass.passKey);
        return EventHandled;
    }
    const bool measured = classifyObject(modelId, pass.model) != MeroPlacement::ProcessOnly;
    MeroAgentProcessInstance& process = *findInstance(pass.mainKey);
    if (measured && !closePass(process, pass, pass.model)) {
        instances.erase(pass.mainKey);
        return EventHandled;
    }
    leaveBlock(process, pass.time);
    return EventHandled;
}

// Objects

bool MeroCycleTimeAgent::readPass(const MeroSimEvent& event, Pass& pass) {
    event.getInstanceKey(&pass.instanceKey);
    event.getMainInstanceKey(&pass.mainKey);
    event.getObjectId(&pass.object);
    event.getModelId(&pass.model);
    event.getExecutionKey(&pass.passKey);
    return readTime(event, pass.time);
}

int MeroCycleTimeAgent::measure(const MeroSimEvent& event) {
    Pass pass;
    if (!readPass(event, pass)) {
        return EventTimeOutOfRange;
    }
    if (event.code == EventObjectReached) {
        reachObject(pass);
    } else {
        finishObject(pass);
    }
    return EventHandled;
}

void MeroCycleTimeAgent::reachObject(const Pass& pass) {
    if (!isEventRelevant({.instance = true}, pass.mainKey, pass.instanceKey, MeroNoId, pass.time)) {
        return;
    }
    if (!isEventRelevant({.object = true, .calendar = true}, {}, {}, pass.object, pass.time)) {
        closeIdleBlock(pass.mainKey);
        return;
    }
    if (classifyObject(modelId, pass.model) == MeroPlacement::UnderObject) {
        openPass(pass.passKey, pass.time);
    }
    if (pass.model == modelId) {
        enterBlock(*findInstance(pass.mainKey), pass.model, pass.time);
    }
}

void MeroCycleTimeAgent::finishObject(const Pass& pass) {
    if (!isEventRelevant({.instance = true, .object = true, .calendar = true}, pass.mainKey, pass.instanceKey,
                         pass.object, pass.time)) {
        openPasses.erase(pass.passKey);
        if (MeroAgentProcessInstance* const process = findInstance(pass.mainKey)) {
            process->getBlock().reset();
        }
        return;
    }
    const bool measured = classifyObject(modelId, pass.model) == MeroPlacement::UnderObject;
    MeroAgentProcessInstance& process = *findInstance(pass.mainKey);
    if (measured && !closePass(process, pass, pass.object)) {
        instances.erase(pass.mainKey);
        return;
    }
    if (pass.model == modelId) {
        leaveBlock(process, pass.time);
    }
}

// End of an instance

int MeroCycleTimeAgent::endProcess(const MeroSimEvent& event) {
    Pass end;
    if (!readPass(event, end)) {
        return EventTimeOutOfRange;
    }
    MeroAgentProcessInstance* const process = findInstance(end.mainKey);
    if (process == nullptr) {
        return EventHandled;
    }
    const std::optional<bool> counts = countsAtEnd(*process, end.time);
    if (!counts) {
        return EventHandled;
    }
    if (*counts && closeBlock(*process, end.instanceKey)) {
        ++finishedProcesses;
        handOver(*process, {end.model, abscissaAt(end.time)});
    }
    instances.erase(end.mainKey);
    return EventHandled;
}

std::optional<bool> MeroCycleTimeAgent::countsAtEnd(const MeroAgentProcessInstance& process, double time) {
    if (!isWorkLoadAnalysis(analysisType)) {
        return true;
    }
    const std::optional<double> start = process.getStartTime();
    if (!start) {
        displayErrorMessage("aeasubag", __LINE__);
    }
    bool covered = false;
    if (isCoveredWholly(start.value_or(MeroAgentProcessInstance::StartNotMeasured), time, covered) !=
        StatusOk) {
        abortAgent();
        return std::nullopt;
    }
    return covered;
}

void MeroCycleTimeAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        for (const auto& [object, value] : instance->getValues()) {
            if (scopeObjects && value.getSecondValue() <= 0.0) {
                abortAgent();
                return;
            }
            const MeroPathView callPath = instance->getCallPath();
            readings.add({.objectId = object,
                          .path = scopeObjects ? pathOfObject(*instance, object) : callPath,
                          .itemKey = object,
                          .value = scopeObjects ? value.value / value.getSecondValue() : value.value,
                          .time = end.abscissa,
                          .count = DivisorRaised,
                          .sourceAgentType = !scopeObjects || object == modelId ? 1 : 0});
        }
    }
}
