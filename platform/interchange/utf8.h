#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mero {

/// `point` is a Unicode scalar value.
void appendUtf8(std::string& text, char32_t point);

/// Position of the first byte that isn't part of a well-formed sequence (RFC 3629); none in good text.
std::optional<std::size_t> firstBadUtf8(std::string_view text);

}  // namespace mero
