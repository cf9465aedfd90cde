#include "platform/repository/library.h"

#include <algorithm>
#include <array>
#include <functional>
#include <unordered_map>

#include "platform/repository/standard_library.h"

namespace mero {

namespace {

/// Name inside a library, a class or a relation class.
struct ScopedName {
    MeroId scope;
    std::string_view name;
    friend bool operator==(const ScopedName&, const ScopedName&) = default;
};

struct ScopedNameHash {
    std::size_t operator()(const ScopedName& key) const {
        return std::hash<std::string_view>()(key.name) * 31 + static_cast<std::size_t>(key.scope);
    }
};

template <class T>
using NameIndex = std::unordered_map<ScopedName, const T*, ScopedNameHash>;

/// Identifiers of the library are small: arrays find them.
template <class T>
class DenseIndex {
public:
    void insert(MeroId id, const T* item) {
        const auto place = static_cast<std::size_t>(id);
        if (place >= items.size()) {
            items.resize(place + 1, nullptr);
        }
        items[place] = item;
    }
    [[nodiscard]] const T* find(MeroId id) const {
        return id > 0 && static_cast<std::size_t>(id) < items.size() ? items[static_cast<std::size_t>(id)]
                                                                     : nullptr;
    }

private:
    std::vector<const T*> items;
};

constexpr std::size_t CoreVariableCount = 256;

}  // namespace

struct Library::Tables {
    /// What inheritance gives a class.
    struct Lineage {
        std::vector<const Attribute*> attributes;
        std::vector<MeroId> sortedAttributeIds;
        std::vector<MeroId> subClasses;
    };

    StandardLibraryTables content = makeStandardLibraryTables();
    DenseIndex<Attribute> attributesById;
    DenseIndex<Class> classesById;
    DenseIndex<RelationClass> relationClassesById;
    NameIndex<Class> classesByName;
    NameIndex<RelationClass> relationClassesByName;
    NameIndex<Attribute> attributesByName;
    std::unordered_map<MeroId, Lineage> lineages;
    std::array<MeroId, CoreVariableCount> coreVariables{};

    Tables();

private:
    void indexClass(const Class& entry);
    void indexRelationClass(const RelationClass& entry);
};

Library::Tables::Tables() {
    for (const Attribute& attribute : content.attributes) {
        attributesById.insert(attribute.id, &attribute);
    }
    for (const Class& entry : content.classes) {
        classesById.insert(entry.id, &entry);
    }
    for (const Class& entry : content.classes) {
        indexClass(entry);
    }
    for (const RelationClass& entry : content.relationClasses) {
        indexRelationClass(entry);
    }
    for (auto& [id, lineage] : lineages) {
        std::sort(lineage.subClasses.begin(), lineage.subClasses.end());
    }
    for (const auto& [number, id] : content.coreVariables) {
        coreVariables[static_cast<std::size_t>(number)] = id;
    }
}

void Library::Tables::indexClass(const Class& entry) {
    classesByName.emplace(ScopedName{entry.libraryId, entry.name}, &entry);
    std::vector<const Class*> line;
    for (const Class* ancestor = &entry; ancestor != nullptr; ancestor = classesById.find(ancestor->baseId)) {
        line.insert(line.begin(), ancestor);
        if (ancestor != &entry) {
            lineages[ancestor->id].subClasses.push_back(entry.id);
        }
    }
    Lineage& lineage = lineages[entry.id];
    for (const Class* ancestor : line) {
        for (const MeroId attributeId : ancestor->attributes) {
            const Attribute* attribute = attributesById.find(attributeId);
            lineage.attributes.push_back(attribute);
            lineage.sortedAttributeIds.push_back(attributeId);
            attributesByName.emplace(ScopedName{entry.id, attribute->name}, attribute);
        }
    }
    std::sort(lineage.sortedAttributeIds.begin(), lineage.sortedAttributeIds.end());
}

void Library::Tables::indexRelationClass(const RelationClass& entry) {
    relationClassesById.insert(entry.id, &entry);
    relationClassesByName.emplace(ScopedName{entry.libraryId, entry.name}, &entry);
    for (const MeroId attributeId : entry.attributes) {
        const Attribute* attribute = attributesById.find(attributeId);
        attributesByName.emplace(ScopedName{entry.id, attribute->name}, attribute);
    }
}

namespace {

template <class T>
const T* findByName(const NameIndex<T>& index, MeroId scope, std::string_view name) {
    const auto found = index.find(ScopedName{scope, name});
    return found != index.end() ? found->second : nullptr;
}

}  // namespace

Library::Library() {
    static const Tables standardTables;
    tables = &standardTables;
}

const Library& Library::standard() {
    static const Library library;
    return library;
}

std::span<const Library::Class> Library::classes() const {
    return tables->content.classes;
}

std::span<const Library::RelationClass> Library::relationClasses() const {
    return tables->content.relationClasses;
}

std::span<const Library::ModelType> Library::modelTypes() const {
    return tables->content.modelTypes;
}

const Library::Class* Library::findClass(MeroId id) const {
    return tables->classesById.find(id);
}

const Library::Class* Library::findClass(MeroId libraryId, std::string_view name) const {
    return findByName(tables->classesByName, libraryId, name);
}

const Library::Attribute* Library::findAttribute(MeroId id) const {
    return tables->attributesById.find(id);
}

const Library::Attribute* Library::findAttribute(MeroId classId, std::string_view name) const {
    return findClass(classId) != nullptr ? findByName(tables->attributesByName, classId, name) : nullptr;
}

const Library::RelationClass* Library::findRelationClass(MeroId id) const {
    return tables->relationClassesById.find(id);
}

const Library::RelationClass* Library::findRelationClass(MeroId libraryId, std::string_view name) const {
    return findByName(tables->relationClassesByName, libraryId, name);
}

const Library::Attribute* Library::findRelationAttribute(MeroId relationClassId,
                                                         std::string_view name) const {
    return findRelationClass(relationClassId) != nullptr
               ? findByName(tables->attributesByName, relationClassId, name)
               : nullptr;
}

bool Library::isSubClassOf(MeroId superClassId, MeroId classId) const {
    for (const Class* entry = findClass(classId); entry != nullptr; entry = findClass(entry->baseId)) {
        if (entry->id == superClassId) {
            return true;
        }
    }
    return false;
}

std::span<const MeroId> Library::subClassesOf(MeroId classId) const {
    const auto found = tables->lineages.find(classId);
    return found != tables->lineages.end() ? std::span<const MeroId>(found->second.subClasses)
                                           : std::span<const MeroId>();
}

bool Library::hasAttribute(MeroId classId, MeroId attributeId) const {
    const auto found = tables->lineages.find(classId);
    return found != tables->lineages.end() &&
           std::binary_search(found->second.sortedAttributeIds.begin(),
                              found->second.sortedAttributeIds.end(), attributeId);
}

std::vector<const Library::Attribute*> Library::attributesOf(MeroId classId) const {
    const auto found = tables->lineages.find(classId);
    return found != tables->lineages.end() ? found->second.attributes : std::vector<const Attribute*>();
}

const MeroId& Library::coreVariable(int number) const {
    static constexpr MeroId none = MeroNoId;
    return number >= 0 && static_cast<std::size_t>(number) < CoreVariableCount
               ? tables->coreVariables[static_cast<std::size_t>(number)]
               : none;
}

}  // namespace mero
