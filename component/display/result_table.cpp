#include <optional>
#include <unordered_map>

#include "component/host/basic_services.h"

#include "component/display/agent_result_windows.h"
#include "component/display/measure_description.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr int ColumnWidth = 80;
constexpr int ColumnAlignment = 1;
constexpr int ColumnKind = 2;

constexpr SV::ResId SumLabel{0x2004F44};
constexpr SV::ResId MinimumLabel{0x2004F45};
constexpr SV::ResId MaximumLabel{0x2004F46};

/// A sum that hasn't begun. A true sum of this value is taken for none.
constexpr double NoSum = -1.0;

const SV::String& emptyCell() {
    static const SV::String text("-");
    return text;
}

/// One value column: its results and what stands below them.
struct Column {
    MeroAgentResultSet& set;
    double factor;
    double sum = NoSum;
    double minimum = 0.0;
    double maximum = 0.0;
    bool first = true;

    [[nodiscard]] SV::String format(double value) const {
        switch (set.getResultKind()) {
            case ResultKindNumber:
                return SV::String(value);
            case ResultKindTime:
                return formatTime(value, gDaysPerYear, gHoursPerDay);
            default:
                return emptyCell();
        }
    }
    void addToSum(double value) { sum = sum == NoSum ? value : sum + value; }
    void addToExtremes(double value) {
        if (first || value < minimum) {
            minimum = value;
        }
        if (first || value > maximum) {
            maximum = value;
        }
        first = false;
    }
};

/// Fills the cells of one column.
class ColumnFiller {
public:
    ColumnFiller(MeroAgentBrowserObjects& table, Column& filledColumn, int position,
                 const MeroResultOptions& display)
        : objects(table), column(filledColumn), number(position), options(display) {}

    bool addDetail(const MeroDoubleResult& result) {
        for (const auto& item : result.getItems()) {
            if (!addCell(item->getPath(), item->getValue() * column.factor, result)) {
                return false;
            }
        }
        return true;
    }

    bool addTotal(const MeroDoubleResult& result) {
        const MeroPath path{result.getObjectId()};
        return addCell(path, result.getTotal() * column.factor, result);
    }

private:
    bool addCell(MeroPathView path, double value, const MeroDoubleResult& result) {
        if (!objects.setCell(number, path, column.format(value), emptyCell(), value)) {
            displayErrorMessage("aeadsply", __LINE__);
            return false;
        }
        if (options.sumChecked && result.getSourceAgentType() != 0) {
            column.addToSum(value);
        }
        if (options.extremeChecked) {
            column.addToExtremes(value);
        }
        return true;
    }

    MeroAgentBrowserObjects& objects;
    Column& column;
    int number;
    const MeroResultOptions& options;
};

/// For each object its result with the smallest item key, by ascending object.
std::vector<const MeroDoubleResult*> resultsByObject(MeroAgentResultSet& set) {
    std::unordered_map<MeroId, const MeroDoubleResult*> byObject;
    for (const MeroDoubleResult* const result : set.getResults(false)) {
        byObject.try_emplace(result->getObjectId(), result);
    }
    ISortedSet<MeroId> objectIds;
    set.getObjectIds(objectIds);
    std::vector<const MeroDoubleResult*> ordered;
    for (const MeroId id : objectIds) {
        const auto found = byObject.find(id);
        if (found != byObject.end()) {
            ordered.push_back(found->second);
        }
    }
    return ordered;
}

void appendSeparator(MeroAgentBrowserObjects& objects, const std::vector<Column>& columns) {
    objects.addRow(MeroShrinkExpandBrowserObjects::NoParent, objects.getNumberOfRows() + 1,
                   std::vector<SV::String>(columns.size() + 1));
}

/// `valueOf` gives nothing for a column without such a value.
template <class ValueOf>
void appendRow(MeroAgentBrowserObjects& objects, const SV::String& label, const std::vector<Column>& columns,
               ValueOf valueOf) {
    std::vector<SV::String> cells{label};
    for (const Column& column : columns) {
        const std::optional<double> value = valueOf(column);
        cells.push_back(value ? column.format(*value) : emptyCell());
    }
    const MeroId rowId = objects.getNumberOfRows() + 1;
    objects.addRow(MeroShrinkExpandBrowserObjects::NoParent, rowId, cells);
    int number = 0;
    for (const Column& column : columns) {
        ++number;
        if (const std::optional<double> value = valueOf(column)) {
            objects.setNumber(rowId, number, *value);
        }
    }
}

}  // namespace

bool MeroAgentResultWindows::fillBrowser(MeroAgentBrowserObjects& objects, MeroDisplayKind kind,
                                         bool& isEmpty, const std::vector<MeroAgentResultSet*>& resultSets,
                                         double scale) const {
    if (kind != DisplayDetail && kind != DisplayTotal) {
        displayErrorMessage("aeadsply", __LINE__);
        return false;
    }
    isEmpty = true;
    std::vector<Column> columns;
    for (MeroAgentResultSet* const set : resultSets) {
        if (set != nullptr && set->hasObjectResults(false)) {
            SV::String name;
            set->getName(name);
            objects.addColumn(name, ColumnWidth, ColumnAlignment, ColumnKind);
            columns.push_back({*set, set->isSingleValue() ? scale : 1.0});
            objects.setColumnToolTip(objects.getNumberOfColumns(),
                                     describeMeasure(owner, *set, columns.back().factor));
        }
    }
    int number = 0;
    for (Column& column : columns) {
        ColumnFiller filler(objects, column, ++number, options);
        for (const MeroDoubleResult* const result : resultsByObject(column.set)) {
            isEmpty = false;
            if (!(kind == DisplayDetail ? filler.addDetail(*result) : filler.addTotal(*result))) {
                return false;
            }
        }
    }
    objects.clearRowIndex();
    if (isEmpty) {
        return true;
    }
    const int valueRows = objects.getNumberOfRows();
    if (options.sumChecked || options.extremeChecked) {
        appendSeparator(objects, columns);
    }
    if (options.sumChecked) {
        appendRow(objects, SV::String(SumLabel), columns, [](const Column& column) {
            return column.sum == NoSum ? std::nullopt : std::optional<double>(column.sum);
        });
    }
    if (options.extremeChecked) {
        appendRow(objects, SV::String(MinimumLabel), columns,
                  [](const Column& column) { return std::optional<double>(column.minimum); });
        appendRow(objects, SV::String(MaximumLabel), columns,
                  [](const Column& column) { return std::optional<double>(column.maximum); });
    }
    objects.setSummaryRows(objects.getNumberOfRows() - valueRows);
    return true;
}
