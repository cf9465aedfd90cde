#include "platform/interchange/json_reader.h"

#include <fmt/format.h>
#include <vector>

namespace mero {

namespace {

constexpr std::size_t DepthLimit = 64;

/// Builds the value from the parser's events; any of them can refuse the text.
class TreeBuilder : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit TreeBuilder(std::string_view parsedText) : text(parsedText) {}

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t&) override { return add(value); }
    bool string(string_t& value) override { return isClean(value) && add(std::move(value)); }
    bool binary(binary_t&) override { return refuse("binary data"); }

    bool start_object(std::size_t) override { return open(nlohmann::json::object()); }
    bool start_array(std::size_t) override { return open(nlohmann::json::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(string_t& name) override {
        if (!isClean(name)) {
            return false;
        }
        if (levels.back()->contains(name)) {
            return refuse(fmt::format("double key {}{}", inQuotes(name), path()));
        }
        pendingKeys.back() = std::move(name);
        return true;
    }

    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::json::exception& cause) override {
        const TextPlace place = placeOf(text, position == 0 ? 0 : position - 1);
        if (cause.id == 406) {
            return refuse(
                fmt::format("{}:{}: the number {} is out of range", place.line, place.column, token));
        }
        // Behind the place, which it tells in its own way, the parser says what it was reading and what came.
        const std::string_view message = cause.what();
        const std::size_t reason = message.find(": ");
        return refuse(fmt::format("{}:{}: not a JSON text: {}", place.line, place.column,
                                  reason == std::string_view::npos ? message : message.substr(reason + 2)));
    }

    nlohmann::json root;
    std::string failure;

private:
    bool add(nlohmann::json value) {
        place(std::move(value));
        return true;
    }

    bool open(nlohmann::json container) {
        if (levels.size() == DepthLimit) {
            return refuse(fmt::format("nested deeper than {} levels", DepthLimit));
        }
        levels.push_back(place(std::move(container)));
        pendingKeys.emplace_back();
        return true;
    }

    bool close() {
        levels.pop_back();
        pendingKeys.pop_back();
        return true;
    }

    nlohmann::json* place(nlohmann::json value) {
        if (levels.empty()) {
            root = std::move(value);
            return &root;
        }
        nlohmann::json& parent = *levels.back();
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return &parent.back();
        }
        return &(parent[pendingKeys.back()] = std::move(value));
    }

    bool isClean(const std::string& value) {
        return value.find('\0') == std::string::npos ||
               refuse(fmt::format("zero character in a text{}", path()));
    }

    bool refuse(std::string reason) {
        failure = std::move(reason);
        return false;
    }

    /// " in models[1].objects", or nothing at the top.
    [[nodiscard]] std::string path() const {
        std::string steps;
        for (std::size_t level = 0; level + 1 < levels.size(); ++level) {
            if (levels[level]->is_array()) {
                steps += fmt::format("[{}]", levels[level]->size() - 1);
            } else {
                steps += (steps.empty() ? "" : ".") + pendingKeys[level];
            }
        }
        return steps.empty() ? steps : " in " + steps;
    }

    std::string_view text;
    std::vector<nlohmann::json*> levels;
    std::vector<std::string> pendingKeys;
};

}  // namespace

Result<nlohmann::json> readJson(std::string_view text, std::string_view source) {
    TreeBuilder builder(text);
    if (!nlohmann::json::sax_parse(text.begin(), text.end(), &builder)) {
        const bool hasPlace =
            !builder.failure.empty() && builder.failure.front() >= '0' && builder.failure.front() <= '9';
        return Error{fmt::format("{}:{}{}", source, hasPlace ? "" : " ", builder.failure)};
    }
    return std::move(builder.root);
}

std::string inQuotes(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string_view jsonKind(const nlohmann::json& value) {
    switch (value.type()) {
        case nlohmann::json::value_t::null:
            return "null";
        case nlohmann::json::value_t::object:
            return "an object";
        case nlohmann::json::value_t::array:
            return "a list";
        case nlohmann::json::value_t::string:
            return "a text";
        case nlohmann::json::value_t::boolean:
            return value.get<bool>() ? "true" : "false";
        case nlohmann::json::value_t::number_float:
            return "a number with a fraction";
        default:
            return "a number";
    }
}

}  // namespace mero
