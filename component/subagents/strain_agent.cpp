#include "component/subagents/strain_agent.h"

#include "component/host/basic_services.h"

#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/management/run_globals.h"
#include "component/subagents/observed_kind.h"

namespace {

constexpr SV::ResId DefaultName{0x2004EB6};

}  // namespace

MeroStrainAgent::MeroStrainAgent() {
    agentType = AgentTypeStrain;
}

// Definition

int MeroStrainAgent::setDefaultValues() {
    setCommonDefaultValues(servedAnalyses(), SV::String(DefaultName));
    valueKind = 4;
    scopeObjects = true;
    scopeAllObjects = false;
    classOption.setDefaultValues();
    keepNoHistory();
    return StatusOk;
}

void MeroStrainAgent::keepNoHistory() {
    for (bool* const flag :
         {&historyMem, &historyMemVisible, &historyMemEditable, &historyDisk, &historyDiskVisible,
          &historyDiskEditable, &showHistory, &showHistoryVisible, &showHistoryEditable}) {
        *flag = false;
    }
}

int MeroStrainAgent::readOwnKeys([[maybe_unused]] const MeroKilnParser& parser) {
    keepNoHistory();
    return StatusOk;
}

SV::String& MeroStrainAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    classOption.appendClass(text);
    classOption.appendFlags(text);
    return text;
}

// Preparation

int MeroStrainAgent::makeResultSet() {
    const auto [valueType, mode] = getResultSetTraits();
    rawResult =
        std::make_unique<MeroAgentResultSet>(resultKind, name, valueType, showResult, analysisType, mode);
    return StatusOk;
}

int MeroStrainAgent::prepareMeasure() {
    const int status = findObservedKind(classOption.getId(), observesExecutives);
    if (status != StatusOk) {
        return status;
    }
    if (!modelIsEnvironment && executionTimes.readAll(observedObjects) != StatusOk) {
        return StatusRepositoryError;
    }
    if (gAgentManagement == nullptr ||
        gAgentManagement->getGlobalSimAttributes(availabilityAttribute) != StatusOk) {
        displayErrorMessage("aeasubag", __LINE__);
        return StatusRefused;
    }
    scaledResultValid = false;
    return StatusOk;
}

int MeroStrainAgent::clearResults() {
    rawResult.reset();
    return MeroWorkerAgent::clearResults();
}

void MeroStrainAgent::clearRunData() {
    executionTimes.clear();
    availabilities.clear();
}

// Measuring

std::optional<double> MeroStrainAgent::executionTimeOf(MeroId object) {
    return modelIsEnvironment ? executionTimes.findOrRead(object) : executionTimes.find(object);
}

std::optional<std::int32_t> MeroStrainAgent::availabilityOf(MeroId worker) {
    constexpr std::int32_t fullyAvailable = 100;
    if (const std::int32_t* const known = availabilities.find(worker)) {
        return *known;
    }
    if (!observesExecutives) {
        return fullyAvailable;
    }
    if (availabilityAttribute == MeroNoId) {
        return std::nullopt;
    }
    MeroId percent = 0;
    const bool known = repositoryDoes([&](auto& repository) {
        return repository.enhanced().getAttributeValue(worker, availabilityAttribute, percent, true);
    });
    if (!known) {
        displayErrorMessage("aeasubag", __LINE__);
        return std::nullopt;
    }
    return availabilities.add(worker, percent);
}

int MeroStrainAgent::measure(const MeroSimEvent& event) {
    Pass pass;
    if (!readPass(event, pass)) {
        return EventTimeOutOfRange;
    }
    if (isEventRelevant({.instance = !modelIsEnvironment, .object = true}, pass.mainKey, pass.instanceKey,
                        observedIdOf(pass), pass.time)) {
        if (MeroAgentProcessInstance* const process = findInstance(pass.mainKey)) {
            addPass(*process, pass);
        }
    }
    return EventHandled;
}

