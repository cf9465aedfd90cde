#include "component/display/agent_browser_objects.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"
#include "component/host/repository.h"

namespace {

/// In pixels: half of the window that a table opens in.
constexpr int WidestColumn = 360;

}  // namespace

MeroAgentBrowserObjects::MeroAgentBrowserObjects() = default;
MeroAgentBrowserObjects::~MeroAgentBrowserObjects() = default;

MeroAgentBrowserObjects::RowKey MeroAgentBrowserObjects::keyOf(RowHandle parent, MeroId id) {
    constexpr int BitsOfId = 32;
    return (static_cast<RowKey>(parent) << BitsOfId) | static_cast<std::uint32_t>(id);
}

MeroAgentBrowserObjects::RowHandle MeroAgentBrowserObjects::fillCell(int column, MeroPathView path,
                                                                     const SV::String& text,
                                                                     const SV::String& emptyCellText) {
    static constexpr MeroId Unknown[] = {MeroNoId};
    RowHandle row = NoRow;
    for (const MeroId id : path.empty() ? MeroPathView(Unknown) : path) {
        row = findOrCreateRow(row, id, emptyCellText);
        if (row == NoRow) {
            break;
        }
    }
    if (row == NoRow || !replaceFieldOf(row, column, text)) {
        displayErrorMessage("aeadsply", __LINE__);
        return NoRow;
    }
    return row;
}

bool MeroAgentBrowserObjects::setCell(int column, MeroPathView path, const SV::String& text,
                                      const SV::String& emptyCellText) {
    return fillCell(column, path, text, emptyCellText) != NoRow;
}

bool MeroAgentBrowserObjects::setCell(int column, MeroPathView path, const SV::String& text,
                                      const SV::String& emptyCellText, double number) {
    const RowHandle row = fillCell(column, path, text, emptyCellText);
    if (row != NoRow) {
        setNumber(rowIdOf(row), column, number);
    }
    return row != NoRow;
}

void MeroAgentBrowserObjects::setNumber(MeroId rowId, int column, double number) {
    const auto columns = static_cast<std::size_t>(getNumberOfColumns());
    const std::size_t rowEnd = static_cast<std::size_t>(rowId) * columns;
    if (numbers.size() < rowEnd) {
        numbers.resize(rowEnd, std::numeric_limits<double>::quiet_NaN());
    }
    numbers[rowEnd - columns + static_cast<std::size_t>(column) - 1] = number;
}

std::optional<double> MeroAgentBrowserObjects::getNumber(int row, int column) const {
    const auto columns = static_cast<std::size_t>(getNumberOfColumns());
    const std::size_t rowEnd = static_cast<std::size_t>(getRowId(row)) * columns;
    if (rowEnd > numbers.size()) {
        return std::nullopt;
    }
    const double number = numbers[rowEnd - columns + static_cast<std::size_t>(column) - 1];
    return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

MeroId MeroAgentBrowserObjects::getObjectOfRow(int row) const {
    const auto rowId = static_cast<std::size_t>(getRowId(row));
    return rowId <= objectOfRow.size() ? objectOfRow[rowId - 1] : MeroNoId;
}

MeroAgentBrowserObjects::RowHandle MeroAgentBrowserObjects::findOrCreateRow(RowHandle parent, MeroId id,
                                                                            const SV::String& emptyCellText) {
    const RowKey key = keyOf(parent, id);
    if (const RowHandle* const known = rowIndex.find(key)) {
        return *known;
    }
    const auto row = static_cast<RowHandle>(getNumberOfRows());
    rowNumbers.resize(row + std::size_t{1});
    int& nextNumber = parent != NoRow ? rowNumbers[parent].nextChildNumber : nextRootNumber;
    rowNumbers[row] = {parent, nextNumber++, 1};
    std::string label;
    appendNumberText(row, label);
    label += ' ';
    label += labelOf(id).view();
    std::vector<SV::String> cells(static_cast<std::size_t>(getNumberOfColumns()) + 1, emptyCellText);
    cells.front() = label;
    if (!addRow(parent != NoRow ? rowIdOf(parent) : NoParent, rowIdOf(row), cells)) {
        return NoRow;
    }
    objectOfRow.resize(row + std::size_t{1});
    objectOfRow[row] = id;
    rowIndex.add(key, row);
    return row;
}

void MeroAgentBrowserObjects::appendNumberText(RowHandle row, std::string& text) const {
    const MeroAgentBrowserRow& place = rowNumbers[row];
    if (place.parent != NoRow) {
        appendNumberText(place.parent, text);
    }
    text += std::to_string(place.number);
    text += '.';
}

void MeroAgentBrowserObjects::clearRowIndex() {
    rowIndex = {};
    rowNumbers = {};
    labels = {};
    nextRootNumber = 1;
}

const SV::String& MeroAgentBrowserObjects::labelOf(MeroId id) {
    if (const SV::String* const known = labels.find(id)) {
        return *known;
    }
    return labels.add(id, getObjectLabel(id));
}

bool MeroAgentBrowserObjects::adjustColumn(int column) {
    return MeroShrinkExpandBrowserObjects::adjustColumn(column) &&
           setColumnWidth(column, std::min(getColumnWidth(column), WidestColumn));
}

void MeroAgentBrowserObjects::adjustAllColumns() {
    for (int column = 0; column <= getNumberOfColumns(); ++column) {
        adjustColumn(column);
    }
}

void MeroAgentBrowserObjects::doLeftClick(int row, int column) {
    MeroShrinkExpandBrowserObjects::doLeftClick(row, column);
    adjustColumn(0);
}

bool MeroAgentBrowserObjects::expandAll() {
    const bool isDone = MeroShrinkExpandBrowserObjects::expandAll();
    adjustAllColumns();
    return isDone;
}

bool MeroAgentBrowserObjects::shrinkAll() {
    const bool isDone = MeroShrinkExpandBrowserObjects::shrinkAll();
    adjustAllColumns();
    return isDone;
}

SV::String MeroAgentBrowserObjects::getObjectLabel(MeroId id) {
    SV::String unknown("?");
    auto* const manager = MeroCoreModelingManager::GetGlobal();
    if (manager == nullptr) {
        return unknown;
    }
    auto& repository = manager->enhanced();
    SV::String modelName;
    bool isModel = false;
    if (repository.instanceOf(ClassCodeModel, id, isModel) == RepositoryOk && isModel) {
        return repository.getModelNameAndVersion(id, modelName) == RepositoryOk ? modelName : unknown;
    }
    const char* name = nullptr;
    MeroId model = MeroNoId;
    if (repository.getAttributeValue(id, ClassCodeInstanceName, name, true) != RepositoryOk) {
        return unknown;
    }
    const SV::String label(name != nullptr ? name : "");
    if (repository.getModelOfInstance(id, model) != RepositoryOk ||
        repository.getModelNameAndVersion(model, modelName) != RepositoryOk) {
        return unknown;
    }
    return label + SV::String(" (") + modelName + SV::String(")");
}
