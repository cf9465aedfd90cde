#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mero {

/// An instant as a file writes it.
struct IsoTime {
    std::int64_t milliseconds = 0;  ///< since 1970-01-01T00:00:00Z; smaller fractions are cut off
    std::int64_t offset = 0;        ///< milliseconds that the clock of the writer was ahead of UTC

    [[nodiscard]] std::int64_t wallClock() const { return milliseconds + offset; }
};

/// Date and time of ISO 8601, `2010-10-27T22:31:19.495+02:00`: the T may be a blank, the hyphens may be
/// slashes, seconds, fraction and offset may be missing. Without an offset UTC is meant. Nothing for any
/// other text and for dates that there aren't.
std::optional<IsoTime> parseIsoTime(std::string_view text);

}  // namespace mero
