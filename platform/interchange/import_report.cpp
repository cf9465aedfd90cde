#include "platform/interchange/import_report.h"

#include <fmt/format.h>

namespace mero {

std::string noteText(const ImportNote& note) {
    return fmt::format("{}: {}: {}", note.place, note.element, note.done);
}

}  // namespace mero
