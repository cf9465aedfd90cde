#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/host/core_variables.h"
#include "component/host/repository.h"

namespace mero {

/// The application library: classes, attributes, relation classes and model types, with identifiers below
/// 1,000,000 that never change. It is the same for every repository and is read-only.
class Library {
public:
    struct Attribute {
        MeroId id;
        std::string name;
        MeroCoreAttributeType type;
        std::string defaultText = {};               ///< default of text-like attributes
        double defaultNumber = 0.0;                 ///< default of integers and doubles
        std::vector<std::string> enumeration = {};  ///< words of an enumeration
        bool holdsAgentText = false;                ///< limited to 3600 code points
        bool tellsUnset = false;                    ///< a value that was given counts, also the default
    };
    struct Class {
        MeroId id;
        std::string name;
        MeroId baseId;     ///< 0 for the root of a library
        MeroId libraryId;  ///< 42 process, 39 environment
        bool abstract;
        bool agent;                      ///< an agent class or its base
        std::vector<MeroId> attributes;  ///< own ones
    };
    struct RelationClass {
        MeroId id;
        std::string name;
        MeroId fromClassId;
        MeroId toClassId;
        MeroId libraryId;
        std::vector<MeroId> attributes;
    };
    struct ModelType {
        std::string name;
        MeroId classId;  ///< 56 or 53
        bool simulatable;
    };

    /// The one standard library.
    static const Library& standard();

    [[nodiscard]] std::span<const Class> classes() const;
    [[nodiscard]] std::span<const RelationClass> relationClasses() const;
    [[nodiscard]] std::span<const ModelType> modelTypes() const;

    // Null where nothing fits.
    [[nodiscard]] const Class* findClass(MeroId id) const;
    [[nodiscard]] const Class* findClass(MeroId libraryId, std::string_view name) const;
    [[nodiscard]] const Attribute* findAttribute(MeroId id) const;
    /// Own and inherited attributes.
    [[nodiscard]] const Attribute* findAttribute(MeroId classId, std::string_view name) const;
    [[nodiscard]] const RelationClass* findRelationClass(MeroId id) const;
    [[nodiscard]] const RelationClass* findRelationClass(MeroId libraryId, std::string_view name) const;
    /// Attribute of a relation class.
    [[nodiscard]] const Attribute* findRelationAttribute(MeroId relationClassId, std::string_view name) const;

    /// A class counts as a sub-class of itself; false for unknown classes.
    [[nodiscard]] bool isSubClassOf(MeroId superClassId, MeroId classId) const;
    /// All classes below, over all levels, without itself, ascending; none for an unknown class.
    [[nodiscard]] std::span<const MeroId> subClassesOf(MeroId classId) const;
    /// Own and inherited attributes.
    [[nodiscard]] bool hasAttribute(MeroId classId, MeroId attributeId) const;
    /// Own and inherited, base class first, each class's in the order of the library.
    [[nodiscard]] std::vector<const Attribute*> attributesOf(MeroId classId) const;
    /// Identifier of a core variable; 0 for an unknown number.
    [[nodiscard]] const MeroId& coreVariable(int number) const;

private:
    Library();
    struct Tables;
    const Tables* tables;
};

}  // namespace mero
