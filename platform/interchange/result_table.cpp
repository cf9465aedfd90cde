#include "platform/interchange/result_table.h"

#include <algorithm>

namespace mero {

const std::vector<const ResultName*>& RowPaths::of(const ResultTable::Row& row) {
    const bool isObject = row.kind == ResultTable::RowKind::Object;
    path.resize(isObject ? std::min(row.depth, path.size()) : 0);
    if (isObject) {
        path.push_back(&row.object);
    }
    return path;
}

std::string_view wordOf(ResultTable::RowKind kind) {
    switch (kind) {
        case ResultTable::RowKind::Object:
            return "object";
        case ResultTable::RowKind::Sum:
            return "sum";
        case ResultTable::RowKind::Minimum:
            return "minimum";
        case ResultTable::RowKind::Maximum:
            break;
    }
    return "maximum";
}

std::string modelsText(const RunDescription& run) {
    std::string text;
    for (const std::string& model : run.models) {
        text += (text.empty() ? "" : ", ") + model;
    }
    return run.environment.empty() ? text : text + " with " + run.environment;
}

std::string scalingText(const RunDescription& run) {
    if (!run.scaledStarts) {
        return {};
    }
    const std::string period = run.scalePeriod.empty() ? "the run" : run.scalePeriod;
    return std::to_string(*run.scaledStarts) + " starts in " + period + ", over " + run.scaleScope;
}

std::string groupingText(const RunDescription& run) {
    return run.groupClass.empty() ? std::string() : run.groupClass + " over " + run.groupRelation;
}

}  // namespace mero
