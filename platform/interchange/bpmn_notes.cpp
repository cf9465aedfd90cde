#include "platform/interchange/bpmn_notes.h"

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

void BpmnNotes::add(const BpmnElement& element, std::string_view done) {
    report.notes.push_back({document.placeText(element.offset), describe(element), std::string(done)});
}

void BpmnNotes::refuse(const BpmnElement& element, std::string_view reason) const {
    throw DocumentRefused(
        fmt::format("{}: {}: {}", document.placeText(element.offset), describe(element), reason));
}

}  // namespace mero
