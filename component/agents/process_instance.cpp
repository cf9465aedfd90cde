#include "component/agents/process_instance.h"

#include <algorithm>
#include <vector>

#include "component/host/basic_services.h"

namespace {

/// Sets the path of a call of `model` from an instance with the path `caller`.
void setPathOfCall(MeroCallPath& path, MeroPathView caller, MeroId model) {
    const auto occurrence = std::ranges::find(caller, model);
    path.assign({caller.begin(), occurrence});
    if (occurrence == caller.end()) {
        path.push_back(model);
    }
}

}  // namespace

void MeroAgentProcessInstance::begin(const SV::String& mainKey, const SV::String& topKey, MeroId model,
                                     double start) {
    if (isAlive()) {
        clear();
    }
    key = mainKey;
    modelId = model;
    startTime = start;
    topInstance.begin(topKey, model, {&model, 1}, nullptr);
}

void MeroAgentProcessInstance::clear() {
    key = {};
    block.reset();
    placeOfKept.reset();
    topInstance.clear();
    subInstances.clear();
}

std::optional<double> MeroAgentProcessInstance::getStartTime() const {
    return startTime != StartNotMeasured ? std::optional(startTime) : std::nullopt;
}

bool MeroAgentProcessInstance::addSubProcess(const SV::String& instanceKey, const SV::String& callerKey,
                                             MeroId model, MeroCollecting collecting) {
    if (hasInstance(instanceKey)) {
        return true;
    }
    MeroAgentSubProcessInstance* const caller = getInstance(callerKey);
    if (caller == nullptr) {
        return false;
    }
    MeroCallPath path;
    setPathOfCall(path, caller->getCallPath(), model);
    MeroAgentSubProcessInstance* collector =
        collecting == MeroCollecting::ByCollectorOfCaller ? &caller->getCollector() : nullptr;
    MeroAgentSubProcessInstance* const samePath = findByPath(path);
    if (samePath != nullptr) {
        collector = &samePath->getCollector();
    }
    MeroAgentSubProcessInstance& made = subInstances.add(instanceKey, model, path, collector);
    if (!made.isCollected()) {
        caller->getCollector().addChild(made);
    }
    return true;
}

MeroAgentSubProcessInstance* MeroAgentProcessInstance::findByPath(MeroPathView path) {
    return std::ranges::equal(topInstance.getCallPath(), path) ? &topInstance : subInstances.findByPath(path);
}

bool MeroAgentProcessInstance::removeSubProcess(const SV::String& instanceKey, bool hadValues) {
    MeroAgentSubProcessInstance* const instance = getInstance(instanceKey);
    if (instance == nullptr) {
        return false;
    }
    if (instance->getParent() == nullptr) {
        displayErrorMessage("aeagents", __LINE__);
        return false;
    }
    instance->getParent()->removeChild(*instance);
    if (hadValues) {
        displayErrorMessage("aeagents", __LINE__);
    }
    std::vector<SV::String> collected;
    for (std::size_t position = 0; position < subInstances.size(); ++position) {
        const MeroAgentSubProcessInstance& other = subInstances[position];
        if (&other != instance && &other.getCollector() == instance) {
            collected.push_back(other.getKey());
        }
    }
    std::ranges::for_each(collected, [this](const SV::String& otherKey) { eraseSubInstance(otherKey); });
    eraseSubInstance(SV::String(instanceKey));
    return true;
}

void MeroAgentProcessInstance::eraseSubInstance(const SV::String& instanceKey) {
    subInstances.find(instanceKey)->releaseChildren();
    subInstances.erase(instanceKey);
}

MeroAgentSubProcessInstance* MeroAgentProcessInstance::getInstance(const SV::String& instanceKey) {
    return isTop(instanceKey) ? &topInstance : subInstances.find(instanceKey);
}

MeroAgentSubProcessInstance* MeroAgentProcessInstance::getCollector(const SV::String& instanceKey) {
    MeroAgentSubProcessInstance* const instance = getInstance(instanceKey);
    return instance != nullptr ? &instance->getCollector() : nullptr;
}

void MeroAgentProcessInstance::getInstances(std::vector<MeroAgentSubProcessInstance*>& inOrder) {
    inOrder.clear();
    if (isAlive()) {
        inOrder.push_back(&topInstance);
    }
    for (std::size_t position = 0; position < subInstances.size(); ++position) {
        MeroAgentSubProcessInstance& instance = subInstances[position];
        __builtin_prefetch(instance.getKey().GetStr());
        inOrder.push_back(&instance);
    }
    std::ranges::sort(inOrder, {},
                      [](const auto* instance) -> const SV::String& { return instance->getKey(); });
}

bool MeroAgentProcessInstance::addFirstValue(const SV::String& instanceKey, MeroId objectId, double value,
                                             MeroValueUse use) {
    MeroAgentSubProcessInstance* const collector = getCollector(instanceKey);
    if (collector == nullptr) {
        return false;
    }
    collector->addFirstValue(objectId, value, use);
    return true;
}

bool MeroAgentProcessInstance::addSecondValue(const SV::String& instanceKey, MeroId objectId, double value,
                                              MeroValueUse use) {
    MeroAgentSubProcessInstance* const collector = getCollector(instanceKey);
    if (collector == nullptr) {
        return false;
    }
    collector->addSecondValue(objectId, value, use);
    return true;
}

MeroAgentObjectValue* MeroAgentProcessInstance::getValue(const SV::String& instanceKey, MeroId objectId) {
    MeroAgentSubProcessInstance* const collector = getCollector(instanceKey);
    return collector != nullptr ? collector->getValue(objectId) : nullptr;
}

std::optional<MeroId> MeroAgentProcessInstance::getInstanceModelId(const SV::String& instanceKey) {
    MeroAgentSubProcessInstance* const collector = getCollector(instanceKey);
    return collector != nullptr ? std::optional(collector->getModelId()) : std::nullopt;
}

void MeroAgentProcessInstance::prefetchForPass(std::size_t keyHash) const {
    if (subInstances.hasMemory()) {
        subInstances.prefetch(keyHash);
        return;
    }
    topInstance.prefetchValues();
    __builtin_prefetch(&block);
}

void MeroAgentProcessInstance::prefetchForEnd() const {
    topInstance.prefetchValues();
    subInstances.prefetchAll();
}
