#pragma once

#include <cstdint>

namespace mero {

/// Who works on a pass, and with what; indices in the `StaffPlan`.
struct Holders {
    static constexpr std::uint32_t None = UINT32_MAX;
    std::uint32_t worker = None;
    std::uint32_t resource = None;
};

}  // namespace mero
