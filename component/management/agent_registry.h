#pragma once

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "component/host/types.h"

class MeroSuperAgent;

/// The super agents that have been mentioned so far, owned, in the order in which they were.
class MeroAgentRegistry {
public:
    MeroAgentRegistry();
    MeroAgentRegistry(const MeroAgentRegistry&) = delete;
    MeroAgentRegistry& operator=(const MeroAgentRegistry&) = delete;
    ~MeroAgentRegistry();

    /// False, and no change, if an agent of the same instance is there.
    bool add(std::unique_ptr<MeroSuperAgent>& agent);
    /// Null for an unknown instance.
    [[nodiscard]] MeroSuperAgent* find(MeroId instanceId) const;
    void remove(MeroId instanceId);
    [[nodiscard]] std::span<const std::unique_ptr<MeroSuperAgent>> agents() const { return ordered; }

private:
    std::vector<std::unique_ptr<MeroSuperAgent>> ordered;
    std::unordered_map<MeroId, MeroSuperAgent*> byInstance;
};
