#include "component/agents/process_instance.h"

#include <algorithm>
#include <vector>

#include "component/host/basic_services.h"

namespace {

/// The path of a call of `model` from an instance with the path `caller`.
MeroPath pathOfCall(const MeroPath& caller, MeroId model) {
    const auto occurrence = std::ranges::find(caller, model);
    MeroPath path(caller.begin(), occurrence);
    if (occurrence == caller.end()) {
        path.push_back(model);
    }
    return path;
}

}  // namespace

void MeroAgentProcessInstance::begin(const SV::String& mainKey, MeroId model, double start) {
    clear();
    key = mainKey;
    modelId = model;
    startTime = start;
}

void MeroAgentProcessInstance::clear() {
    paths.clear();
    instances.clear();
    top = nullptr;
    topInstance.reset();
}

std::optional<double> MeroAgentProcessInstance::getStartTime() const {
    return startTime != StartNotMeasured ? std::optional(startTime) : std::nullopt;
}

void MeroAgentProcessInstance::addTopInstance(const SV::String& instanceKey, MeroId model) {
    if (!hasInstance(instanceKey)) {
        top = &topInstance.emplace(instanceKey, model, MeroPath{model}, nullptr);
        instances.add(instanceKey, InstancePointer(top, MeroReleaseInstance{.inProcess = true}));
    }
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
    MeroPath path = pathOfCall(caller->getCallPath(), model);
    MeroAgentSubProcessInstance* collector =
        collecting == MeroCollecting::ByCollectorOfCaller ? &caller->getCollector() : nullptr;
    MeroAgentSubProcessInstance* const samePath = findByPath(path);
    if (samePath != nullptr) {
        collector = &samePath->getCollector();
    }
    InstancePointer pointer(
        std::make_unique<MeroAgentSubProcessInstance>(instanceKey, model, std::move(path), collector)
            .release());
    auto& made = *instances.add(instanceKey, std::move(pointer));
    if (samePath == nullptr) {
        paths.insert(&made);
    }
    if (!made.isCollected()) {
        caller->getCollector().addChild(made);
    }
    return true;
}

MeroAgentSubProcessInstance* MeroAgentProcessInstance::findByPath(MeroPathView path) const {
    if (top != nullptr && std::ranges::equal(top->getCallPath(), path)) {
        return top;
    }
    const auto found = paths.find(path);
    return found != paths.end() ? *found : nullptr;
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
    for (const auto& [otherKey, other] : instances) {
        if (other.get() != instance && &other->getCollector() == instance) {
            collected.push_back(otherKey);
        }
    }
    std::ranges::for_each(collected, [this](const SV::String& otherKey) { eraseInstance(otherKey); });
    eraseInstance(SV::String(instanceKey));
    return true;
}

void MeroAgentProcessInstance::eraseInstance(const SV::String& instanceKey) {
    MeroAgentSubProcessInstance* const instance = getInstance(instanceKey);
    const auto path = paths.find(instance);
    if (path != paths.end() && *path == instance) {
        paths.erase(path);
    }
    if (instance == top) {
        top = nullptr;
    }
    instance->releaseChildren();
    instances.erase(instanceKey);
}

MeroAgentSubProcessInstance* MeroAgentProcessInstance::getInstance(const SV::String& instanceKey) {
    if (isTop(instanceKey)) {
        return top;
    }
    auto* const found = instances.find(instanceKey);
    return found != nullptr ? found->get() : nullptr;
}

MeroAgentSubProcessInstance* MeroAgentProcessInstance::getCollector(const SV::String& instanceKey) {
    MeroAgentSubProcessInstance* const instance = getInstance(instanceKey);
    return instance != nullptr ? &instance->getCollector() : nullptr;
}

MeroAgentProcessInstance::Instances& MeroAgentProcessInstance::getInstances() {
    instances.sortBy(std::less<>{});
    return instances;
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

MeroProcessInstancePool::Pointer MeroProcessInstancePool::make(const SV::String& mainKey, MeroId model,
                                                               double start) {
    if (idle.empty()) {
        idle.push_back(std::make_unique<MeroAgentProcessInstance>());
    }
    Pointer process(idle.back().release(), GiveBack{this});
    idle.pop_back();
    process->begin(mainKey, model, start);
    return process;
}

void MeroProcessInstancePool::takeBack(MeroAgentProcessInstance* process) {
    process->clear();
    idle.emplace_back(process);
}
