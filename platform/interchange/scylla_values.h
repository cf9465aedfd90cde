#pragma once

#include <string>
#include <string_view>

#include "platform/interchange/xml_document.h"

namespace mero {

inline constexpr std::string_view ScyllaNamespace = "http://bsim.hpi.uni-potsdam.de/scylla/simModel";

/// Seconds of a time unit such as "MINUTES", which stands in the attribute of that name; seconds where it is
/// missing.
double scyllaUnit(const XmlElement& element, const char* attribute);

/// The distribution inside an element that has a `timeUnit`, such as `duration` and `arrivalRate`.
std::string scyllaDistribution(const XmlElement& element);

}  // namespace mero
