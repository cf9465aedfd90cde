#include "component/display/grouping_relations.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/containers.h"
#include "component/host/core_variables.h"
#include "component/host/sim_mapping.h"

#include "component/management/repository_call.h"

namespace {

constexpr char ModuleName[] = "aeadsply";

using Ids = ISortedSet<MeroId>;

bool readName(MeroId id, MeroId nameAttribute, SV::String& name) {
    const char* text = nullptr;
    const bool isRead = repositoryDoes([&](auto& repository) {
        return repository.enhanced().getAttributeValue(id, nameAttribute, text, true);
    });
    name = text != nullptr ? SV::String(text) : SV::String();
    return isRead;
}

Ids intersectionOf(const Ids& left, const Ids& right) {
    Ids common;
    for (const MeroId each : left) {
        if (right.contains(each)) {
            common.insert(each);
        }
    }
    return common;
}

bool findGroupClasses(Ids& classes) {
    Ids groups;
    Ids instantiable;
    Ids simulatable;
    auto* const mapping = MeroSimMappingHandler::GetGlobal();
    constexpr bool WithoutAgents = false;
    const bool isRead =
        mapping != nullptr && repositoryDoes([&](auto& repository) {
            const int code = repository.enhanced().getAllSubClasses(Mero_GetCoreVar(CoreGroup), groups);
            return code != RepositoryOk
                       ? code
                       : repository.enhanced().getAllInstantiableClasses(
                             Mero_GetCoreVarConst(CoreEnvironmentLibrary), instantiable, WithoutAgents);
        }) &&
        mapping->getSimableWEClasses(simulatable) == RepositoryOk;
    classes = intersectionOf(intersectionOf(groups, instantiable), simulatable);
    return isRead;
}

/// Relation classes that end at objects of a class, and those that begin there.
struct Ends {
    Ids entering;
    Ids leaving;
};

bool findEnds(MeroId classId, Ends& ends) {
    Ids entering;
    Ids leaving;
    const bool isRead = repositoryDoes([&](auto& repository) {
        const int code = repository.enhanced().getAllToRelationsRecursive(classId, entering);
        return code != RepositoryOk ? code
                                    : repository.enhanced().getAllFromRelationsRecursive(classId, leaving);
    });
    ends.entering.insertAll(entering);
    ends.leaving.insertAll(leaving);
    return isRead;
}

/// Of all concrete classes of a family.
bool findEndsOfFamily(MeroCoreVarType family, Ends& ends) {
    Ids classes;
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().getAllSubClasses(Mero_GetCoreVar(family), classes);
        })) {
        return false;
    }
    return std::ranges::all_of(classes, [&](MeroId classId) {
        MeroId isAbstract = 0;
        return repositoryDoes([&](auto& repository) {
                   return repository.enhanced().getAttributeValue(classId, ClassCodeAbstract, isAbstract,
                                                                  true);
               }) &&
               (isAbstract != 0 || findEnds(classId, ends));
    });
}

bool appendNames(const Ids& relations, std::vector<SV::String>& names) {
    for (const MeroId relation : relations) {
        SV::String name;
        if (!readName(relation, ClassCodeRelationName, name)) {
            return false;
        }
        if (std::ranges::find(names, name) == names.end()) {
            names.push_back(name);
        }
    }
    return true;
}

}  // namespace

std::vector<SV::String> findGroupingClasses() {
    Ids classes;
    bool isRead = findGroupClasses(classes);
    std::vector<SV::String> names;
    for (const MeroId classId : classes) {
        isRead = isRead && readName(classId, ClassCodeName, names.emplace_back());
    }
    if (!isRead) {
        displayErrorMessage(ModuleName, __LINE__);
        return {};
    }
    std::ranges::sort(names, {}, &SV::String::view);
    return names;
}

std::vector<SV::String> findGroupingRelations(const SV::String& className) {
    MeroId classId = MeroNoId;
    Ends own;
    Ends people;
    Ends resources;
    std::vector<SV::String> names;
    const bool isRead = repositoryDoes([&](auto& repository) {
                            return repository.enhanced().getClassIDFromClassName(
                                Mero_GetCoreVarConst(CoreEnvironmentLibrary), className, classId);
                        }) &&
                        findEnds(classId, own) && findEndsOfFamily(CoreExecutive, people) &&
                        findEndsOfFamily(CoreResource, resources) &&
                        appendNames(intersectionOf(people.entering, own.leaving), names) &&
                        appendNames(intersectionOf(resources.entering, own.leaving), names) &&
                        appendNames(intersectionOf(people.leaving, own.entering), names) &&
                        appendNames(intersectionOf(resources.leaving, own.entering), names);
    if (!isRead) {
        displayErrorMessage(ModuleName, __LINE__);
        return {};
    }
    return names;
}
