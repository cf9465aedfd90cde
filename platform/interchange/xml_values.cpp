#include "platform/interchange/xml_values.h"

#include <charconv>
#include <cmath>
#include <fmt/format.h>

namespace mero {

namespace {

std::optional<double> parsedNumber(std::string_view text) {
    double number = 0.0;
    if (text.starts_with("+")) {
        text.remove_prefix(1);
    }
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool good = status == std::errc{} && end == text.data() + text.size() && std::isfinite(number);
    return good ? std::optional(number) : std::nullopt;
}

}  // namespace

std::string requiredAttribute(const XmlElement& element, const char* name) {
    std::string value = element.attribute(name);
    if (value.empty()) {
        element.refuse(fmt::format("{}: the attribute \"{}\" is missing", element.kind(), name));
    }
    return value;
}

double requiredNumber(const XmlElement& element, const char* name) {
    const std::string value = requiredAttribute(element, name);
    const std::optional<double> number = parsedNumber(value);
    if (!number) {
        element.refuse(fmt::format("{}: \"{}\" has to be a number, not \"{}\"", element.kind(), name, value));
    }
    return *number;
}

std::optional<double> optionalNumber(const XmlElement& element, const char* name) {
    return element.hasAttribute(name) ? std::optional(requiredNumber(element, name)) : std::nullopt;
}

double numberOfText(const XmlElement& element) {
    const std::string text = element.text();
    const std::optional<double> number = parsedNumber(text);
    if (!number) {
        element.refuse(fmt::format("{}: a number is expected here, not \"{}\"", element.kind(), text));
    }
    return *number;
}

int countOf(const XmlElement& element, double number, int limit) {
    if (number < 0.0 || number > limit || number != std::floor(number)) {
        element.refuse(
            fmt::format("{}: a whole number from 0 to {} is expected here", element.kind(), limit));
    }
    return static_cast<int>(number);
}

long long seedOf(const XmlElement& element, double number) {
    constexpr double Greatest = 9e15;
    if (number < 0.0 || number > Greatest || number != std::floor(number)) {
        element.refuse("the random seed has to be a whole number");
    }
    return static_cast<long long>(number);
}

std::optional<XmlElement> childOf(const XmlElement& element, std::string_view kind) {
    for (const XmlElement& child : element.children()) {
        if (child.kind() == kind) {
            return child;
        }
    }
    return std::nullopt;
}

XmlElement requiredChild(const XmlElement& element, std::string_view kind) {
    const std::optional<XmlElement> child = childOf(element, kind);
    if (!child) {
        element.refuse(fmt::format("{}: the element \"{}\" is missing", element.kind(), kind));
    }
    return *child;
}

double childNumber(const XmlElement& element, std::string_view kind) {
    return numberOfText(requiredChild(element, kind));
}

}  // namespace mero
