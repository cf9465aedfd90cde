#include "platform/language/quoted_text.h"

#include <algorithm>

namespace mero {

std::string QuotedText::plain() const {
    if (!hasBackslash) {
        return std::string(raw);
    }
    std::string text;
    text.reserve(raw.size());
    for (std::size_t at = 0; at < raw.size(); ++at) {
        if (raw[at] == '\\') {
            ++at;
        }
        text += raw[at];
    }
    return text;
}

std::optional<QuotedText> readQuotedText(std::string_view text, std::size_t& position) {
    const std::size_t begin = position + 1;
    bool hasBackslash = false;
    for (std::size_t at = begin; at < text.size(); ++at) {
        if (text[at] == '"') {
            position = at + 1;
            return QuotedText{text.substr(begin, at - begin), hasBackslash};
        }
        if (text[at] == '\\') {
            hasBackslash = true;
            ++at;
        }
    }
    return std::nullopt;
}

std::string describePlace(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    const auto line = std::ranges::count(before, '\n') + 1;
    const std::size_t lastBreak = before.rfind('\n');
    const std::string_view sameLine =
        lastBreak == std::string_view::npos ? before : before.substr(lastBreak + 1);
    const auto isCharacterBegin = [](char each) {
        return (static_cast<unsigned char>(each) & 0xC0U) != 0x80U;
    };
    const auto column = std::ranges::count_if(sameLine, isCharacterBegin) + 1;
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

}  // namespace mero
