#pragma once

#include <array>
#include <string_view>

#include "platform/interchange/result_table.h"

namespace mero {

// Words of documents of result tables, for their writer and their reader.

inline constexpr std::string_view ReplicationFormatName = "mero-replications";
inline constexpr int ReplicationFormatVersion = 1;
inline constexpr std::string_view UnitOfSeconds = "s";

/// Columns of a measure over replications.
inline constexpr std::array StatisticsInOrder{ResultStatistic::Count, ResultStatistic::Mean,
                                              ResultStatistic::Deviation, ResultStatistic::Lower,
                                              ResultStatistic::Upper};
static_assert(StatisticsInOrder.size() == StatisticsOfAMeasure);

[[nodiscard]] constexpr std::string_view keyOf(ResultStatistic statistic) {
    switch (statistic) {
        case ResultStatistic::Count:
            return "replications";
        case ResultStatistic::Mean:
            return "mean";
        case ResultStatistic::Deviation:
            return "standardDeviation";
        case ResultStatistic::Lower:
            return "lower";
        case ResultStatistic::Upper:
            return "upper";
        case ResultStatistic::Value:
            break;
    }
    return "value";
}

}  // namespace mero
