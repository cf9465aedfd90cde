#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

#include "platform/repository/repository.h"

namespace mero {

/// Makes a model in a repository with few words; every mistake fails the test.
class ModelBuilder {
public:
    using Attributes = std::initializer_list<std::pair<std::string_view, AttributeValue>>;

    [[nodiscard]] MeroId id() const { return modelId; }

    MeroId add(std::string_view className, std::string_view name, Attributes attributes = {}) {
        const Library& library = repository.library();
        const MeroId classId = library.findClass(libraryId, className)->id;
        const auto object = repository.addObject(modelId, classId, SV::String(name));
        EXPECT_TRUE(object.isGood()) << name;
        for (const auto& [attribute, value] : attributes) {
            const auto set =
                repository.setValue(object.value(), library.findAttribute(classId, attribute)->id, value);
            EXPECT_TRUE(set.isGood()) << set.error().text;
        }
        return object.value();
    }

    /// `to` may be in another model.
    MeroId relate(std::string_view relationClass, MeroId from, MeroId to) {
        const auto* found = repository.library().findRelationClass(libraryId, relationClass);
        const auto relation = repository.addRelation(found->id, from, to);
        EXPECT_TRUE(relation.isGood());
        return relation.value();
    }

protected:
    /// `type` is the place of the model type in the library.
    ModelBuilder(Repository& filledRepository, std::string_view name, std::size_t type, MeroId libraryCode)
        : repository(filledRepository), libraryId(libraryCode) {
        const auto model = repository.addModel(SV::String(name), type, ModelAccess::Write, true);
        EXPECT_TRUE(model.isGood());
        modelId = model.value();
    }

    Repository& repository;

private:
    MeroId libraryId;
    MeroId modelId = MeroNoId;
};

}  // namespace mero
