#include <CLI/CLI.hpp>
#include <optional>

#include "component/host/core_variables.h"
#include "component/host/kiln_parser.h"

#include "apps/mero/agents_verb.h"
#include "apps/mero/atomic_file.h"
#include "component/agents/super_agent.h"
#include "platform/language/object_expression.h"
#include "platform/time/calendar_text.h"

namespace mero {

namespace {

/// The texts of an agent, as options give them.
class TextOptions {
public:
    void describe(CLI::App& verb) {
        verb.add_option("--objects", objects, "Measured objects, such as 'all \"Task\"'")
            ->type_name("EXPRESSION");
        auto* const text =
            verb.add_option("--definition", definition, "Definition text: AGENT and its sub-agents")
                ->type_name("TEXT");
        verb.add_option("--definition-file", definitionFile, "File that holds the definition text")
            ->type_name("FILE")
            ->excludes(text);
        verb.add_option("--calendar", calendar, "Calendar text")->type_name("TEXT");
        verb.add_option("--info", info, "Info text")->type_name("TEXT");
    }

    [[nodiscard]] bool any() const {
        return objects || definition || !definitionFile.empty() || calendar || info;
    }

    /// Takes the definition from its file, and refuses texts that can't be read, with the place in them.
    Result<void> prepare() {
        if (!definitionFile.empty()) {
            Result<std::string> read = readWholeFile(definitionFile);
            if (!read) {
                return read.error();
            }
            definition = std::move(read.value());
        }
        if (objects) {
            if (const Result<void> readable = checkObjectExpression(*objects); !readable) {
                return Error{"--objects: " + readable.error().text};
            }
        }
        if (calendar && !calendar->empty()) {
            if (const auto readable = readCalendarText(*calendar); !readable) {
                return Error{"--calendar: " + readable.error().text};
            }
        }
        return checkDefinition();
    }

    std::optional<std::string> objects;
    std::optional<std::string> definition;
    std::optional<std::string> calendar;
    std::optional<std::string> info;

private:
    [[nodiscard]] Result<void> checkDefinition() const {
        if (!definition) {
            return {};
        }
        const std::string source = definitionFile.empty() ? "--definition" : definitionFile;
        MeroKilnParser parser{SV::String(*definition), SV::String(source), SV::String()};
        if (parser.Parse() != 0) {
            return Error{std::string(parser.GetErrorText().view())};
        }
        if (parser.GetElemCount() == 0 || parser.GetKeyword() != SV::String("AGENT")) {
            return Error{source + ": a definition begins with the element AGENT"};
        }
        return {};
    }

    std::string definitionFile;
};

/// Working hours around the clock.
constexpr SV::ResId DefaultCalendar{0x20051A6};

/// Refuses an agent that a run would refuse.
Result<void> requireValid(MeroSuperAgent& agent, AgentsSession& session, int errorsBefore,
                          const std::string& what) {
    constexpr int EmptyListRefused = 0;
    int definition = 0;
    int calendar = 0;
    int objects = 0;
    const int valid = agent.checkAgent(definition, calendar, objects, EmptyListRefused);
    if (valid != StatusOk && objects == 0) {
        return Error{what + ": the expression finds no objects in the model (nothing was changed)"};
    }
    return session.judge(valid == StatusOk ? StatusOk : StatusInvalidAgents, errorsBefore, what);
}

class AddVerb final : public AgentsVerb {
public:
    CLI::App* describe(CLI::App& command) override {
        CLI::App* const verb = command.add_subcommand(
            "add",
            "Example:\n  mero agents shop.mero add --model Order --name Counts --objects 'all \"Activity\"' "
            "\\\n"
            "       --definition 'AGENT path-analysis FREQUENCY name:\"Frequency\" resultscope:mainobjects "
            "absolute'\n\n"
            "Makes an agent in a model.");
        verb->add_option("--model", model, "Model that gets the agent")->required()->type_name("NAME");
        verb->add_option("--name", name, "Name of the agent")->required()->type_name("NAME");
        texts.describe(*verb);
        return verb;
    }
    [[nodiscard]] bool changesRepository() const override { return true; }
    [[nodiscard]] Result<void> checkUsage() const override {
        return texts.objects ? Result<void>() : Error{"--objects is missing: what is the agent to measure?"};
    }

