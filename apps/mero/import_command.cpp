#include "apps/mero/import_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fmt/format.h>

#include "apps/mero/file_import.h"
#include "apps/mero/repository_file.h"

namespace mero {

namespace {

void describeModel(const Repository& repository, MeroId id, const Console& console) {
    const Model& model = *repository.findModel(id);
    std::size_t elements = 0;
    std::size_t agents = 0;
    for (const MeroId objectId : model.objects) {
        const Object* const object = repository.findObject(objectId);
        const Library::Class* const kind = repository.library().findClass(object->classId);
        ++(kind != nullptr && kind->agent ? agents : elements);
    }
    console.out << fmt::format("  {} \"{}\": {} elements, {} relations",
                               repository.library().modelTypes()[model.type].name, model.name.view(),
                               elements, model.relations.size());
    if (agents > 0) {
        console.out << fmt::format(", {} agents", agents);
    }
    console.out << '\n';
}

void describeImport(const ImportReport& report, const Repository& repository, const Console& console) {
    for (const MeroId model : report.models) {
        describeModel(repository, model, console);
    }
    if (report.environment != MeroNoId) {
        describeModel(repository, report.environment, console);
    }
    if (!report.runOptions.empty()) {
        console.out << "  Options of a run that say the same: " << report.runOptions << '\n';
    }
    if (!report.notes.empty()) {
        console.out << "  Not executed as the file has it:\n";
    }
    for (const ImportNote& note : report.notes) {
        console.out << "    " << noteText(note) << '\n';
    }
}

}  // namespace

CLI::App* ImportCommand::describe(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "import",
        "Example:\n  mero import shop.mero order.bpmn --parameters order.json\n\n"
        "Adds the processes of BPMN 2.0 files, the models of repository documents, or the activities and\n"
        "workers of XES event logs (.xes, .xes.gz) to a repository, which is made if it isn't there.\n"
        "Either everything is added or nothing.");
    command->add_option("REPO", repositoryFile, "Repository: a .mero file or a repository document")
        ->required();
    command->add_option("FILE", files, "BPMN 2.0 files, repository documents and event logs")->required();
    command
        ->add_option("--parameters", parametersFiles,
                     "Simulation parameters of the one BPMN file: a Prosimos document (JSON), or Scylla\n"
                     "configurations (XML, global and simulation; repeat the option)")
        ->allow_extra_args(false)
        ->type_name("FILE");
    return command;
}

Result<void> ImportCommand::run(Console& console) {
    if (!parametersFiles.empty() && files.size() > 1) {
        return Error{"--parameters belongs to one BPMN file; import the files one by one"};
    }
    auto file = RepositoryFile::open(repositoryFile, RepositoryFile::Use::Create);
    if (!file) {
        return file.error();
    }
    for (const std::string& name : files) {
        Repository& repository = file.value()->repository();
        const Result<ImportReport> report = importFile(name, parametersFiles, repository);
        if (!report) {
            return Error{report.error().text + " (nothing was imported)"};
        }
        console.out << name << ":\n";
        describeImport(report.value(), repository, console);
    }
    return file.value()->save();
}

}  // namespace mero
