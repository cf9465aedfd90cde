#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

#include "platform/interchange/xes_bytes.h"

namespace mero {

/// A start tag or end tag without its brackets; the texts live until the next tag is read.
struct XesTag {
    std::string_view name;  ///< without prefix
    std::string_view attributes;
    bool closes = false;
    bool empty = false;
};

/// Reads the tags of an XML file one by one, with one of them in memory. Comments, instructions and sections
/// of text are passed over. What is no XML throws `DocumentRefused` with the reason alone; the place is then
/// that of the tag at hand.
class XesTags {
public:
    explicit XesTags(std::istream& input) : bytes(input) {}

    /// False at the end of the file. Outside of the root element text isn't allowed.
    bool next(XesTag& tag, bool insideRoot);

    /// The raw text of an attribute of a tag, empty if it lacks it.
    static std::string_view attributeOf(std::string_view attributes, std::string_view wanted);
    /// A raw value with its entities and encoding resolved; line ends and tabs count as blanks
    /// (XML 1.0, 3.3.3).
    void setText(std::string& target, std::string_view raw) const;

    // Place of the tag at hand, from 1; columns count bytes. To be asked in this order.

    std::size_t line();
    [[nodiscard]] std::size_t column() const { return tagBegin - lineBegin + 1; }

private:
    void refuseWideEncodings();
    bool findOpening();
    void checkText(std::string_view text);
    bool fill();
    bool startsWith(std::string_view text);
    void skipThrough(std::string_view text);
    void readInstruction();
    void readDocumentType();
    std::string_view takeTag();
    static void splitTag(std::string_view text, XesTag& tag);
    void countPlace(std::size_t until);

    XesBytes bytes;
    std::string buffer;
    std::size_t position = 0;
    std::size_t tagBegin = 0;
    std::size_t counted = 0;  ///< lines are counted up to here
    std::size_t lineNumber = 1;
    std::size_t lineBegin = 0;  ///< wraps where the line began before the buffer
    bool begun = false;
    bool latin1 = false;
    bool firstText = true;
    bool inside = false;
};

}  // namespace mero