    Result<void> run(AgentsSession& session) override {
        const std::string what = "agent \"" + name + "\"";
        const auto modelId = session.findModel(model);
        if (!modelId) {
            return modelId.error();
        }
        if (Result<void> prepared = texts.prepare(); !prepared) {
            return prepared;
        }
        const MeroId classId = agentClassOf(session.repository(), modelId.value());
        if (session.repository().findObject(modelId.value(), classId, name) != nullptr) {
            return Error{what + ": model \"" + model + "\" has an agent of this name already"};
        }
        MeroKilnParser definition(SV::String(texts.definition.value_or("AGENT")), SV::String("--definition"),
                                  SV::String());
        definition.Parse();
        const int errorsBefore = session.messages().errorCount();
        MeroId agentId = MeroNoId;
        constexpr int NoDialog = 0;
        const int status = session.management().createSuperAgent(
            modelId.value(), classId, agentId, SV::String(*texts.objects), &definition,
            texts.calendar ? SV::String(*texts.calendar) : SV::String(DefaultCalendar),
            SV::String(texts.info.value_or("")), nullptr, NoDialog, SV::String());
        if (Result<void> made = session.judge(status, errorsBefore, what); !made) {
            return made;
        }
        const auto agent = session.open(agentId);
        if (!agent) {
            return agent.error();
        }
        if (Result<void> named = session.judge(agent.value()->setName(SV::String(name)), errorsBefore, what);
            !named) {
            return named;
        }
        return requireValid(*agent.value(), session, errorsBefore, what);
    }

private:
    /// First agent class of the model's kind that can be instantiated.
    static MeroId agentClassOf(const Repository& repository, MeroId modelId) {
        const Library& library = repository.library();
        const Model& model = *repository.findModel(modelId);
        const bool isProcess = library.modelTypes()[model.type].classId == ClassCodeProcessModel;
        const MeroId base = library.coreVariable(isProcess ? CoreProcessAgentBase : CoreEnvironmentAgentBase);
        for (const MeroId classId : library.subClassesOf(base)) {
            if (!library.findClass(classId)->abstract) {
                return classId;
            }
        }
        return MeroNoId;
    }

    std::string model;
    std::string name;
    TextOptions texts;
};

/// A verb on one agent that is there.
class OneAgentVerb : public AgentsVerb {
public:
    [[nodiscard]] bool changesRepository() const override { return true; }

protected:
    void describeAgent(CLI::App& verb) {
        verb.add_option("--name", name, "Name of the agent")->required()->type_name("NAME");
        verb.add_option("--model", model, "Its model, where the name alone isn't enough")->type_name("NAME");
    }
    [[nodiscard]] Result<MeroId> find(const AgentsSession& session) const {
        return session.findAgent(model, name);
    }
    [[nodiscard]] std::string label() const { return "agent \"" + name + "\""; }

private:
    std::string model;
    std::string name;
};

class SetVerb final : public OneAgentVerb {
public:
    CLI::App* describe(CLI::App& command) override {
        CLI::App* const verb = command.add_subcommand(
            "set",
            "Example:\n  mero agents shop.mero set --name Counts --objects '{\"Check\":\"Task\"}'\n\n"
            "Changes texts of an agent; what isn't named stays.");
        describeAgent(*verb);
        texts.describe(*verb);
        verb->add_option("--rename", newName, "New name of the agent")->type_name("NAME");
        return verb;
    }
    [[nodiscard]] Result<void> checkUsage() const override {
        return texts.any() || !newName.empty() ? Result<void>()
                                               : Error{"nothing to set: name a text, such as --definition"};
    }

