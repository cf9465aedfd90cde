#include "component/agents/measuring_agent.h"

#include "component/host/basic_services.h"

// Events

int MeroMeasuringAgent::processEvent(MeroSimEvent* event) {
    if (agentState == AgentFailed || agentState == AgentIdle) {
        return EventHandled;
    }
    const bool running = agentState == AgentRunning;
    switch (event->code) {
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
        case EventSubInstanceDropped:
            dropInstance(*event);
            return EventHandled;
        case EventProcessStart:
            return running ? startProcess(*event) : EventHandled;
        case EventSubProcessStart:
            return running ? startSubProcess(*event) : EventHandled;
        case EventSubProcessEnd: {
            MeroId endingModel = MeroNoId;
            event->getModelId(&endingModel);
            return running && endingModel == modelId ? endInstance(*event) : EventHandled;
        }
        case EventProcessEnd:
            return running ? endInstance(*event) : EventHandled;
        default:
            return running ? measure(*event) : EventHandled;
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
    if (isInWorkingTime(time)) {
        SV::String mainKey;
        event.getMainInstanceKey(&mainKey);
        addProcessInstance(mainModel, mainKey, mainKey, time);
    }
    return EventHandled;
}

void MeroMeasuringAgent::dropInstance(const MeroSimEvent& event) {
    SV::String key;
    event.getInstanceKey(&key);
    instances.erase(key);
}

bool MeroMeasuringAgent::isInWorkingTime(double time) {
    return !isWorkLoadAnalysis(analysisType) || isInCalendarInterval(time);
}

int MeroMeasuringAgent::endInstance(const MeroSimEvent& event) {
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
        emitInstance(*process,
                     isWorkLoadAnalysis(analysisType) ? time : static_cast<double>(finishedProcesses));
    }
    instances.erase(mainKey);
    return EventHandled;
}

std::optional<bool> MeroMeasuringAgent::countsAtEnd(const MeroAgentProcessInstance& process, double time) {
    if (!isWorkLoadAnalysis(analysisType)) {
        return true;
    }
    const std::optional<double> start = process.getStartTime();
    bool covered = false;
    if (!start) {
        displayErrorMessage("aeasubag", __LINE__);
    } else if (isCoveredWholly(*start, time, covered) == StatusOk) {
        return covered;
    }
    abortAgent();
    return std::nullopt;
}

MeroPathView MeroMeasuringAgent::pathOfObject(const MeroAgentSubProcessInstance& instance, MeroId objectId) {
    pathBuffer = instance.getCallPath();
    if (pathBuffer.empty() || pathBuffer.back() != objectId) {
        pathBuffer.push_back(objectId);
    }
    return pathBuffer;
}

// Preparation

int MeroMeasuringAgent::prepareRun(int analysis) {
    if (!isActiveInAnalysis(analysis)) {
        return StatusOutsideAnalysis;
    }
    analysisType = analysis;
    using Step = int (MeroMeasuringAgent::*)();
    for (const Step step :
         {static_cast<Step>(&MeroMeasuringAgent::evaluateObservedObjects),
          &MeroMeasuringAgent::objectsEvaluated,
          static_cast<Step>(&MeroMeasuringAgent::extendObservedObjects), &MeroMeasuringAgent::objectsExtended,
          &MeroMeasuringAgent::makeResultSet, static_cast<Step>(&MeroMeasuringAgent::makeCalendar)}) {
        const int status = (this->*step)();
        if (status != StatusOk) {
            return status;
        }
    }
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
