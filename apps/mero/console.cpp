#include "apps/mero/console.h"

namespace mero {

void Console::tell(std::string_view text) const {
    std::string line;
    for (const char character : text) {
        const bool isBreak = character == '\n' || character == '\r';
        if (!isBreak) {
            line += character;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    while (!line.empty() && line.back() == ' ') {
        line.pop_back();
    }
    err << "mero: " << line << '\n';
}

}  // namespace mero
