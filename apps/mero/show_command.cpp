#include "apps/mero/show_command.h"

#include <CLI/CLI.hpp>

#include "apps/mero/atomic_file.h"
#include "apps/mero/document_tables.h"

namespace mero {

CLI::App* ShowCommand::describe(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("show",
                               "Example:\n  mero show frequency.hist\n\n"
                               "Shows a history file or a result document (--results json) as tables.");
    command->add_option("FILE", file, "History file or result document")->required();
    command->add_flag("--ascii", ascii, "Table without box drawing");
    return command;
}

Result<void> ShowCommand::run(Console& console) {
    const Result<std::string> text = readWholeFile(file);
    if (!text) {
        return text.error();
    }
    const CharacterSet characters = ascii ? CharacterSet::Ascii : CharacterSet::BoxDrawing;
    std::vector<TextTable> tables;
    const std::size_t first = text.value().find_first_not_of(" \t\r\n\xef\xbb\xbf");
    if (first != std::string::npos && text.value()[first] == '{') {
        const Result<ResultDocument> document = readResultDocument(text.value(), file);
        if (!document) {
            return document.error();
        }
        tables = tablesOf(document.value(), file, characters);
    } else {
        const Result<HistoryFile> history = readHistoryFile(text.value(), file);
        if (!history) {
            return history.error();
        }
        tables.push_back(tableOf(history.value(), file, characters));
    }
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
    return {};
}

}  // namespace mero
