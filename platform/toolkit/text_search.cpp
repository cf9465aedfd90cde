#include "platform/toolkit/text_search.h"

#include <algorithm>
#include <string>

namespace mero {

namespace {

char lowered(char each) {
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
}

}  // namespace

bool holdsText(std::string_view text, std::string_view part) {
    if (part.empty()) {
        return true;
    }
    const char first = lowered(part.front());
    for (std::size_t at = 0; at + part.size() <= text.size(); ++at) {
        if (lowered(text[at]) == first &&
            std::equal(part.begin(), part.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                       [](char left, char right) { return lowered(left) == lowered(right); })) {
            return true;
        }
    }
    return false;
}

SV::String utf8Of(char32_t character) {
    std::string bytes;
    const auto follower = [&](int shift) {
        bytes += static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        bytes += static_cast<char>(character);
    } else if (character < 0x800) {
        bytes += static_cast<char>(0xC0U | (character >> 6));
        follower(0);
    } else if (character < 0x10000) {
        bytes += static_cast<char>(0xE0U | (character >> 12));
        follower(6);
        follower(0);
    } else {
        bytes += static_cast<char>(0xF0U | (character >> 18));
        follower(12);
        follower(6);
        follower(0);
    }
    return bytes;
}

}  // namespace mero
