#include "platform/toolkit/row_sorting.h"

#include <algorithm>
#include <charconv>

#include "component/host/core_time.h"

#include "platform/toolkit/browser_state.h"

namespace mero {

namespace {

using RowHandle = MeroShrinkExpandBrowserObjects::RowHandle;

/// Longer than any time that a run's base can have, so that parts never overlap.
constexpr double SortDays = 1000;
constexpr double SortHours = 100;

class Sorter {
public:
    Sorter(const MeroShrinkExpandBrowserObjects::Impl& sortedTable, int column, bool isDescending)
        : table(sortedTable), sortColumn(static_cast<std::size_t>(column)), descending(isDescending) {}

    [[nodiscard]] std::vector<RowHandle> sorted(const std::vector<RowHandle>& brothers,
                                                std::size_t count) const {
        std::vector<Entry> entries;
        entries.reserve(count);
        for (std::size_t each = 0; each < count; ++each) {
            const SV::String& text = table.columns[sortColumn].fields[brothers[each]];
            entries.push_back({sortKeyOf(text.view()), &text, brothers[each]});
        }
        std::ranges::stable_sort(entries, [this](const Entry& left, const Entry& right) {
            return descending ? isLess(right, left) : isLess(left, right);
        });
        std::vector<RowHandle> order;
        order.reserve(brothers.size());
        std::ranges::transform(entries, std::back_inserter(order), &Entry::row);
        order.insert(order.end(), brothers.begin() + static_cast<std::ptrdiff_t>(count), brothers.end());
        return order;
    }

private:
    struct Entry {
        SortKey key;
        const SV::String* text;
        RowHandle row;
    };

    static bool isLess(const Entry& left, const Entry& right) {
        if (left.key.hasValue != right.key.hasValue) {
            return left.key.hasValue;
        }
        return left.key.hasValue ? left.key.value < right.key.value : left.text->view() < right.text->view();
    }

    const MeroShrinkExpandBrowserObjects::Impl& table;
    std::size_t sortColumn;
    bool descending;
};

}  // namespace

SortKey sortKeyOf(std::string_view field) {
    double number = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    if (error == std::errc() && end == field.data() + field.size()) {
        return {number == number, number};
    }
    const SV::String text(field);
    if (!MeroCoreTime::isTime(text)) {
        return {};
    }
    MeroCoreTime time;
    time.setBase(SortDays, SortHours);
    return {true, time._s2d(text)};
}

std::vector<RowHandle> rowsInSight(const MeroShrinkExpandBrowserObjects::Impl& table, int sortColumn,
                                   bool descending) {
    std::vector<RowHandle> shown;
    shown.reserve(table.rows.size());
    const Sorter sorter(table, sortColumn, descending);
    std::vector<RowHandle> open;
    const auto addBrothers = [&](const std::vector<RowHandle>& brothers, std::size_t sortable) {
        if (sortColumn < 0) {
            open.insert(open.end(), brothers.rbegin(), brothers.rend());
        } else {
            const std::vector<RowHandle> order = sorter.sorted(brothers, sortable);
            open.insert(open.end(), order.rbegin(), order.rend());
        }
    };
    addBrothers(table.roots, table.roots.size() - static_cast<std::size_t>(table.summaryRows));
    while (!open.empty()) {
        const RowHandle row = open.back();
        open.pop_back();
        shown.push_back(row);
        if (table.rows[row].expanded) {
            addBrothers(table.rows[row].children, table.rows[row].children.size());
        }
    }
    return shown;
}

}  // namespace mero
