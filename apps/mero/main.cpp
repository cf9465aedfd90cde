#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

#include "apps/mero/run_mero.h"

namespace {

volatile std::sig_atomic_t interruptions = 0;

/// The first interruption ends a run with what has been measured, the second the program.
void noteInterruption(int signal) {
    interruptions = 1;
    std::signal(signal, SIG_DFL);
}

std::size_t terminalWidth() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        return size.ws_col;
    }
    return 100;
}

}  // namespace

int main(int count, char** values) {
    std::ios::sync_with_stdio(false);
    std::signal(SIGINT, noteInterruption);
    mero::Console console{std::cout, std::cerr};
    console.outIsTerminal = isatty(STDOUT_FILENO) != 0;
    console.errIsTerminal = isatty(STDERR_FILENO) != 0;
    console.colours = console.outIsTerminal && std::getenv("NO_COLOR") == nullptr;
    console.width = console.outIsTerminal ? terminalWidth() : 100;
    console.interrupted = [] { return interruptions != 0; };
    const std::vector<std::string> arguments(values + 1, values + count);
    return mero::runMero(arguments, console);
}
