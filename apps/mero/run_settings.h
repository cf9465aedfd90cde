#pragma once

#include <cstdint>

#include "component/host/containers.h"
#include "component/host/sv_datetime.h"
#include "component/host/types.h"

namespace mero {

/// The attributes that hold the times of an activity: execution, waiting, resting, transport.
[[nodiscard]] ISequence<MeroId> simulationAttributes();

/// Seconds from the beginning of its year to a date and time.
[[nodiscard]] std::int64_t secondsOfYear(const SV::DateTime& start);

}  // namespace mero
