#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace mero {

/// `wanted`, or with " (2)", " (3)" … behind it, whichever is the first that isn't taken.
std::string freeName(const std::string& wanted, const std::function<bool(const std::string&)>& isTaken);

/// A name as a string of Kiln text: in quotes, a backslash before each quote and backslash.
std::string kilnString(std::string_view text);

}  // namespace mero
