#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

#include "platform/repository/repository.h"

namespace mero {

/// Makes a working environment in a repository with few words; every mistake fails the test.
class StaffBuilder {
public:
    using Attributes = std::initializer_list<std::pair<std::string_view, AttributeValue>>;

    StaffBuilder(Repository& filledRepository, std::string_view name) : repository(filledRepository) {
        const auto model = repository.addModel(SV::String(name), 1, ModelAccess::Write, true);
        EXPECT_TRUE(model.isGood());
        modelId = model.value();
    }

    [[nodiscard]] MeroId id() const { return modelId; }

    MeroId add(std::string_view className, std::string_view name, Attributes attributes = {}) {
        const Library& library = repository.library();
        const MeroId classId = library.findClass(ClassCodeEnvironmentLibrary, className)->id;
        const auto object = repository.addObject(modelId, classId, SV::String(name));
        EXPECT_TRUE(object.isGood()) << name;
        for (const auto& [attribute, value] : attributes) {
            const auto set =
                repository.setValue(object.value(), library.findAttribute(classId, attribute)->id, value);
            EXPECT_TRUE(set.isGood()) << set.error().text;
        }
        return object.value();
    }

    void relate(std::string_view relationClass, MeroId from, MeroId to) {
        const auto* found =
            repository.library().findRelationClass(ClassCodeEnvironmentLibrary, relationClass);
        EXPECT_TRUE(repository.addRelation(found->id, from, to).isGood());
    }

    /// So many workers "Name 1", "Name 2" … who have the role.
    void addWorkers(MeroId role, std::string_view name, int count, Attributes attributes = {}) {
        for (int number = 1; number <= count; ++number) {
            relate("Has role", add("Worker", std::string(name) + " " + std::to_string(number), attributes),
                   role);
        }
    }

private:
    Repository& repository;
    MeroId modelId = MeroNoId;
};

}  // namespace mero
