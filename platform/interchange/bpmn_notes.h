#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/import_report.h"

namespace mero {

inline constexpr std::string_view NotExecuted = "imported, not executed";

/// Words about the elements of one file, with the place where they stand in it.
class BpmnNotes {
public:
    /// Both texts and the report have to outlive this object.
    BpmnNotes(std::string_view decodedText, std::string_view sourceName, ImportReport& importReport);

    void add(const BpmnElement& element, std::string_view done);
    /// Throws `DocumentRefused`.
    [[noreturn]] void refuse(const BpmnElement& element, std::string_view reason) const;

    [[nodiscard]] std::string_view sourceName() const { return source; }

private:
    [[nodiscard]] std::string placeText(const BpmnElement& element) const;

    std::string_view source;
    ImportReport& report;
    std::vector<std::size_t> lineStarts;
};

}  // namespace mero
