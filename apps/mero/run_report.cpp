#include "apps/mero/run_report.h"

#include <fmt/format.h>
#include <string_view>

#include "apps/mero/html_page.h"
#include "apps/mero/shown_values.h"

namespace mero {

namespace {

void printTables(const RunResults& results, const RunOptions& options, const RunDescription& run,
                 const Console& console) {
    bool isFirst = true;
    for (const ResultTable& table : results.tables) {
        if (!isFirst) {
            console.out << '\n';
        }
        isFirst = false;
        printTable(textTableOf(table, run), console, options.characters());
    }
}

/// Results that hold nothing are told in the user's words, whatever their form.
void tellEmptyResults(const RunResults& results, const Console& console) {
    console.tell(
        results.document.agents.empty()
            ? "the models have no agents, so that nothing was measured; \"mero agents REPO add\" makes "
              "one"
            : "no agent has results to show in this analysis; \"mero agents REPO check\" tells more");
}

std::string jsonOf(const RunResults& results, const RunOptions& options, const RunDescription& run) {
    return options.showsTables() ? writeResultDocument(results.document, results.tables, run)
                                 : writeResultDocument(results.document);
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

void printResults(const RunResults& results, const RunOptions& options, const RunDescription& run,
                  const Console& console) {
    switch (options.format) {
        case ResultFormat::Json:
            console.out << jsonOf(results, options, run);
            break;
        case ResultFormat::Csv:
            console.out << writeResultCsv(results.tables, run);
            break;
        case ResultFormat::Html:
            console.out << writeHtmlPage(results.tables, run);
            break;
        case ResultFormat::Table:
            printTables(results, options, run, console);
            break;
    }
    if (options.showsTables() && results.tables.empty()) {
        tellEmptyResults(results, console);
    }
    for (const std::string& file : results.historyFiles) {
        console.tell("history written to " + file);
    }
}

}  // namespace mero
