#include "platform/repository/repository.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

#include "platform/repository/attribute_values.h"
#include "platform/repository/id_index.h"
#include "platform/repository/repository_data.h"

namespace mero {

// Reading

Repository::Repository() : data(std::make_unique<Data>()) {}
Repository::Repository(Repository&&) noexcept = default;
Repository& Repository::operator=(Repository&&) noexcept = default;
Repository::~Repository() = default;

std::vector<MeroId> Repository::modelIds() const {
    return data->modelOrder;
}

const Model* Repository::findModel(MeroId id) const {
    const Data::ModelEntry* entry = findIn(std::as_const(data->models), id);
    return entry != nullptr ? &entry->model : nullptr;
}

const Model* Repository::findModel(std::string_view name) const {
    const auto found = data->modelsByName.find(name);
    return found != data->modelsByName.end() ? findModel(found->second) : nullptr;
}

const Object* Repository::findObject(MeroId id) const {
    return findIn(std::as_const(data->objects), id);
}

const Object* Repository::findObject(MeroId modelId, MeroId classId, std::string_view name) const {
    const Data::ModelEntry* entry = findIn(std::as_const(data->models), modelId);
    return entry != nullptr ? data->findObject(*entry, classId, name) : nullptr;
}

const Relation* Repository::findRelation(MeroId id) const {
    return findIn(std::as_const(data->relations), id);
}

std::span<const MeroId> Repository::objectsOfClass(MeroId modelId, MeroId classId) const {
    const Data::ModelEntry* entry = findIn(std::as_const(data->models), modelId);
    return entry != nullptr ? idsIn(entry->objectsByClass, classId) : std::span<const MeroId>();
}

std::span<const MeroId> Repository::relationsFrom(MeroId objectId) const {
    return idsIn(data->relationsFrom, objectId);
}

std::span<const MeroId> Repository::relationsTo(MeroId objectId) const {
    return idsIn(data->relationsTo, objectId);
}

AttributeValue Repository::valueOf(const Object& object, MeroId attributeId) const {
    return attributeId == ClassCodeInstanceName ? AttributeValue(object.name)
                                                : valueOrDefault(object.values, attributeId);
}

AttributeValue Repository::valueOf(const Relation& relation, MeroId attributeId) const {
    return valueOrDefault(relation.values, attributeId);
}

SV::String Repository::textOf(const Object& object, std::string_view attribute) const {
    const Library::Attribute* found = library().findAttribute(object.classId, attribute);
    return found != nullptr && found->id == ClassCodeInstanceName ? object.name
                                                                  : textOrEmpty(object.values, found);
}

double Repository::numberOf(const Object& object, std::string_view attribute) const {
    return numberOrZero(object.values, library().findAttribute(object.classId, attribute));
}

SV::String Repository::textOf(const Relation& relation, std::string_view attribute) const {
    return textOrEmpty(relation.values, library().findRelationAttribute(relation.classId, attribute));
}

double Repository::numberOf(const Relation& relation, std::string_view attribute) const {
    return numberOrZero(relation.values, library().findRelationAttribute(relation.classId, attribute));
}

// Changing

Result<MeroId> Repository::addModel(const SV::String& name, std::size_t type, ModelAccess access,
                                    bool loaded) {
    if (auto checked = data->checkModel(name, type); !checked) {
        return checked.error();
    }
    const MeroId id = data->nextId;
    data->insertModel({id, name, type, access, loaded, {}, {}});
    data->changes.models.insert(id);
    return id;
}

Result<MeroId> Repository::addObject(MeroId modelId, MeroId classId, const SV::String& name) {
    SV::String givenName = name;
    if (name.IsEmpty()) {
        Data::ModelEntry* entry = findIn(data->models, modelId);
        const Library::Class* objectClass = library().findClass(classId);
        if (entry != nullptr && objectClass != nullptr) {
            givenName = data->makeObjectName(*entry, *objectClass);
        }
    }
    if (auto checked = data->checkObject(modelId, classId, givenName); !checked) {
        return checked.error();
    }
    const MeroId id = data->nextId;
    data->insertObject({id, classId, modelId, givenName, {}});
    data->changes.objects.insert(id);
    return id;
}

Result<MeroId> Repository::addRelation(MeroId relationClassId, MeroId from, MeroId to) {
    if (auto checked = data->checkRelation(relationClassId, from, to); !checked) {
        return checked.error();
    }
    const MeroId id = data->nextRelationId;
    data->insertRelation({id, relationClassId, from, to, {}});
    data->changes.relations.insert(id);
    return id;
}

Result<void> Repository::setValue(MeroId objectId, MeroId attributeId, const AttributeValue& value) {
    Object* object = findIn(data->objects, objectId);
    if (object == nullptr) {
        return noObject(objectId);
    }
    if (!library().hasAttribute(object->classId, attributeId)) {
        return Error{fmt::format("the class \"{}\" has no attribute {}",
                                 library().findClass(object->classId)->name, attributeId)};
    }
    const Library::Attribute& attribute = *library().findAttribute(attributeId);
    auto checked = checkValue(attribute, value);
    if (!checked) {
        return checked.error();
    }
    if (attributeId == ClassCodeInstanceName) {
        return renameObject(objectId, std::get<SV::String>(value));
    }
    storeValue(object->values, attribute, std::move(checked.value()));
    data->changes.objects.insert(objectId);
    return {};
}

Result<void> Repository::setRelationValue(MeroId relationId, MeroId attributeId,
                                          const AttributeValue& value) {
    Relation* relation = findIn(data->relations, relationId);
    if (relation == nullptr) {
        return Error{fmt::format("no relation has the identifier {}", relationId)};
    }
    const Library::RelationClass& relationClass = *library().findRelationClass(relation->classId);
    if (std::find(relationClass.attributes.begin(), relationClass.attributes.end(), attributeId) ==
        relationClass.attributes.end()) {
        return Error{
            fmt::format("the relation class \"{}\" has no attribute {}", relationClass.name, attributeId)};
    }
    const Library::Attribute& attribute = *library().findAttribute(attributeId);
    auto checked = checkValue(attribute, value);
    if (!checked) {
        return checked.error();
    }
    storeValue(relation->values, attribute, std::move(checked.value()));
    data->changes.relations.insert(relationId);
    return {};
}

Result<void> Repository::renameObject(MeroId objectId, const SV::String& name) {
    Object* object = findIn(data->objects, objectId);
    if (object == nullptr) {
        return noObject(objectId);
    }
    if (object->name == name) {
        return {};
    }
    if (auto checked = data->checkObject(object->modelId, object->classId, name); !checked) {
        return checked;
    }
    Data::ModelEntry& entry = data->models.at(object->modelId);
    eraseFromIndex(entry.objectsByName, object->name, objectId);
    insertSorted(entry.objectsByName[name], objectId);
    entry.nextNumberOfName.erase(object->classId);
    object->name = name;
    data->changes.objects.insert(objectId);
    return {};
}

Result<void> Repository::removeObject(MeroId objectId) {
    if (findObject(objectId) == nullptr) {
        return noObject(objectId);
    }
    data->forgetRelationsOf(objectId);
    data->eraseObject(objectId);
    data->changes.objects.insert(objectId);
    return {};
}

Result<void> Repository::removeModel(MeroId modelId) {
    const Model* model = findModel(modelId);
    if (model == nullptr) {
        return noModel(modelId);
    }
    const SV::String name = model->name;
    // Backwards, so that each erasure happens at the end of its lists.
    const std::vector<MeroId> objects(model->objects.rbegin(), model->objects.rend());
    for (const MeroId objectId : objects) {
        data->forgetRelationsOf(objectId);
        data->eraseObject(objectId);
        data->changes.objects.insert(objectId);
    }
    data->modelsByName.erase(name);
    eraseSorted(data->modelOrder, modelId);
    data->models.erase(modelId);
    data->changes.models.insert(modelId);
    return {};
}

Result<void> Repository::setLoaded(MeroId modelId, bool loaded) {
    Data::ModelEntry* entry = findIn(data->models, modelId);
    if (entry == nullptr) {
        return noModel(modelId);
    }
    entry->model.loaded = loaded;
    return {};
}

Result<void> Repository::setAccess(MeroId modelId, ModelAccess access) {
    Data::ModelEntry* entry = findIn(data->models, modelId);
    if (entry == nullptr) {
        return noModel(modelId);
    }
    entry->model.access = access;
    data->changes.models.insert(modelId);
    return {};
}

}  // namespace mero
