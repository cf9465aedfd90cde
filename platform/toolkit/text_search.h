#pragma once

#include <string_view>

#include "component/host/sv_string.h"

namespace mero {

/// True if `text` holds `part`; upper and lower case of ASCII letters are the same.
[[nodiscard]] bool holdsText(std::string_view text, std::string_view part);

[[nodiscard]] SV::String utf8Of(char32_t character);

}  // namespace mero
