#include "component/display/agent_browser_objects.h"

#include <cmath>
#include <limits>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"
#include "component/host/repository.h"

MeroAgentBrowserObjects::MeroAgentBrowserObjects() = default;
MeroAgentBrowserObjects::~MeroAgentBrowserObjects() = default;

MeroAgentBrowserObjects::Row* MeroAgentBrowserObjects::findRow(MeroPathView path) {
    const auto found = rowIndex.find(path);
    return found != rowIndex.end() ? found->second.get() : nullptr;
}

const MeroAgentBrowserObjects::Row* MeroAgentBrowserObjects::fillCell(int column, MeroPathView path,
                                                                      const SV::String& text,
                                                                      const SV::String& emptyCellText) {
    const Row* row = findRow(path);
    if (row == nullptr) {
        row = createRow(path, emptyCellText);
    }
    int rowNumber = 0;
    if (row == nullptr || !getRowNum(row->rowId, rowNumber)) {
        displayErrorMessage("aeadsply", __LINE__);
        return nullptr;
    }
    return replaceField(text, rowNumber - 1, column, 1) ? row : nullptr;
}

bool MeroAgentBrowserObjects::setCell(int column, MeroPathView path, const SV::String& text,
                                      const SV::String& emptyCellText) {
    return fillCell(column, path, text, emptyCellText) != nullptr;
}

bool MeroAgentBrowserObjects::setCell(int column, MeroPathView path, const SV::String& text,
                                      const SV::String& emptyCellText, double number) {
    const Row* const row = fillCell(column, path, text, emptyCellText);
    if (row != nullptr) {
        setNumber(row->rowId, column, number);
    }
    return row != nullptr;
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

MeroAgentBrowserObjects::Row* MeroAgentBrowserObjects::createRow(MeroPathView path,
                                                                 const SV::String& emptyCellText) {
    Row* parent = nullptr;
    if (path.size() >= 2) {
        const MeroPathView parentPath = path.first(path.size() - 1);
        parent = findRow(parentPath);
        if (parent == nullptr) {
            parent = createRow(parentPath, emptyCellText);
        }
        if (parent == nullptr) {
            displayErrorMessage("aeadsply", __LINE__);
            return nullptr;
        }
    }
    const int number = parent != nullptr ? parent->nextChildNumber++ : nextRootNumber++;
    auto row = std::make_unique<Row>(Row{MeroPath(path.begin(), path.end()), getNumberOfRows() + 1,
                                         (parent != nullptr ? parent->numberText : SV::String()) +
                                             SV::String(std::int32_t{number}) + SV::String("."),
                                         1});
    std::vector<SV::String> cells(static_cast<std::size_t>(getNumberOfColumns()) + 1, emptyCellText);
    cells.front() =
        row->numberText + SV::String(" ") + (path.empty() ? SV::String("?") : labelOf(path.back()));
    if (!addRow(parent != nullptr ? parent->rowId : NoParent, row->rowId, cells)) {
        return nullptr;
    }
    objectOfRow.push_back(path.empty() ? MeroNoId : path.back());
    Row* const made = row.get();
    rowIndex.emplace(made->path, std::move(row));
    return made;
}

void MeroAgentBrowserObjects::clearRowIndex() {
    rowIndex.clear();
    labels.clear();
    nextRootNumber = 1;
}

const SV::String& MeroAgentBrowserObjects::labelOf(MeroId id) {
    const auto [place, isNew] = labels.try_emplace(id);
    if (isNew) {
        place->second = getObjectLabel(id);
    }
    return place->second;
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
