#include "component/management/agent_registry.h"

#include <algorithm>

#include "component/agents/super_agent.h"

MeroAgentRegistry::MeroAgentRegistry() = default;
MeroAgentRegistry::~MeroAgentRegistry() = default;

bool MeroAgentRegistry::add(std::unique_ptr<MeroSuperAgent>& agent) {
    if (!byInstance.emplace(agent->getInstanceId(), agent.get()).second) {
        return false;
    }
    ordered.push_back(std::move(agent));
    return true;
}

MeroSuperAgent* MeroAgentRegistry::find(MeroId instanceId) const {
    const auto place = byInstance.find(instanceId);
    return place != byInstance.end() ? place->second : nullptr;
}

void MeroAgentRegistry::remove(MeroId instanceId) {
    const auto place = byInstance.find(instanceId);
    if (place == byInstance.end()) {
        return;
    }
    const auto owner = std::find_if(ordered.begin(), ordered.end(),
                                    [&](const auto& agent) { return agent.get() == place->second; });
    byInstance.erase(place);
    ordered.erase(owner);
}
