#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "platform/interchange/text_place.h"
#include "platform/support/result.h"

namespace mero {

/// Reads one JSON text (RFC 8259) for the document readers of this folder. Stricter than the grammar where a
/// document could mislead: a key that stands twice in an object, a zero character in a text and nesting
/// deeper than 64 levels are refused. `source` names the text in errors, which give line and column.
Result<nlohmann::json> readJson(std::string_view text, std::string_view source);

/// JSON text of a string, quotes included: the form in which paths and messages show names.
std::string inQuotes(std::string_view text);

/// "a text", "a number" …: what stands where something else was wanted.
std::string_view jsonKind(const nlohmann::json& value);

}  // namespace mero
