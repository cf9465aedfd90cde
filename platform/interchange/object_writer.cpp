#include "platform/interchange/object_writer.h"

#include <fmt/format.h>

namespace mero {

namespace {

template <class T>
T taken(Result<T> result) {
    if (!result) {
        throw DocumentRefused(result.error().text);
    }
    return std::move(result.value());
}

void taken(const Result<void>& result) {
    if (!result) {
        throw DocumentRefused(result.error().text);
    }
}

template <class Entry>
const Entry& known(const Entry* entry, std::string_view what, std::string_view name) {
    if (entry == nullptr) {
        throw DocumentRefused(fmt::format("the library has no {} \"{}\"", what, name));
    }
    return *entry;
}

}  // namespace

MeroId ObjectWriter::addModel(const std::string& name, std::string_view type) {
    const auto types = repository.library().modelTypes();
    for (std::size_t index = 0; index < types.size(); ++index) {
        if (types[index].name == type) {
            return taken(repository.addModel(name, index, ModelAccess::Write, true));
        }
    }
    throw DocumentRefused(fmt::format("the library has no model type \"{}\"", type));
}

MeroId ObjectWriter::addObject(MeroId model, std::string_view className, const std::string& name) {
    const Library::Class& objectClass =
        known(repository.library().findClass(libraryOf(model), className), "class", className);
    return taken(repository.addObject(model, objectClass.id, name));
}

MeroId ObjectWriter::relate(std::string_view relationClass, MeroId from, MeroId to) {
    const MeroId library = libraryOf(repository.findObject(from)->modelId);
    const Library::RelationClass& found =
        known(repository.library().findRelationClass(library, relationClass), "relation", relationClass);
    return taken(repository.addRelation(found.id, from, to));
}

void ObjectWriter::set(MeroId object, std::string_view attribute, const AttributeValue& value) {
    const MeroId classId = repository.findObject(object)->classId;
    taken(repository.setValue(
        object, known(repository.library().findAttribute(classId, attribute), "attribute", attribute).id,
        value));
}

void ObjectWriter::setRelation(MeroId relation, std::string_view attribute, const AttributeValue& value) {
    const MeroId classId = repository.findRelation(relation)->classId;
    taken(repository.setRelationValue(
        relation,
        known(repository.library().findRelationAttribute(classId, attribute), "attribute", attribute).id,
        value));
}

bool ObjectWriter::hasAttribute(MeroId object, std::string_view attribute) const {
    return repository.library().findAttribute(repository.findObject(object)->classId, attribute) != nullptr;
}

bool ObjectWriter::isNameTaken(MeroId model, const std::string& name) const {
    const MeroId library = libraryOf(model);
    for (const Library::Class& candidate : repository.library().classes()) {
        if (candidate.abstract || candidate.libraryId != library) {
            continue;
        }
        if (repository.findObject(model, candidate.id, name) != nullptr) {
            return true;
        }
    }
    return false;
}

MeroId ObjectWriter::libraryOf(MeroId model) const {
    const std::size_t type = repository.findModel(model)->type;
    return repository.library().modelTypes()[type].classId == ClassCodeProcessModel
               ? ClassCodeProcessLibrary
               : ClassCodeEnvironmentLibrary;
}

}  // namespace mero
