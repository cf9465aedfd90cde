#pragma once

#include <string>
#include <string_view>

#include "platform/support/result.h"

namespace mero {

/// The bytes of an XML file as UTF-8 without byte order mark. Encodings are found by the mark or by the XML
/// declaration: UTF-8 (also where nothing is declared), UTF-16, ISO-8859-1, US-ASCII and windows-1252.
/// Another encoding, and bytes that don't fit theirs, are refused. `source` names the file in errors.
Result<std::string> decodeXml(std::string_view bytes, std::string_view source);

}  // namespace mero
