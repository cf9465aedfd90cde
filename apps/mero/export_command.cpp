#include "apps/mero/export_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>

#include "apps/mero/atomic_file.h"
#include "apps/mero/repository_file.h"
#include "platform/interchange/repository_document.h"

namespace mero {

CLI::App* ExportCommand::describe(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "export",
        "Example:\n  mero export shop.mero shop.json\n\n"
        "Writes a repository as a document (JSON); a FILE that ends with .mero becomes a repository\n"
        "of its own. \"-\" is standard output.");
    command->add_option("REPO", repositoryFile, "Repository: a .mero file or a repository document")
        ->required();
    command->add_option("FILE", targetFile, "File to write")->required();
    return command;
}

Result<void> ExportCommand::run(Console& console) {
    const auto source = RepositoryFile::open(repositoryFile, RepositoryFile::Use::Read);
    if (!source) {
        return source.error();
    }
    const std::string document = writeRepositoryDocument(source.value()->repository());
    if (targetFile == "-") {
        console.out << document;
        return {};
    }
    if (std::filesystem::path(targetFile).extension() != ".mero") {
        return writeFileAtomically(targetFile, document);
    }
    std::error_code status;
    if (std::filesystem::exists(targetFile, status)) {
        return Error{targetFile + ": is there already; \"mero import\" adds to a repository"};
    }
    const auto target = RepositoryFile::open(targetFile, RepositoryFile::Use::Create);
    if (!target) {
        return target.error();
    }
    if (Result<void> copied = readRepositoryDocument(document, repositoryFile, target.value()->repository());
        !copied) {
        return copied;
    }
    return target.value()->save();
}

}  // namespace mero
