#pragma once

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "component/host/browser_objects.h"

#include "component/results/result_item.h"

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

private:
    struct Row {
        MeroPath path;
        MeroId rowId;
        SV::String numberText;
        int nextChildNumber;
    };
    [[nodiscard]] Row* findRow(MeroPathView path);
    /// Null if the cell's row can't be found or made, or has no such cell.
    const Row* fillCell(int column, MeroPathView path, const SV::String& text,
                        const SV::String& emptyCellText);
    /// Null if the row can't be made.
    Row* createRow(MeroPathView path, const SV::String& emptyCellText);
    [[nodiscard]] const SV::String& labelOf(MeroId id);

    std::unordered_map<MeroPath, std::unique_ptr<Row>, MeroPathHash, MeroPathEqual> rowIndex;
    std::unordered_map<MeroId, SV::String> labels;
    std::vector<MeroId> objectOfRow;  ///< by row identifier, from 1
    std::vector<double> numbers;      ///< by row identifier and column, not-a-number for none
    int nextRootNumber = 1;
};
