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

int refuseUsage(const Error& error, const CLI::App& command, const Console& console) {
    console.tell(error.text);
    const std::string name = command.get_name() == "mero" ? "mero" : "mero " + command.get_name();
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

}  // namespace

int runMero(std::span<const std::string> arguments, Console& console) {
    CLI::App program(ProgramHelp, "mero");
    program.require_subcommand(1);
    program.fallthrough();
    std::string language;
    program.add_option("--language", language, "Language of messages and default names, such as en");
    program.set_version_flag("--version", "mero 0.1.0");

    std::vector<std::pair<CLI::App*, std::unique_ptr<Command>>> commands;
    const auto add = [&]<class Kind>(std::in_place_type_t<Kind>) {
        auto command = std::make_unique<Kind>();
        CLI::App* const described = command->describe(program);
        described->fallthrough();
        commands.emplace_back(described, std::move(command));
    };
    add(std::in_place_type<ImportCommand>);
    add(std::in_place_type<ExportCommand>);
    add(std::in_place_type<AgentsCommand>);
    add(std::in_place_type<SimulateCommand>);
    add(std::in_place_type<ReplayCommand>);
    add(std::in_place_type<ShowCommand>);

    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        return program.exit(error, console.out, console.err) == 0 ? ExitDone : ExitWrongUsage;
    }
    const auto chosen = std::find_if(commands.begin(), commands.end(),
                                     [](const auto& entry) { return entry.first->parsed(); });
    if (const Result<void> usable = chooseLanguage(language); !usable) {
        return refuseUsage(usable.error(), program, console);
    }
    if (const Result<void> usable = chosen->second->checkUsage(); !usable) {
        return refuseUsage(usable.error(), *chosen->first, console);
    }
    try {
        return runCommand(*chosen->second, console);
    } catch (const std::bad_alloc&) {
        console.tell("not enough memory");
        return ExitRefused;
    }
}

}  // namespace mero
