#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mero {

/// A string in double quotes, as it stands in a text that has to outlive it. A backslash takes the next
/// character as it stands; every other character stands for itself.
struct QuotedText {
    std::string_view raw;  ///< between the quotes
    bool hasBackslash = false;

    [[nodiscard]] std::string plain() const;
};

/// Reads the string whose opening quote is at `position`, which then stands behind the closing quote.
/// Nothing, and no change, if the string doesn't end.
[[nodiscard]] std::optional<QuotedText> readQuotedText(std::string_view text, std::size_t& position);

[[nodiscard]] constexpr bool isWhiteSpace(char each) {
    return each == ' ' || (each >= '\t' && each <= '\r');
}

/// "line 3, column 7" of a byte of the text. Both count from 1; columns count code points.
[[nodiscard]] std::string describePlace(std::string_view text, std::size_t position);

}  // namespace mero
