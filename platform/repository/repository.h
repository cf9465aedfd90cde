#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "component/host/containers.h"
#include "component/host/repository.h"

#include "platform/repository/library.h"
#include "platform/support/result.h"

namespace mero {

/// Text of text-like attributes, integer or double.
using AttributeValue = std::variant<SV::String, std::int32_t, double>;

/// Values that differ from their attributes' defaults, and all that were given where the attribute
/// `tellsUnset`, in ascending order of attribute.
using AttributeValues = std::vector<std::pair<MeroId, AttributeValue>>;

/// The stored value of an attribute; null if it has its default, or none.
[[nodiscard]] const AttributeValue* findValue(const AttributeValues& values, MeroId attributeId);

struct Relation {
    MeroId id = MeroNoId;
    MeroId classId = MeroNoId;
    MeroId from = MeroNoId;  ///< object
    MeroId to = MeroNoId;    ///< object, of any model
    AttributeValues values;
};

struct Object {
    MeroId id = MeroNoId;
    MeroId classId = MeroNoId;
    MeroId modelId = MeroNoId;
    SV::String name;
    AttributeValues values;
};

enum class ModelAccess { Write, Read };

struct Model {
    MeroId id = MeroNoId;
    SV::String name;
    std::size_t type = 0;  ///< index into the library's model types
    ModelAccess access = ModelAccess::Write;
    bool loaded = true;             ///< false: stored, and has to be loaded by the repository
    std::vector<MeroId> objects;    ///< agents included, in order of making
    std::vector<MeroId> relations;  ///< those that begin in this model, in order of making
};

/// Models, objects and relations in memory, with indices for every look-up that a run needs: by identifier,
/// by name, by class in a model, by relation. Changes are checked against the library and the rules of names;
/// each either happens wholly or is refused. Access modes bind users of the host contract, not this class.
/// `RepositoryServices` answers the host contract on top of it; the
/// stores (`sqlite_store.h`, repository documents) fill and save it.
class Repository {
public:
    /// First identifier of models and objects, which share one space of numbers. Relations count from here in
    /// a space of their own. No number is given twice, even if its object is removed.
    static constexpr MeroId FirstId = 1000001;

    Repository();
    Repository(const Repository&) = delete;
    Repository& operator=(const Repository&) = delete;
    Repository(Repository&&) noexcept;
    Repository& operator=(Repository&&) noexcept;
    ~Repository();

    [[nodiscard]] const Library& library() const { return Library::standard(); }

    // Reading; pointers are valid until the next change, null where nothing fits.

    [[nodiscard]] std::vector<MeroId> modelIds() const;  ///< in order of making
    [[nodiscard]] const Model* findModel(MeroId id) const;
    [[nodiscard]] const Model* findModel(std::string_view name) const;
    [[nodiscard]] const Object* findObject(MeroId id) const;
    /// First in order of making if several classes of the model have the name; `classId` 0 means any class
    /// but agents.
    [[nodiscard]] const Object* findObject(MeroId modelId, MeroId classId, std::string_view name) const;
    [[nodiscard]] const Relation* findRelation(MeroId id) const;
    /// Objects of exactly this class, ascending.
    [[nodiscard]] std::span<const MeroId> objectsOfClass(MeroId modelId, MeroId classId) const;
    /// Relations that begin (end) at the object, in order of making.
    [[nodiscard]] std::span<const MeroId> relationsFrom(MeroId objectId) const;
    [[nodiscard]] std::span<const MeroId> relationsTo(MeroId objectId) const;
    /// The stored value, or the attribute's default. The attribute must be one of the object's class.
    [[nodiscard]] AttributeValue valueOf(const Object& object, MeroId attributeId) const;
    [[nodiscard]] AttributeValue valueOf(const Relation& relation, MeroId attributeId) const;
    /// Convenience for readers of models: value by attribute name; the empty text, 0 or 0.0 where the class
    /// lacks it.
    [[nodiscard]] SV::String textOf(const Object& object, std::string_view attribute) const;
    [[nodiscard]] double numberOf(const Object& object, std::string_view attribute) const;
    [[nodiscard]] SV::String textOf(const Relation& relation, std::string_view attribute) const;
    [[nodiscard]] double numberOf(const Relation& relation, std::string_view attribute) const;

    // Changing; an error leaves everything as it was. Identifiers are given in the order of making.

    Result<MeroId> addModel(const SV::String& name, std::size_t type, ModelAccess access, bool loaded);
    /// An empty name makes one: the class's name, a blank and the lowest free number.
    Result<MeroId> addObject(MeroId modelId, MeroId classId, const SV::String& name);
    Result<MeroId> addRelation(MeroId relationClassId, MeroId from, MeroId to);
    /// Checks the value against the type of the attribute (time text, word of an enumeration, finite number;
    /// a whole number stands for a double). Calendars, rules and references are kept as they stand. Setting
    /// the attribute `Name` renames the object.
    Result<void> setValue(MeroId objectId, MeroId attributeId, const AttributeValue& value);
    Result<void> setRelationValue(MeroId relationId, MeroId attributeId, const AttributeValue& value);
    Result<void> renameObject(MeroId objectId, const SV::String& name);
    Result<void> removeObject(MeroId objectId);  ///< with the relations that begin or end there
    Result<void> removeModel(MeroId modelId);    ///< with its objects and relations
    /// Whether the model is in memory now. The stores keep what `addModel` said: loading for a run changes no
    /// file.
    Result<void> setLoaded(MeroId modelId, bool loaded);
    Result<void> setAccess(MeroId modelId, ModelAccess access);

private:
    friend class RepositoryAccess;
    struct Data;
    std::unique_ptr<Data> data;
};

}  // namespace mero
