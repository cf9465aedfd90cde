#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "component/host/types.h"

#include "platform/support/result.h"

namespace mero {

/// One line of a history file.
struct HistoryReading {
    MeroId objectId = MeroNoId;
    double time = 0.0;  ///< whole seconds of simulation time
    double value = 0.0;
    std::string name;  ///< as written; for the reader's eyes only
};

struct HistoryFile {
    std::vector<std::string> header;  ///< lines without their leading "# "
    std::vector<HistoryReading> readings;
};

/// Reads the text file that an agent with a history on disk writes: header lines beginning with "# ", then
/// lines "id; time; value; name" in the C locale. Lines may have any length and end with "\n" or "\r\n", a
/// name may hold semicolons, empty lines are passed over. Any other line is refused with its number.
Result<HistoryFile> readHistoryFile(std::string_view text, std::string_view source);

}  // namespace mero
