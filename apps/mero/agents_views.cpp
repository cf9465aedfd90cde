#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "apps/mero/agent_definitions.h"
#include "apps/mero/agents_verb.h"
#include "apps/mero/measure_notes.h"
#include "apps/mero/text_table.h"
#include "component/agents/super_agent.h"
#include "platform/language/object_expression.h"
#include "platform/time/calendar_text.h"

namespace mero {

namespace {

/// Answers of `MeroSuperAgent::checkAgent`.
struct AgentCheck {
    int valid = 0;
    int definition = 0;
    int calendar = 0;
    int objects = 0;
};

/// As a run checks agents: an empty list of objects is a fault.
AgentCheck checkAgent(MeroSuperAgent& agent) {
    constexpr int EmptyListRefused = 0;
    AgentCheck check;
    check.valid = agent.checkAgent(check.definition, check.calendar, check.objects, EmptyListRefused);
    return check;
}

/// "the list of objects", "… , column 7: …": why the objects aren't good.
std::string objectsFault(MeroSuperAgent& agent) {
    SV::String text;
    agent.getObjectsText(text);
    const Result<void> readable = checkObjectExpression(text.view());
    if (!readable) {
        return "objects: " + readable.error().text;
    }
    ISortedSet<MeroId> objects;
    return agent.evaluateObjects(objects) == StatusOk
               ? "objects: the expression finds nothing in the model"
               : "objects: the expression names a class or attribute that "
                 "isn't known";
}

std::string calendarFault(MeroSuperAgent& agent) {
    SV::String text;
    agent.getCalendarText(text);
    const Result<WorkingCalendar> calendar = readCalendarText(text.view());
    return "calendar: " + (calendar ? std::string("can't be used") : calendar.error().text);
}

class ListVerb final : public AgentsVerb {
public:
    CLI::App* describe(CLI::App& command) override {
        CLI::App* const verb = command.add_subcommand(
            "list",
            "Example:\n  mero agents shop.mero list\n\nLists agents with their state and sub-agents.");
        verb->add_option("--model", model, "Agents of this model alone")->type_name("NAME");
        verb->add_flag("--ascii", ascii, "Table without box drawing");
        return verb;
    }
    [[nodiscard]] bool changesRepository() const override { return false; }

    Result<void> run(AgentsSession& session) override {
        const auto agents = session.findAgents(model);
        if (!agents) {
            return agents.error();
        }
        TextTable table;
        table.labelTitle = "Agent";
        table.columns = {"Model", "State", "Sub-agents"};
        table.leftAlignedCells = true;
        for (const MeroId agentId : agents.value()) {
            session.messages().setContext(session.nameOf(agentId) + ": ");
            const auto agent = session.open(agentId);
            if (!agent) {
                return agent.error();
            }
            const AgentCheck check = checkAgent(*agent.value());
            const std::string activity = agent.value()->getActivation() != 0 ? "active" : "inactive";
            table.rows.push_back(
                {0,
                 session.nameOf(agentId),
                 {session.modelNameOf(agentId), check.valid == StatusOk ? activity : activity + ", invalid",
                  subAgentsOf(*agent.value())}});
        }
        if (table.rows.empty()) {
            session.console().tell("no agents yet; \"mero agents REPO add\" makes one");
            return {};
        }
        printTable(table, session.console(), ascii ? CharacterSet::Ascii : CharacterSet::BoxDrawing);
        return {};
    }

private:
    static std::string subAgentsOf(MeroSuperAgent& agent) {
        SV::String definition;
        std::string names;
        for (const SubAgentSection& section : sectionsOf(agent.getDefinitionText(definition).view())) {
            names += (names.empty() ? "" : ", ") + section.name;
        }
        return names.empty() ? "-" : names;
    }

    std::string model;
    bool ascii = false;
};

class ShowVerb final : public AgentsVerb {
public:
    CLI::App* describe(CLI::App& command) override {
        CLI::App* const verb = command.add_subcommand(
            "show", "Example:\n  mero agents shop.mero show --name Counts\n\nShows the texts of an agent.");
        verb->add_option("--name", name, "Name of the agent")->required()->type_name("NAME");
        verb->add_option("--model", model, "Its model, where the name alone isn't enough")->type_name("NAME");
        return verb;
    }
    [[nodiscard]] bool changesRepository() const override { return false; }

