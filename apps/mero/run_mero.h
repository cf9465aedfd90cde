#pragma once

#include <span>
#include <string>

#include "apps/mero/console.h"

namespace mero {

/// The whole program behind its arguments (without its own name): 0 done, 1 refused with the reason on
/// `console.err`, 2 wrong usage.
int runMero(std::span<const std::string> arguments, Console& console);

class ReplicationTransport;

/// The program that shares out the replications of a simulation by `transport`; its only command is simulate.
int runMeroReplications(std::span<const std::string> arguments, Console& console,
                        ReplicationTransport& transport);

}  // namespace mero
