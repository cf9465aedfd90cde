#include "platform/interchange/bpmn_notes.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/interchange/document_refused.h"

namespace mero {

namespace {

/// `userTask "Check" (sid-1)`
std::string describe(const BpmnElement& element) {
    std::string described = element.kind;
    if (!element.name.empty()) {
        described += fmt::format(" \"{}\"", element.name);
    }
    if (!element.id.empty()) {
        described += fmt::format(" ({})", element.id);
    }
    return described;
}

}  // namespace

BpmnNotes::BpmnNotes(std::string_view decodedText, std::string_view sourceName, ImportReport& importReport)
    : source(sourceName), report(importReport), lineStarts{0} {
    for (std::size_t end = decodedText.find('\n'); end != std::string_view::npos;
         end = decodedText.find('\n', end + 1)) {
        lineStarts.push_back(end + 1);
    }
}

void BpmnNotes::add(const BpmnElement& element, std::string_view done) {
    report.notes.push_back({placeText(element), describe(element), std::string(done)});
}

void BpmnNotes::refuse(const BpmnElement& element, std::string_view reason) const {
    throw DocumentRefused(fmt::format("{}: {}: {}", placeText(element), describe(element), reason));
}

std::string BpmnNotes::placeText(const BpmnElement& element) const {
    const auto next = std::upper_bound(lineStarts.begin(), lineStarts.end(), element.offset);
    const std::size_t line = static_cast<std::size_t>(next - lineStarts.begin());
    return fmt::format("{}:{}:{}", source, line, element.offset - lineStarts[line - 1] + 1);
}

}  // namespace mero
