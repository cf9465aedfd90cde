#include "platform/repository/repository.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <tuple>
#include <utility>

#include "component/host/core_time.h"

#include "platform/repository/repository_data.h"

namespace mero {

namespace {

bool isBefore(const std::pair<MeroId, AttributeValue>& entry, MeroId attributeId) {
    return entry.first < attributeId;
}

bool isNumber(const Library::Attribute& attribute) {
    return attribute.type == AttributeInteger || attribute.type == AttributeDouble;
}

AttributeValue defaultOf(const Library::Attribute& attribute) {
    switch (attribute.type) {
        case AttributeInteger:
            return static_cast<std::int32_t>(attribute.defaultNumber);
        case AttributeDouble:
            return attribute.defaultNumber;
        default:
            return SV::String(attribute.defaultText);
    }
}

void storeValue(AttributeValues& values, const Library::Attribute& attribute, AttributeValue value) {
    const auto place = std::lower_bound(values.begin(), values.end(), attribute.id, isBefore);
    const bool isStored = place != values.end() && place->first == attribute.id;
    if (value == defaultOf(attribute)) {
        if (isStored) {
            values.erase(place);
        }
    } else if (isStored) {
        place->second = std::move(value);
    } else {
        values.emplace(place, attribute.id, std::move(value));
    }
}

void insertSorted(std::vector<MeroId>& ids, MeroId id) {
    if (ids.empty() || ids.back() < id) {
        ids.push_back(id);
    } else {
        ids.insert(std::lower_bound(ids.begin(), ids.end(), id), id);
    }
}

void eraseSorted(std::vector<MeroId>& ids, MeroId id) {
    const auto place = std::lower_bound(ids.begin(), ids.end(), id);
    if (place != ids.end() && *place == id) {
        ids.erase(place);
    }
}

/// Removes `id` from the entry of `key`, and the entry when nothing is left of it.
template <class Map, class Key>
void eraseFromIndex(Map& index, const Key& key, MeroId id) {
    const auto entry = index.find(key);
    if (entry != index.end()) {
        eraseSorted(entry->second, id);
        if (entry->second.empty()) {
            index.erase(entry);
        }
    }
}

template <class Map>
auto findIn(Map& map, MeroId id) -> decltype(&map.begin()->second) {
    const auto found = map.find(id);
    return found != map.end() ? &found->second : nullptr;
}

std::span<const MeroId> idsIn(const std::unordered_map<MeroId, std::vector<MeroId>>& index, MeroId key) {
    const auto* ids = findIn(index, key);
    return ids != nullptr ? std::span<const MeroId>(*ids) : std::span<const MeroId>();
}

bool hasZeroByte(const SV::String& text) {
    return text.view().find('\0') != std::string_view::npos;
}

Error noModel(MeroId id) {
    return {fmt::format("no model has the identifier {}", id)};
}

Error noObject(MeroId id) {
    return {fmt::format("no object has the identifier {}", id)};
}

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

const AttributeValue* findValue(const AttributeValues& values, MeroId attributeId) {
    const auto place = std::lower_bound(values.begin(), values.end(), attributeId, isBefore);
    return place != values.end() && place->first == attributeId ? &place->second : nullptr;
}

// Checks

Result<void> Repository::Data::checkModel(const SV::String& name, std::size_t type) const {
    if (const auto checked = checkName(name, "a model"); !checked) {
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
    if (const auto checked = checkName(name, "an object"); !checked) {
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

Result<AttributeValue> Repository::Data::checkValue(const Library::Attribute& attribute,
                                                    const AttributeValue& value) {
    const auto* text = std::get_if<SV::String>(&value);
    if ((text == nullptr) != isNumber(attribute)) {
        return Error{fmt::format("the attribute \"{}\" needs a {}", attribute.name,
                                 isNumber(attribute) ? "number" : "text")};
    }
    if (text != nullptr) {
        if (hasZeroByte(*text)) {
            return Error{fmt::format("the text of \"{}\" must not hold a zero byte", attribute.name)};
        }
        if (attribute.type == AttributeTime && !MeroCoreTime::isTime(*text)) {
            return Error{fmt::format("the attribute \"{}\" needs a time YY:DDD:HH:MM:SS, not \"{}\"",
                                     attribute.name, text->view())};
        }
        if (attribute.type == AttributeEnumeration &&
            std::find(attribute.enumeration.begin(), attribute.enumeration.end(), text->view()) ==
                attribute.enumeration.end()) {
            return Error{
                fmt::format("the attribute \"{}\" has no value \"{}\"", attribute.name, text->view())};
        }
        return value;
    }
    if (attribute.type == AttributeInteger) {
        if (!std::holds_alternative<std::int32_t>(value)) {
            return Error{fmt::format("the attribute \"{}\" needs a whole number", attribute.name)};
        }
        return value;
    }
    const auto* whole = std::get_if<std::int32_t>(&value);
    const double number = whole != nullptr ? *whole : std::get<double>(value);
    if (!std::isfinite(number)) {
        return Error{fmt::format("the attribute \"{}\" needs a finite number", attribute.name)};
    }
    return AttributeValue(number);
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

namespace {

AttributeValue valueOrDefault(const AttributeValues& values, MeroId attributeId) {
    const AttributeValue* value = findValue(values, attributeId);
    return value != nullptr ? *value : defaultOf(*Library::standard().findAttribute(attributeId));
}

SV::String textOrEmpty(const AttributeValues& values, const Library::Attribute* attribute) {
    return attribute != nullptr && !isNumber(*attribute)
               ? std::get<SV::String>(valueOrDefault(values, attribute->id))
               : SV::String();
}

double numberOrZero(const AttributeValues& values, const Library::Attribute* attribute) {
    if (attribute == nullptr || !isNumber(*attribute)) {
        return 0.0;
    }
    const AttributeValue value = valueOrDefault(values, attribute->id);
    const auto* whole = std::get_if<std::int32_t>(&value);
    return whole != nullptr ? *whole : std::get<double>(value);
}

}  // namespace

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
    if (const auto checked = data->checkModel(name, type); !checked) {
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
    if (const auto checked = data->checkObject(modelId, classId, givenName); !checked) {
        return checked.error();
    }
    const MeroId id = data->nextId;
    data->insertObject({id, classId, modelId, givenName, {}});
    data->changes.objects.insert(id);
    return id;
}

Result<MeroId> Repository::addRelation(MeroId relationClassId, MeroId from, MeroId to) {
    if (const auto checked = data->checkRelation(relationClassId, from, to); !checked) {
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
    auto checked = Data::checkValue(attribute, value);
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
    auto checked = Data::checkValue(attribute, value);
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
    if (const auto checked = data->checkObject(object->modelId, object->classId, name); !checked) {
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
    if (const auto checked = checkNewId(data.models.contains(model.id), model.id); !checked) {
        return checked;
    }
    if (const auto checked = data.checkModel(model.name, model.type); !checked) {
        return checked;
    }
    data.insertModel(model);
    return {};
}

Result<void> RepositoryAccess::restoreObject(const Object& object) {
    const bool isTaken = data.models.contains(object.id) || data.objects.contains(object.id);
    if (const auto checked = checkNewId(isTaken, object.id); !checked) {
        return checked;
    }
    if (const auto checked = data.checkObject(object.modelId, object.classId, object.name); !checked) {
        return checked;
    }
    data.insertObject(object);
    return {};
}

Result<void> RepositoryAccess::restoreRelation(const Relation& relation) {
    if (const auto checked = checkNewId(data.relations.contains(relation.id), relation.id); !checked) {
        return checked;
    }
    if (const auto checked = data.checkRelation(relation.classId, relation.from, relation.to); !checked) {
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
