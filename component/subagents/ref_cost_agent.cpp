#include "component/subagents/ref_cost_agent.h"

#include "component/host/basic_services.h"

#include "component/management/repository_call.h"
#include "component/subagents/observed_kind.h"

namespace {

constexpr SV::ResId DefaultName{0x2004E85};
constexpr double SecondsPerHour = 3600.0;

}  // namespace

MeroRefCostAgent::MeroRefCostAgent() {
    agentType = AgentTypeWeightedCost;
}

// Definition

int MeroRefCostAgent::setDefaultValues() {
    setCostDefaultValues(MeroRefCostAgent::servedAnalyses(), SV::String(DefaultName));
    valueKind = 3;
    return StatusOk;
}

void MeroRefCostAgent::setCostDefaultValues(const MeroAnalysisFlags& defaultAnalyses,
                                            const SV::String& defaultName) {
    setCommonDefaultValues(defaultAnalyses, defaultName);
    scopeObjects = true;
    scopeAllObjects = false;
    classOption.setDefaultValues();
    attributeOption.setDefaultValues();
}

int MeroRefCostAgent::readOwnKeys(const MeroKilnParser& parser) {
    attributeOption.readFlags(parser);
    if (classOption.getId() == MeroNoId) {
        attributeOption.clear();
        return StatusOk;
    }
    return attributeOption.readAttribute(parser, name, classOption.getId());
}

SV::String& MeroRefCostAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    classOption.appendClass(text);
    classOption.appendFlags(text);
    attributeOption.appendAttribute(text);
    attributeOption.appendFlags(text);
    return text;
}

bool MeroRefCostAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    return MeroWorkerAgent::isEqualToDefinition(parser) && attributeOption.isEqualAttribute(parser);
}

bool MeroRefCostAgent::getObjectAttribute(MeroId& id) const {
    id = attributeOption.getId();
    return id != MeroNoId;
}

// Preparation

int MeroRefCostAgent::prepareMeasure() {
    const int status = findObservedKind(classOption.getId(), observesExecutives);
    if (status != StatusOk || modelIsEnvironment) {
        return status;
    }
    return executionTimes.readAll(observedObjects);
}

bool MeroRefCostAgent::releaseCalendar() {
    instances.clear();
    executionTimes.clear();
    return MeroWorkerAgent::releaseCalendar();
}

// Measuring

std::optional<double> MeroRefCostAgent::rateOf(MeroId worker) const {
    MeroId whole = 0;
    const int code = callRepository([&](auto& repository) {
        return repository.enhanced().getAttributeValue(worker, attributeOption.getId(), whole, true);
    });
    if (code == RepositoryOk) {
        return whole;
    }
    double rate = 0.0;
    const bool known =
        code == RepositoryWrongType && repositoryDoes([&](auto& repository) {
            return repository.enhanced().getAttributeValue(worker, attributeOption.getId(), rate, true);
        });
    if (!known) {
        displayErrorMessage("aeasubag", __LINE__);
        return std::nullopt;
    }
    return rate;
}

std::optional<double> MeroRefCostAgent::costOf(const Pass& pass) {
    const std::optional<double> rate = rateOf(pass.worker);
    if (!rate) {
        return std::nullopt;
    }
    const std::optional<double> seconds =
        modelIsEnvironment ? executionTimes.findOrRead(pass.object) : executionTimes.find(pass.object);
    return seconds ? std::optional(*seconds / SecondsPerHour * *rate) : std::nullopt;
}

int MeroRefCostAgent::measure(const MeroSimEvent& event) {
    Pass pass;
    if (!readPass(event, pass)) {
        return EventTimeOutOfRange;
    }
    if (isEventRelevant({.instance = true, .object = true}, pass.mainKey, pass.instanceKey,
                        observedIdOf(pass), pass.time)) {
        addPass(*findInstance(pass.mainKey), pass);
    }
    return EventHandled;
}

void MeroRefCostAgent::addPass(MeroAgentProcessInstance& process, const Pass& pass) {
    const std::optional<double> cost = costOf(pass);
    if (!cost) {
        abortAgent();
        return;
    }
    const SV::String* const target = targetOf(process, pass);
    if (target == nullptr || !process.addFirstValue(*target, pass.worker, *cost, MeroValueUse::Accumulate)) {
        instances.erase(pass.mainKey);
    }
}

void MeroRefCostAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        for (const auto& [worker, value] : instance->getValues()) {
            gather(worker, pathOfWorker(*instance, worker), amountOf(*instance, worker, value.value), end, 1);
        }
        if (!modelIsEnvironment && !instance->isCollected()) {
            gather(instance->getModelId(), instance->getCallPath(),
                   instance->sumFirstValues(MeroNoId).value_or(0.0), end, 0);
        }
    }
}

// Results

MeroAgentResultSet* MeroRefCostAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    if (resultSet != nullptr) {
        resultSet->setDivisor(finishedProcesses);
    }
    return resultSet.get();
}
