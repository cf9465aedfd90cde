#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "component/host/sv_string.h"
#include "component/host/types.h"

namespace SV {
class Window;
}
class MeroBrowser;

/// Form of a file that a table is saved in.
enum class MeroTableFormat { Text, Csv, Html };

/// Rows and columns of an expandable table. Rows form a tree; a new row stands behind its parent's last
/// descendant. Column 0 is the row label. Fields hold plain text. Which rows are expanded and how wide
/// columns are is told with or without a control that shows it.
class MeroShrinkExpandBrowserObjects {
public:
    /// Parent of a root row.
    static constexpr MeroId NoParent = -1;

    MeroShrinkExpandBrowserObjects();
    MeroShrinkExpandBrowserObjects(const MeroShrinkExpandBrowserObjects&) = delete;
    MeroShrinkExpandBrowserObjects& operator=(const MeroShrinkExpandBrowserObjects&) = delete;
    virtual ~MeroShrinkExpandBrowserObjects();

    /// Adds a value column. `width` in pixels. `alignment` 1 is right.
    void addColumn(const SV::String& title, int width, int alignment, int kind);
    /// What the header tells of the column; empty for nothing.
    void setColumnToolTip(int column, const SV::String& text);
    [[nodiscard]] SV::String getColumnToolTip(int column) const;
    /// `cells`: the label and one text for each column. False for a row identifier that is there already, or
    /// a parent that isn't.
    bool addRow(MeroId parentRowId, MeroId rowId, const std::vector<SV::String>& cells);
    /// The last `count` rows stay in sight and where they are: sums and extremes.
    void setSummaryRows(int count);
    [[nodiscard]] int getSummaryRows() const;
    void addHeader(const SV::String& text);
    void setSecondHeader(const SV::String& text);
    /// `row` counts from 0 in the order shown when all is expanded. False outside the table. The last
    /// argument is always 1.
    bool replaceField(const SV::String& text, int row, int column, int redraw);
    /// Position of a row among all rows, counted from 1 in the order shown when all is expanded. False if
    /// unknown.
    bool getRowNum(MeroId rowId, int& rowNumber) const;
    /// Empty outside the table. `row` counts from 0.
    [[nodiscard]] SV::String getField(int row, int column) const;
    /// Number of ancestors of the row.
    [[nodiscard]] int getRowDepth(int row) const;
    [[nodiscard]] MeroId getRowId(int row) const;
    /// All fields of a value column, from top to bottom.
    [[nodiscard]] std::vector<SV::String> getDataColumn(int column) const;
    [[nodiscard]] virtual int getNumberOfRows() const;
    /// Value columns; the label isn't counted.
    [[nodiscard]] int getNumberOfColumns() const;
    [[nodiscard]] SV::String getColumnTitle(int column) const;
    [[nodiscard]] const std::vector<SV::String>& getHeaders() const;
    [[nodiscard]] const SV::String& getSecondHeader() const;

    /// False, and an internal error, without a browser.
    virtual bool expandAll();
    virtual bool shrinkAll();
    /// False for a row that has none below it.
    bool expandRow(int row, bool expand);
    [[nodiscard]] bool hasChildren(int row) const;
    [[nodiscard]] bool isExpanded(int row) const;
    /// True if all rows above it are expanded.
    [[nodiscard]] bool isInSight(int row) const;
    /// Makes the column as wide as its widest field and its title. False outside the table.
    virtual bool adjustColumn(int column);
    /// In pixels; 0 outside the table.
    [[nodiscard]] int getColumnWidth(int column) const;
    bool setColumnWidth(int column, int width);
    /// A click on a field; on the label of a row with rows below it, it expands or shrinks it.
    virtual void doLeftClick(int row, int column);

    /// First row at or behind `from`, and round the end, with a field that holds `text`, upper or lower case
    /// of ASCII letters; -1 for none. All rows are searched.
    [[nodiscard]] int findText(const SV::String& text, int from) const;
    /// Expands what the row, which has to be there, is below, and brings it into sight.
    void showRow(int row);
    /// Asks for a text and shows the next row that holds it, in the browser; false if cancelled or not found.
    bool search(SV::Window* parent);
    /// Asks for a path and writes all rows; the ending says the format, else it is text. False if cancelled
    /// or not written, which a box tells.
    bool saveIt(SV::Window* parent);
    /// False if the file can't be written. Format of the values: C locale, full precision.
    [[nodiscard]] bool saveTo(const SV::String& path, MeroTableFormat format) const;
    /// The whole table, headers first.
    [[nodiscard]] SV::String getTableText(MeroTableFormat format, bool expandedRowsOnly = false) const;
    /// Prints the rows in sight. False if cancelled or failed.
    bool printContent(SV::Window* parent);
    /// Copies the rows with headers to the clipboard as text; all expanded ones if `rows` is empty.
    [[nodiscard]] SV::String getCopyText(const std::vector<int>& rows) const;

    /// Null while no control shows the table.
    [[nodiscard]] MeroBrowser* getBrowser() const;

    /// Rows by handle: a number that never changes, 0 for the row that was made first, 1 for the next. Costs
    /// no search, whatever the order of the table.
    using RowHandle = std::uint32_t;
    /// As `replaceField`. False for a row or column that isn't there.
    bool replaceFieldOf(RowHandle handle, int column, const SV::String& text);
    /// Handles of the rows that aren't below a shrunk one, in the order of the table, or sorted by a column
    /// among brothers: numbers and times by value, then texts; summary rows stay last. `sortColumn` -1 sorts
    /// nothing.
    [[nodiscard]] std::vector<RowHandle> getRowsInSight(int sortColumn = -1, bool descending = false) const;
    /// The handle, and the column below, have to be good.
    [[nodiscard]] const SV::String& getFieldOf(RowHandle handle, int column) const;
    [[nodiscard]] int getDepthOf(RowHandle handle) const;
    [[nodiscard]] bool hasChildrenOf(RowHandle handle) const;
    [[nodiscard]] bool isExpandedOf(RowHandle handle) const;
    /// Row counted from 0 as if all were expanded.
    [[nodiscard]] int getRowOf(RowHandle handle) const;
    [[nodiscard]] RowHandle getHandle(int row) const;

    struct Impl;

private:
    friend class MeroBrowser;
    std::unique_ptr<Impl> impl;
};
