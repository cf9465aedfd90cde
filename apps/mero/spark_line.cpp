#include "apps/mero/spark_line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace mero {

namespace {

constexpr std::array<std::string_view, 8> Blocks{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::array<std::string_view, 8> AsciiLevels{"_", ".", "-", "=", "+", "*", "%", "#"};

}  // namespace

std::string sparkLine(const std::vector<HistoryPoint>& points, std::size_t width, CharacterSet characters) {
    if (points.empty() || width == 0) {
        return {};
    }
    const auto byTime = [](const HistoryPoint& left, const HistoryPoint& right) {
        return left.time < right.time;
    };
    const auto byValue = [](const HistoryPoint& left, const HistoryPoint& right) {
        return left.value < right.value;
    };
    std::vector<HistoryPoint> ordered = points;
    std::stable_sort(ordered.begin(), ordered.end(), byTime);
    const auto [lowest, highest] = std::minmax_element(ordered.begin(), ordered.end(), byValue);
    const double low = lowest->value;
    const double range = highest->value - low;
    const double start = ordered.front().time;
    const double length = ordered.back().time - start;
    const auto& levels = characters == CharacterSet::Ascii ? AsciiLevels : Blocks;
    std::string line;
    std::size_t next = 0;
    double value = ordered.front().value;
    for (std::size_t column = 0; column < width; ++column) {
        const double end = start + length * static_cast<double>(column + 1) / static_cast<double>(width);
        while (next < ordered.size() && (ordered[next].time <= end || column + 1 == width)) {
            value = ordered[next++].value;
        }
        const double share = range > 0.0 && std::isfinite(value) ? (value - low) / range : 0.0;
        line += levels[static_cast<std::size_t>(std::lround(share * 7.0))];
    }
    return line;
}

}  // namespace mero
