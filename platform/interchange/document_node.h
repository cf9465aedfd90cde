#pragma once

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/document_refused.h"

namespace mero {

/// A value of a JSON document together with its path ("models[1].objects[3].attributes."Number""), so that
/// whatever is wrong with it can be told with its place. Every getter throws `DocumentRefused` where the
/// value is of another kind.
class DocumentNode {
public:
    DocumentNode(const nlohmann::json& nodeValue, std::string nodePath)
        : content(&nodeValue), place(std::move(nodePath)) {}

    [[nodiscard]] const nlohmann::json& json() const { return *content; }
    [[nodiscard]] const std::string& path() const { return place; }

    [[noreturn]] void refuse(std::string_view reason) const;

    [[nodiscard]] std::string text() const;
    [[nodiscard]] bool flag() const;
    [[nodiscard]] double number() const;
    /// Not-a-number for null.
    [[nodiscard]] double numberOrNone() const;
    [[nodiscard]] std::int32_t integer() const;
    [[nodiscard]] std::vector<DocumentNode> list() const;

    // Of an object.

    /// Refuses a value that isn't an object, and keys that aren't among `known`.
    void checkKeys(std::initializer_list<std::string_view> known) const;
    [[nodiscard]] std::optional<DocumentNode> find(std::string_view key) const;
    /// Refuses an object without the key.
    [[nodiscard]] DocumentNode at(std::string_view key) const;
    /// Elements of the list under `key`; none where the key is missing.
    [[nodiscard]] std::vector<DocumentNode> listAt(std::string_view key) const;
    /// All keys with their values; the keys are names given by users and stand quoted in the path.
    [[nodiscard]] std::vector<std::pair<std::string, DocumentNode>> entries() const;

private:
    void expectObject() const;

    const nlohmann::json* content;
    std::string place;
};

}  // namespace mero
