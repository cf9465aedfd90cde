#pragma once

#include <span>
#include <string>

#include "apps/mero/console.h"

namespace mero {

/// The whole program behind its arguments (without its own name): 0 done, 1 refused with the reason on
/// `console.err`, 2 wrong usage.
int runMero(std::span<const std::string> arguments, Console& console);

}  // namespace mero
