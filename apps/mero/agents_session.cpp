#include "apps/mero/agents_session.h"

#include <fmt/format.h>

#include "component/agents/super_agent.h"
#include "platform/toolkit/internal_errors.h"

namespace mero {

namespace {

std::string reasonOf(int status) {
    switch (status) {
        case StatusModelNotWritable:
            return "the model is open for reading only";
        case StatusTextTooLong:
            return "the text is longer than 3600 characters";
        case StatusNameInUse:
            return "the name is in use";
        case StatusInvalidAgents:
            return "the agent would not be valid";
        case StatusBadCalendar:
            return "the calendar can't be stored";
        case StatusInfoTextNotStored:
            return "the info text can't be stored";
        case StatusBadDefinition:
            return "the definition can't be read";
        case StatusRepositoryError:
            return "the repository refused it";
        default:
            return fmt::format("refused (status {})", status);
    }
}

}  // namespace

AgentsSession::AgentsSession(Repository& models, const Console& console)
    : content(models), target(console), printer(console), services(models) {}

std::string AgentsSession::nameOf(MeroId id) const {
    if (const Model* const model = content.findModel(id)) {
        return std::string(model->name.view());
    }
    const Object* const object = content.findObject(id);
    return object != nullptr ? std::string(object->name.view()) : std::string();
}

std::string AgentsSession::modelNameOf(MeroId objectId) const {
    const Object* const object = content.findObject(objectId);
    return object != nullptr ? nameOf(object->modelId) : std::string();
}

Result<MeroId> AgentsSession::findModel(const std::string& model) const {
    const Model* const found = content.findModel(model);
    if (found == nullptr) {
        return Error{"there is no model \"" + model + "\" in the repository"};
    }
    return found->id;
}

Result<std::vector<MeroId>> AgentsSession::findAgents(const std::string& model) const {
    std::vector<MeroId> models = content.modelIds();
    if (!model.empty()) {
        const Result<MeroId> one = findModel(model);
        if (!one) {
            return one.error();
        }
        models = {one.value()};
    }
    std::vector<MeroId> found;
    for (const MeroId modelId : models) {
        for (const MeroId objectId : content.findModel(modelId)->objects) {
            const Library::Class* const kind =
                content.library().findClass(content.findObject(objectId)->classId);
            if (kind != nullptr && kind->agent) {
                found.push_back(objectId);
            }
        }
    }
    return found;
}

Result<MeroId> AgentsSession::findAgent(const std::string& model, const std::string& name) const {
    const Result<std::vector<MeroId>> all = findAgents(model);
    if (!all) {
        return all.error();
    }
    MeroId found = MeroNoId;
    for (const MeroId agentId : all.value()) {
        if (nameOf(agentId) != name) {
            continue;
        }
        if (found != MeroNoId) {
            return Error{"there are agents \"" + name + "\" in the models \"" + modelNameOf(found) +
                         "\" and \"" + modelNameOf(agentId) + "\"; --model tells which one is meant"};
        }
        found = agentId;
    }
    if (found == MeroNoId) {
        return Error{"there is no agent \"" + name + "\"" +
                     (model.empty() ? std::string() : " in model \"" + model + "\"") +
                     "; \"mero agents REPO list\" shows all"};
    }
    return found;
}

Result<MeroSuperAgent*> AgentsSession::open(MeroId agentId) {
    MeroSuperAgent* agent = nullptr;
    constexpr int Create = 1;
    if (agents.getAgentFromID(agent, agentId, Create) != StatusOk || agent == nullptr) {
        return Error{"agent \"" + nameOf(agentId) + "\" can't be read"};
    }
    return agent;
}

Result<void> AgentsSession::judge(int status, int errorsBefore, const std::string& what) const {
    if (status == StatusOk && printer.errorCount() == errorsBefore) {
        return {};
    }
    return Error{what + ": " +
                 (status == StatusOk ? std::string("the text has the faults told above") : reasonOf(status)) +
                 " (nothing was changed)"};
}

}  // namespace mero
