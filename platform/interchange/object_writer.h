#pragma once

#include <string>
#include <string_view>

#include "platform/interchange/document_refused.h"
#include "platform/repository/repository.h"

namespace mero {

/// Changes of a repository by the names of the library, for the importers. A change that the repository
/// refuses, and a name that the library lacks, throw `DocumentRefused`.
class ObjectWriter {
public:
    explicit ObjectWriter(Repository& target) : repository(target) {}

    [[nodiscard]] MeroId addModel(const std::string& name, std::string_view type);
    [[nodiscard]] MeroId addObject(MeroId model, std::string_view className, const std::string& name);
    MeroId relate(std::string_view relationClass, MeroId from, MeroId to);
    void set(MeroId object, std::string_view attribute, const AttributeValue& value);
    void setRelation(MeroId relation, std::string_view attribute, const AttributeValue& value);

    [[nodiscard]] bool hasAttribute(MeroId object, std::string_view attribute) const;
    /// True if an object of any class, agents included, bears the name.
    [[nodiscard]] bool isNameTaken(MeroId model, const std::string& name) const;

private:
    [[nodiscard]] MeroId libraryOf(MeroId model) const;

    Repository& repository;
};

}  // namespace mero
