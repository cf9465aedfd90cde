#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/language/quoted_text.h"
#include "platform/support/result.h"

namespace mero {

/// One attribute of an element of Kiln text.
struct KilnAttribute {
    enum class Kind { Flag, Modifier, String };

    Kind kind;
    std::string_view key;
    std::string_view modifier;  ///< word behind the colon; only of a modifier
    QuotedText value;           ///< only of a string
    std::size_t keyPosition;    ///< byte of the text
    std::size_t valuePosition;  ///< of the word or the opening quote behind the colon
};

struct KilnElement {
    std::string_view keyword;
    bool hasValue = false;
    QuotedText value;
    std::size_t position = 0;  ///< of the keyword
    std::size_t firstAttribute = 0;
    std::size_t attributeCount = 0;
};

/// The elements of a Kiln text, as views into the text, which has to outlive the document. `MeroKilnParser`
/// hands them to the component; the platform's own readers use them here, with places for their messages.
struct KilnDocument {
    std::vector<KilnElement> elements;
    std::vector<KilnAttribute> attributes;  ///< of all elements, in order

    [[nodiscard]] std::span<const KilnAttribute> attributesOf(const KilnElement& element) const {
        return std::span(attributes).subspan(element.firstAttribute, element.attributeCount);
    }
    /// Null for a key that isn't there.
    [[nodiscard]] const KilnAttribute* find(const KilnElement& element, std::string_view key) const;
};

/// Takes time in proportion to the text. An error tells line, column and what was expected.
[[nodiscard]] Result<KilnDocument> readKilnDocument(std::string_view text);

/// The value in double quotes, with a backslash before each double quote and each backslash.
[[nodiscard]] std::string quoteKilnText(std::string_view value);

}  // namespace mero
