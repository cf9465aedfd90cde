#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "component/host/browser_objects.h"

#include "component/results/keyed_table.h"
#include "component/results/result_item.h"

/// Place of a row among its brothers.
struct MeroAgentBrowserRow {
    using RowHandle = MeroShrinkExpandBrowserObjects::RowHandle;
    static constexpr RowHandle NoRow = static_cast<RowHandle>(-1);

    RowHandle parent = NoRow;  ///< `NoRow` for a root row
    int number = 0;
    int nextChildNumber = 1;
};

/// The table of numeric results: one column for each measure, one row for each path of objects; the tree of
/// rows is the tree of the paths. Rows are numbered 1., 1.1., 1.1.2. with the object's label behind the
/// number.
class MeroAgentBrowserObjects : public MeroShrinkExpandBrowserObjects {
public:
    MeroAgentBrowserObjects();
    ~MeroAgentBrowserObjects() override;

    /// Sets a cell; the row, and those of all beginnings of the path, are made if they aren't there, with
    /// `emptyCellText` in their cells. False, and an internal error, if that fails.
    bool setCell(int column, MeroPathView path, const SV::String& text, const SV::String& emptyCellText);
    /// The number that a cell's text stands for, unrounded. The row has to be there; columns count from 1.
    void setNumber(MeroId rowId, int column, double number);
    /// As both above.
    bool setCell(int column, MeroPathView path, const SV::String& text, const SV::String& emptyCellText,
                 double number);
    /// Nothing for a cell without a number, or without a finite one. `row` counts from 0.
    [[nodiscard]] std::optional<double> getNumber(int row, int column) const;
    /// End of the path that a row stands for; 0 for a row that has none. `row` counts from 0.
    [[nodiscard]] MeroId getObjectOfRow(int row) const;
    /// Forgets which path has which row; the rows stay.
    void clearRowIndex();
    /// Name of an object with its model in brackets, or name and version of a model; "?" if the repository
    /// doesn't tell.
    [[nodiscard]] static SV::String getObjectLabel(MeroId id);

    // Views of the table

    /// As wide as its texts, up to a limit, so that no column takes the room of all others.
    bool adjustColumn(int column) override;
    void doLeftClick(int row, int column) override;
    bool expandAll() override;
    bool shrinkAll() override;

private:
    static constexpr RowHandle NoRow = MeroAgentBrowserRow::NoRow;
    /// Parent and last object of a path.
    using RowKey = std::uint64_t;
    static RowKey keyOf(RowHandle parent, MeroId id);
    static MeroId rowIdOf(RowHandle row) { return static_cast<MeroId>(row + 1); }

    /// `NoRow`, and an internal error, if the cell isn't there and can't be made.
    RowHandle fillCell(int column, MeroPathView path, const SV::String& text,
                       const SV::String& emptyCellText);
    /// `NoRow` if the row isn't there and can't be made.
    RowHandle findOrCreateRow(RowHandle parent, MeroId id, const SV::String& emptyCellText);
    /// "1.2." of the second row below the first.
    void appendNumberText(RowHandle row, std::string& text) const;
    [[nodiscard]] const SV::String& labelOf(MeroId id);
    void adjustAllColumns();

    MeroKeyedTable<RowKey, RowHandle> rowIndex;
    std::vector<MeroAgentBrowserRow> rowNumbers;  ///< by handle
    MeroKeyedTable<MeroId, SV::String> labels;
    std::vector<MeroId> objectOfRow;  ///< by handle
    std::vector<double> numbers;      ///< by handle and column, not-a-number for none
    int nextRootNumber = 1;
};
