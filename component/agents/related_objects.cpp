#include "component/agents/related_objects.h"

#include <algorithm>
#include <iterator>

#include "component/host/core_variables.h"

#include "component/agents/repository_codes.h"

namespace {

int addRelatedOfClass(MeroCoreMM_Enhanced& repository, const ISortedSet<MeroId>& candidates, MeroId classId,
                      ISortedSet<MeroId>& found) {
    for (const MeroId candidate : candidates) {
        bool isInstance = false;
        const int code = repository.instanceOf(classId, candidate, isInstance);
        if (code != RepositoryClassUnknown && !succeeded(code, __LINE__)) {
            return StatusRepositoryError;
        }
        if (code == RepositoryOk && isInstance) {
            found.insert(candidate);
        }
    }
    return StatusOk;
}

/// Relation classes that can begin and end at objects of one class.
struct RelationClasses {
    ISortedSet<MeroId> from;
    ISortedSet<MeroId> to;
};

bool readRelationClasses(MeroCoreMM_Enhanced& repository, MeroId classId, RelationClasses& relations) {
    return succeeded(repository.getAllFromRelationsRecursive(classId, relations.from), __LINE__) &&
           succeeded(repository.getAllToRelationsRecursive(classId, relations.to), __LINE__);
}

ISortedSet<MeroId> intersect(const ISortedSet<MeroId>& left, const ISortedSet<MeroId>& right) {
    std::vector<MeroId> common;
    std::ranges::set_intersection(left, right, std::back_inserter(common));
    ISortedSet<MeroId> result;
    result.insertRange(common.begin(), common.end());
    return result;
}

/// What the given relation classes join with `object`.
bool addReached(MeroCoreMM_Enhanced& repository, MeroId object, const RelationClasses& joining,
                ISortedSet<MeroId>& reached) {
    ISortedSet<MeroId> ends;
    for (const MeroId relation : joining.to) {
        if (!succeeded(repository.getFromInstances(object, relation, ends), __LINE__)) {
            return false;
        }
        reached.insertAll(ends);
    }
    for (const MeroId relation : joining.from) {
        if (!succeeded(repository.getToInstances(object, relation, ends), __LINE__)) {
            return false;
        }
        reached.insertAll(ends);
    }
    return true;
}

/// What relations of the class join with `object` in either direction: nothing with a model, which is
/// measured as well but isn't an object.
bool addJoined(MeroCoreMM_Enhanced& repository, MeroId object, MeroId relation, ISortedSet<MeroId>& joined) {
    ISortedSet<MeroId> ends;
    const int code = repository.getFromInstances(object, relation, ends);
    if (code == RepositoryNotFound) {
        return true;
    }
    if (!succeeded(code, __LINE__)) {
        return false;
    }
    joined.insertAll(ends);
    if (!succeeded(repository.getToInstances(object, relation, ends), __LINE__)) {
        return false;
    }
    joined.insertAll(ends);
    return true;
}

}  // namespace

int findRelatedObjects(const ISortedSet<MeroId>& objects, const SV::String& className,
                       const SV::String& relationName, MeroRelatedObjects& related) {
    auto* const manager = MeroCoreModelingManager::GetGlobal();
    if (manager == nullptr) {
        displayErrorMessage("aeagents", __LINE__);
        return StatusRepositoryError;
    }
    auto& repository = manager->enhanced();
    const MeroId library = Mero_GetCoreVarConst(CoreEnvironmentLibrary);
    MeroId relationId = MeroNoId;
    MeroId classId = MeroNoId;
    if (!succeeded(repository.getRelationIDFromRelationName(library, relationName, relationId), __LINE__) ||
        !succeeded(repository.getClassIDFromClassName(library, className, classId), __LINE__)) {
        return StatusRepositoryError;
    }
    int status = StatusNoRelatedObject;
    for (const MeroId object : objects) {
        ISortedSet<MeroId> joined;
        if (!addJoined(repository, object, relationId, joined)) {
            return StatusRepositoryError;
        }
        ISortedSet<MeroId> found;
        if (addRelatedOfClass(repository, joined, classId, found) != StatusOk) {
            return StatusRepositoryError;
        }
        if (found.empty()) {
            found.insert(object);
        } else {
            status = StatusOk;
        }
        related.emplace_back(object, std::move(found));
    }
    return status;
}

int widenByRelations(ISortedSet<MeroId>& objects, MeroId classId, MeroId baseClassId) {
    auto* const manager = MeroCoreModelingManager::GetGlobal();
    if (objects.empty() || manager == nullptr) {
        displayErrorMessage("aeagents", __LINE__);
        return objects.empty() ? StatusSelectionLocked : StatusRepositoryError;
    }
    auto& repository = manager->enhanced();
    RelationClasses ofClass;
    ISortedSet<MeroId> subClasses;
    if (!readRelationClasses(repository, classId, ofClass) ||
        !succeeded(repository.getAllSubClasses(baseClassId, subClasses), __LINE__)) {
        return StatusRepositoryError;
    }
    ISortedSet<MeroId> reached;
    for (const MeroId subClass : subClasses) {
        RelationClasses ofSubClass;
        if (!readRelationClasses(repository, subClass, ofSubClass)) {
            return StatusRepositoryError;
        }
        const RelationClasses joining{intersect(ofSubClass.from, ofClass.to),
                                      intersect(ofSubClass.to, ofClass.from)};
        for (const MeroId object : objects) {
            bool isInstance = false;
            const int code = repository.instanceOf(subClass, object, isInstance);
            if (code == RepositoryClassUnknown) {
                continue;
            }
            if (!succeeded(code, __LINE__) ||
                (isInstance && !addReached(repository, object, joining, reached))) {
                return StatusRepositoryError;
            }
        }
    }
    objects.insertAll(reached);
    return StatusOk;
}