    Result<void> run(AgentsSession& session) override {
        const auto found = find(session);
        if (!found) {
            return found.error();
        }
        if (Result<void> prepared = texts.prepare(); !prepared) {
            return prepared;
        }
        const auto opened = session.open(found.value());
        if (!opened) {
            return opened.error();
        }
        MeroSuperAgent& agent = *opened.value();
        const int errorsBefore = session.messages().errorCount();
        for (const int status :
             {setDefinition(agent), setObjects(agent), setCalendar(agent), setInfo(agent), rename(agent)}) {
            if (Result<void> done = session.judge(status, errorsBefore, label()); !done) {
                return done;
            }
        }
        return texts.definition || texts.objects ? requireValid(agent, session, errorsBefore, label())
                                                 : Result<void>();
    }

private:
    int setDefinition(MeroSuperAgent& agent) const {
        return texts.definition ? agent.readDefinitionText(SV::String(*texts.definition)) : StatusOk;
    }
    int setObjects(MeroSuperAgent& agent) const {
        return texts.objects ? agent.setObjectsText(SV::String(*texts.objects)) : StatusOk;
    }
    int setCalendar(MeroSuperAgent& agent) const {
        const bool isGood = !texts.calendar || agent.setCalendarText(SV::String(*texts.calendar)) == StatusOk;
        return isGood ? StatusOk : StatusBadCalendar;
    }
    int setInfo(MeroSuperAgent& agent) const {
        const bool isGood = !texts.info || agent.setInfoText(SV::String(*texts.info)) == StatusOk;
        return isGood ? StatusOk : StatusInfoTextNotStored;
    }
    int rename(MeroSuperAgent& agent) const {
        return newName.empty() ? StatusOk : agent.setName(SV::String(newName));
    }

    TextOptions texts;
    std::string newName;
};

class RemoveVerb final : public OneAgentVerb {
public:
    CLI::App* describe(CLI::App& command) override {
        CLI::App* const verb = command.add_subcommand(
            "remove",
            "Example:\n  mero agents shop.mero remove --name Counts\n\nRemoves an agent from its model.");
        describeAgent(*verb);
        return verb;
    }

    Result<void> run(AgentsSession& session) override {
        const auto found = find(session);
        if (!found) {
            return found.error();
        }
        const Object& object = *session.repository().findObject(found.value());
        if (session.repository().findModel(object.modelId)->access == ModelAccess::Read) {
            return session.judge(StatusModelNotWritable, session.messages().errorCount(), label());
        }
        const int status = session.management().deleteSuperAgent(found.value());
        if (Result<void> forgotten = session.judge(status, session.messages().errorCount(), label());
            !forgotten) {
            return forgotten;
        }
        return session.repository().removeObject(found.value());
    }
};

class ActivationVerb final : public OneAgentVerb {
public:
    explicit ActivationVerb(bool isActivation) : activate(isActivation) {}

    CLI::App* describe(CLI::App& command) override {
        const std::string word = activate ? "activate" : "deactivate";
        CLI::App* const verb = command.add_subcommand(
            word, "Example:\n  mero agents shop.mero " + word + " --name Counts\n\n" +
                      (activate ? "Lets an agent take part in runs." : "Keeps an agent out of runs."));
        describeAgent(*verb);
        return verb;
    }

    Result<void> run(AgentsSession& session) override {
        const auto found = find(session);
        if (!found) {
            return found.error();
        }
        const Object& object = *session.repository().findObject(found.value());
        if (session.repository().findModel(object.modelId)->access == ModelAccess::Read) {
            return session.judge(StatusModelNotWritable, session.messages().errorCount(), label());
        }
        const int errorsBefore = session.messages().errorCount();
        return session.judge(session.management().setActivationOfAgent(found.value(), activate ? 1 : 0),
                             errorsBefore, label());
    }

private:
    bool activate;
};

}  // namespace

std::vector<std::unique_ptr<AgentsVerb>> makeChangingVerbs() {
    std::vector<std::unique_ptr<AgentsVerb>> verbs;
    verbs.push_back(std::make_unique<AddVerb>());
    verbs.push_back(std::make_unique<SetVerb>());
    verbs.push_back(std::make_unique<RemoveVerb>());
    verbs.push_back(std::make_unique<ActivationVerb>(true));
    verbs.push_back(std::make_unique<ActivationVerb>(false));
    return verbs;
}

}  // namespace mero
