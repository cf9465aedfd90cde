#include "platform/toolkit/qt/browser_model.h"

#include <algorithm>

#include "platform/toolkit/qt/field_dress.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/toolkit_messages.h"

namespace mero::qt {

void BrowserModel::setObjects(const MeroShrinkExpandBrowserObjects* newObjects) {
    objects = newObjects;
    refresh();
}

std::vector<BrowserModel::RowHandle> BrowserModel::findRows() const {
    std::vector<RowHandle> found;
    if (objects == nullptr) {
        return found;
    }
    const int summaryRows = objects->getSummaryRows();
    if (part == Part::Body) {
        found = objects->getRowsInSight(sortColumn, descending);
        found.resize(found.size() - static_cast<std::size_t>(summaryRows));
        return found;
    }
    const int rowsInAll = objects->getNumberOfRows();
    for (int row = rowsInAll - summaryRows; row < rowsInAll; ++row) {
        found.push_back(objects->getHandle(row));
    }
    return found;
}

void BrowserModel::refresh() {
    beginResetModel();
    rows = findRows();
    decimals.assign(static_cast<std::size_t>(columnCount()), -1);
    endResetModel();
}

void BrowserModel::sortBy(int column, bool isDescending) {
    sortColumn = column;
    descending = isDescending;
    refresh();
}

void BrowserModel::fieldChanged(RowHandle handle, int column) {
    const int row = shownRowOf(handle);
    if (row >= 0) {
        const QModelIndex changed = index(row, column);
        emit dataChanged(changed, changed);
    }
}

int BrowserModel::shownRowOf(RowHandle handle) const {
    const auto place = std::ranges::find(rows, handle);
    return place != rows.end() ? static_cast<int>(place - rows.begin()) : -1;
}

int BrowserModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int BrowserModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || objects == nullptr ? 0 : objects->getNumberOfColumns() + 1;
}

int BrowserModel::decimalsAt(int column) const {
    int& known = decimals[static_cast<std::size_t>(column)];
    if (known < 0) {
        known = decimalsOf(*objects, column);
    }
    return known;
}

QVariant BrowserModel::data(const QModelIndex& index, int role) const {
    const RowHandle handle = handleAt(index.row());
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole:
            return column == 0 ? plain(objects->getFieldOf(handle, 0))
                               : dressed(objects->getFieldOf(handle, column), decimalsAt(column));
        case Qt::ToolTipRole:
            return plain(objects->getFieldOf(handle, column));
        case Qt::TextAlignmentRole:
            return QVariant(column == 0 ? Qt::AlignLeft | Qt::AlignVCenter
                                        : Qt::AlignRight | Qt::AlignVCenter);
        case DepthRole:
            return objects->getDepthOf(handle);
        case HasChildrenRole:
            return objects->hasChildrenOf(handle);
        case ExpandedRole:
            return objects->isExpandedOf(handle);
        default:
            return {};
    }
}

QVariant BrowserModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || objects == nullptr) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return section == 0 ? plain(SV::String(MessageObject)) : plain(objects->getColumnTitle(section));
    }
    if (role == Qt::ToolTipRole) {
        return plain(objects->getColumnToolTip(section));
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(section == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

}  // namespace mero::qt
