#pragma once

#include <string_view>

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/import_report.h"
#include "platform/interchange/xml_document.h"

namespace mero {

inline constexpr std::string_view NotExecuted = "imported, not executed";

/// Words about the elements of one file, with the place where they stand in it.
class BpmnNotes {
public:
    /// Both have to outlive this object.
    BpmnNotes(const XmlDocument& readDocument, ImportReport& importReport)
        : document(readDocument), report(importReport) {}

    void add(const BpmnElement& element, std::string_view done);
    /// Throws `DocumentRefused`.
    [[noreturn]] void refuse(const BpmnElement& element, std::string_view reason) const;

    [[nodiscard]] std::string_view sourceName() const { return document.sourceName(); }

private:
    const XmlDocument& document;
    ImportReport& report;
};

}  // namespace mero
