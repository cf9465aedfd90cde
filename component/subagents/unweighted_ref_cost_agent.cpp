#include "component/subagents/unweighted_ref_cost_agent.h"

#include "component/host/basic_services.h"

namespace {

constexpr SV::ResId DefaultName{0x2004E8E};

}  // namespace

MeroUnWeightedRefCostAgent::MeroUnWeightedRefCostAgent() {
    agentType = AgentTypeUnweightedCost;
}

int MeroUnWeightedRefCostAgent::setDefaultValues() {
    setCostDefaultValues(MeroUnWeightedRefCostAgent::servedAnalyses(), SV::String(DefaultName));
    valueKind = 4;
    return StatusOk;
}

int MeroUnWeightedRefCostAgent::clearResults() {
    executedObjects = {};
    return MeroRefCostAgent::clearResults();
}

int MeroUnWeightedRefCostAgent::prepareMeasure() {
    executedObjects.clear(observedObjects);
    return MeroRefCostAgent::prepareMeasure();
}

bool MeroUnWeightedRefCostAgent::needsRunningState(std::int32_t code) const {
    return code != EventProcessStart && code != EventSubProcessStart && code != EventProcessEnd &&
           code != EventSubProcessEnd;
}

int MeroUnWeightedRefCostAgent::processEvent(MeroSimEvent* event) {
    if (isUsable() && isWorkLoadAnalysis(analysisType) && !readTime(*event, currentTime)) {
        return EventTimeOutOfRange;
    }
    return MeroRefCostAgent::processEvent(event);
}

int MeroUnWeightedRefCostAgent::measure(const MeroSimEvent& event) {
    Pass pass;
    if (!readPass(event, pass)) {
        return EventTimeOutOfRange;
    }
    if (!isEventRelevant({.instance = !modelIsEnvironment, .object = true}, pass.mainKey, pass.instanceKey,
                         observedIdOf(pass), pass.time)) {
        return EventHandled;
    }
    if (isInWorkingTime(pass.time)) {
        addPass(pass);
    } else {
        passOutOfWorkingTime(pass);
    }
    return EventHandled;
}

void MeroUnWeightedRefCostAgent::passOutOfWorkingTime(const Pass& pass) {
    MeroAgentProcessInstance* const process = findInstance(pass.mainKey);
    const MeroPlacement placement = placementOf(pass);
    if (process == nullptr || placement == MeroPlacement::UnderObject) {
        return;
    }
    if (placement == MeroPlacement::ProcessOnly) {
        instances.erase(pass.mainKey);
    } else {
        process->removeSubProcess(pass.instanceKey, false);
    }
}

void MeroUnWeightedRefCostAgent::addPass(const Pass& pass) {
    MeroAgentProcessInstance* const process = findInstance(pass.mainKey);
    const std::optional<double> cost = process != nullptr ? costOf(pass) : std::nullopt;
    if (!cost) {
        abortAgent();
        return;
    }
    const SV::String* const target = targetOf(*process, pass);
    if (target == nullptr) {
        instances.erase(pass.mainKey);
        return;
    }
    const bool ownInstance = target == &pass.passKey;
    if (ownInstance && !modelIsEnvironment) {
        executedObjects.insert(pass.object);
    } else if (!ownInstance && !process->hasInstance(pass.instanceKey)) {
        return;
    }
    if (!process->addFirstValue(*target, pass.worker, *cost, MeroValueUse::Accumulate)) {
        abortAgent();
    }
}

std::optional<bool> MeroUnWeightedRefCostAgent::countsAtEnd(
    [[maybe_unused]] const MeroAgentProcessInstance& process, [[maybe_unused]] double time) {
    return true;
}

void MeroUnWeightedRefCostAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        emitValues(*instance, end.abscissa);
        const bool ran = !instance->getCallPath().empty() && executedObjects.contains(instance->getModelId());
        if (!modelIsEnvironment && ran) {
            emitSum(*instance, end.abscissa);
        }
        instance->clearValues();
    }
}

void MeroUnWeightedRefCostAgent::emitValues(MeroAgentSubProcessInstance& instance, double abscissa) {
    for (const auto& [worker, value] : instance.getValues()) {
        readings.add({.objectId = worker,
                      .path = pathOfWorker(instance, worker),
                      .itemKey = worker,
                      .value = amountOf(instance, worker, value.value),
                      .time = abscissa,
                      .count = DivisorRaised});
    }
}

void MeroUnWeightedRefCostAgent::emitSum(MeroAgentSubProcessInstance& instance, double abscissa) {
    const MeroId id = instance.getModelId();
    const double sum = instance.sumFirstValues(MeroNoId).value_or(0.0);
    readings.add({.objectId = id,
                  .path = instance.getCallPath(),
                  .itemKey = id,
                  .value = sum,
                  .time = abscissa,
                  .count = DivisorRaised});
    if (historyMem || historyDisk) {
        readings.addTo(*resultSet);
        if (!resultSet->addHistoryPoint(modelId, modelId, sum, abscissa)) {
            displayErrorMessage("aeasubag", __LINE__);
        }
    }
}

MeroAgentResultSet* MeroUnWeightedRefCostAgent::getResultSet(
    [[maybe_unused]] const MeroResultRequest& request) {
    if (resultSet != nullptr) {
        for (MeroAgentProcessInstance* const process : instances.inOrderOfKeys()) {
            handOver(*process, {modelId, abscissaAt(currentTime)});
        }
    }
    return resultSet.get();
}
