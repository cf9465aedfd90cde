#include "component/agents/support_agent.h"

namespace {

constexpr SV::ResId RestartMessage{0x20051B4};
constexpr SV::ResId RunEndMessage{0x20051B5};

}  // namespace

MeroSupportAgent::MeroSupportAgent() {
    agentType = AgentTypeSupport;
    MeroSupportAgent::registerObservedClasses();
}

int MeroSupportAgent::setDefaultValues() {
    setCommonDefaultValues({.staticWorkLoad = true, .nonStaticWorkLoad = true}, {});
    resultKind = ResultKindNone;
    valueKind = 4;
    return StatusOk;
}

int MeroSupportAgent::readDefinition([[maybe_unused]] MeroKilnParser* parser) {
    return StatusOk;
}

MeroAgentResultSet* MeroSupportAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    return nullptr;
}

int MeroSupportAgent::clearResults() {
    runPrepared = false;
    agentState = AgentIdle;
    return StatusOk;
}

int MeroSupportAgent::prepareRun(int analysis) {
    if (!isActiveInAnalysis(analysis)) {
        return StatusOutsideAnalysis;
    }
    analysisType = analysis;
    runPrepared = true;
    const int status = makeCalendar();
    if (status == StatusOk) {
        agentState = AgentPrepared;
    }
    return status;
}

int MeroSupportAgent::processEvent(MeroSimEvent* event) {
    if (agentState == AgentFailed || agentState == AgentIdle) {
        return EventHandled;
    }
    double time = 0.0;
    if (!readTime(*event, time)) {
        return EventTimeOutOfRange;
    }
    lastEventTime = time;
    const bool running = agentState == AgentRunning;
    switch (event->code) {
        case EventRunStart:
            agentState = AgentRunning;
            runStartTime = time;
            break;
        case EventRunEnd:
            if (running) {
                const MeroEventMessage message(RunEndMessage);
                agentState = AgentFinished;
            }
            break;
        case EventSubProcessEnd: {
            MeroId endingModel = MeroNoId;
            event->getModelId(&endingModel);
            if (running && endingModel == modelId) {
                countProcess(time);
            }
            break;
        }
        case EventProcessEnd:
            if (running) {
                countProcess(time);
            }
            break;
        case EventRestart:
            forgetRun();
            break;
        default:
            break;
    }
    return EventHandled;
}

void MeroSupportAgent::countProcess(double time) {
    if (!isWorkLoadAnalysis(analysisType) || isInCalendarInterval(time)) {
        ++finishedProcesses;
    }
}

void MeroSupportAgent::forgetRun() {
    const MeroEventMessage message(RestartMessage);
    runStartTime = 0.0;
    lastEventTime = 0.0;
    finishedProcesses = 0;
    agentState = AgentIdle;
}
