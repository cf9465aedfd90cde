#pragma once

#include <set>
#include <string>

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/bpmn_notes.h"

namespace mero {

/// The identifiers of a file's elements.
class BpmnIdentifiers {
public:
    /// Throws `DocumentRefused` where two elements have the same one.
    BpmnIdentifiers(const BpmnFile& file, const BpmnNotes& notes);

    [[nodiscard]] bool contains(const std::string& identifier) const {
        return identifiers.contains(identifier);
    }
    /// The identifier that a reference means: it may be written with the prefix of a namespace.
    [[nodiscard]] std::string resolved(const std::string& reference) const;

private:
    void takeContent(const BpmnScope& scope, const BpmnNotes& notes);
    void take(const BpmnElement& element, const BpmnNotes& notes);

    std::set<std::string, std::less<>> identifiers;
};

}  // namespace mero
