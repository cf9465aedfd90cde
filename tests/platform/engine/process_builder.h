#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

#include "platform/repository/repository.h"

namespace mero {

/// Makes a process model in a repository with few words; every mistake fails the test.
class ProcessBuilder {
public:
    using Attributes = std::initializer_list<std::pair<std::string_view, AttributeValue>>;

    ProcessBuilder(Repository& filledRepository, std::string_view name) : repository(filledRepository) {
        const auto model = repository.addModel(SV::String(name), 0, ModelAccess::Write, true);
        EXPECT_TRUE(model.isGood());
        modelId = model.value();
    }

    [[nodiscard]] MeroId id() const { return modelId; }

    MeroId add(std::string_view className, std::string_view name, Attributes attributes = {}) {
        const Library& library = repository.library();
        const MeroId classId = library.findClass(ClassCodeProcessLibrary, className)->id;
        const auto object = repository.addObject(modelId, classId, SV::String(name));
        EXPECT_TRUE(object.isGood()) << name;
        for (const auto& [attribute, value] : attributes) {
            const auto set =
                repository.setValue(object.value(), library.findAttribute(classId, attribute)->id, value);
            EXPECT_TRUE(set.isGood()) << set.error().text;
        }
        return object.value();
    }

    /// Without a probability the flow has none.
    void flow(MeroId from, MeroId to, double probability = 0.0, bool isDefault = false) {
        const MeroId relation = relate("Sequence flow", from, to);
        setOnFlow(relation, "Probability", probability);
        setOnFlow(relation, "Default", std::int32_t{isDefault});
    }
    void chain(std::initializer_list<MeroId> nodes) {
        for (const MeroId* node = nodes.begin(); node + 1 != nodes.end(); ++node) {
            flow(*node, *(node + 1));
        }
    }
    void attach(MeroId boundary, MeroId host) { relate("Attached to", boundary, host); }
    /// `to` may be in another model.
    void message(MeroId from, MeroId to) { relate("Message flow", from, to); }

private:
    MeroId relate(std::string_view relationClass, MeroId from, MeroId to) {
        const auto* found = repository.library().findRelationClass(ClassCodeProcessLibrary, relationClass);
        const auto relation = repository.addRelation(found->id, from, to);
        EXPECT_TRUE(relation.isGood());
        return relation.value();
    }
    void setOnFlow(MeroId relation, std::string_view attribute, const AttributeValue& value) {
        const Library& library = repository.library();
        const MeroId classId = library.findRelationClass(ClassCodeProcessLibrary, "Sequence flow")->id;
        const auto set = repository.setRelationValue(
            relation, library.findRelationAttribute(classId, attribute)->id, value);
        EXPECT_TRUE(set.isGood()) << set.error().text;
    }

    Repository& repository;
    MeroId modelId = MeroNoId;
};

}  // namespace mero
