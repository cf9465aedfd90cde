#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "apps/mero/console.h"

namespace mero {

/// One line on a terminal's standard error that tells how far a run is; gone when the object goes. Nothing is
/// written where `err` isn't a terminal.
class ProgressBar {
public:
    ProgressBar(const Console& target, std::string what) : console(target), action(std::move(what)) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// `total` 0 if it isn't known. Redraws ten times a second at most.
    void show(std::uint64_t done, std::uint64_t total);

private:
    using Clock = std::chrono::steady_clock;

    const Console& console;
    std::string action;
    Clock::time_point started = Clock::now();
    Clock::time_point drawn;
    bool visible = false;
};

}  // namespace mero
