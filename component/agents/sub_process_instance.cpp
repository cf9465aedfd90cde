#include "component/agents/sub_process_instance.h"

#include <algorithm>

void MeroAgentSubProcessInstance::begin(const SV::String& instanceKey, MeroId model, MeroPathView path,
                                        MeroAgentSubProcessInstance* collectorInstance) {
    alive = true;
    key = instanceKey;
    collected = collectorInstance != nullptr;
    collector = collectorInstance;
    modelId = model;
    callPath.assign(path);
}

void MeroAgentSubProcessInstance::clear() {
    alive = false;
    key = {};
    parent = nullptr;
    values.clear();
    children.clear();
    firstSumHolds = false;
    secondSumHolds = false;
}

MeroAgentObjectValue& MeroAgentSubProcessInstance::valueFor(MeroId objectId) {
    invalidateSums();
    MeroAgentObjectValue* const known = values.find(objectId);
    return known != nullptr ? *known : values.add(objectId);
}

void MeroAgentSubProcessInstance::addFirstValue(MeroId objectId, double value, MeroValueUse use) {
    MeroAgentObjectValue& target = valueFor(objectId);
    target.value = use == MeroValueUse::Accumulate ? target.value + value : value;
}

void MeroAgentSubProcessInstance::addSecondValue(MeroId objectId, double value, MeroValueUse use) {
    MeroAgentObjectValue& target = valueFor(objectId);
    target.setSecondValue(use == MeroValueUse::Accumulate ? target.getSecondValue() + value : value);
}

const MeroObjectValues& MeroAgentSubProcessInstance::getValues() {
    values.sort();
    return values;
}

MeroAgentObjectValue* MeroAgentSubProcessInstance::getValue(MeroId objectId) {
    MeroAgentObjectValue* const found = values.find(objectId);
    if (found != nullptr) {
        invalidateSums();
    }
    return found;
}

void MeroAgentSubProcessInstance::clearValues() {
    values.clear();
    invalidateSums();
}

template <class Part, class SumOfChild>
double MeroAgentSubProcessInstance::sumOver(MeroId objectId, Part part, SumOfChild sumOfChild) {
    double sum = 0.0;
    for (const auto& [object, value] : getValues()) {
        if (objectId == MeroNoId || object == objectId) {
            sum += part(value);
        }
    }
    for (MeroAgentSubProcessInstance* const child : children) {
        sum += sumOfChild(*child).value_or(0.0);
    }
    return sum;
}

std::optional<double> MeroAgentSubProcessInstance::sumFirstValues(MeroId objectId) {
    if (isCollected()) {
        return std::nullopt;
    }
    if (objectId == MeroNoId && firstSumHolds) {
        return firstSum;
    }
    const double sum = sumOver(
        objectId, [](const MeroAgentObjectValue& value) { return value.value; },
        [objectId](MeroAgentSubProcessInstance& child) { return child.sumFirstValues(objectId); });
    if (objectId == MeroNoId) {
        firstSum = sum;
        firstSumHolds = true;
    }
    return sum;
}

std::optional<double> MeroAgentSubProcessInstance::sumSecondValues(MeroId objectId) {
    const MeroObjectValues& ordered = getValues();
    if (isCollected() || (!ordered.empty() && !(*ordered.begin()).value.hasSecondValue())) {
        return std::nullopt;
    }
    if (objectId == MeroNoId && secondSumHolds) {
        return secondSum;
    }
    const double sum = sumOver(
        objectId, [](const MeroAgentObjectValue& value) { return value.getSecondValue(); },
        [objectId](MeroAgentSubProcessInstance& child) { return child.sumSecondValues(objectId); });
    if (objectId == MeroNoId) {
        secondSum = sum;
        secondSumHolds = true;
    }
    return sum;
}

void MeroAgentSubProcessInstance::invalidateSums() {
    for (auto* instance = this; instance != nullptr; instance = instance->parent) {
        instance->firstSumHolds = false;
        instance->secondSumHolds = false;
    }
}

bool MeroAgentSubProcessInstance::addChild(MeroAgentSubProcessInstance& child) {
    if (child.isCollected()) {
        return false;
    }
    if (!hasChild(child)) {
        children.push_back(&child);
        child.parent = this;
        invalidateSums();
    }
    return true;
}

bool MeroAgentSubProcessInstance::removeChild(MeroAgentSubProcessInstance& child) {
    if (!hasChild(child)) {
        return false;
    }
    children.erase(std::ranges::find(children, &child));
    child.parent = nullptr;
    invalidateSums();
    return true;
}

void MeroAgentSubProcessInstance::releaseChildren() {
    for (MeroAgentSubProcessInstance* const child : children) {
        child->parent = nullptr;
    }
    children.clear();
    invalidateSums();
}
