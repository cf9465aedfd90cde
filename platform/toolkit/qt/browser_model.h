#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "component/host/browser_objects.h"

namespace mero::qt {

/// Rows in sight of an expandable table, as a flat table: the view draws the tree by the depth of rows. It
/// reads fields when they are drawn, so that a table of any size opens at once.
class BrowserModel : public QAbstractTableModel {
public:
    using RowHandle = MeroShrinkExpandBrowserObjects::RowHandle;
    enum Role { DepthRole = Qt::UserRole, HasChildrenRole, ExpandedRole };
    /// The summary rows, or all others.
    enum class Part { Body, Summary };

    explicit BrowserModel(Part shownPart) : part(shownPart) {}

    void setObjects(const MeroShrinkExpandBrowserObjects* newObjects);
    /// Takes the rows anew: expanded, shrunk, added or sorted.
    void refresh();
    void sortBy(int column, bool isDescending);
    [[nodiscard]] int getSortColumn() const { return sortColumn; }
    [[nodiscard]] bool isDescending() const { return descending; }
    void fieldChanged(RowHandle handle, int column);

    [[nodiscard]] RowHandle handleAt(int shownRow) const { return rows[static_cast<std::size_t>(shownRow)]; }
    /// Position among the rows in sight, or -1.
    [[nodiscard]] int shownRowOf(RowHandle handle) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] int decimalsAt(int column) const;

    [[nodiscard]] std::vector<RowHandle> findRows() const;

    Part part;
    const MeroShrinkExpandBrowserObjects* objects = nullptr;
    std::vector<RowHandle> rows;
    int sortColumn = -1;
    bool descending = false;
    mutable std::vector<int> decimals;  ///< by column; -1 for not known yet
};

}  // namespace mero::qt
