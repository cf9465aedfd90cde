#include "apps/mero/result_pictures.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <set>

#include "apps/mero/shown_values.h"
#include "component/agents/agent_types.h"
#include "platform/diagram/flow_counts.h"

namespace mero {

namespace {

constexpr std::size_t MostBars = 25;
constexpr std::size_t MostCurves = 8;
/// More can't be told apart in a picture.
constexpr std::size_t MostPoints = 4000;
constexpr int KindTime = 2;

/// Names of files: what shells and file systems might take for something else becomes a dash.
class PictureNames {
public:
    /// A name made of both, each cut if it is long.
    std::string take(const std::string& wanted, const std::string& kind) {
        std::string name;
        for (const char letter : shortened(wanted) + "-" + shortened(kind)) {
            const auto byte = static_cast<unsigned char>(letter);
            const bool isPlain = byte >= 0x80 || std::isalnum(byte) != 0 || letter == '_' || letter == '.';
            name += isPlain ? letter : '-';
        }
        name.erase(0, name.find_first_not_of(".-"));
        name = name.empty() ? "picture" : name;
        std::string free = name;
        for (int number = 2; !taken.insert(free).second; ++number) {
            free = fmt::format("{}-{}", name, number);
        }
        return free;
    }

private:
    /// Ends between two characters.
    static std::string shortened(const std::string& text) {
        constexpr std::size_t LongestPart = 100;
        const auto continuesCharacter = [&](std::size_t position) {
            return (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U;
        };
        std::size_t length = std::min(text.size(), LongestPart);
        while (length < text.size() && length > 0 && continuesCharacter(length)) {
            --length;
        }
        return text.substr(0, length);
    }

    std::set<std::string> taken;
};

struct ObjectValue {
    MeroId object = MeroNoId;
    std::string label;
    double value = 0.0;
};

/// The largest values as bars.
BarPicture barsOf(const ChartCaption& caption, const std::string& measure, std::vector<ObjectValue> values) {
    std::stable_sort(values.begin(), values.end(), [](const ObjectValue& left, const ObjectValue& right) {
        return left.value > right.value;
    });
    values.resize(std::min(values.size(), MostBars));
    BarPicture bars{caption, {measure}, {}};
    for (const ObjectValue& value : values) {
        bars.items.push_back({value.label, {value.value}});
    }
    return bars;
}

MeasureOverlay::Unit unitOf(ResultUnit unit) {
    return unit == ResultUnit::Seconds ? MeasureOverlay::Unit::Seconds : MeasureOverlay::Unit::Number;
}

ChartCaption captionOf(std::string title, const ResultSetDocument& set, const RunDescription& run) {
    return {std::move(title), run.title + "   unscaled",
            set.resultKind == KindTime ? MeasureOverlay::Unit::Seconds : MeasureOverlay::Unit::Number,
            run.daysPerYear, run.hoursPerDay};
}

/// Values of a column by object, in order of the rows.
std::vector<ObjectValue> valuesOf(const ResultTable& table, std::size_t column) {
    std::vector<ObjectValue> values;
    std::map<std::pair<MeroId, std::string>, std::size_t> places;  // read back, all identifiers are 0
    // Labels name the model, which says nothing where there is one only.
    std::set<std::string> models;
    for (const ResultTable::Row& row : table.rows) {
        models.insert(row.objectModel);
    }
    models.erase("");
    const bool isOneModel = models.size() == 1;
    for (const ResultTable::Row& row : table.rows) {
        if (row.kind != ResultTable::RowKind::Object || !std::isfinite(row.cells[column])) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace({row.object.id, row.label}, values.size());
        if (isNew) {
            values.push_back({row.object.id, isOneModel ? row.object.text : row.label, 0.0});
        }
        values[place->second].value += row.cells[column];
    }
    return values;
}

class TablePictures {
public:
    TablePictures(const RunDescription& runDescription, const Repository& models)
        : run(runDescription), repository(models) {}

