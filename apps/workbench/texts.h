#pragma once

#include <QString>
#include <initializer_list>

#include "component/host/sv_string.h"

namespace mero {

/// Text of a message without its accelerator, with "%s", or "%s1", "%s2" …, replaced.
[[nodiscard]] QString say(SV::ResId message, std::initializer_list<QString> values = {});

/// Text of a message for a menu or label, with its accelerator.
[[nodiscard]] QString label(SV::ResId message);

}  // namespace mero
