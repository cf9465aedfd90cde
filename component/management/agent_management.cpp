#include "component/management/agent_management.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/sim_mapping.h"
#include "component/host/sv_boxes.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/management/agent_queries.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/management/run_globals.h"

namespace {

/// Requests to hide the event message since it was shown, and how many it takes; 0 means not counted yet.
int gEventMessageHideCalls = 0;
int gEventMessageExpectedHides = 0;

}  // namespace

MeroAgentManagement::MeroAgentManagement() : superAgents(std::make_shared<MeroAgentRegistry>()) {
    init();
}

MeroAgentManagement::MeroAgentManagement(const MeroAgentManagement&) = default;
MeroAgentManagement& MeroAgentManagement::operator=(const MeroAgentManagement&) = default;

MeroAgentManagement::~MeroAgentManagement() {
    gAgentManagement = nullptr;
    if (initialised) {
        SV::GetpApp()->Wait(true);
        superAgents.reset();
        eventMessageWindow.reset();
        SV::GetpApp()->Wait(false);
    }
}

int MeroAgentManagement::init() {
    if (initialised) {
        return StatusOk;
    }
    MeroSimMappingHandler* const mapping = MeroSimMappingHandler::GetGlobal();
    if (mapping == nullptr || !mapping->isDefined() || gAgentManagement != nullptr) {
        return StatusRefused;
    }
    gAgentManagement = this;
    eventMessageWindow.reset();
    running = false;
    currentAlgorithm = AnalysisNone;
    daysPerYear = 365.0;
    hoursPerDay = 24.0;
    instantiatedAgents = 0;
    superAgents = std::make_shared<MeroAgentRegistry>();
    initialised = true;
    return StatusOk;
}

int MeroAgentManagement::addSuperAgentToList(std::unique_ptr<MeroSuperAgent>& agent) {
    return superAgents->add(agent) ? StatusOk : StatusRefused;
}

int MeroAgentManagement::getSuperAgentFromList(const MeroId& agentId, MeroSuperAgent*& agent) {
    agent = superAgents->find(agentId);
    return agent != nullptr ? StatusOk : StatusRefused;
}

MeroSuperAgent& MeroAgentManagement::ensureSuperAgent(MeroId agentId, MeroId modelId) {
    MeroSuperAgent* agent = nullptr;
    if (getSuperAgentFromList(agentId, agent) == StatusOk) {
        if (agent->hasUnreadTexts() && !agent->isStarted()) {
            agent->attachToInstance(agentId, modelId);
        }
        return *agent;
    }
    auto made = std::make_unique<MeroSuperAgent>();
    made->attachToInstance(agentId, modelId);
    agent = made.get();
    if (addSuperAgentToList(made) != StatusOk) {
        // What couldn't be attached has no identifier, and one such agent stands for all.
        getSuperAgentFromList(made->getInstanceId(), agent);
    }
    return *agent;
}

MeroSuperAgent* MeroAgentManagement::ensureSuperAgent(MeroId agentId) {
    MeroId modelId = MeroNoId;
    if (!repositoryDoes(
            [&](auto& repository) { return repository.enhanced().getModelOfInstance(agentId, modelId); })) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return nullptr;
    }
    return &ensureSuperAgent(agentId, modelId);
}

int MeroAgentManagement::getAgentFromID(MeroSuperAgent*& agent, const MeroId& agentId, const int& create) {
    agent = nullptr;
    if (!initialised) {
        return StatusNotInitialised;
    }
    if (getSuperAgentFromList(agentId, agent) == StatusOk) {
        return StatusOk;
    }
    if (create == 0) {
        return StatusAgentUnknown;
    }
    agent = ensureSuperAgent(agentId);
    return agent != nullptr ? StatusOk : StatusRepositoryError;
}

int MeroAgentManagement::getNumberOfInstantiatedAgents() const {
    return instantiatedAgents;
}

int MeroAgentManagement::getCurrentAlgorithm() {
    return currentAlgorithm;
}

int MeroAgentManagement::getGlobalSimAttributes(MeroId& attributes) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    attributes = Mero_GetCoreVar(CoreAvailability);
    return StatusOk;
}

int MeroAgentManagement::getApplicationModel(ISortedSet<MeroId>& models) {
    if (applicationModels.empty()) {
        return StatusRefused;
    }
    models = applicationModels;
    return StatusOk;
}

void MeroAgentManagement::showEventMessage(const SV::String& text) {
    if (eventMessageWindow == nullptr) {
        eventMessageWindow = std::make_shared<MeroMessWin>(SV::GetpApp()->GetAppWindow(), text);
    } else {
        eventMessageWindow->SetText(text);
    }
    eventMessageWindow->Show();
}

int MeroAgentManagement::hideEventMessage() {
    if (eventMessageWindow == nullptr) {
        return StatusOk;
    }
    ++gEventMessageHideCalls;
    if (gEventMessageExpectedHides == 0) {
        gEventMessageExpectedHides = countExpectedHides();
    }
    if (gEventMessageHideCalls < gEventMessageExpectedHides) {
        return StatusRefused;
    }
    eventMessageWindow->Hide();
    eventMessageWindow.reset();
    gEventMessageHideCalls = 0;
    gEventMessageExpectedHides = 0;
    return StatusOk;
}

int MeroAgentManagement::countExpectedHides() const {
    int count = 0;
    for (const auto& superAgent : superAgents->agents()) {
        const auto subAgents = superAgent->getSubAgents();
        count += static_cast<int>(std::count_if(subAgents.begin(), subAgents.end(), [](const auto& agent) {
            return agent->isEventProcessing() && agent->isUsable();
        }));
        count += superAgent->getSupportAgent() != nullptr ? 1 : 0;
    }
    return count;
}
