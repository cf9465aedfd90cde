#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/interchange/xml_document.h"

namespace mero {

// Values of XML elements. What is missing or no such value throws `DocumentRefused` with its place.

std::string requiredAttribute(const XmlElement& element, const char* name);
double requiredNumber(const XmlElement& element, const char* name);
/// None where the attribute is missing.
std::optional<double> optionalNumber(const XmlElement& element, const char* name);
double numberOfText(const XmlElement& element);
/// A number of things: not negative, at most `limit`.
int countOf(const XmlElement& element, double number, int limit);

/// The seed of random numbers: a whole number that a double holds exactly.
long long seedOf(const XmlElement& element, double number);

/// The first child of this kind, in any namespace.
std::optional<XmlElement> childOf(const XmlElement& element, std::string_view kind);
XmlElement requiredChild(const XmlElement& element, std::string_view kind);

/// Number of the text of that child.
double childNumber(const XmlElement& element, std::string_view kind);

}  // namespace mero
