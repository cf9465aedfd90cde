#include "component/agents/measuring_agent.h"

#include "component/host/basic_services.h"

// Events

int MeroMeasuringAgent::processEvent(MeroSimEvent* event) {
    if (agentState == AgentFailed || agentState == AgentIdle) {
        return EventHandled;
    }
    const std::int32_t code = event->code;
    switch (code) {
        case EventRunStart:
            agentState = AgentRunning;
            return EventHandled;
        case EventRunEnd:
            endRun();
            return EventHandled;
        case EventRestart:
            restartAgent();
            return EventHandled;
        case EventInstanceDropped:
        case EventSubInstanceDropped: {
            SV::String key;
            event->getInstanceKey(&key);
            dropInstance(key);
            return EventHandled;
        }
        default:
            break;
    }
    if (agentState != AgentRunning && needsRunningState(code)) {
        return EventHandled;
    }
    switch (code) {
        case EventProcessStart:
            return startProcess(*event);
        case EventSubProcessStart:
            return startSubProcess(*event);
        case EventProcessEnd:
            return endProcess(*event);
        case EventSubProcessEnd:
            return endSubProcess(*event);
        default:
            return measuresAt(code) ? measure(*event) : EventHandled;
    }
}

void MeroMeasuringAgent::expectEvent(const MeroSimEvent& event) {
    const MeroComingEvent readable = comingEvents.exchange(askForProcessOf(event));
    if (const MeroAgentProcessInstance* const process = instances.at(readable.place)) {
        expectRest(*process, readable);
    }
}

MeroComingEvent MeroMeasuringAgent::askForProcessOf(const MeroSimEvent& event) const {
    const bool opensOrCloses = event.code == EventProcessStart || event.code == EventProcessEnd;
    if (!opensOrCloses && !measuresAt(event.code)) {
        return {};
    }
    SV::String mainKey;
    event.getMainInstanceKey(&mainKey);
    const MeroComingEvent::Place place = instances.prefetch(mainKey);
    if (opensOrCloses) {
        instances.prefetchIndex(mainKey);
        return {.place = place, .endsProcess = event.code == EventProcessEnd};
    }
    return {.place = place, .keyHash = expectPass(event)};
}

void MeroMeasuringAgent::expectRest(const MeroAgentProcessInstance& process,
                                    const MeroComingEvent& event) const {
    if (event.endsProcess) {
        process.prefetchForEnd();
    } else {
        process.prefetchForPass(event.keyHash);
    }
}

int MeroMeasuringAgent::startProcess(const MeroSimEvent& event) {
    MeroId mainModel = MeroNoId;
    event.getMainModelId(&mainModel);
    if (mainModel != modelId) {
        return EventHandled;
    }
    double time = 0.0;
    if (!readTime(event, time)) {
        return EventTimeOutOfRange;
    }
    SV::String mainKey;
    event.getMainInstanceKey(&mainKey);
    if (isInWorkingTime(time)) {
        addProcessInstance(mainModel, mainKey, mainKey, time);
    } else {
        processBeganOutOfHours(mainKey);
    }
    return EventHandled;
}

bool MeroMeasuringAgent::readCall(const MeroSimEvent& event, Call& call) {
    event.getCalledModelId(&call.calledModel);
    event.getCalledInstanceKey(&call.calledKey);
    event.getCallingObjectId(&call.callingObject);
    event.getMainModelId(&call.mainModel);
    event.getMainInstanceKey(&call.mainKey);
    event.getModelId(&call.model);
    event.getInstanceKey(&call.callerKey);
    return readTime(event, call.time);
}

int MeroMeasuringAgent::startSubProcess(const MeroSimEvent& event) {
    Call call;
    if (!readCall(event, call)) {
        return EventTimeOutOfRange;
    }
    bool isOwnModel = false;
    if (!isInObservedScope(call.calledModel, call.callingObject, call.mainKey, call.callerKey, isOwnModel)) {
        return EventHandled;
    }
    if (!isInWorkingTime(call.time)) {
        instances.erase(call.mainKey);
        return EventHandled;
    }
    if (isOwnModel) {
        if (!addProcessInstance(modelId, call.calledKey, call.mainKey, call.time)) {
            return EventHandled;
        }
    } else if (MeroAgentProcessInstance* const process = findInstance(call.mainKey)) {
        enterCall(*process, call);
    }
    noteCall(call);
    return EventHandled;
}

