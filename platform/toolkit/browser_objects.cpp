#include "component/host/browser_objects.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/browser.h"

#include "platform/toolkit/browser_state.h"
#include "platform/toolkit/row_sorting.h"
#include "platform/toolkit/text_search.h"

namespace {

using mero::BrowserColumn;
using mero::BrowserRow;
using mero::NoRow;
using mero::RowOrder;

/// Pixels by which a level of rows is indented, with the room for the sign of the row.
constexpr int IndentOfLevel = 20;
constexpr int ColumnPadding = 16;

}  // namespace

const RowOrder& MeroShrinkExpandBrowserObjects::Impl::ordered() const {
    if (order.size() != rows.size()) {
        std::vector<RowOrder::Row> all;
        all.reserve(rows.size());
        std::vector<RowOrder::Row> open(roots.rbegin(), roots.rend());
        while (!open.empty()) {
            const RowOrder::Row row = open.back();
            open.pop_back();
            all.push_back(row);
            open.insert(open.end(), rows[row].children.rbegin(), rows[row].children.rend());
        }
        order.assign(all);
    }
    return order;
}

bool MeroShrinkExpandBrowserObjects::Impl::holdsText(RowOrder::Row row, std::string_view text) const {
    return std::ranges::any_of(columns, [&](const BrowserColumn& column) {
        return mero::holdsText(column.fields[row].view(), text);
    });
}

void MeroShrinkExpandBrowserObjects::Impl::enterInOrder(RowOrder::Row parent) {
    if (order.size() > 0) {
        order.insertBehind(parent == NoRow ? order.last() : lastDescendant(parent));
    }
}

MeroShrinkExpandBrowserObjects::MeroShrinkExpandBrowserObjects() : impl(std::make_unique<Impl>()) {}
MeroShrinkExpandBrowserObjects::~MeroShrinkExpandBrowserObjects() {
    if (impl->browser != nullptr) {
        impl->browser->SetObjects(nullptr);
    }
}

void MeroShrinkExpandBrowserObjects::addColumn(const SV::String& title, int width, int alignment,
                                               [[maybe_unused]] int kind) {
    impl->columns.push_back({title, {}, std::vector<SV::String>(impl->rows.size()), {}, width, alignment});
    impl->tell({SV::Aspect::Objects});
}

void MeroShrinkExpandBrowserObjects::setColumnToolTip(int column, const SV::String& text) {
    if (impl->hasColumn(column)) {
        impl->columnAt(column).toolTip = text;
    }
}

SV::String MeroShrinkExpandBrowserObjects::getColumnToolTip(int column) const {
    return impl->hasColumn(column) ? impl->columnAt(column).toolTip : SV::String();
}

bool MeroShrinkExpandBrowserObjects::addRow(MeroId parentRowId, MeroId rowId,
                                            const std::vector<SV::String>& cells) {
    const bool isRoot = parentRowId == NoParent;
    const RowOrder::Row parent = isRoot ? NoRow : impl->find(parentRowId);
    if ((!isRoot && parent == NoRow) || impl->find(rowId) != NoRow) {
        return false;
    }
    const auto row = static_cast<RowOrder::Row>(impl->rows.size());
    impl->enterInOrder(parent);
    impl->rows.push_back({rowId, isRoot ? 0 : impl->rows[parent].depth + 1, parent, {}});
    for (std::size_t column = 0; column < impl->columns.size(); ++column) {
        impl->columns[column].fields.emplace_back();
        impl->setField(row, static_cast<int>(column), column < cells.size() ? cells[column] : SV::String());
    }
    (isRoot ? impl->roots : impl->rows[parent].children).push_back(row);
    if (rowId <= 0 || static_cast<RowOrder::Row>(rowId) != row + 1) {
        impl->otherRows.emplace(rowId, row);
    }
    impl->tell({SV::Aspect::Objects});
    return true;
}

void MeroShrinkExpandBrowserObjects::setSummaryRows(int count) {
    impl->summaryRows = std::clamp(count, 0, static_cast<int>(impl->roots.size()));
    impl->tell({SV::Aspect::Objects});
}

int MeroShrinkExpandBrowserObjects::getSummaryRows() const {
    return impl->summaryRows;
}

void MeroShrinkExpandBrowserObjects::addHeader(const SV::String& text) {
    impl->headers.push_back(text);
}

void MeroShrinkExpandBrowserObjects::setSecondHeader(const SV::String& text) {
    impl->secondHeader = text;
}

bool MeroShrinkExpandBrowserObjects::replaceField(const SV::String& text, int row, int column,
                                                  [[maybe_unused]] int redraw) {
    return impl->hasPlace(row) && replaceFieldOf(impl->rowAt(row), column, text);
}

bool MeroShrinkExpandBrowserObjects::replaceFieldOf(RowHandle handle, int column, const SV::String& text) {
    if (handle >= impl->rows.size() || !impl->hasColumn(column)) {
        return false;
    }
    impl->setField(handle, column, text);
    if (impl->browser != nullptr) {
        impl->tell({SV::Aspect::Field, getRowOf(handle), column});
    }
    return true;
}

bool MeroShrinkExpandBrowserObjects::getRowNum(MeroId rowId, int& rowNumber) const {
    const RowOrder::Row row = impl->find(rowId);
    if (row == NoRow) {
        return false;
    }
    rowNumber = static_cast<int>(impl->ordered().placeOf(row)) + 1;
    return true;
}

SV::String MeroShrinkExpandBrowserObjects::getField(int row, int column) const {
    return impl->hasPlace(row) && impl->hasColumn(column) ? getFieldOf(impl->rowAt(row), column)
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
    for (const RowOrder::Row row : impl->allRows()) {
        fields.push_back(impl->columnAt(column).fields[row]);
    }
    return fields;
}

