#include "apps/mero/agents_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "apps/mero/agents_verb.h"
#include "apps/mero/repository_file.h"

namespace mero {

AgentsCommand::AgentsCommand() = default;
AgentsCommand::~AgentsCommand() = default;

CLI::App* AgentsCommand::describe(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "agents",
        "Example:\n  mero agents shop.mero list\n"
        "  mero agents shop.mero add --model Order --name Counts --objects 'all \"Activity\"' \\\n"
        "       --definition 'AGENT path-analysis FREQUENCY name:\"Frequency\" resultscope:mainobjects "
        "absolute'\n\n"
        "Lists, shows and changes the agents of the models. A change is made wholly or not at all.");
    command->add_option("REPO", repositoryFile, "Repository: a .mero file or a repository document")
        ->required();
    command->require_subcommand(1);
    for (auto* const make : {&makeViewingVerbs, &makeChangingVerbs}) {
        for (auto& verb : make()) {
            CLI::App* const described = verb->describe(*command);
            described->fallthrough();
            verbs.emplace_back(described, std::move(verb));
        }
    }
    return command;
}

AgentsVerb& AgentsCommand::chosenVerb() const {
    return *std::find_if(verbs.begin(), verbs.end(), [](const auto& entry) {
                return entry.first->parsed();
            })->second;
}

Result<void> AgentsCommand::checkUsage() const {
    return chosenVerb().checkUsage();
}

Result<void> AgentsCommand::run(Console& console) {
    AgentsVerb& verb = chosenVerb();
    auto file = RepositoryFile::open(
        repositoryFile, verb.changesRepository() ? RepositoryFile::Use::Change : RepositoryFile::Use::Read);
    if (!file) {
        return file.error();
    }
    {
        AgentsSession session(file.value()->repository(), console);
        if (Result<void> done = verb.run(session); !done) {
            return done;
        }
    }
    return verb.changesRepository() ? file.value()->save() : Result<void>();
}

}  // namespace mero
