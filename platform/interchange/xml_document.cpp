#include "platform/interchange/xml_document.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>

#include "platform/interchange/document_refused.h"

namespace mero {

namespace {

constexpr int DepthLimit = 256;
/// Line breaks in attributes are kept, since blanks beside them go with them.
constexpr unsigned ParseOptions = (pugi::parse_default | pugi::parse_doctype) & ~pugi::parse_wconv_attribute;

std::size_t offsetOf(const pugi::xml_node& node) {
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug() - 1, 0));
}

}  // namespace

std::string trimmed(std::string_view text) {
    constexpr std::string_view White = " \t\r\n";
    const std::size_t first = text.find_first_not_of(White);
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(White) - first + 1));
}

std::string_view XmlElement::kind() const {
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string_view XmlElement::space() const {
    return document->namespaceOf(node);
}

std::string XmlElement::attribute(const char* name) const {
    return trimmed(node.attribute(name).value());
}

std::vector<std::string_view> XmlElement::attributeNames() const {
    std::vector<std::string_view> names;
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        if (name != "xmlns" && !name.starts_with("xmlns:")) {
            names.push_back(name);
        }
    }
    return names;
}

std::string_view XmlElement::rawAttribute(const char* name) const {
    return node.attribute(name).value();
}

std::string XmlElement::text() const {
    std::string text;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return trimmed(text);
}

std::vector<XmlElement> XmlElement::children() const {
    std::vector<XmlElement> elements;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            elements.emplace_back(*document, child);
        }
    }
    return elements;
}

pugi::xml_node XmlElement::following(const pugi::xml_node& from) const {
    if (from.first_child()) {
        return from.first_child();
    }
    for (pugi::xml_node step = from; step != node; step = step.parent()) {
        if (step.next_sibling()) {
            return step.next_sibling();
        }
    }
    return {};
}

std::size_t XmlElement::offset() const {
    return offsetOf(node);
}

std::string XmlElement::place() const {
    return document->placeText(offset());
}

void XmlElement::refuse(std::string_view reason) const {
    document->refuse(offset(), reason);
}

XmlDocument::XmlDocument(std::string_view decodedText, std::string_view sourceName)
    : text(decodedText), source(sourceName), lineStarts{0} {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1)) {
        lineStarts.push_back(end + 1);
    }
    parse();
    checkRoots();
    checkDepth();
    for (const pugi::xml_attribute& attribute : document.document_element().attributes()) {
        const std::string_view name = attribute.name();
        if (name == "xmlns" || name.starts_with("xmlns:")) {
            rootNamespaces.emplace(name, attribute.value());
        }
    }
}

std::string XmlDocument::placeText(std::size_t offset) const {
    const auto next = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
    const auto line = static_cast<std::size_t>(next - lineStarts.begin());
    return fmt::format("{}:{}:{}", source, line, offset - lineStarts[line - 1] + 1);
}

void XmlDocument::refuse(std::size_t offset, std::string_view reason) const {
    throw DocumentRefused(placeText(offset), std::string(reason));
}

void XmlDocument::parse() {
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
        refuse(zero, "zero character");
    }
    const pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), ParseOptions, pugi::encoding_utf8);
    if (!result) {
        const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
        refuse(std::min(offset, text.size()), fmt::format("the XML is broken: {}", result.description()));
    }
}

void XmlDocument::checkRoots() const {
    for (const pugi::xml_node& node : document.children()) {
        if (node.type() == pugi::node_doctype && std::strstr(node.value(), "<!ENTITY") != nullptr) {
            refuse(text.find("<!ENTITY"), "declared entities aren't read");
        }
        if (node.type() == pugi::node_element && node != document.document_element()) {
            refuse(offsetOf(node), "a second root element");
        }
    }
}

void XmlDocument::checkDepth() const {
    const pugi::xml_node root = document.document_element();
    int depth = 1;
    for (pugi::xml_node node = root; node;) {
        if (depth > DepthLimit) {
            refuse(offsetOf(node.type() == pugi::node_element ? node : node.parent()),
                   fmt::format("nested deeper than {} levels", DepthLimit));
        }
        if (node.first_child()) {
            ++depth;
            node = node.first_child();
            continue;
        }
        while (node != root && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        node = node == root ? pugi::xml_node() : node.next_sibling();
    }
}

std::string_view XmlDocument::namespaceOf(const pugi::xml_node& element) const {
    const std::string_view name = element.name();
    const std::size_t colon = name.find(':');
    const std::string key =
        colon == std::string_view::npos ? "xmlns" : fmt::format("xmlns:{}", name.substr(0, colon));
    const pugi::xml_node root = document.document_element();
    for (pugi::xml_node node = element; node && node != root; node = node.parent()) {
        if (const pugi::xml_attribute attribute = node.attribute(key.c_str())) {
            return attribute.value();
        }
    }
    const auto found = rootNamespaces.find(key);
    return found == rootNamespaces.end() ? std::string_view{} : std::string_view(found->second);
}

}  // namespace mero
