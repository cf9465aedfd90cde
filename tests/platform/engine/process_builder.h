#pragma once

#include <optional>

#include "tests/platform/engine/model_builder.h"

namespace mero {

/// Makes a process model.
class ProcessBuilder : public ModelBuilder {
public:
    ProcessBuilder(Repository& filledRepository, std::string_view name)
        : ModelBuilder(filledRepository, name, 0, ClassCodeProcessLibrary) {}

    /// Without a probability the flow has none.
    void flow(MeroId from, MeroId to, std::optional<double> probability = std::nullopt,
              bool isDefault = false) {
        const MeroId relation = relate("Sequence flow", from, to);
        if (probability) {
            setOnFlow(relation, "Probability", *probability);
        }
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
    void setOnFlow(MeroId relation, std::string_view attribute, const AttributeValue& value) {
        const Library& library = repository.library();
        const MeroId classId = library.findRelationClass(ClassCodeProcessLibrary, "Sequence flow")->id;
        const auto set = repository.setRelationValue(
            relation, library.findRelationAttribute(classId, attribute)->id, value);
        EXPECT_TRUE(set.isGood()) << set.error().text;
    }
};

}  // namespace mero
