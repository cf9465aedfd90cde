#include "component/agents/model_agent.h"

#include "component/host/core_time.h"
#include "component/host/model_references.h"

#include "component/agents/repository_codes.h"

namespace {

/// Model that the object's reference names; nothing, and an internal error, for an object without a target.
std::optional<MeroId> targetOfCall(MeroCoreMM_Enhanced& repository, MeroId callId) {
    const char* reference = nullptr;
    if (!succeeded(
            repository.getAttributeValue(callId, Mero_GetCoreVar(CoreReferencedModel), reference, true),
            __LINE__)) {
        return std::nullopt;
    }
    MeroId target = MeroNoId;
    const SV::String text(reference != nullptr ? reference : "");
    if (!succeeded(MeroCoreInterReferenceHandler::getTargetModelID(text, ClassCodeProcessModel, target),
                   __LINE__)) {
        return std::nullopt;
    }
    return target;
}

}  // namespace

double MeroModelAgent::getTimeValue(const SV::String& timeText, double yearDays, double dayHours) {
    MeroCoreTime time;
    time.setBase(yearDays, dayHours);
    return time._s2d(timeText);
}

int MeroModelAgent::extendObservedObjects() {
    if (modelIsEnvironment) {
        return StatusOk;
    }
    ISortedSet<MeroId> calledModels;
    const int status = computeCalledModels(calledModels);
    if (status != StatusOk) {
        return status;
    }
    observedObjects.insertAll(calledModels);
    return joinObjectsOf(calledModels);
}

int MeroModelAgent::joinObjectsOf(const ISortedSet<MeroId>& calledModels) {
    ISortedSet<MeroId> activities;
    const int status = findInstances(calledModels, Mero_GetCoreVar(CoreActivity), activities);
    if (status == StatusOk) {
        observedObjects.insertAll(activities);
    }
    return status;
}

int MeroModelAgent::findInstances(const ISortedSet<MeroId>& models, MeroId classId,
                                  ISortedSet<MeroId>& found) {
    auto& repository = MeroCoreModelingManager::GetGlobal()->basic();
    for (const MeroId model : models) {
        ISortedSet<MeroId> inModel;
        if (!succeeded(repository.getAllInstancesOfClassAndSubClassInModel(model, classId, inModel, true),
                       __LINE__)) {
            return StatusRepositoryError;
        }
        found.insertAll(inModel);
    }
    return StatusOk;
}

bool MeroModelAgent::findCalls(ISortedSet<MeroId>& calls) const {
    auto& manager = *MeroCoreModelingManager::GetGlobal();
    const MeroId callClass = Mero_GetCoreVar(CoreCall);
    if (!succeeded(manager.basic().getAllInstancesOfClassAndSubClassInModel(modelId, callClass, calls, true),
                   __LINE__)) {
        return false;
    }
    for (const MeroId object : observedObjects) {
        bool isCall = false;
        const int code = manager.enhanced().instanceOf(callClass, object, isCall);
        if (code != RepositoryClassUnknown && !succeeded(code, __LINE__)) {
            return false;
        }
        if (code == RepositoryOk && isCall) {
            calls.insert(object);
        }
    }
    return true;
}

int MeroModelAgent::computeCalledModels(ISortedSet<MeroId>& calledModels) const {
    auto& repository = MeroCoreModelingManager::GetGlobal()->enhanced();
    ISortedSet<MeroId> calls;
    if (!findCalls(calls)) {
        return StatusRepositoryError;
    }
    ISortedSet<MeroId> targets;
    for (const MeroId call : calls) {
        const std::optional<MeroId> target = targetOfCall(repository, call);
        if (!target) {
            return StatusRepositoryError;
        }
        targets.insert(*target);
    }
    for (const MeroId target : targets) {
        ISortedSet<MeroId> reached;
        ISortedSet<MeroId> loaded;
        ISortedSet<MeroId> other;
        MeroId problem = MeroNoId;
        bool flag = false;
        if (!succeeded(repository.computeSubprocesses(target, reached, loaded, problem, other, flag),
                       __LINE__)) {
            calledModels.clear();
            return StatusRepositoryError;
        }
        calledModels.insertAll(reached);
    }
    calledModels.insertAll(targets);
    return StatusOk;
}
