#pragma once

#include <cstddef>
#include <string_view>

namespace mero {

/// Line and column, both from 1; columns count bytes.
struct TextPlace {
    std::size_t line = 1;
    std::size_t column = 1;
};

/// Place of a byte position; the end of the text for positions behind it.
TextPlace placeOf(std::string_view text, std::size_t position);

}  // namespace mero
