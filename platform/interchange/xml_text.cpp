#include "platform/interchange/xml_text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>

#include "platform/interchange/text_place.h"
#include "platform/interchange/utf8.h"

namespace mero {

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::size_t DeclarationBytes = 200;

/// Code points of the bytes 0x80 to 0x9F; 0 where windows-1252 has none.
constexpr std::array<char16_t, 32> Windows1252{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::optional<std::string> fromUtf16(std::string_view bytes, bool bigEndian) {
    std::string text;
    const auto unitAt = [&](std::size_t index) -> char32_t {
        const char32_t first = static_cast<unsigned char>(bytes[index]);
        const char32_t second = static_cast<unsigned char>(bytes[index + 1]);
        return bigEndian ? (first << 8) | second : (second << 8) | first;
    };
    if (bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        char32_t point = unitAt(index);
        if (point >= 0xD800 && point < 0xE000) {
            const char32_t low = index + 2 < bytes.size() ? unitAt(index + 2) : 0;
            if (point >= 0xDC00 || low < 0xDC00 || low >= 0xE000) {
                return std::nullopt;
            }
            point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
            index += 2;
        }
        appendUtf8(text, point);
    }
    return text;
}

std::string fromSingleBytes(std::string_view bytes, bool windows) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 16);
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        const bool special = windows && byte >= 0x80 && byte < 0xA0 && Windows1252[byte - 0x80U] != 0;
        appendUtf8(text, special ? Windows1252[byte - 0x80U] : byte);
    }
    return text;
}

/// Lower-case value of `encoding` in the XML declaration, empty where there is none.
std::string declaredEncoding(std::string_view bytes) {
    const std::string_view head = bytes.substr(0, DeclarationBytes);
    const std::size_t end = head.find("?>");
    const std::size_t key = head.find("encoding");
    if (!head.starts_with("<?xml") || key == std::string_view::npos || end == std::string_view::npos ||
        key > end) {
        return {};
    }
    const std::size_t open = head.find_first_of("\"'", key);
    const std::size_t close = open == std::string_view::npos ? open : head.find(head[open], open + 1);
    if (close == std::string_view::npos) {
        return {};
    }
    std::string name(head.substr(open + 1, close - open - 1));
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return name;
}

std::optional<std::string> decodeUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE")) {
        return fromUtf16(bytes.substr(2), bytes.front() == '\xFE');
    }
    return fromUtf16(bytes, bytes.front() == '\0');
}

bool looksLikeUtf16(std::string_view bytes) {
    using namespace std::string_view_literals;
    return bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv) ||
           bytes.starts_with("\0<"sv);
}

}  // namespace

Result<std::string> decodeXml(std::string_view bytes, std::string_view source) {
    if (looksLikeUtf16(bytes)) {
        std::optional<std::string> text = decodeUtf16(bytes);
        return text ? Result<std::string>(*std::move(text))
                    : Error{fmt::format("{}: the bytes aren't UTF-16", source)};
    }
    const bool marked = bytes.starts_with(Utf8Mark);
    if (marked) {
        bytes.remove_prefix(Utf8Mark.size());
    }
    const std::string encoding = marked ? std::string("utf-8") : declaredEncoding(bytes);
    if (encoding == "iso-8859-1" || encoding == "latin1" || encoding == "windows-1252" ||
        encoding == "cp1252") {
        return fromSingleBytes(bytes, encoding.back() == '2');
    }
    if (!encoding.empty() && encoding != "utf-8" && encoding != "utf8" && encoding != "us-ascii") {
        return Error{fmt::format("{}: the encoding \"{}\" isn't known", source, encoding)};
    }
    if (const std::optional<std::size_t> bad = firstBadUtf8(bytes)) {
        const TextPlace place = placeOf(bytes, *bad);
        return Error{fmt::format("{}:{}:{}: the bytes aren't UTF-8", source, place.line, place.column)};
    }
    return std::string(bytes);
}

}  // namespace mero
