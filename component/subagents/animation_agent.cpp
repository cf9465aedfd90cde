#include "component/subagents/animation_agent.h"

#include "component/management/general_services.h"

namespace {

constexpr SV::ResId DefaultName{0x2004FEC};

}  // namespace

MeroAnimationAgent::MeroAnimationAgent() {
    agentType = AgentTypeAnimation;
}

bool MeroAnimationAgent::acceptsInputType(int type) const {
    return type != AgentTypeStrain && MeroDynamicResultCombiningAgent::acceptsInputType(type);
}

// Definition

int MeroAnimationAgent::setDefaultValues() {
    setCommonDefaultValues({.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true},
                           SV::String(DefaultName));
    valueKind = 4;
    resultKind = ResultKindNone;
    for (bool* const flag : {&showResultVisible, &showResultEditable, &showHistory, &showHistoryVisible,
                             &showHistoryEditable, &scopeObjects, &scopeVisible, &scopeEditable,
                             &scopeAllObjects, &scopeAllObjectsVisible, &scopeAllObjectsEditable}) {
        *flag = false;
    }
    animated = true;
    animatedVisible = true;
    return StatusOk;
}

int MeroAnimationAgent::readDefinition(MeroKilnParser* parser) {
    const int status = readNameAndType(parser);
    if (status == StatusOk) {
        readNameOptions(*parser);
        animatedVisible = !parser->IsContained("hide-animated");
        animated = !parser->IsContained("lock-animated");
        readAnalyses(*parser);
    }
    return readInputNames(parser, status);
}

SV::String& MeroAnimationAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    if (!animatedVisible) {
        text += "\n hide-animated";
    }
    if (!animated) {
        text += "\n lock-animated";
    }
    appendInputs(text);
    return text;
}

// Run

int MeroAnimationAgent::prepareRun(int analysis) {
    if (!isActiveInAnalysis(analysis)) {
        return StatusOutsideAnalysis;
    }
    analysisType = analysis;
    int count = 0;
    resolveInputs(count);
    if (count > 0) {
        finishedProcesses = 0;
        const int status = makeCalendar();
        if (status != StatusOk) {
            return status;
        }
        agentState = AgentPrepared;
    } else {
        agentState = AgentFailed;
    }
    liveInstances.clear();
    return StatusOk;
}

int MeroAnimationAgent::clearResults() {
    inputAgents.clear();
    agentState = AgentIdle;
    return StatusOk;
}

bool MeroAnimationAgent::releaseCalendar() {
    liveInstances.clear();
    return MeroDynamicResultCombiningAgent::releaseCalendar();
}

MeroAgentResultSet* MeroAnimationAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    return nullptr;
}

int MeroAnimationAgent::processEvent(MeroSimEvent* event) {
    if (!isUsable()) {
        return EventHandled;
    }
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
        case EventSubInstanceDropped: {
            SV::String key;
            event->getInstanceKey(&key);
            liveInstances.erase(key);
            return EventHandled;
        }
        default:
            break;
    }
    double time = 0.0;
    if (!readTime(*event, time)) {
        return EventTimeOutOfRange;
    }
    if (agentState == AgentRunning) {
        switch (event->code) {
            case EventProcessStart:
                startInstance(*event);
                break;
            case EventSubProcessStart:
                startSubInstance(*event);
                break;
            case EventProcessEnd:
            case EventSubProcessEnd:
                endInstance(*event);
                break;
            default:
                break;
        }
    }
    return EventHandled;
}

void MeroAnimationAgent::startInstance(const MeroSimEvent& event) {
    MeroId model = MeroNoId;
    SV::String key;
    event.getMainModelId(&model);
    event.getMainInstanceKey(&key);
    if (concernsModel(model) && !liveInstances.contains(key)) {
        liveInstances.add(key, {});
    }
}

void MeroAnimationAgent::startSubInstance(const MeroSimEvent& event) {
    MeroId model = MeroNoId;
    SV::String key;
    event.getCalledModelId(&model);
    event.getCalledInstanceKey(&key);
    if (concernsModel(model) && !liveInstances.contains(key)) {
        liveInstances.add(key, {});
    }
}

void MeroAnimationAgent::endInstance(const MeroSimEvent& event) {
    MeroId model = MeroNoId;
    SV::String key;
    event.getModelId(&model);
    event.getInstanceKey(&key);
    const bool concerns = event.code == EventSubProcessEnd ? model == modelId : concernsModel(model);
    if (concerns && liveInstances.erase(key)) {
        ++finishedProcesses;
        followInputs();
    }
}

void MeroAnimationAgent::followInputs() {
    for (MeroAtomarAgent* const input : inputAgents) {
        const MeroAgentResultSet* const set = input->getResultSet({});
        if (set == nullptr) {
            continue;
        }
        if (set->getResultKind() != ResultKindNumber && set->getResultKind() != ResultKindTime) {
            abortAgent();
            return;
        }
    }
}
