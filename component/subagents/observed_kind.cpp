#include "component/subagents/observed_kind.h"

#include "component/host/basic_services.h"

#include "component/management/repository_call.h"

int findObservedKind(MeroId classId, bool& observesExecutives) {
    for (const MeroCoreVarType base : {CoreExecutive, CoreResource}) {
        bool isBelow = false;
        const bool known = repositoryDoes([&](auto& repository) {
            return repository.enhanced().isSubClassOf(Mero_GetCoreVar(base), classId, isBelow);
        });
        if (!known) {
            displayErrorMessage("aeasubag", __LINE__);
            return StatusRepositoryError;
        }
        if (isBelow) {
            observesExecutives = base == CoreExecutive;
            return StatusOk;
        }
    }
    displayErrorMessage("aeasubag", __LINE__);
    return StatusRefused;
}
