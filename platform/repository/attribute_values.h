#pragma once

#include "platform/repository/repository.h"

namespace mero {

// Values of attributes by the rules of their types; defaults aren't stored, unless the
// attribute tells a given value from none.

[[nodiscard]] bool isNumber(const Library::Attribute& attribute);
/// The value as it is to be stored, or why it doesn't fit.
[[nodiscard]] Result<AttributeValue> checkValue(const Library::Attribute& attribute,
                                                const AttributeValue& value);
/// `value` has passed `checkValue`.
void storeValue(AttributeValues& values, const Library::Attribute& attribute, AttributeValue value);
/// The attribute must be one of the library.
[[nodiscard]] AttributeValue valueOrDefault(const AttributeValues& values, MeroId attributeId);
/// Empty without an attribute and for a number.
[[nodiscard]] SV::String textOrEmpty(const AttributeValues& values, const Library::Attribute* attribute);
/// 0.0 without an attribute and for a text.
[[nodiscard]] double numberOrZero(const AttributeValues& values, const Library::Attribute* attribute);

[[nodiscard]] bool hasZeroByte(const SV::String& text);

}  // namespace mero
