#include "component/host/basic_services.h"

#include "component/management/agent_management.h"
#include "component/management/agent_queries.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"

namespace {

/// Code of the last one; all are discarded, whatever becomes of the others.
int discardModels(const ISortedSet<MeroId>& models) {
    int lastCode = RepositoryOk;
    bool failed = false;
    for (const MeroId modelId : models) {
        lastCode =
            callRepository([&](auto& repository) { return repository.enhanced().discardModel(modelId); });
        failed = failed || lastCode != RepositoryOk;
    }
    if (failed) {
        displayErrorMessage(MeroManagementModule, __LINE__);
    }
    return lastCode;
}

}  // namespace

int MeroAgentManagement::computeSubProcesses(const MeroId& modelId, ISortedSet<MeroId>& subProcessModels,
                                             const bool& expectedFlag, const bool& refuseLoads,
                                             ISortedSet<MeroId>& loadedModels) {
    loadedModels.clear();
    ISortedSet<MeroId> loaded;
    ISortedSet<MeroId> other;
    MeroId problem = MeroNoId;
    bool flag = expectedFlag;
    const int code = callRepository([&](auto& repository) {
        return repository.enhanced().computeSubprocesses(modelId, subProcessModels, loaded, problem, other,
                                                         flag);
    });
    if (code == RepositoryQuietRefusal) {
        return StatusRefused;
    }
    if (code != RepositoryOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        discardModels(loaded);
        return StatusRefused;
    }
    const bool loadsRefused = refuseLoads && !loaded.empty();
    if (flag == expectedFlag && problem == MeroNoId && !loadsRefused) {
        loadedModels.insertAll(loaded);
        return StatusOk;
    }
    if (flag != expectedFlag) {
        showStatusMessage(StatusModelNotWritable);
    } else {
        displayErrorMessage(MeroManagementModule, __LINE__);
    }
    discardModels(loaded);
    subProcessModels.clear();
    return StatusRefused;
}

int MeroAgentManagement::discardSubProcesses(const ISortedSet<MeroId>& loadedModels) {
    return discardModels(loadedModels);
}

int MeroAgentManagement::checkCorruptRefObjects(const ISortedSet<MeroId>& models, const MeroId& weModelId,
                                                const int& algorithm,
                                                [[maybe_unused]] ISortedSet<MeroId>& changed) {
    const MeroWaitCursor wait;
    ISortedSet<MeroId> weModels;
    if (weModelId != MeroNoId) {
        weModels.insert(weModelId);
    }
    ISortedSet<MeroId> usable;
    ISortedSet<MeroId> invalid;
    const int status = getExistingSuperAgents(models, weModels, usable, invalid, algorithm, 1);
    if (status != StatusOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return status;
    }
    return StatusRefused;
}
