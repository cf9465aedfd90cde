#pragma once

#include <nlohmann/json.hpp>

#include "platform/interchange/result_document.h"

namespace mero {

/// The sorted document with its fixed keys.
nlohmann::ordered_json jsonOf(ResultDocument document);

/// The text of a file; bytes that aren't UTF-8 are replaced.
std::string textOf(const nlohmann::ordered_json& node);

}  // namespace mero
