#include "component/host/browser_objects.h"

#include <limits>
#include <optional>
#include <unordered_map>

#include "platform/toolkit/row_order.h"

namespace {

using mero::RowOrder;

struct BrowserRow {
    MeroId id;
    int depth;
    RowOrder::Row lastChild;
    std::vector<SV::String> cells;
};

constexpr RowOrder::Row NoRow = std::numeric_limits<RowOrder::Row>::max();

}  // namespace

struct MeroShrinkExpandBrowserObjects::Impl {
    std::vector<SV::String> columnTitles;
    std::vector<BrowserRow> rows;  ///< in order of making
    RowOrder order;
    /// Rows whose identifier isn't their place in `rows`, counted from 1; the others need no map.
    std::unordered_map<MeroId, RowOrder::Row> otherRows;
    std::vector<SV::String> headers;
    SV::String secondHeader;

    [[nodiscard]] RowOrder::Row find(MeroId rowId) const {
        const auto expected = static_cast<std::size_t>(rowId) - 1;
        if (rowId > 0 && expected < rows.size() && rows[expected].id == rowId) {
            return static_cast<RowOrder::Row>(expected);
        }
        const auto place = otherRows.find(rowId);
        return place != otherRows.end() ? place->second : NoRow;
    }

    [[nodiscard]] RowOrder::Row lastDescendant(RowOrder::Row row) const {
        while (rows[row].lastChild != NoRow) {
            row = rows[row].lastChild;
        }
        return row;
    }

    /// Null outside the table.
    [[nodiscard]] BrowserRow* rowShownAt(int place) {
        const bool isInside = place >= 0 && static_cast<std::size_t>(place) < rows.size();
        return isInside ? &rows[order.rowAt(static_cast<std::size_t>(place))] : nullptr;
    }

    [[nodiscard]] bool hasColumn(int column) const {
        return column >= 0 && static_cast<std::size_t>(column) <= columnTitles.size();
    }
};

MeroShrinkExpandBrowserObjects::MeroShrinkExpandBrowserObjects() : impl(std::make_unique<Impl>()) {}
MeroShrinkExpandBrowserObjects::~MeroShrinkExpandBrowserObjects() = default;

void MeroShrinkExpandBrowserObjects::addColumn(const SV::String& title, [[maybe_unused]] int width,
                                               [[maybe_unused]] int alignment, [[maybe_unused]] int kind) {
    impl->columnTitles.push_back(title);
    for (BrowserRow& row : impl->rows) {
        row.cells.emplace_back();
    }
}

bool MeroShrinkExpandBrowserObjects::addRow(MeroId parentRowId, MeroId rowId,
                                            const std::vector<SV::String>& cells) {
    const bool isRoot = parentRowId == NoParent;
    const RowOrder::Row parent = isRoot ? NoRow : impl->find(parentRowId);
    if ((!isRoot && parent == NoRow) || impl->find(rowId) != NoRow) {
        return false;
    }
    const auto row = static_cast<RowOrder::Row>(impl->rows.size());
    RowOrder::Row before = RowOrder::AtBegin;
    if (!isRoot) {
        before = impl->lastDescendant(parent);
    } else if (row > 0) {
        before = impl->order.last();
    }
    impl->order.insertBehind(before);
    impl->rows.push_back({rowId, isRoot ? 0 : impl->rows[parent].depth + 1, NoRow, cells});
    impl->rows.back().cells.resize(impl->columnTitles.size() + 1);
    if (!isRoot) {
        impl->rows[parent].lastChild = row;
    }
    if (rowId <= 0 || static_cast<RowOrder::Row>(rowId) != row + 1) {
        impl->otherRows.emplace(rowId, row);
    }
    return true;
}

void MeroShrinkExpandBrowserObjects::addHeader(const SV::String& text) {
    impl->headers.push_back(text);
}

void MeroShrinkExpandBrowserObjects::setSecondHeader(const SV::String& text) {
    impl->secondHeader = text;
}

bool MeroShrinkExpandBrowserObjects::replaceField(const SV::String& text, int row, int column,
                                                  [[maybe_unused]] int redraw) {
    BrowserRow* shown = impl->rowShownAt(row);
    if (shown == nullptr || !impl->hasColumn(column)) {
        return false;
    }
    shown->cells[static_cast<std::size_t>(column)] = text;
    return true;
}

bool MeroShrinkExpandBrowserObjects::getRowNum(MeroId rowId, int& rowNumber) const {
    const RowOrder::Row row = impl->find(rowId);
    if (row == NoRow) {
        return false;
    }
    rowNumber = static_cast<int>(impl->order.placeOf(row)) + 1;
    return true;
}

SV::String MeroShrinkExpandBrowserObjects::getField(int row, int column) const {
    const BrowserRow* shown = impl->rowShownAt(row);
    return shown != nullptr && impl->hasColumn(column) ? shown->cells[static_cast<std::size_t>(column)]
                                                       : SV::String();
}

int MeroShrinkExpandBrowserObjects::getRowDepth(int row) const {
    const BrowserRow* shown = impl->rowShownAt(row);
    return shown != nullptr ? shown->depth : 0;
}

MeroId MeroShrinkExpandBrowserObjects::getRowId(int row) const {
    const BrowserRow* shown = impl->rowShownAt(row);
    return shown != nullptr ? shown->id : MeroNoId;
}

std::vector<SV::String> MeroShrinkExpandBrowserObjects::getDataColumn(int column) const {
    std::vector<SV::String> fields;
    if (!impl->hasColumn(column)) {
        return fields;
    }
    fields.reserve(impl->rows.size());
    for (std::size_t place = 0; place < impl->rows.size(); ++place) {
        fields.push_back(impl->rows[impl->order.rowAt(place)].cells[static_cast<std::size_t>(column)]);
    }
    return fields;
}

int MeroShrinkExpandBrowserObjects::getNumberOfRows() const {
    return static_cast<int>(impl->rows.size());
}

int MeroShrinkExpandBrowserObjects::getNumberOfColumns() const {
    return static_cast<int>(impl->columnTitles.size());
}

SV::String MeroShrinkExpandBrowserObjects::getColumnTitle(int column) const {
    return column >= 1 && impl->hasColumn(column) ? impl->columnTitles[static_cast<std::size_t>(column) - 1]
                                                  : SV::String();
}

const std::vector<SV::String>& MeroShrinkExpandBrowserObjects::getHeaders() const {
    return impl->headers;
}

const SV::String& MeroShrinkExpandBrowserObjects::getSecondHeader() const {
    return impl->secondHeader;
}
