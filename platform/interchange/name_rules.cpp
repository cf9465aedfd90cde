#include "platform/interchange/name_rules.h"

#include <fmt/format.h>

namespace mero {

std::string freeName(const std::string& wanted, const std::function<bool(const std::string&)>& isTaken) {
    std::string name = wanted;
    for (int number = 2; isTaken(name); ++number) {
        name = fmt::format("{} ({})", wanted, number);
    }
    return name;
}

std::string kilnString(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted + '"';
}

}  // namespace mero
