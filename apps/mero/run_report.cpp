#include "apps/mero/run_report.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <string_view>

#include "apps/mero/html_page.h"
#include "apps/mero/result_pictures.h"
#include "apps/mero/shown_values.h"

namespace mero {

namespace {

void printTables(const std::vector<ResultTable>& tables, const RunDescription& run, const RunOptions& options,
                 const Console& console) {
    bool isFirst = true;
    for (const ResultTable& table : tables) {
        for (const TextTable& text : textTablesOf(table, run)) {
            if (!isFirst) {
                console.out << '\n';
            }
            isFirst = false;
            printTable(text, console, options.characters());
        }
    }
}

/// What there is to say when nothing can be shown.
enum class EmptyResults { NoAgents, Unexplained, Explained };

const char* textOf(EmptyResults reason) {
    switch (reason) {
        case EmptyResults::NoAgents:
            return "the models have no agents, so that nothing was measured; \"mero agents REPO add\" makes "
                   "one";
        case EmptyResults::Unexplained:
            return "no agent has results to show in this analysis; \"mero agents REPO check\" tells more";
        case EmptyResults::Explained:
            break;
    }
    return "no agent has results to show in this analysis";
}

/// `json` makes the text of that form.
template <class Json>
Result<void> printShown(const std::vector<ResultTable>& tables, EmptyResults whenEmpty,
                        const RunDescription& run, const RunOptions& options,
                        const std::vector<ResultPicture>& pictures, const Console& console, Json json) {
    const auto drawn = options.plots.draw(pictures, console);
    switch (options.format) {
        case ResultFormat::Json:
            console.out << json();
            break;
        case ResultFormat::Csv:
            console.out << writeResultCsv(tables, run);
            break;
        case ResultFormat::Html:
            console.out << writeHtmlPage(tables, run, drawn ? drawn.value() : std::vector<HtmlPicture>{});
            break;
        case ResultFormat::Table:
            printTables(tables, run, options, console);
            break;
    }
    if (options.needsTables() && tables.empty()) {
        console.tell(textOf(whenEmpty));
    }
    return drawn ? Result<void>() : drawn.error();
}

}  // namespace

void RunTiming::endStage() {
    if (!stages.empty()) {
        stages.back().seconds = std::chrono::duration<double>(Clock::now() - started).count();
    }
}

void RunTiming::begin(const char* stage) {
    endStage();
    stages.push_back({stage, 0.0});
    started = Clock::now();
}

void RunTiming::tell(std::uint64_t events, const Console& console) {
    endStage();
    for (const Stage& stage : stages) {
        console.err << fmt::format("{}: {:.3f} s", stage.name, stage.seconds);
        if (std::string_view(stage.name) == "run" && stage.seconds > 0.0) {
            console.err << fmt::format(", {} events, {:.0f} events a second", events,
                                       static_cast<double>(events) / stage.seconds);
        }
        console.err << '\n';
    }
}

Result<void> printResults(const RunResults& results, const RunOptions& options, const RunDescription& run,
                          const Repository& repository, const Console& console) {
    std::vector<ResultPicture> pictures;
    if (options.plots.draws()) {
        pictures = picturesOf(results.tables, run, repository);
        std::ranges::move(historiesOf(results.document, run), std::back_inserter(pictures));
    }
    const EmptyResults whenEmpty = results.document.agents.empty() ? EmptyResults::NoAgents
                                   : results.areGapsExplained      ? EmptyResults::Explained
                                                                   : EmptyResults::Unexplained;
    Result<void> printed = printShown(results.tables, whenEmpty, run, options, pictures, console, [&] {
        return options.showsTables() ? writeResultDocument(results.document, results.tables, run)
                                     : writeResultDocument(results.document);
    });
    for (const std::string& file : results.historyFiles) {
        console.tell("history written to " + file);
    }
    return printed;
}

Result<void> printReplications(const std::vector<ResultTable>& tables, bool hasAgents,
                               const RunOptions& options, const RunDescription& run,
                               const Repository& repository, const Console& console) {
    const auto pictures =
        options.plots.draws() ? picturesOf(tables, run, repository) : std::vector<ResultPicture>{};
    return printShown(tables, hasAgents ? EmptyResults::Unexplained : EmptyResults::NoAgents, run, options,
                      pictures, console, [&] { return writeReplicationDocument(tables, run); });
}

}  // namespace mero