int MeroShrinkExpandBrowserObjects::getNumberOfRows() const {
    return static_cast<int>(impl->rows.size());
}

int MeroShrinkExpandBrowserObjects::getNumberOfColumns() const {
    return static_cast<int>(impl->columns.size()) - 1;
}

SV::String MeroShrinkExpandBrowserObjects::getColumnTitle(int column) const {
    return impl->hasColumn(column) ? impl->columnAt(column).title : SV::String();
}

const std::vector<SV::String>& MeroShrinkExpandBrowserObjects::getHeaders() const {
    return impl->headers;
}

const SV::String& MeroShrinkExpandBrowserObjects::getSecondHeader() const {
    return impl->secondHeader;
}

bool MeroShrinkExpandBrowserObjects::expandAll() {
    return impl->expandEveryRow(true);
}

bool MeroShrinkExpandBrowserObjects::shrinkAll() {
    return impl->expandEveryRow(false);
}

bool MeroShrinkExpandBrowserObjects::expandRow(int row, bool expand) {
    BrowserRow* shown = impl->rowShownAt(row);
    if (shown == nullptr || shown->children.empty()) {
        return false;
    }
    shown->expanded = expand;
    impl->tell({SV::Aspect::Expanded, row, 1, static_cast<MeroId>(getHandle(row))});
    return true;
}

bool MeroShrinkExpandBrowserObjects::hasChildren(int row) const {
    const BrowserRow* shown = impl->rowShownAt(row);
    return shown != nullptr && !shown->children.empty();
}

bool MeroShrinkExpandBrowserObjects::isExpanded(int row) const {
    const BrowserRow* shown = impl->rowShownAt(row);
    return shown != nullptr && shown->expanded;
}

bool MeroShrinkExpandBrowserObjects::isInSight(int row) const {
    const BrowserRow* shown = impl->rowShownAt(row);
    while (shown != nullptr && shown->parent != NoRow) {
        shown = &impl->rows[shown->parent];
        if (!shown->expanded) {
            return false;
        }
    }
    return shown != nullptr;
}

bool MeroShrinkExpandBrowserObjects::adjustColumn(int column) {
    if (!impl->hasColumn(column)) {
        return false;
    }
    const BrowserColumn& each = impl->columnAt(column);
    SV::Toolkit& toolkit = SV::Toolkit::GetGlobal();
    const int room = column == 0 ? IndentOfLevel * (each.depthOfLongest + 1) : 0;
    const int width = std::max(toolkit.fieldWidth(each.longest) + room, toolkit.textWidth(each.title));
    return setColumnWidth(column, width + ColumnPadding);
}

int MeroShrinkExpandBrowserObjects::getColumnWidth(int column) const {
    return impl->hasColumn(column) ? impl->columnAt(column).width : 0;
}

bool MeroShrinkExpandBrowserObjects::setColumnWidth(int column, int width) {
    if (!impl->hasColumn(column)) {
        return false;
    }
    impl->columnAt(column).width = width;
    impl->tell({SV::Aspect::ColumnWidth, column});
    return true;
}

void MeroShrinkExpandBrowserObjects::doLeftClick(int row, int column) {
    if (column == 0) {
        expandRow(row, !isExpanded(row));
    }
}

int MeroShrinkExpandBrowserObjects::findText(const SV::String& text, int from) const {
    const auto count = impl->rows.size();
    const auto start = static_cast<std::size_t>(std::max(from, 0));
    for (std::size_t searched = 0; searched < count;) {
        const std::size_t place = (start + searched) % count;
        const auto run = impl->ordered().runFrom(place);
        const auto found =
            std::ranges::find_if(run, [&](RowOrder::Row row) { return impl->holdsText(row, text.view()); });
        if (found != run.end()) {
            return static_cast<int>(place) + static_cast<int>(found - run.begin());
        }
        searched += run.size();
    }
    return -1;
}

void MeroShrinkExpandBrowserObjects::showRow(int row) {
    for (RowOrder::Row above = impl->rowShownAt(row)->parent; above != NoRow;
         above = impl->rows[above].parent) {
        impl->rows[above].expanded = true;
    }
    impl->tell({SV::Aspect::Expanded, row, 0, -1});
    impl->tell({SV::Aspect::Found, row, 0, static_cast<MeroId>(getHandle(row))});
}

MeroBrowser* MeroShrinkExpandBrowserObjects::getBrowser() const {
    return impl->browser;
}

std::vector<MeroShrinkExpandBrowserObjects::RowHandle> MeroShrinkExpandBrowserObjects::getRowsInSight(
    int sortColumn, bool descending) const {
    return mero::rowsInSight(*impl, impl->hasColumn(sortColumn) ? sortColumn : -1, descending);
}

const SV::String& MeroShrinkExpandBrowserObjects::getFieldOf(RowHandle handle, int column) const {
    return impl->columns[static_cast<std::size_t>(column)].fields[handle];
}

int MeroShrinkExpandBrowserObjects::getDepthOf(RowHandle handle) const {
    return impl->rows[handle].depth;
}

bool MeroShrinkExpandBrowserObjects::hasChildrenOf(RowHandle handle) const {
    return !impl->rows[handle].children.empty();
}

bool MeroShrinkExpandBrowserObjects::isExpandedOf(RowHandle handle) const {
    return impl->rows[handle].expanded;
}

int MeroShrinkExpandBrowserObjects::getRowOf(RowHandle handle) const {
    return static_cast<int>(impl->ordered().placeOf(handle));
}

MeroShrinkExpandBrowserObjects::RowHandle MeroShrinkExpandBrowserObjects::getHandle(int row) const {
    return impl->ordered().rowAt(static_cast<std::size_t>(row));
}
