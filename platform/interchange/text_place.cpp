#include "platform/interchange/text_place.h"

#include <algorithm>

namespace mero {

TextPlace placeOf(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, std::min(position, text.size()));
    const std::size_t lineStart = before.rfind('\n') + 1;  // 0 where there is no line break
    return {static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
            before.size() - lineStart + 1};
}

}  // namespace mero
