#include "apps/mero/html_page.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "apps/mero/html_parts.h"
#include "apps/mero/shown_values.h"

namespace mero {

namespace {

using Column = ResultTable::Column;
using Row = ResultTable::Row;
using RowKind = ResultTable::RowKind;

std::string element(std::string_view name, std::string_view text, std::string_view attributes = {}) {
    return fmt::format("<{}{}>{}</{}>", name, attributes, escapedHtml(text), name);
}

/// Terms and what they are for this run; nothing for an empty value.
class RunFacts {
public:
    void add(std::string_view term, std::string_view value) {
        if (!value.empty()) {
            list += element("dt", term) + element("dd", value) + '\n';
        }
    }
    [[nodiscard]] std::string text() const { return "<dl>\n" + list + "</dl>\n"; }

private:
    std::string list;
};

std::string factsOf(const RunDescription& run) {
    RunFacts facts;
    facts.add("Run", run.title);
    facts.add(run.models.size() == 1 ? "Model" : "Models", fmt::format("{}", fmt::join(run.models, ", ")));
    facts.add("Working environment", run.environment);
    facts.add("Analysis", run.analysis);
    facts.add("Start", run.start);
    facts.add("Time base", timeBaseText(run));
    facts.add("Seed", run.isSimulation ? std::to_string(run.seed) : std::string());
    facts.add("Fingerprint", fmt::format("{:016x}", run.fingerprint));
    facts.add("Rows", run.total ? "one for every object" : "one for every path to an object");
    facts.add("Grouped", groupingText(run));
    facts.add("Scaled", scalingText(run));
    return facts.text();
}

std::string replicationsOf(const RunDescription& run) {
    std::string text = fmt::format(
        "<details><summary>{} replications</summary>\n<div class=\"scroll\"><table>\n"
        "<thead><tr>",
        run.runs.size());
    for (const char* const title :
         {"Replication", "Seed", "Started", "Finished", "Dropped", "Unfinished", "Events", "Fingerprint"}) {
        text += element("th", title, " scope=\"col\"");
    }
    text += "</tr></thead>\n<tbody>\n";
    for (const RunRecord& record : run.runs) {
        text += fmt::format(
            "<tr><th scope=\"row\" class=\"label\">{}</th><td>{}</td><td>{}</td><td>{}</td><td>{}</td><td>{}"
            "</td><td>{}</td><td>{:016x}</td></tr>\n",
            record.replication, record.seed, record.started, record.finished, record.dropped,
            record.unfinished, record.events, record.fingerprint);
    }
    return text + "</tbody></table></div></details>\n";
}

/// One table of the page.
class TablePart {
public:
    TablePart(const ResultTable& shown, const RunDescription& description)
        : table(shown), run(description), columns(shownColumns(shown, description)) {
        for (const std::size_t number : columns) {
            cells.push_back(dressedColumn(number));
        }
    }

    [[nodiscard]] std::string text() const {
        std::string part =
            "<h2>" + escapedHtml(table.agent.text) + ' ' + element("small", "in " + table.model) + "</h2>\n" +
            element("p", contextLine(table, columns, run), " class=\"quiet\"") +
            "\n<div class=\"scroll\"><table class=\"tree\">\n<thead>" + head() + "</thead>\n<tbody>\n";
        RowNumbers numbers;
        bool isBody = true;
        for (std::size_t row = 0; row < table.rows.size(); ++row) {
            const bool isObject = table.rows[row].kind == RowKind::Object;
            if (isBody && !isObject) {
                part += "</tbody>\n<tfoot>\n";
                isBody = false;
            }
            part += line(row, isObject ? numbers.next(table.rows[row].depth) + ' ' : std::string());
        }
        return part + (isBody ? "</tbody>" : "</tfoot>") + "</table></div>\n";
    }

private:
    [[nodiscard]] std::vector<std::string> dressedColumn(std::size_t number) const {
        const Column& column = table.columns[number];
        const bool isTime = column.unit == ResultUnit::Seconds && column.statistic != ResultStatistic::Count;
        std::vector<std::string> texts;
        for (const Row& row : table.rows) {
            texts.push_back(isTime ? durationText(row.cells[number], run)
                                   : cellText(row.cells[number], column, run));
        }
        if (!isTime) {
            alignDecimals(texts);
        }
        return texts;
    }

