#include "platform/repository/repository_data.h"

#include <fmt/format.h>
#include <limits>
#include <tuple>

#include "platform/repository/attribute_values.h"
#include "platform/repository/id_index.h"

namespace mero {

Error noModel(MeroId id) {
    return {fmt::format("no model has the identifier {}", id)};
}

Error noObject(MeroId id) {
    return {fmt::format("no object has the identifier {}", id)};
}

namespace {

Result<void> checkName(const SV::String& name, std::string_view what) {
    if (name.IsEmpty()) {
        return Error{fmt::format("the name of {} must not be empty", what)};
    }
    if (hasZeroByte(name)) {
        return Error{fmt::format("the name of {} must not hold a zero byte", what)};
    }
    return {};
}

}  // namespace

// Checks

Result<void> Repository::Data::checkModel(const SV::String& name, std::size_t type) const {
    if (auto checked = checkName(name, "a model"); !checked) {
        return checked;
    }
    if (type >= Library::standard().modelTypes().size()) {
        return Error{fmt::format("unknown model type {}", type)};
    }
    if (modelsByName.contains(name)) {
        return Error{fmt::format("there is already a model \"{}\"", name.view())};
    }
    return {};
}

Result<void> Repository::Data::checkObject(MeroId modelId, MeroId classId, const SV::String& name) const {
    const Library& library = Library::standard();
    const ModelEntry* entry = findIn(models, modelId);
    if (entry == nullptr) {
        return noModel(modelId);
    }
    const Library::Class* objectClass = library.findClass(classId);
    if (objectClass == nullptr) {
        return Error{fmt::format("unknown class {}", classId)};
    }
    const Library::ModelType& type = library.modelTypes()[entry->model.type];
    if (objectClass->abstract || objectClass->libraryId != library.findClass(type.classId)->libraryId) {
        return Error{fmt::format("a model of type \"{}\" can't hold an object of class \"{}\"", type.name,
                                 objectClass->name)};
    }
    if (auto checked = checkName(name, "an object"); !checked) {
        return checked;
    }
    if (findObject(*entry, classId, name.view()) != nullptr) {
        return Error{fmt::format("the model \"{}\" has already an object \"{}\" of class \"{}\"",
                                 entry->model.name.view(), name.view(), objectClass->name)};
    }
    return {};
}

Result<void> Repository::Data::checkRelation(MeroId relationClassId, MeroId from, MeroId to) const {
    const Library& library = Library::standard();
    const Library::RelationClass* relationClass = library.findRelationClass(relationClassId);
    if (relationClass == nullptr) {
        return Error{fmt::format("unknown relation class {}", relationClassId)};
    }
    for (const auto& [end, endClassId, verb] : {std::tuple(from, relationClass->fromClassId, "begin at"),
                                                std::tuple(to, relationClass->toClassId, "end at")}) {
        const Object* object = findIn(objects, end);
        if (object == nullptr) {
            return noObject(end);
        }
        if (!library.isSubClassOf(endClassId, object->classId)) {
            return Error{fmt::format("a relation \"{}\" can't {} the {} \"{}\"", relationClass->name, verb,
                                     library.findClass(object->classId)->name, object->name.view())};
        }
    }
    return {};
}

// Changes of the indices

void Repository::Data::insertModel(Model model) {
    const MeroId id = model.id;
    modelsByName.emplace(model.name, id);
    insertSorted(modelOrder, id);
    nextId = std::max(nextId, id + 1);
    ModelEntry& entry = models[id];
    entry.storedAsLoaded = model.loaded;
    entry.model = std::move(model);
}

void Repository::Data::insertObject(Object object) {
    ModelEntry& entry = models.at(object.modelId);
    insertSorted(entry.model.objects, object.id);
    insertSorted(entry.objectsByClass[object.classId], object.id);
    insertSorted(entry.objectsByName[object.name], object.id);
    nextId = std::max(nextId, object.id + 1);
    objects.emplace(object.id, std::move(object));
}

void Repository::Data::insertRelation(Relation relation) {
    insertSorted(models.at(objects.at(relation.from).modelId).model.relations, relation.id);
    insertSorted(relationsFrom[relation.from], relation.id);
    insertSorted(relationsTo[relation.to], relation.id);
    nextRelationId = std::max(nextRelationId, relation.id + 1);
    relations.emplace(relation.id, std::move(relation));
}

void Repository::Data::eraseRelation(MeroId relationId) {
    const Relation& relation = relations.at(relationId);
    eraseSorted(models.at(objects.at(relation.from).modelId).model.relations, relationId);
    eraseFromIndex(relationsFrom, relation.from, relationId);
    eraseFromIndex(relationsTo, relation.to, relationId);
    relations.erase(relationId);
}

void Repository::Data::forgetRelationsOf(MeroId objectId) {
    for (const auto* index : {&relationsFrom, &relationsTo}) {
        const std::span<const MeroId> ids = idsIn(*index, objectId);
        for (const MeroId relationId : std::vector<MeroId>(ids.begin(), ids.end())) {
            changes.relations.insert(relationId);
            eraseRelation(relationId);
        }
    }
}

void Repository::Data::eraseObject(MeroId objectId) {
    const Object& object = objects.at(objectId);
    ModelEntry& entry = models.at(object.modelId);
    eraseSorted(entry.model.objects, objectId);
    eraseFromIndex(entry.objectsByClass, object.classId, objectId);
    eraseFromIndex(entry.objectsByName, object.name, objectId);
    entry.nextNumberOfName.erase(object.classId);
    objects.erase(objectId);
}

const Object* Repository::Data::findObject(const ModelEntry& entry, MeroId classId,
                                           std::string_view name) const {
    const auto found = entry.objectsByName.find(name);
    if (found == entry.objectsByName.end()) {
        return nullptr;
    }
    for (const MeroId id : found->second) {
        const Object& object = objects.at(id);
        if (classId == MeroNoId ? !Library::standard().findClass(object.classId)->agent
                                : object.classId == classId) {
            return &object;
        }
    }
    return nullptr;
}

SV::String Repository::Data::makeObjectName(ModelEntry& entry, const Library::Class& objectClass) const {
    int& number = entry.nextNumberOfName.try_emplace(objectClass.id, 1).first->second;
    while (true) {
        const std::string name = fmt::format("{} {}", objectClass.name, number);
        if (findObject(entry, objectClass.id, name) == nullptr) {
            return name;
        }
        ++number;
    }
}

// Stores

namespace {

Result<void> checkNewId(bool isTaken, MeroId id) {
    if (isTaken || id < Repository::FirstId || id == std::numeric_limits<MeroId>::max()) {
        return Error{fmt::format("the identifier {} is {}", id, isTaken ? "taken" : "out of range")};
    }
    return {};
}

}  // namespace

Result<void> RepositoryAccess::restoreModel(const Model& model) {
    if (auto checked = checkNewId(data.models.contains(model.id), model.id); !checked) {
        return checked;
    }
    if (auto checked = data.checkModel(model.name, model.type); !checked) {
        return checked;
    }
    data.insertModel(model);
    return {};
}

Result<void> RepositoryAccess::restoreObject(const Object& object) {
    const bool isTaken = data.models.contains(object.id) || data.objects.contains(object.id);
    if (auto checked = checkNewId(isTaken, object.id); !checked) {
        return checked;
    }
    if (auto checked = data.checkObject(object.modelId, object.classId, object.name); !checked) {
        return checked;
    }
    data.insertObject(object);
    return {};
}

Result<void> RepositoryAccess::restoreRelation(const Relation& relation) {
    if (auto checked = checkNewId(data.relations.contains(relation.id), relation.id); !checked) {
        return checked;
    }
    if (auto checked = data.checkRelation(relation.classId, relation.from, relation.to); !checked) {
        return checked;
    }
    data.insertRelation(relation);
    return {};
}

void RepositoryAccess::restoreCounters(MeroId nextId, MeroId nextRelationId) {
    data.nextId = std::max(data.nextId, nextId);
    data.nextRelationId = std::max(data.nextRelationId, nextRelationId);
}

bool RepositoryAccess::isStoredAsLoaded(MeroId modelId) const {
    return data.models.at(modelId).storedAsLoaded;
}

}  // namespace mero
