#include "apps/mero/run_mero.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "apps/mero/agents_command.h"
#include "apps/mero/export_command.h"
#include "apps/mero/import_command.h"
#include "apps/mero/replay_command.h"
#include "apps/mero/show_command.h"
#include "apps/mero/simulate_command.h"
#include "platform/resources/messages.h"

namespace mero {

namespace {

constexpr const char* ProgramHelp =
    "Example:\n"
    "  mero import shop.mero order.bpmn\n"
    "  mero agents shop.mero add --model Order --name Counts --objects 'all \"Activity\"' \\\n"
    "       --definition 'AGENT path-analysis FREQUENCY name:\"Frequency\" resultscope:mainobjects "
    "absolute'\n"
    "  mero simulate shop.mero --models Order --instances 1000\n\n"
    "Measures business processes: agents in the models watch a simulated or recorded run.\n"
    "Results go to standard output, messages to standard error. Exit status: 0 done, 1 refused\n"
    "with the reason, 2 wrong usage.";

constexpr const char* ReplicationsHelp =
    "Example:\n"
    "  mpirun -n 4 mero-mpi simulate shop.mero --models Order --instances 1000 --replications 100\n\n"
    "Shares the replications of a simulation out to the ranks of an MPI job. All ranks read the same\n"
    "repository; rank 0 prints. The results are those of \"mero simulate --replications\", byte for byte.";

/// Locale that the environment asks for, by the rules of POSIX.
std::string localeOfEnvironment() {
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "en";
}

/// Messages in the language asked for; without one in that of the environment if there is a catalogue of it,
/// else in English.
Result<void> chooseLanguage(const std::string& language) {
    if (!language.empty()) {
        if (setLanguage(language)) {
            return {};
        }
        std::string known;
        for (const std::string_view code : availableLanguages()) {
            known += (known.empty() ? "" : ", ") + std::string(code);
        }
        return Error{"--language: no texts in \"" + language + "\" (there are: " + known + ")"};
    }
    if (!setLanguage(localeOfEnvironment())) {
        setLanguage("en");
    }
    return {};
}

int refuseUsage(const Error& error, const CLI::App& program, const CLI::App& command,
                const Console& console) {
    console.tell(error.text);
    const std::string name =
        &command == &program ? program.get_name() : program.get_name() + ' ' + command.get_name();
    console.err << "Run \"" << name << " --help\" for an example and all options.\n";
    return ExitWrongUsage;
}

int runCommand(Command& command, Console& console) {
    const Result<void> done = command.run(console);
    console.out.flush();
    if (!done) {
        console.tell(done.error().text);
        return ExitRefused;
    }
    if (!console.out) {
        console.tell("standard output: the results couldn't be written");
        return ExitRefused;
    }
    return ExitDone;
}

/// A program of several commands.
class Program {
public:
    Program(const char* help, const char* name) : app(help, name) {
        app.require_subcommand(1);
        app.fallthrough();
        app.add_option("--language", language, "Language of messages and default names, such as en");
        app.set_version_flag("--version", std::string(name) + " 0.1.0");
    }

    void add(std::unique_ptr<Command> command) {
        CLI::App* const described = command->describe(app);
        described->fallthrough();
        commands.emplace_back(described, std::move(command));
    }

    int run(std::span<const std::string> arguments, Console& console) {
        try {
            app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::ParseError& error) {
            return app.exit(error, console.out, console.err) == 0 ? ExitDone : ExitWrongUsage;
        }
        const auto chosen = std::find_if(commands.begin(), commands.end(),
                                         [](const auto& entry) { return entry.first->parsed(); });
        if (const Result<void> usable = chooseLanguage(language); !usable) {
            return refuseUsage(usable.error(), app, app, console);
        }
        if (const Result<void> usable = chosen->second->checkUsage(); !usable) {
            return refuseUsage(usable.error(), app, *chosen->first, console);
        }
        try {
            return runCommand(*chosen->second, console);
        } catch (const std::bad_alloc&) {
            console.tell("not enough memory");
            return ExitRefused;
        }
    }

private:
    CLI::App app;
    std::string language;
    std::vector<std::pair<CLI::App*, std::unique_ptr<Command>>> commands;
};

}  // namespace

int runMero(std::span<const std::string> arguments, Console& console) {
    Program program(ProgramHelp, "mero");
    program.add(std::make_unique<ImportCommand>());
    program.add(std::make_unique<ExportCommand>());
    program.add(std::make_unique<AgentsCommand>());
    program.add(std::make_unique<SimulateCommand>());
    program.add(std::make_unique<ReplayCommand>());
    program.add(std::make_unique<ShowCommand>());
    return program.run(arguments, console);
}

int runMeroReplications(std::span<const std::string> arguments, Console& console,
                        ReplicationTransport& transport) {
    Program program(ReplicationsHelp, "mero-mpi");
    program.add(std::make_unique<SimulateCommand>(transport));
    return program.run(arguments, console);
}

}  // namespace mero
