#pragma once

#include <string>

namespace mero {

/// Agents that the standard library offers: one definition text of several "AGENT" elements, each with its
/// name, description and objects, followed by its measures.
[[nodiscard]] const std::string& predefinedAgentsText();

}  // namespace mero