void MeroStrainAgent::addPass(MeroAgentProcessInstance& process, const Pass& pass) {
    const std::optional<double> duration = executionTimeOf(pass.object);
    const std::optional<std::int32_t> availability = duration ? availabilityOf(pass.worker) : std::nullopt;
    if (!availability) {
        abortAgent();
        return;
    }
    if (*availability == 0) {
        return;
    }
    const double value = *duration / *availability * 100.0;
    const SV::String* const target = targetOf(process, pass);
    if (target == nullptr || !process.addFirstValue(*target, pass.worker, value, MeroValueUse::Accumulate)) {
        instances.erase(pass.mainKey);
    }
}

void MeroStrainAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    scaledResultValid = false;
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        for (const auto& [worker, value] : instance->getValues()) {
            gather(worker, pathOfObject(*instance, worker), value.value, end, 0);
        }
        if (!modelIsEnvironment && !instance->isCollected()) {
            gather(instance->getModelId(), instance->getCallPath(),
                   instance->sumFirstValues(MeroNoId).value_or(0.0), end, 0);
        }
    }
}

// Results

bool MeroStrainAgent::hasObjectResults(bool ignoreShowFlag) {
    return rawResult != nullptr && rawResult->hasObjectResults(ignoreShowFlag);
}

MeroAgentResultSet* MeroStrainAgent::getResultSet(const MeroResultRequest& request) {
    if (!request.scaled || rawResult == nullptr) {
        return nullptr;
    }
    if (resultSet != nullptr && scaledResultValid && request.frequency == lastFrequency &&
        request.frequencyPeriod == lastPeriod) {
        return resultSet.get();
    }
    const MeroWaitCursor wait;
    if (!scaleResults(request)) {
        displayErrorMessage("aeasubag", __LINE__);
        resultSet.reset();
        return nullptr;
    }
    lastFrequency = request.frequency;
    lastPeriod = request.frequencyPeriod;
    scaledResultValid = true;
    return resultSet.get();
}

bool MeroStrainAgent::scaleResults(const MeroResultRequest& request) {
    resultSet =
        std::make_unique<MeroAgentResultSet>(resultKind, name, ValueTypeScaled, showResult, analysisType,
                                             modelIsEnvironment ? ResultModeSum : ResultModeLast);
    rawResult->setDivisor(finishedProcesses);
    SV::String period;
    if (!convertTimeToSimBase(request.frequencyPeriod, period)) {
        return false;
    }
    const double seconds = getTimeValue(period, gDaysPerYear, gHoursPerDay);
    for (const MeroDoubleResult* const result : rawResult->getAllResults()) {
        for (const auto& item : result->getItems()) {
            const double scaledValue = static_cast<double>(request.frequency) * item->getValue() / seconds;
            if (!addScaledItem(*result, *item, scaledValue)) {
                return false;
            }
        }
    }
    return true;
}

bool MeroStrainAgent::addScaledItem(const MeroDoubleResult& result, const MeroDoubleResultItem& item,
                                    double scaledValue) {
    MeroPath path(item.getPath().begin(), item.getPath().end());
    MeroId id = result.getObjectId();
    if (modelIsEnvironment && !path.empty()) {
        id = path.back();
        path.pop_back();
        path.insert(path.begin(), id);
    }
    return resultSet->addValue({.objectId = id,
                                .path = path,
                                .itemKey = id,
                                .value = scaledValue,
                                .count = 1,
                                .history = MeroHistoryUse::Left,
                                .sourceAgentType = isMeasuredWorker(id) ? 1 : 0});
}

bool MeroStrainAgent::isMeasuredWorker(MeroId id) const {
    bool isWorker = false;
    const int code = callRepository([&](auto& repository) {
        return repository.enhanced().instanceOf(
            Mero_GetCoreVar(observesExecutives ? CoreExecutive : CoreResource), id, isWorker);
    });
    if (code != RepositoryOk && code != RepositoryClassUnknown) {
        displayErrorMessage("aeasubag", __LINE__);
    }
    return code == RepositoryOk && isWorker;
}
