#pragma once

#include <string_view>
#include <vector>

#include "component/host/browser_objects.h"

namespace mero {

/// Value by which a field is sorted: a number, the seconds of a time text in a base in which years are longer
/// than 999 days and so on, or none.
struct SortKey {
    bool hasValue = false;
    double value = 0;
};

[[nodiscard]] SortKey sortKeyOf(std::string_view field);

/// Handles of the rows that aren't below a shrunk one. `sortColumn` is a column, or -1.
[[nodiscard]] std::vector<MeroShrinkExpandBrowserObjects::RowHandle> rowsInSight(
    const MeroShrinkExpandBrowserObjects::Impl& table, int sortColumn, bool descending);

}  // namespace mero
