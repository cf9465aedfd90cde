#include "apps/mero/run_report.h"

#include <fmt/format.h>
#include <string_view>

namespace mero {

namespace {

void printTables(const RunResults& results, const RunOptions& options, const std::string& run,
                 const Console& console) {
    bool isFirst = true;
    for (TextTable table : results.tables) {
        table.headers.insert(table.headers.begin() + 1, "run: " + run);
        if (!isFirst) {
            console.out << '\n';
        }
        isFirst = false;
        printTable(table, console, options.characters());
    }
    if (results.tables.empty()) {
        console.tell(
            results.document.agents.empty()
                ? "the models have no agents, so that nothing was measured; \"mero agents REPO add\" makes "
                  "one"
                : "no agent has results to show in this analysis; \"mero agents REPO check\" tells more");
    }
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

void printResults(const RunResults& results, const RunOptions& options, const std::string& run,
                  const Console& console) {
    switch (options.format) {
        case ResultFormat::Json:
            console.out << writeResultDocument(results.document);
            break;
        case ResultFormat::Csv:
            console.out << writeResultTable(results.document, run);
            break;
        case ResultFormat::Table:
            printTables(results, options, run, console);
            break;
    }
    for (const std::string& file : results.historyFiles) {
        console.tell("history written to " + file);
    }
}

}  // namespace mero