    /// Measure with unit and scale.
    [[nodiscard]] std::string measureOf(const Column& column) const {
        std::string unit = column.unit == ResultUnit::Seconds ? "time" : "number";
        if (column.scale != 1.0 || table.scale != 1.0) {
            unit += fmt::format(", scale {}", column.scale);
        }
        return escapedHtml(column.measure) + element("span", unit, " class=\"unit\"");
    }

    [[nodiscard]] std::string head() const {
        const bool isReplicated = run.isReplicated;
        std::string first = fmt::format("<tr><th scope=\"col\" class=\"label\"{}>Object</th>",
                                        isReplicated ? " rowspan=\"2\"" : "");
        std::string second = "<tr>";
        for (std::size_t index = 0; index < columns.size();) {
            const Column& column = table.columns[columns[index]];
            std::size_t end = index;
            for (; end < columns.size() && table.columns[columns[end]].position == column.position; ++end) {
                second += element("th", statisticTitle(table.columns[columns[end]].statistic, run.confidence),
                                  " scope=\"col\"");
            }
            first += fmt::format("<th scope=\"{}\" class=\"{}\" colspan=\"{}\" title=\"{}\">{}</th>",
                                 isReplicated ? "colgroup" : "col", isReplicated ? "measure" : "",
                                 end - index, escapedHtml(column.type), measureOf(column));
            index = end;
        }
        return first + "</tr>" + (isReplicated ? second + "</tr>" : "");
    }

    [[nodiscard]] std::string line(std::size_t number, const std::string& rowNumber) const {
        const Row& row = table.rows[number];
        std::string text = fmt::format(
            "<tr data-depth=\"{}\"><th scope=\"row\" class=\"label\" style=\"--depth:{}\">{}</th>", row.depth,
            row.depth, escapedHtml(rowNumber + row.label));
        for (std::size_t index = 0; index < columns.size(); ++index) {
            const double value = row.cells[columns[index]];
            const std::string exact = exactText(value, table.columns[columns[index]], run);
            const std::string& shown = cells[index][number];
            text += exact == shown ? "<td>" : fmt::format("<td title=\"{}\">", escapedHtml(exact));
            text += escapedHtml(shown) + "</td>";
        }
        return text + "</tr>\n";
    }

    const ResultTable& table;
    const RunDescription& run;
    std::vector<std::size_t> columns;             ///< those shown
    std::vector<std::vector<std::string>> cells;  ///< of each column shown, by row
};

std::string picturesBelow(const std::vector<HtmlPicture>& pictures, std::optional<std::size_t> table) {
    std::string text;
    for (const HtmlPicture& picture : pictures) {
        if (picture.table == table) {
            text += "<figure>" + picture.svg + element("figcaption", picture.title) + "</figure>\n";
        }
    }
    return text;
}

}  // namespace

std::string escapedHtml(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        switch (character) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped +=
                    static_cast<unsigned char>(character) < 0x20 || character == 0x7f ? ' ' : character;
        }
    }
    return escaped;
}

std::string writeHtmlPage(const std::vector<ResultTable>& tables, const RunDescription& run,
                          const std::vector<HtmlPicture>& pictures) {
    const std::string title = fmt::format("Results of {}", fmt::join(run.models, ", "));
    std::string page =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
        element("title", title) + "\n<style>";
    page += HtmlPageStyle;
    page += "</style>\n</head>\n<body>\n" + element("h1", title) + '\n' + factsOf(run);
    if (run.isReplicated) {
        page += replicationsOf(run);
    }
    if (tables.empty()) {
        page += element("p", "No agent has results to show.") + '\n';
    }
    for (std::size_t number = 0; number < tables.size(); ++number) {
        page += TablePart(tables[number], run).text() + picturesBelow(pictures, number);
    }
    page += picturesBelow(pictures, std::nullopt) + "<script>";
    page += HtmlPageScript;
    return page + "</script>\n</body>\n</html>\n";
}

}  // namespace mero
