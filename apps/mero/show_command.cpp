#include "apps/mero/show_command.h"

#include <CLI/CLI.hpp>

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
    return command;
}

Result<std::vector<TextTable>> ShowCommand::readTables(CharacterSet characters) const {
    const Result<std::string> text = readWholeFile(file);
    if (!text) {
        return text.error();
    }
    const std::size_t first = text.value().find_first_not_of(" \t\r\n\xef\xbb\xbf");
    if (first == std::string::npos || text.value()[first] != '{') {
        const Result<HistoryFile> history = readHistoryFile(text.value(), file);
        return history ? Result<std::vector<TextTable>>({tableOf(history.value(), file, characters)})
                       : history.error();
    }
    if (isReplicationDocument(text.value())) {
        const Result<ReplicationDocument> document = readReplicationDocument(text.value(), file);
        return document ? Result<std::vector<TextTable>>(tablesOf(document.value(), file)) : document.error();
    }
    const Result<ResultDocument> document = readResultDocument(text.value(), file);
    return document ? Result<std::vector<TextTable>>(tablesOf(document.value(), file, characters))
                    : document.error();
}

Result<void> ShowCommand::run(Console& console) {
    const CharacterSet characters = ascii ? CharacterSet::Ascii : CharacterSet::BoxDrawing;
    const Result<std::vector<TextTable>> tables = readTables(characters);
    if (!tables) {
        return tables.error();
    }
    bool isFirst = true;
    for (const TextTable& table : tables.value()) {
        if (!isFirst) {
            console.out << '\n';
        }
        isFirst = false;
        printTable(table, console, characters);
    }
    if (tables.value().empty()) {
        console.tell(file + ": holds no values");
    }
    return {};
}

}  // namespace mero
