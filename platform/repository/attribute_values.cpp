#include "platform/repository/attribute_values.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "component/host/core_time.h"

namespace mero {

namespace {

bool isBefore(const std::pair<MeroId, AttributeValue>& entry, MeroId attributeId) {
    return entry.first < attributeId;
}

AttributeValue defaultOf(const Library::Attribute& attribute) {
    switch (attribute.type) {
        case AttributeInteger:
            return static_cast<std::int32_t>(attribute.defaultNumber);
        case AttributeDouble:
            return attribute.defaultNumber;
        default:
            return SV::String(attribute.defaultText);
    }
}

}  // namespace

bool isNumber(const Library::Attribute& attribute) {
    return attribute.type == AttributeInteger || attribute.type == AttributeDouble;
}

bool hasZeroByte(const SV::String& text) {
    return text.view().find('\0') != std::string_view::npos;
}

const AttributeValue* findValue(const AttributeValues& values, MeroId attributeId) {
    const auto place = std::lower_bound(values.begin(), values.end(), attributeId, isBefore);
    return place != values.end() && place->first == attributeId ? &place->second : nullptr;
}

AttributeValue valueOrDefault(const AttributeValues& values, MeroId attributeId) {
    const AttributeValue* value = findValue(values, attributeId);
    return value != nullptr ? *value : defaultOf(*Library::standard().findAttribute(attributeId));
}

SV::String textOrEmpty(const AttributeValues& values, const Library::Attribute* attribute) {
    return attribute != nullptr && !isNumber(*attribute)
               ? std::get<SV::String>(valueOrDefault(values, attribute->id))
               : SV::String();
}

double numberOrZero(const AttributeValues& values, const Library::Attribute* attribute) {
    if (attribute == nullptr || !isNumber(*attribute)) {
        return 0.0;
    }
    const AttributeValue value = valueOrDefault(values, attribute->id);
    const auto* whole = std::get_if<std::int32_t>(&value);
    return whole != nullptr ? *whole : std::get<double>(value);
}

void storeValue(AttributeValues& values, const Library::Attribute& attribute, AttributeValue value) {
    const auto place = std::lower_bound(values.begin(), values.end(), attribute.id, isBefore);
    const bool isStored = place != values.end() && place->first == attribute.id;
    if (value == defaultOf(attribute) && !attribute.tellsUnset) {
        if (isStored) {
            values.erase(place);
        }
    } else if (isStored) {
        place->second = std::move(value);
    } else {
        values.emplace(place, attribute.id, std::move(value));
    }
}

Result<AttributeValue> checkValue(const Library::Attribute& attribute, const AttributeValue& value) {
    const auto* text = std::get_if<SV::String>(&value);
    if ((text == nullptr) != isNumber(attribute)) {
        return Error{fmt::format("the attribute \"{}\" needs a {}", attribute.name,
                                 isNumber(attribute) ? "number" : "text")};
    }
    if (text != nullptr) {
        if (hasZeroByte(*text)) {
            return Error{fmt::format("the text of \"{}\" must not hold a zero byte", attribute.name)};
        }
        if (attribute.type == AttributeTime && !MeroCoreTime::isTime(*text)) {
            return Error{fmt::format("the attribute \"{}\" needs a time YY:DDD:HH:MM:SS, not \"{}\"",
                                     attribute.name, text->view())};
        }
        if (attribute.type == AttributeEnumeration &&
            std::find(attribute.enumeration.begin(), attribute.enumeration.end(), text->view()) ==
                attribute.enumeration.end()) {
            return Error{
                fmt::format("the attribute \"{}\" has no value \"{}\"", attribute.name, text->view())};
        }
        return value;
    }
    if (attribute.type == AttributeInteger) {
        if (!std::holds_alternative<std::int32_t>(value)) {
            return Error{fmt::format("the attribute \"{}\" needs a whole number", attribute.name)};
        }
        return value;
    }
    const auto* whole = std::get_if<std::int32_t>(&value);
    const double number = whole != nullptr ? *whole : std::get<double>(value);
    if (!std::isfinite(number)) {
        return Error{fmt::format("the attribute \"{}\" needs a finite number", attribute.name)};
    }
    return AttributeValue(number);
}

}  // namespace mero
