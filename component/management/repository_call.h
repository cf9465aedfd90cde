#pragma once

#include "component/host/repository.h"

/// Every call of the repository goes through here, so that an application without one is a failure like any
/// other and not a null pointer. `call` takes the manager and gives the operation's code:
///
///     callRepository([&](auto& repository) { return repository.enhanced().classOf(id, classId); })
template <class Call>
[[nodiscard]] int callRepository(Call call) {
    MeroCoreModelingManager* const repository = MeroCoreModelingManager::GetGlobal();
    return repository != nullptr ? call(*repository) : static_cast<int>(RepositoryStorageFailed);
}

/// Same, where the operation tells nothing but success.
template <class Call>
[[nodiscard]] bool repositoryDoes(Call call) {
    return callRepository(call) == RepositoryOk;
}