    void add(const ResultTable& table, std::size_t number) {
        takeExecutions(table);
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            if (isShown(table.columns[column])) {
                addColumn(table, column, number);
            }
        }
    }

    std::vector<ResultPicture> take() { return std::move(pictures); }

private:
    static bool isShown(const ResultTable::Column& column) {
        return column.statistic == ResultStatistic::Value || column.statistic == ResultStatistic::Mean;
    }

    /// The first measure of frequency tells how often flows were taken, whatever colours the shapes.
    void takeExecutions(const ResultTable& table) {
        const auto column = std::ranges::find_if(table.columns, [](const ResultTable::Column& each) {
            return each.type == "FREQUENCY" && isShown(each);
        });
        executions.clear();
        if (column != table.columns.end()) {
            for (const ObjectValue& value :
                 valuesOf(table, static_cast<std::size_t>(column - table.columns.begin()))) {
                executions[value.object] = value.value;
            }
        }
    }

    void addColumn(const ResultTable& table, std::size_t column, std::size_t number) {
        const std::vector<ObjectValue> values = valuesOf(table, column);
        if (values.empty()) {
            return;
        }
        const ResultTable::Column& shown = table.columns[column];
        const std::string name = table.agent.text + "-" + shown.measure;
        ChartCaption caption{table.agent.text + ": " + shown.measure,
                             run.title + "   " + contextLine(table, {column}, run), unitOf(shown.unit),
                             run.daysPerYear, run.hoursPerDay};
        pictures.push_back(
            {{names.take(name, "bars"), barsOf(caption, shown.measure, values)}, caption.title, number});
        MeasureOverlay overlay{table.agent.text,
                               shown.measure,
                               caption.unit,
                               caption.context,
                               run.daysPerYear,
                               run.hoursPerDay,
                               {}};
        std::set<MeroId> models;
        for (const ObjectValue& value : values) {
            if (const Object* const object = repository.findObject(value.object)) {
                overlay.values[value.object] = value.value;
                models.insert(object->modelId);
            }
        }
        for (const MeroId model : models) {
            addProcess(model, overlay, name, number);
        }
    }

    /// Values of other models would stretch the scale.
    void addProcess(MeroId model, MeasureOverlay overlay, const std::string& name, std::size_t number) {
        ProcessPicture process{drawProcess(repository, model), {}};
        std::erase_if(overlay.values,
                      [&process](const auto& entry) { return process.diagram.find(entry.first) == nullptr; });
        if (overlay.isEmpty()) {
            return;
        }
        countFlows(process.diagram, executions);
        const std::string title =
            fmt::format("{}: {} ({})", overlay.agent, overlay.measure, process.diagram.name);
        const std::string file = names.take(name, process.diagram.name);
        process.measure = std::move(overlay);
        pictures.push_back({{file, std::move(process)}, title, number});
    }

