#include "apps/mero/show_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>

#include "apps/mero/atomic_file.h"
#include "apps/mero/document_tables.h"

namespace mero {

CLI::App* ShowCommand::describe(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("show",
                               "Example:\n  mero show frequency.hist\n\n"
                               "Shows a history file, or results written as json, as tables.");
    command->add_option("FILE", file, "History file or results in JSON")->required();
    command->add_flag("--ascii", ascii, "Table without box drawing");
    plots.describe(*command);
    return command;
}

Result<ShowCommand::Content> ShowCommand::readContent(CharacterSet characters) const {
    const Result<std::string> text = readWholeFile(file);
    if (!text) {
        return text.error();
    }
    const std::size_t first = text.value().find_first_not_of(" \t\r\n\xef\xbb\xbf");
    if (first == std::string::npos || text.value()[first] != '{') {
        const Result<HistoryFile> history = readHistoryFile(text.value(), file);
        return history ? Result<Content>(Content{{tableOf(history.value(), file, characters)},
                                                 historiesOf(history.value(), file)})
                       : history.error();
    }
    if (isReplicationDocument(text.value())) {
        const Result<ShownTables> shown = readReplicationDocument(text.value(), file);
        return shown ? Result<Content>(
                           Content{tablesOf(shown.value(), file),
                                   picturesOf(shown.value().tables, shown.value().run, Repository())})
                     : shown.error();
    }
    return readResults(text.value(), characters);
}

Result<ShowCommand::Content> ShowCommand::readResults(const std::string& text,
                                                      CharacterSet characters) const {
    const Result<ResultDocument> document = readResultDocument(text, file);
    if (!document) {
        return document.error();
    }
    const Result<std::optional<ShownTables>> shown = readTablesOfDocument(text, file);
    if (!shown) {
        return shown.error();
    }
    Content content;
    RunDescription run;
    run.title = file;
    if (const auto& asShown = shown.value()) {
        run = asShown->run;
        content = {tablesOf(*asShown, file), picturesOf(asShown->tables, run, Repository())};
        std::ranges::move(historyTablesOf(document.value(), file, characters),
                          std::back_inserter(content.tables));
    } else {
        content = {tablesOf(document.value(), file, characters), chartsOf(document.value(), run)};
    }
    std::ranges::move(historiesOf(document.value(), run), std::back_inserter(content.pictures));
    return content;
}

Result<void> ShowCommand::run(Console& console) {
    if (Result<void> ready = plots.prepare(false, console); !ready) {
        return ready;
    }
    const CharacterSet characters = ascii ? CharacterSet::Ascii : CharacterSet::BoxDrawing;
    const Result<Content> content = readContent(characters);
    if (!content) {
        return content.error();
    }
    const std::vector<TextTable>& tables = content.value().tables;
    bool isFirst = true;
    for (const TextTable& table : tables) {
        if (!isFirst) {
            console.out << '\n';
        }
        isFirst = false;
        printTable(table, console, characters);
    }
    if (tables.empty()) {
        console.tell(file + ": holds no values");
    }
    const auto drawn = plots.draw(content.value().pictures, console);
    return drawn ? Result<void>() : drawn.error();
}

}  // namespace mero
