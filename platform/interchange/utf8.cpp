#include "platform/interchange/utf8.h"

#include <cstdint>
#include <cstring>

namespace mero {

namespace {

/// Number of bytes at the front that are ASCII for sure; eight are looked at together.
std::size_t asciiLength(std::string_view text) {
    constexpr std::uint64_t HighBits = 0x8080808080808080ULL;
    std::size_t length = 0;
    std::uint64_t bytes = 0;
    for (; length + sizeof bytes <= text.size(); length += sizeof bytes) {
        std::memcpy(&bytes, text.data() + length, sizeof bytes);
        if ((bytes & HighBits) != 0) {
            break;
        }
    }
    return length;
}

/// Length of the well-formed sequence at the front, 0 if there is none.
std::size_t sequenceLength(std::string_view text) {
    const auto byte = [&text](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const auto continues = [&byte](std::size_t index) { return (byte(index) & 0xC0) == 0x80; };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return continues(1) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        const bool good = continues(1) && continues(2) && (lead != 0xE0 || byte(1) >= 0xA0) &&
                          (lead != 0xED || byte(1) < 0xA0);
        return good ? 3 : 0;
    }
    if (lead >= 0xF0 && lead < 0xF5) {
        const bool good = continues(1) && continues(2) && continues(3) && (lead != 0xF0 || byte(1) >= 0x90) &&
                          (lead != 0xF4 || byte(1) < 0x90);
        return good ? 4 : 0;
    }
    return 0;
}

}  // namespace

void appendUtf8(std::string& text, char32_t point) {
    const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (point < 0x80) {
        add(point);
    } else if (point < 0x800) {
        add(0xC0 | (point >> 6));
        add(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        add(0xE0 | (point >> 12));
        add(0x80 | ((point >> 6) & 0x3F));
        add(0x80 | (point & 0x3F));
    } else {
        add(0xF0 | (point >> 18));
        add(0x80 | ((point >> 12) & 0x3F));
        add(0x80 | ((point >> 6) & 0x3F));
        add(0x80 | (point & 0x3F));
    }
}

std::optional<std::size_t> firstBadUtf8(std::string_view text) {
    for (std::size_t position = asciiLength(text); position < text.size();) {
        const std::size_t length = sequenceLength(text.substr(position));
        if (length == 0) {
            return position;
        }
        position += length;
    }
    return std::nullopt;
}

}  // namespace mero
