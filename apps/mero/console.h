#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace mero {

/// Where a command writes: results to `out`, messages, progress and timing to `err`.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    bool colours = false;  ///< of results
    std::size_t width = 100;
    /// Tells a long run to stop; null for never.
    bool (*interrupted)() = nullptr;

    /// One line "mero: …" to `err`; line breaks in the text become blanks.
    void tell(std::string_view text) const;
};

/// Exit status of the program.
enum ExitStatus : int { ExitDone = 0, ExitRefused = 1, ExitWrongUsage = 2 };

}  // namespace mero
