#include "apps/mero/progress_bar.h"

#include <algorithm>
#include <fmt/format.h>

namespace mero {

namespace {

constexpr std::chrono::milliseconds RedrawPause{100};
constexpr std::uint64_t BarWidth = 30;
constexpr const char* ClearLine = "\r\033[K";

}  // namespace

ProgressBar::~ProgressBar() {
    if (visible) {
        console.err << ClearLine << std::flush;
    }
}

void ProgressBar::show(std::uint64_t done, std::uint64_t total) {
    const auto now = Clock::now();
    if (!console.errIsTerminal || now - drawn < RedrawPause) {
        return;
    }
    drawn = now;
    visible = true;
    console.err << ClearLine << action << ' ';
    if (total == 0) {
        console.err << done << std::flush;
        return;
    }
    const std::uint64_t filled = std::min(BarWidth, done * BarWidth / total);
    const double seconds = std::chrono::duration<double>(now - started).count();
    const double left =
        done > 0 ? seconds * static_cast<double>(total - std::min(done, total)) / static_cast<double>(done)
                 : 0.0;
    console.err << fmt::format("[{}{}] {} of {}, {:.0f} s left", std::string(filled, '#'),
                               std::string(BarWidth - filled, '.'), done, total, left)
                << std::flush;
}

}  // namespace mero