int MeroMeasuringAgent::endProcess(const MeroSimEvent& event) {
    SV::String mainKey;
    event.getMainInstanceKey(&mainKey);
    MeroAgentProcessInstance* const process = findInstance(mainKey);
    if (process == nullptr) {
        return EventHandled;
    }
    double time = 0.0;
    if (!readTime(event, time)) {
        return EventTimeOutOfRange;
    }
    const std::optional<bool> counts = countsAtEnd(*process, time);
    if (!counts) {
        return EventHandled;
    }
    if (*counts) {
        ++finishedProcesses;
        MeroId endingModel = MeroNoId;
        event.getModelId(&endingModel);
        handOver(*process, {endingModel, abscissaAt(time)});
    }
    instances.erase(mainKey);
    return EventHandled;
}

int MeroMeasuringAgent::endSubProcess(const MeroSimEvent& event) {
    MeroId endingModel = MeroNoId;
    event.getModelId(&endingModel);
    return endingModel == modelId ? endProcess(event) : EventHandled;
}

void MeroMeasuringAgent::dropInstance(const SV::String& key) {
    instances.erase(key);
}

std::optional<bool> MeroMeasuringAgent::countsAtEnd(const MeroAgentProcessInstance& process, double time) {
    if (!isWorkLoadAnalysis(analysisType)) {
        return true;
    }
    const std::optional<double> start = process.getStartTime();
    bool covered = false;
    if (start && isCoveredWholly(*start, time, covered) == StatusOk) {
        return covered;
    }
    displayErrorMessage("aeasubag", __LINE__);
    abortAgent();
    return std::nullopt;
}

bool MeroMeasuringAgent::isInWorkingTime(double time) {
    return !isWorkLoadAnalysis(analysisType) || isInCalendarInterval(time);
}

double MeroMeasuringAgent::abscissaAt(double time) const {
    return isWorkLoadAnalysis(analysisType) ? time : static_cast<double>(finishedProcesses);
}

MeroPathView MeroMeasuringAgent::pathOfObject(const MeroAgentSubProcessInstance& instance, MeroId objectId) {
    const MeroPathView callPath = instance.getCallPath();
    pathBuffer.assign(callPath.begin(), callPath.end());
    if (pathBuffer.empty() || pathBuffer.back() != objectId) {
        pathBuffer.push_back(objectId);
    }
    return pathBuffer;
}

MeroPathView MeroMeasuringAgent::pathFromObject(const MeroAgentSubProcessInstance& instance,
                                                MeroId objectId) {
    const MeroPathView callPath = instance.getCallPath();
    pathBuffer.clear();
    if (callPath.empty() || callPath.front() != objectId) {
        pathBuffer.push_back(objectId);
    }
    pathBuffer.insert(pathBuffer.end(), callPath.begin(), callPath.end());
    return pathBuffer;
}

void MeroMeasuringAgent::handOver(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    emitInstance(process, end);
    if (agentState == AgentFailed) {
        readings.clear();
    } else {
        readings.addTo(getMeasured());
    }
}

void MeroMeasuringAgent::gather(MeroId id, MeroPathView path, double value, const InstanceEnd& end,
                                int sourceAgentType) {
    readings.add({.objectId = id,
                  .path = path,
                  .itemKey = id,
                  .value = value,
                  .time = end.abscissa,
                  .count = finishedProcesses,
                  .sourceAgentType = sourceAgentType});
}

// Preparation

int MeroMeasuringAgent::prepareRun(int analysis) {
    if (!isActiveInAnalysis(analysis)) {
        return StatusOutsideAnalysis;
    }
    analysisType = analysis;
    using Step = int (MeroMeasuringAgent::*)();
    for (const Step step : {&MeroMeasuringAgent::checkConfiguration,
                            static_cast<Step>(&MeroMeasuringAgent::evaluateObservedObjects),
                            &MeroMeasuringAgent::objectsEvaluated,
                            static_cast<Step>(&MeroMeasuringAgent::extendObservedObjects),
                            &MeroMeasuringAgent::objectsExtended, &MeroMeasuringAgent::makeResultSet,
                            &MeroMeasuringAgent::prepareMeasure, &MeroMeasuringAgent::prepareCalendar}) {
        const int status = (this->*step)();
        if (status != StatusOk) {
            return status;
        }
    }
    observeObjects();
    runPrepared = true;
    agentState = AgentPrepared;
    return StatusOk;
}

int MeroMeasuringAgent::makeResultSet() {
    const auto [valueType, mode] = getResultSetTraits();
    resultSet =
        std::make_unique<MeroAgentResultSet>(resultKind, name, valueType, showResult, analysisType, mode);
    return enableHistory() ? StatusOk : StatusRefused;
}
