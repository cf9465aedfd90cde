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
    processBlocks.clear();
    return MeroMeasuringAgent::releaseCalendar();
}

// Passes and blocks

void MeroCycleTimeAgent::openPass(const SV::String& passKey, double time) {
    if (!openPasses.contains(passKey)) {
        openPasses.add(passKey, time);
    }
}

bool MeroCycleTimeAgent::closePass(MeroAgentProcessInstance& process, const Pass& pass, MeroId object) {
    const double* const start = openPasses.find(pass.passKey);
    if (start == nullptr) {
        return true;
    }
    const double duration = pass.time - *start;
    openPasses.erase(pass.passKey);
    return process.addFirstValue(pass.instanceKey, object, duration, MeroValueUse::Accumulate) &&
           process.addSecondValue(pass.instanceKey, object, OnePass, MeroValueUse::Accumulate);
}

void MeroCycleTimeAgent::enterBlock(const SV::String& mainKey, MeroId model, double time) {
    if (MeroMainProcessBlock* const block = processBlocks.find(mainKey)) {
        ++block->openCount;
    } else if (model == modelId) {
        processBlocks.add(mainKey, {time, time});
    }
}

void MeroCycleTimeAgent::leaveBlock(const SV::String& mainKey, double time) {
    if (MeroMainProcessBlock* const block = processBlocks.find(mainKey)) {
        block->endTime = time;
        --block->openCount;
    }
}

bool MeroCycleTimeAgent::closeBlock(MeroAgentProcessInstance& process, const SV::String& mainKey,
                                    const SV::String& instanceKey) {
    const MeroMainProcessBlock* const block = processBlocks.find(mainKey);
    if (block == nullptr) {
        return true;
    }
    const double duration = block->endTime - block->startTime;
    processBlocks.erase(mainKey);
    return process.addFirstValue(instanceKey, modelId, duration, MeroValueUse::Accumulate) &&
           process.addSecondValue(instanceKey, modelId, OnePass, MeroValueUse::Replace);
}

void MeroCycleTimeAgent::closeIdleBlock(const SV::String& mainKey) {
    const MeroMainProcessBlock* const block = processBlocks.find(mainKey);
    MeroAgentProcessInstance* const process = findInstance(mainKey);
    if (block != nullptr && block->openCount == 0 && process != nullptr &&
        !closeBlock(*process, mainKey, process->getTopInstance().getKey())) {
        instances.erase(mainKey);
    }
}

void MeroCycleTimeAgent::dropProcess(const SV::String& mainKey) {
    instances.erase(mainKey);
    processBlocks.erase(mainKey);
}

void MeroCycleTimeAgent::dropInstance(const SV::String& key) {
    dropProcess(key);
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
        dropProcess(call.mainKey);
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
    enterBlock(call.mainKey, call.model, call.time);
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
    if (measured && !closePass(*findInstance(pass.mainKey), pass, pass.model)) {
        dropProcess(pass.mainKey);
        return EventHandled;
    }
    leaveBlock(pass.mainKey, pass.time);
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
        enterBlock(pass.mainKey, pass.model, pass.time);
    }
}

void MeroCycleTimeAgent::finishObject(const Pass& pass) {
    if (!isEventRelevant({.instance = true, .object = true, .calendar = true}, pass.mainKey, pass.instanceKey,
                         pass.object, pass.time)) {
        openPasses.erase(pass.passKey);
        processBlocks.erase(pass.mainKey);
        return;
    }
    const bool measured = classifyObject(modelId, pass.model) == MeroPlacement::UnderObject;
    if (measured && !closePass(*findInstance(pass.mainKey), pass, pass.object)) {
        dropProcess(pass.mainKey);
        return;
    }
    if (pass.model == modelId) {
        leaveBlock(pass.mainKey, pass.time);
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
        processBlocks.erase(end.mainKey);
        return EventHandled;
    }
    const std::optional<bool> counts = countsAtEnd(*process, end.time);
    if (!counts) {
        return EventHandled;
    }
    if (*counts && closeBlock(*process, end.mainKey, end.instanceKey)) {
        ++finishedProcesses;
        emitInstance(*process, {end.model, abscissaAt(end.time)});
    }
    dropProcess(end.mainKey);
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
    for (MeroAgentSubProcessInstance* const instance : process.getInstances()) {
        for (const auto& [object, value] : instance->getValues()) {
            if (scopeObjects && value.getSecondValue() <= 0.0) {
                abortAgent();
                return;
            }
            const MeroPathView callPath = instance->getCallPath();
            resultSet->addValue({.objectId = object,
                                 .path = scopeObjects ? pathOfObject(*instance, object) : callPath,
                                 .itemKey = object,
                                 .value = scopeObjects ? value.value / value.getSecondValue() : value.value,
                                 .time = end.abscissa,
                                 .count = DivisorRaised,
                                 .sourceAgentType = !scopeObjects || object == modelId ? 1 : 0});
        }
    }
}
