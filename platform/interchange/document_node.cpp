#include "platform/interchange/document_node.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>

#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

std::string childPath(const std::string& parent, std::string_view key) {
    return parent.empty() ? std::string(key) : fmt::format("{}.{}", parent, key);
}

}  // namespace

void DocumentNode::refuse(std::string_view reason) const {
    throw DocumentRefused(place.empty() ? std::string(reason) : fmt::format("{}: {}", place, reason));
}

std::string DocumentNode::text() const {
    if (!content->is_string()) {
        refuse(fmt::format("a text is expected here, not {}", jsonKind(*content)));
    }
    return content->get<std::string>();
}

bool DocumentNode::flag() const {
    if (!content->is_boolean()) {
        refuse(fmt::format("true or false is expected here, not {}", jsonKind(*content)));
    }
    return content->get<bool>();
}

double DocumentNode::number() const {
    if (!content->is_number()) {
        refuse(fmt::format("a number is expected here, not {}", jsonKind(*content)));
    }
    return content->get<double>();
}

double DocumentNode::numberOrNone() const {
    return content->is_null() ? std::numeric_limits<double>::quiet_NaN() : number();
}

std::int32_t DocumentNode::integer() const {
    if (!content->is_number_integer()) {
        refuse(fmt::format("a whole number is expected here, not {}", jsonKind(*content)));
    }
    using Limits = std::numeric_limits<std::int32_t>;
    const bool fits = content->is_number_unsigned()
                          ? content->get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max())
                          : content->get<std::int64_t>() >= Limits::min();
    if (!fits) {
        refuse("the number has more than 32 bits");
    }
    return content->get<std::int32_t>();
}

std::vector<DocumentNode> DocumentNode::list() const {
    if (!content->is_array()) {
        refuse(fmt::format("a list is expected here, not {}", jsonKind(*content)));
    }
    std::vector<DocumentNode> elements;
    elements.reserve(content->size());
    for (std::size_t index = 0; index < content->size(); ++index) {
        elements.emplace_back((*content)[index], fmt::format("{}[{}]", place, index));
    }
    return elements;
}

void DocumentNode::checkKeys(std::initializer_list<std::string_view> known) const {
    expectObject();
    for (const auto& [key, value] : content->items()) {
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            refuse(fmt::format("unknown key {}", inQuotes(key)));
        }
    }
}

std::optional<DocumentNode> DocumentNode::find(std::string_view key) const {
    expectObject();
    const auto found = content->find(key);
    if (found == content->end()) {
        return std::nullopt;
    }
    return DocumentNode(*found, childPath(place, key));
}

DocumentNode DocumentNode::at(std::string_view key) const {
    std::optional<DocumentNode> node = find(key);
    if (!node) {
        refuse(fmt::format("the key {} is missing", inQuotes(key)));
    }
    return *std::move(node);
}

std::vector<DocumentNode> DocumentNode::listAt(std::string_view key) const {
    const std::optional<DocumentNode> node = find(key);
    return node ? node->list() : std::vector<DocumentNode>{};
}

std::vector<std::pair<std::string, DocumentNode>> DocumentNode::entries() const {
    expectObject();
    std::vector<std::pair<std::string, DocumentNode>> found;
    for (const auto& [key, value] : content->items()) {
        found.emplace_back(key, DocumentNode(value, childPath(place, inQuotes(key))));
    }
    return found;
}

void DocumentNode::expectObject() const {
    if (!content->is_object()) {
        refuse(fmt::format("an object is expected here, not {}", jsonKind(*content)));
    }
}

}  // namespace mero
