#pragma once

#include <memory>
#include <vector>

#include "component/host/sv_string.h"
#include "component/host/types.h"

/// Rows and columns of an expandable table. Rows form a tree; a new row stands behind its parent's last
/// descendant. Column 0 is the row label. Fields hold plain text.
class MeroShrinkExpandBrowserObjects {
public:
    /// Parent of a root row.
    static constexpr MeroId NoParent = -1;

    MeroShrinkExpandBrowserObjects();
    MeroShrinkExpandBrowserObjects(const MeroShrinkExpandBrowserObjects&) = delete;
    MeroShrinkExpandBrowserObjects& operator=(const MeroShrinkExpandBrowserObjects&) = delete;
    virtual ~MeroShrinkExpandBrowserObjects();

    /// Adds a value column. `width` in window units.
    void addColumn(const SV::String& title, int width, int alignment, int kind);
    /// `cells`: the label and one text for each column. False for a row identifier that is there already, or
    /// a parent that isn't.
    bool addRow(MeroId parentRowId, MeroId rowId, const std::vector<SV::String>& cells);
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
    [[nodiscard]] int getNumberOfRows() const;
    /// Value columns; the label isn't counted.
    [[nodiscard]] int getNumberOfColumns() const;
    [[nodiscard]] SV::String getColumnTitle(int column) const;
    [[nodiscard]] const std::vector<SV::String>& getHeaders() const;
    [[nodiscard]] const SV::String& getSecondHeader() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};