    Result<void> run(AgentsSession& session) override {
        const auto found = session.findAgent(model, name);
        if (!found) {
            return found.error();
        }
        const auto agent = session.open(found.value());
        if (!agent) {
            return agent.error();
        }
        SV::String text;
        auto& out = session.console().out;
        out << "Agent: " << name << "\nModel: " << session.modelNameOf(found.value())
            << "\nState: " << (agent.value()->getActivation() != 0 ? "active" : "inactive") << '\n';
        print(out, "Definition", agent.value()->getDefinitionText(text));
        print(out, "Objects", agent.value()->getObjectsText(text));
        print(out, "Calendar", agent.value()->getCalendarText(text));
        print(out, "Info text", agent.value()->getInfoText(text));
        return {};
    }

private:
    static void print(std::ostream& out, const char* title, const SV::String& text) {
        out << '\n' << title << ":\n";
        std::string_view rest = text.view();
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            out << "  " << rest.substr(0, end) << '\n';
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }

    std::string model;
    std::string name;
};

class CheckVerb final : public AgentsVerb {
public:
    CLI::App* describe(CLI::App& command) override {
        CLI::App* const verb =
            command.add_subcommand("check",
                                   "Example:\n  mero agents shop.mero check\n\n"
                                   "Tells which agents aren't valid, where their texts are wrong, and "
                                   "which measures can't be measured. Exit status 1 if there is one.");
        verb->add_option("--model", model, "Agents of this model alone")->type_name("NAME");
        return verb;
    }
    [[nodiscard]] bool changesRepository() const override { return false; }

    Result<void> run(AgentsSession& session) override {
        const auto agents = session.findAgents(model);
        if (!agents) {
            return agents.error();
        }
        std::size_t invalid = 0;
        std::size_t incomplete = 0;
        for (const MeroId agentId : agents.value()) {
            const Result<bool> valid = check(session, agentId);
            if (!valid) {
                return valid.error();
            }
            invalid += valid.value() ? 0 : 1;
            incomplete += valid.value() && tellFaults(session, agentId) ? 1 : 0;
        }
        if (invalid > 0) {
            return Error{std::to_string(invalid) + " of " + std::to_string(agents.value().size()) +
                         " agents aren't valid"};
        }
        if (incomplete > 0) {
            return Error{std::to_string(incomplete) + " of " + std::to_string(agents.value().size()) +
                         " agents have measures that no run measures"};
        }
        const std::size_t count = agents.value().size();
        session.console().out << count << (count == 1 ? " agent, valid\n" : " agents, all valid\n");
        return {};
    }

private:
    /// Tells what no run measures. False if there is nothing to tell.
    static bool tellFaults(AgentsSession& session, MeroId agentId) {
        const auto agent = session.open(agentId);
        if (!agent) {
            return false;
        }
        SV::String definition;
        const auto faults = measureFaultsOf(agent.value()->getDefinitionText(definition).view(),
                                            session.repository().library());
        for (const MeasureFault& fault : faults) {
            session.console().tell(fmt::format("{} / {}: measure \"{}\" can't be measured: {}",
                                               session.modelNameOf(agentId), session.nameOf(agentId),
                                               fault.measure, fault.reason));
        }
        return !faults.empty();
    }

    static Result<bool> check(AgentsSession& session, MeroId agentId) {
        const std::string label = session.modelNameOf(agentId) + " / " + session.nameOf(agentId) + ": ";
        session.messages().setContext(label);
        const int errorsBefore = session.messages().errorCount();
        const auto agent = session.open(agentId);
        if (!agent) {
            return agent.error();
        }
        const AgentCheck answers = checkAgent(*agent.value());
        if (answers.calendar == 0) {
            session.console().tell(label + calendarFault(*agent.value()));
        }
        if (answers.objects == 0) {
            session.console().tell(label + objectsFault(*agent.value()));
        }
        if (answers.definition == 0) {
            session.console().tell(label + "definition: can't be used");
        }
        return answers.valid == StatusOk && session.messages().errorCount() == errorsBefore;
    }

    std::string model;
};

}  // namespace

std::vector<std::unique_ptr<AgentsVerb>> makeViewingVerbs() {
    std::vector<std::unique_ptr<AgentsVerb>> verbs;
    verbs.push_back(std::make_unique<ListVerb>());
    verbs.push_back(std::make_unique<ShowVerb>());
    verbs.push_back(std::make_unique<CheckVerb>());
    return verbs;
}

}  // namespace mero
