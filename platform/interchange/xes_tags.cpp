#include "platform/interchange/xes_tags.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <fmt/format.h>
#include <utility>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/utf8.h"

namespace mero {

namespace {

constexpr std::size_t ChunkBytes = std::size_t{1} << 18;
constexpr std::size_t LongestTag = std::size_t{1} << 24;

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

/// The code point of `#10` or `#xA`.
std::uint32_t numericEntity(std::string_view name) {
    const bool hexadecimal = name.size() > 1 && name[1] == 'x';
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    std::uint32_t point = 0;
    const auto [end, status] =
        std::from_chars(digits.data(), digits.data() + digits.size(), point, hexadecimal ? 16 : 10);
    if (status != std::errc() || end != digits.data() + digits.size() || point == 0 || point > 0x10FFFF ||
        (point >= 0xD800 && point < 0xE000)) {
        throw DocumentRefused(fmt::format("\"&{};\" is no character", name));
    }
    return point;
}

[[noreturn]] void refuseEncoding(std::string_view encoding) {
    throw DocumentRefused(fmt::format("the encoding \"{}\" isn't supported", encoding));
}

void appendEntity(std::string& text, std::string_view name) {
    constexpr std::pair<std::string_view, char> Predefined[] = {
        {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& [known, character] : Predefined) {
        if (name == known) {
            text.push_back(character);
            return;
        }
    }
    if (name.empty() || name.front() != '#') {
        throw DocumentRefused(fmt::format("the entity \"&{};\" isn't declared", name));
    }
    appendUtf8(text, numericEntity(name));
}

}  // namespace

std::string_view XesTags::attributeOf(std::string_view rest, std::string_view wanted) {
    while (true) {
        while (!rest.empty() && isBlank(rest.front())) {
            rest.remove_prefix(1);
        }
        if (rest.empty()) {
            return {};
        }
        const std::size_t equals = rest.find('=');
        if (equals == std::string_view::npos) {
            throw DocumentRefused("an attribute without a value");
        }
        std::string_view name = rest.substr(0, equals);
        while (!name.empty() && isBlank(name.back())) {
            name.remove_suffix(1);
        }
        const std::size_t open = rest.find_first_not_of(" \t\r\n", equals + 1);
        if (open == std::string_view::npos || (rest[open] != '"' && rest[open] != '\'')) {
            throw DocumentRefused("an attribute's value has to stand in quotes");
        }
        const std::size_t end = rest.find(rest[open], open + 1);
        if (end == std::string_view::npos) {
            throw DocumentRefused("an attribute's value isn't closed");
        }
        if (name == wanted) {
            return rest.substr(open + 1, end - open - 1);
        }
        rest.remove_prefix(end + 1);
    }
}

void XesTags::setText(std::string& target, std::string_view raw) const {
    target.clear();
    for (std::size_t index = 0; index < raw.size(); ++index) {
        const char byte = raw[index];
        if (byte == '&') {
            const std::size_t end = raw.find(';', index);
            if (end == std::string_view::npos) {
                throw DocumentRefused("an entity isn't closed");
            }
            appendEntity(target, raw.substr(index + 1, end - index - 1));
            index = end;
        } else if (isBlank(byte)) {
            target.push_back(' ');
        } else if (latin1) {
            appendUtf8(target, static_cast<unsigned char>(byte));
        } else {
            target.push_back(byte);
        }
    }
    if (target.find('\0') != std::string::npos || firstBadUtf8(target)) {
        throw DocumentRefused("a text isn't in the encoding of the file");
    }
}

bool XesTags::next(XesTag& tag, bool insideRoot) {
    inside = insideRoot;
    if (!begun) {
        begun = true;
        refuseWideEncodings();
    }
    while (true) {
        if (!findOpening()) {
            return false;
        }
        if (startsWith("<!--")) {
            skipThrough("-->");
        } else if (startsWith("<![CDATA[")) {
            skipThrough("]]>");
        } else if (startsWith("<?")) {
            readInstruction();
        } else if (startsWith("<!")) {
            readDocumentType();
        } else {
            splitTag(takeTag(), tag);
            return true;
        }
    }
}

/// Encodings of two and of four bytes are told by their byte order mark, else by the first "<".
void XesTags::refuseWideEncodings() {
    using namespace std::string_view_literals;
    constexpr std::pair<std::string_view, const char*> Beginnings[] = {
        {"\xFF\xFE\0\0"sv, "UTF-32"}, {"\0\0\xFE\xFF"sv, "UTF-32"}, {"<\0\0\0"sv, "UTF-32"},
        {"\0\0\0<"sv, "UTF-32"},      {"\xFF\xFE"sv, "UTF-16"},     {"\xFE\xFF"sv, "UTF-16"},
        {"<\0"sv, "UTF-16"},          {"\0<"sv, "UTF-16"}};
    for (const auto& [beginning, encoding] : Beginnings) {
        if (startsWith(beginning)) {
            refuseEncoding(encoding);
        }
    }
}

bool XesTags::findOpening() {
    while (true) {
        const void* const found = std::memchr(buffer.data() + position, '<', buffer.size() - position);
        if (found != nullptr) {
            const auto begin = static_cast<std::size_t>(static_cast<const char*>(found) - buffer.data());
            checkText({buffer.data() + position, begin - position});
            position = tagBegin = begin;
            return true;
        }
        checkText({buffer.data() + position, buffer.size() - position});
        position = tagBegin = buffer.size();
        if (!fill()) {
            return false;
        }
    }
}

/// Between tags a log has blanks only; text inside of it says nothing, text outside is no XML.
void XesTags::checkText(std::string_view text) {
    if (!inside && !text.empty()) {
        if (firstText && text.starts_with("\xEF\xBB\xBF")) {
            text.remove_prefix(3);
        }
        const auto* const said = std::find_if_not(text.begin(), text.end(), isBlank);
        if (said != text.end()) {
            tagBegin = static_cast<std::size_t>(said - buffer.data());
            throw DocumentRefused("no XML: text outside of the elements");
        }
    }
    firstText = firstText && text.empty();
}

/// More bytes behind those that are still needed, which are those from the tag on.
bool XesTags::fill() {
    if (buffer.size() - tagBegin > LongestTag) {
        throw DocumentRefused("a tag or comment of more than 16 MiB");
    }
    countPlace(tagBegin);
    buffer.erase(0, tagBegin);
    position -= tagBegin;
    lineBegin -= tagBegin;
    counted = tagBegin = 0;
    const std::size_t before = buffer.size();
    buffer.resize(before + ChunkBytes);
    const std::size_t got = bytes.read(buffer.data() + before, ChunkBytes);
    buffer.resize(before + got);
    return got != 0;
}

bool XesTags::startsWith(std::string_view text) {
    while (buffer.size() - tagBegin < text.size() && fill()) {
    }
    return std::string_view(buffer).substr(tagBegin, text.size()) == text;
}

/// Position behind the next occurrence of `text`; the buffer holds all of it.
void XesTags::skipThrough(std::string_view text) {
    position = tagBegin;
    std::size_t from = 0;  // relative to the tag, which moves
    while (true) {
        const std::size_t found = buffer.find(text, tagBegin + from);
        if (found != std::string::npos) {
            position = found + text.size();
            return;
        }
        from = std::max(buffer.size() - tagBegin, text.size()) - text.size();
        if (!fill()) {
            throw DocumentRefused(fmt::format("the file ends before \"{}\"", text));
        }
    }
}

void XesTags::readInstruction() {
    skipThrough("?>");
    const std::string_view text = std::string_view(buffer).substr(tagBegin, position - tagBegin);
    if (!text.starts_with("<?xml") || text.size() < 8 || !isBlank(text[5])) {
        return;
    }
    std::string encoding(attributeOf(text.substr(5, text.size() - 7), "encoding"));
    std::transform(encoding.begin(), encoding.end(), encoding.begin(), [](char byte) {
        return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    });
    latin1 = encoding == "ISO-8859-1";
    if (!latin1 && !encoding.empty() && encoding != "UTF-8" && encoding != "US-ASCII") {
        refuseEncoding(encoding);
    }
}

void XesTags::readDocumentType() {
    skipThrough(">");
    if (std::string_view(buffer).substr(tagBegin, position - tagBegin).find('[') != std::string_view::npos) {
        throw DocumentRefused("a document type with declarations isn't supported");
    }
}

/// The text between the brackets of the tag at hand; a ">" in quotes doesn't end it.
std::string_view XesTags::takeTag() {
    std::size_t length = 1;
    char quote = 0;
    while (true) {
        for (; tagBegin + length < buffer.size(); ++length) {
            const char byte = buffer[tagBegin + length];
            if (byte == '<') {
                throw DocumentRefused(quote != 0 ? "\"<\" inside of an attribute's value"
                                                 : "\"<\" inside of a tag");
            }
            if (quote != 0) {
                quote = byte == quote ? '\0' : quote;
            } else if (byte == '"' || byte == '\'') {
                quote = byte;
            } else if (byte == '>') {
                position = tagBegin + length + 1;
                return std::string_view(buffer).substr(tagBegin + 1, length - 1);
            }
        }
        if (!fill()) {
            throw DocumentRefused("the file ends inside of a tag");
        }
    }
}

void XesTags::splitTag(std::string_view text, XesTag& tag) {
    tag.closes = !text.empty() && text.front() == '/';
    tag.empty = !tag.closes && !text.empty() && text.back() == '/';
    text.remove_prefix(tag.closes ? 1 : 0);
    text.remove_suffix(tag.empty ? 1 : 0);
    const auto* const end = std::find_if(text.begin(), text.end(), isBlank);
    const auto length = static_cast<std::size_t>(end - text.begin());
    tag.name = text.substr(0, length);
    tag.attributes = text.substr(length);
    if (const std::size_t colon = tag.name.rfind(':'); colon != std::string_view::npos) {
        tag.name.remove_prefix(colon + 1);
    }
    if (tag.name.empty()) {
        throw DocumentRefused("a tag without a name");
    }
}

/// Counts the lines up to a position of the buffer.
void XesTags::countPlace(std::size_t until) {
    while (counted < until) {
        const void* const found = std::memchr(buffer.data() + counted, '\n', until - counted);
        if (found == nullptr) {
            counted = until;
            return;
        }
        ++lineNumber;
        counted = static_cast<std::size_t>(static_cast<const char*>(found) - buffer.data()) + 1;
        lineBegin = counted;
    }
}

std::size_t XesTags::line() {
    countPlace(tagBegin);
    return lineNumber;
}

}  // namespace mero
