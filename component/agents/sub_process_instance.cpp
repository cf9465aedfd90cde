#include "component/agents/sub_process_instance.h"

#include <utility>

void MeroAgentSubProcessInstance::begin(const SV::String& instanceKey, MeroId model, MeroPathView path,
                                        MeroAgentSubProcessInstance* collectorInstance) {
    alive = true;
    key = instanceKey;
    collected = collectorInstance != nullptr;
    above = collectorInstance;
    modelId = model;
    callPath.assign(path);
}

void MeroAgentSubProcessInstance::clear() {
    alive = false;
    key = {};
    above = nullptr;
    collected = false;
    values.clear();
    lastChild = nullptr;
    firstSumHolds = false;
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
    if (lastChild != nullptr) {
        MeroAgentSubProcessInstance* child = lastChild;
        do {
            child = child->next;
            sum += sumOfChild(*child).value_or(0.0);
        } while (child != lastChild);
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
    return sumOver(
        objectId, [](const MeroAgentObjectValue& value) { return value.getSecondValue(); },
        [objectId](MeroAgentSubProcessInstance& child) { return child.sumSecondValues(objectId); });
}

void MeroAgentSubProcessInstance::invalidateSums() {
    for (auto* instance = this; instance != nullptr; instance = instance->getParent()) {
        instance->firstSumHolds = false;
    }
}

bool MeroAgentSubProcessInstance::addChild(MeroAgentSubProcessInstance& child) {
    if (child.isCollected()) {
        return false;
    }
    if (!hasChild(child)) {
        child.above = this;
        child.next = lastChild != nullptr ? std::exchange(lastChild->next, &child) : &child;
        lastChild = &child;
        invalidateSums();
    }
    return true;
}

MeroAgentSubProcessInstance& MeroAgentSubProcessInstance::siblingBefore(
    const MeroAgentSubProcessInstance& child) const {
    MeroAgentSubProcessInstance* before = lastChild;
    while (before->next != &child) {
        before = before->next;
    }
    return *before;
}

bool MeroAgentSubProcessInstance::removeChild(MeroAgentSubProcessInstance& child) {
    if (!hasChild(child)) {
        return false;
    }
    MeroAgentSubProcessInstance& before = siblingBefore(child);
    before.next = child.next;
    if (lastChild == &child) {
        lastChild = &before != &child ? &before : nullptr;
    }
    child.above = nullptr;
    invalidateSums();
    return true;
}

void MeroAgentSubProcessInstance::releaseChildren() {
    while (lastChild != nullptr) {
        removeChild(*lastChild->next);
    }
}