    const RunDescription& run;
    const Repository& repository;
    std::map<MeroId, double> executions;
    PictureNames names;
    std::vector<ResultPicture> pictures;
};

/// First, lowest, highest and last of equal parts of the readings, which looks the same as all of them.
std::vector<DrawPoint> thinned(const std::vector<DrawPoint>& points) {
    if (points.size() <= MostPoints) {
        return points;
    }
    constexpr std::size_t Parts = MostPoints / 4;
    std::vector<DrawPoint> kept;
    for (std::size_t part = 0; part < Parts; ++part) {
        const auto begin = points.begin() + static_cast<std::ptrdiff_t>(points.size() * part / Parts);
        const auto end = points.begin() + static_cast<std::ptrdiff_t>(points.size() * (part + 1) / Parts);
        const auto [low, high] = std::minmax_element(
            begin, end, [](const DrawPoint& left, const DrawPoint& right) { return left.y < right.y; });
        kept.push_back(*begin);
        kept.push_back(*std::min(low, high));
        kept.push_back(*std::max(low, high));
        kept.push_back(*(end - 1));
    }
    return kept;
}

using Readings = std::map<std::string, std::vector<DrawPoint>>;

CurvePicture curvesOf(const ChartCaption& caption, MeasureOverlay::Unit abscissa, const Readings& readings) {
    std::vector<Readings::const_iterator> order;
    for (auto each = readings.begin(); each != readings.end(); ++each) {
        order.push_back(each);
    }
    std::stable_sort(order.begin(), order.end(), [](const auto& left, const auto& right) {
        return left->second.size() > right->second.size();
    });
    order.resize(std::min(order.size(), MostCurves));
    CurvePicture picture{caption, {}, abscissa};
    for (const auto& each : order) {
        picture.curves.push_back({each->first, thinned(each->second)});
    }
    return picture;
}

}  // namespace

std::vector<ResultPicture> picturesOf(const std::vector<ResultTable>& tables, const RunDescription& run,
                                      const Repository& repository) {
    TablePictures pictures(run, repository);
    for (std::size_t number = 0; number < tables.size(); ++number) {
        pictures.add(tables[number], number);
    }
    return pictures.take();
}

std::vector<ResultPicture> historiesOf(const ResultDocument& document, const RunDescription& run) {
    std::vector<ResultPicture> pictures;
    PictureNames names;
    const auto abscissa = document.analysis == AnalysisPath || document.analysis == AnalysisVolume
                              ? MeasureOverlay::Unit::Number
                              : MeasureOverlay::Unit::Seconds;
    for (const ResultOfAgent& agent : document.agents) {
        for (const ResultOfSubAgent& subAgent : agent.subAgents) {
            if (!subAgent.resultSet || !subAgent.resultSet->history || subAgent.resultSet->history->empty()) {
                continue;
            }
            Readings readings;
            for (const ResultReading& reading : *subAgent.resultSet->history) {
                readings[reading.object].push_back({reading.time, reading.value});
            }
            const std::string title = fmt::format("{}: history of {}", agent.name.text, subAgent.name);
            const std::string file = names.take(agent.name.text + "-" + subAgent.name, "history");
            pictures.push_back(
                {{file, curvesOf(captionOf(title, *subAgent.resultSet, run), abscissa, readings)}, title});
        }
    }
    return pictures;
}

std::vector<ResultPicture> historiesOf(const HistoryFile& history, const std::string& source) {
    Readings readings;
    for (const HistoryReading& reading : history.readings) {
        readings[reading.name.empty() ? fmt::format("#{}", reading.objectId) : reading.name].push_back(
            {reading.time, reading.value});
    }
    if (readings.empty()) {
        return {};
    }
    const std::string title = history.header.empty() ? source : history.header.front();
    return {{{"history", curvesOf({title, source, MeasureOverlay::Unit::Number, 365.0, 24.0},
                                  MeasureOverlay::Unit::Number, readings)},
             title}};
}

std::vector<ResultPicture> chartsOf(const ResultDocument& document, const RunDescription& run) {
    std::vector<ResultPicture> pictures;
    PictureNames names;
    for (const ResultOfAgent& agent : document.agents) {
        for (const ResultOfSubAgent& subAgent : agent.subAgents) {
            if (!subAgent.resultSet || subAgent.resultSet->results.empty()) {
                continue;
            }
            std::vector<ObjectValue> values;
            for (const ResultOfObject& object : subAgent.resultSet->results) {
                ObjectValue value{MeroNoId, object.object.text, 0.0};
                for (const ResultItem& item : object.items) {
                    value.value += std::isfinite(item.value) ? item.value : 0.0;
                }
                values.push_back(std::move(value));
            }
            const std::string title = agent.name.text + ": " + subAgent.name;
            const std::string file = names.take(agent.name.text + "-" + subAgent.name, "bars");
            pictures.push_back(
                {{file, barsOf(captionOf(title, *subAgent.resultSet, run), subAgent.name, std::move(values))},
                 title});
        }
    }
    return pictures;
}

}  // namespace mero
