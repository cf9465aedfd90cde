#pragma once

#include <cstddef>
#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace mero {

class XmlDocument;

/// An element of an XML file together with its place, so that whatever is wrong with it can be told with
/// line and column. The document has to outlive it.
class XmlElement {
public:
    XmlElement(const XmlDocument& owner, const pugi::xml_node& xmlNode) : document(&owner), node(xmlNode) {}

    /// Name without prefix.
    [[nodiscard]] std::string_view kind() const;
    /// Address of the namespace, empty for none.
    [[nodiscard]] std::string_view space() const;
    /// Value without the blanks around it; empty where the attribute is missing.
    [[nodiscard]] std::string attribute(const char* name) const;
    [[nodiscard]] bool hasAttribute(const char* name) const { return !node.attribute(name).empty(); }
    /// Names of the attributes, namespace declarations left out.
    [[nodiscard]] std::vector<std::string_view> attributeNames() const;
    /// Value as it stands in the file, but for character references.
    [[nodiscard]] std::string_view rawAttribute(const char* name) const;
    /// Text right below the element, without the blanks around it.
    [[nodiscard]] std::string text() const;

    [[nodiscard]] std::vector<XmlElement> children() const;

    /// Calls `visit(element)` for this element and all below it, in document order.
    template <class Visit>
    void forEachBelow(const Visit& visit) const {
        visit(*this);
        for (pugi::xml_node next = following(node); next; next = following(next)) {
            if (next.type() == pugi::node_element) {
                visit(XmlElement(*document, next));
            }
        }
    }

    /// Position in the decoded text.
    [[nodiscard]] std::size_t offset() const;
    /// "file:line:column"
    [[nodiscard]] std::string place() const;
    /// Throws `DocumentRefused` with the place.
    [[noreturn]] void refuse(std::string_view reason) const;

private:
    friend class XmlDocument;
    /// The next node in document order below this element, null behind the last.
    [[nodiscard]] pugi::xml_node following(const pugi::xml_node& from) const;

    const XmlDocument* document;
    pugi::xml_node node;
};

/// An XML file that has been read as a whole. It is refused with its place if it isn't well-formed, declares
/// entities, has a second root or elements nested deeper than 256 levels.
class XmlDocument {
public:
    /// Throws `DocumentRefused`. `decodedText` (`decodeXml`) and `sourceName` have to outlive the document.
    XmlDocument(std::string_view decodedText, std::string_view sourceName);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    [[nodiscard]] XmlElement root() const { return {*this, document.document_element()}; }
    [[nodiscard]] std::string_view sourceName() const { return source; }
    /// "file:line:column" of a position in the text.
    [[nodiscard]] std::string placeText(std::size_t offset) const;

private:
    friend class XmlElement;
    [[noreturn]] void refuse(std::size_t offset, std::string_view reason) const;
    void parse();
    void checkRoots() const;
    void checkDepth() const;
    [[nodiscard]] std::string_view namespaceOf(const pugi::xml_node& element) const;

    std::string_view text;
    std::string_view source;
    pugi::xml_document document;
    std::vector<std::size_t> lineStarts;
    std::map<std::string, std::string, std::less<>> rootNamespaces;
};

/// `text` without blanks, tabs and line ends around it.
std::string trimmed(std::string_view text);

}  // namespace mero
