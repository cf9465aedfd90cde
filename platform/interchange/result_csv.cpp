#include <cmath>
#include <fmt/format.h>

#include "platform/interchange/csv_reader.h"
#include "platform/interchange/result_table.h"

namespace mero {

namespace {

using Column = ResultTable::Column;
using Row = ResultTable::Row;

constexpr std::string_view LineEnd = "\r\n";

std::string joined(const std::vector<const ResultName*>& path) {
    std::string text;
    for (const ResultName* const name : path) {
        text += (text.empty() ? "" : " / ") + name->text;
    }
    return text;
}

std::string numberCell(double value) {
    return std::isfinite(value) ? fmt::format("{}", value) : std::string();
}

/// With a comma between two cells.
void appendCells(std::string& row, std::initializer_list<std::string_view> cells) {
    bool isFirst = true;
    for (const std::string_view cell : cells) {
        if (!isFirst) {
            row += ',';
        }
        isFirst = false;
        appendCsvCell(row, cell);
    }
}

/// Lines of one table.
class TableLines {
public:
    TableLines(const ResultTable& shown, const RunDescription& description, std::string& target)
        : table(shown), run(description), text(target) {
        appendCells(begin, {run.title, table.model, table.agent.text});
        begin += ',';
        end += ',';
        appendCells(end, {run.analysis, run.isSimulation ? std::to_string(run.seed) : "",
                          fmt::format("{:016x}", run.fingerprint), scalingText(run),
                          table.isGrouped ? groupingText(run) : ""});
        end += LineEnd;
    }

    void write() {
        const std::size_t width = run.isReplicated ? StatisticsOfAMeasure : 1;
        RowPaths paths;
        for (const Row& row : table.rows) {
            const std::string path = joined(paths.of(row));
            for (std::size_t first = 0; first + width <= table.columns.size(); first += width) {
                if (std::isfinite(row.cells[first])) {
                    writeValue(row, path, first, width);
                }
            }
        }
    }

private:
    void writeValue(const Row& row, const std::string& path, std::size_t first, std::size_t width) {
        const Column& column = table.columns[first];
        const bool isObject = row.kind == ResultTable::RowKind::Object;
        text += begin;
        appendCells(text, {column.measure, row.objectModel, isObject ? std::string_view(row.object.text) : "",
                           row.objectClass, path});
        for (std::size_t number = first; number < first + width; ++number) {
            text += ',' + numberCell(row.cells[number]);
        }
        text += fmt::format(",{},{},{}", column.unit == ResultUnit::Seconds ? "s" : "", column.scale,
                            wordOf(row.kind));
        text += end;
    }

    const ResultTable& table;
    const RunDescription& run;
    std::string& text;
    std::string begin;
    std::string end;
};

}  // namespace

std::string writeResultCsv(const std::vector<ResultTable>& tables, const RunDescription& run) {
    std::string text = "run,model,agent,measure,object_model,object,object_class,path,";
    text += run.isReplicated ? "replications,mean,standard_deviation,lower,upper" : "value";
    text += ",unit,scale,row,analysis,seed,fingerprint,scaling,grouping";
    text += LineEnd;
    for (const ResultTable& table : tables) {
        TableLines(table, run, text).write();
    }
    return text;
}

}  // namespace mero
