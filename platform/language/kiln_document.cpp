#include "platform/language/kiln_document.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

namespace mero {

namespace {

bool isUpper(char each) {
    return each >= 'A' && each <= 'Z';
}
bool isLower(char each) {
    return each >= 'a' && each <= 'z';
}
bool isDigit(char each) {
    return each >= '0' && each <= '9';
}
bool isKeywordCharacter(char each) {
    return isUpper(each) || isDigit(each) || each == '_';
}
bool isKeyCharacter(char each) {
    return isLower(each) || isDigit(each) || each == '-';
}

class KilnReader {
public:
    explicit KilnReader(std::string_view kilnText) : text(kilnText) {}

    Result<KilnDocument> read() {
        for (skipWhiteSpace(); !failure && !atEnd(); skipWhiteSpace()) {
            readItem();
        }
        if (failure) {
            return *std::move(failure);
        }
        return std::move(document);
    }

private:
    void readItem() {
        const char next = text[position];
        if (isUpper(next)) {
            readElement();
        } else if (document.elements.empty()) {
            fail(position, "expected an element keyword in upper case");
        } else if (isLower(next)) {
            readAttribute();
        } else {
            fail(position, next == '"' ? "a string stands here; expected an attribute or an element keyword"
                                       : "expected an attribute or an element keyword");
        }
    }

    void readElement() {
        KilnElement& element = document.elements.emplace_back();
        element.position = position;
        element.keyword = readWord(isKeywordCharacter);
        element.firstAttribute = document.attributes.size();
        usedKeys.clear();
        checkWordEnd("white space behind the element keyword");
        skipWhiteSpace();
        if (!failure && !atEnd() && text[position] == '"') {
            element.hasValue = true;
            element.value = readString();
        }
    }

    void readAttribute() {
        KilnAttribute attribute{KilnAttribute::Kind::Flag, {}, {}, {}, position, position};
        attribute.key = readWord(isKeyCharacter);
        if (!atEnd() && text[position] == ':') {
            ++position;
            readAttributeValue(attribute);
        } else {
            checkWordEnd("a colon or white space behind the attribute");
        }
        if (failure) {
            return;
        }
        if (isKeyUsed(attribute.key)) {
            fail(attribute.keyPosition,
                 "\"" + std::string(attribute.key) + "\" stands a second time in the element " +
                     std::string(document.elements.back().keyword) + "; expected another attribute");
            return;
        }
        document.attributes.push_back(attribute);
        ++document.elements.back().attributeCount;
    }

    void readAttributeValue(KilnAttribute& attribute) {
        while (!atEnd() && (text[position] == ' ' || text[position] == '\t')) {
            ++position;
        }
        attribute.valuePosition = position;
        if (!atEnd() && text[position] == '"') {
            attribute.kind = KilnAttribute::Kind::String;
            attribute.value = readString();
        } else if (!atEnd() && isLower(text[position])) {
            attribute.kind = KilnAttribute::Kind::Modifier;
            attribute.modifier = readWord(isKeyCharacter);
            checkWordEnd("white space behind the modifier");
        } else {
            fail(position, "expected a string or a modifier in lower case behind the colon");
        }
    }

    QuotedText readString() {
        const std::optional<QuotedText> string = readQuotedText(text, position);
        if (!string) {
            fail(position, "the string that begins here doesn't end; expected a double quote");
            return {};
        }
        return *string;
    }

    template <class Predicate>
    std::string_view readWord(Predicate belongs) {
        const std::size_t begin = position;
        while (!atEnd() && belongs(text[position])) {
            ++position;
        }
        return text.substr(begin, position - begin);
    }

    void checkWordEnd(const char* expected) {
        if (!atEnd() && !isWhiteSpace(text[position]) && text[position] != '"') {
            fail(position, std::string("expected ") + expected);
        }
    }

    /// Elements with many keys get a set, so that reading stays linear.
    bool isKeyUsed(std::string_view key) {
        constexpr std::size_t FewKeys = 16;
        const KilnElement& element = document.elements.back();
        const auto earlier = document.attributesOf(element);
        if (element.attributeCount <= FewKeys) {
            return std::ranges::find(earlier, key, &KilnAttribute::key) != earlier.end();
        }
        if (usedKeys.empty()) {
            for (const KilnAttribute& each : earlier) {
                usedKeys.insert(each.key);
            }
        }
        return !usedKeys.insert(key).second;
    }

    void skipWhiteSpace() {
        while (!atEnd() && isWhiteSpace(text[position])) {
            ++position;
        }
    }

    [[nodiscard]] bool atEnd() const { return position >= text.size(); }

    void fail(std::size_t place, const std::string& reason) {
        if (!failure) {
            failure = Error{describePlace(text, place) + ": " + reason};
        }
    }

    std::string_view text;
    std::size_t position = 0;
    KilnDocument document;
    std::unordered_set<std::string_view> usedKeys;  ///< of the current element
    std::optional<Error> failure;
};

}  // namespace

const KilnAttribute* KilnDocument::find(const KilnElement& element, std::string_view key) const {
    const auto all = attributesOf(element);
    const auto place = std::ranges::find(all, key, &KilnAttribute::key);
    return place != all.end() ? &*place : nullptr;
}

Result<KilnDocument> readKilnDocument(std::string_view text) {
    return KilnReader(text).read();
}

std::string quoteKilnText(std::string_view value) {
    std::string text = "\"";
    text.reserve(value.size() + 2);
    for (const char each : value) {
        if (each == '"' || each == '\\') {
            text += '\\';
        }
        text += each;
    }
    text += '"';
    return text;
}

}  // namespace mero
