#include <cstdint>
#include <limits>
#include <memory>

#include "component/host/basic_services.h"

#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "component/management/agent_queries.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"

namespace {

constexpr SV::ResId MessageCreationWithoutAccess(0x20051C4);
constexpr SV::ResId MessageConfigurationWithoutAccess(0x20051C8);

constexpr bool NotForWriting = false;
constexpr bool RefuseLoads = true;

/// Distance of the numbers that are tried for a name.
constexpr std::int64_t NameNumberStep = 3;

/// Shows `message` if the model isn't open for writing. 15, after an internal error, if that can't be told.
int warnWithoutWriteAccess(MeroId modelId, SV::ResId message, SV::Window* parent) {
    MeroCoreAccessMode mode = AccessNone;
    if (!repositoryDoes(
            [&](auto& repository) { return repository.enhanced().getAccessMode(modelId, mode); })) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    if (mode != AccessWrite) {
        showInfoBox(SV::String(message), parent);
    }
    return StatusOk;
}

/// Smallest of the classes below the agent class of the model's kind.
int findAgentClass(MeroId modelId, MeroId& classId) {
    MeroId modelClassId = MeroNoId;
    if (!repositoryDoes(
            [&](auto& repository) { return repository.enhanced().classOf(modelId, modelClassId); })) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    if (modelClassId != ClassCodeEnvironmentModel && modelClassId != ClassCodeProcessModel) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRefused;
    }
    const MeroCoreVarType base =
        modelClassId == ClassCodeEnvironmentModel ? CoreEnvironmentAgentBase : CoreProcessAgentBase;
    ISortedSet<MeroId> classes;
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().getAllSubClasses(Mero_GetCoreVar(base), classes);
        })) {
        return StatusRepositoryError;
    }
    if (classes.empty()) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRefused;
    }
    classId = classes[0];
    return StatusOk;
}

/// Adds the sub-process models of each model, as far as they are loaded.
bool addLoadedSubProcesses(ISortedSet<MeroId>& models) {
    const ISortedSet<MeroId> mains = models;
    for (const MeroId modelId : mains) {
        if (!repositoryDoes([&](auto& repository) {
                return repository.enhanced().getSubprocessInformationLoadedModels(modelId, models, false);
            })) {
            return false;
        }
    }
    return true;
}

}  // namespace

int MeroAgentManagement::checkEditable() const {
    if (!initialised) {
        return StatusNotInitialised;
    }
    return running ? StatusRefusedInRun : StatusOk;
}

int MeroAgentManagement::newSuperAgent(const MeroId& agentId, const SV::String& objects, SV::Window* parent,
                                       const int& configure) {
    if (const int status = checkEditable(); status != StatusOk) {
        return status;
    }
    MeroSuperAgent* const agent = ensureSuperAgent(agentId);
    if (agent == nullptr) {
        return StatusRepositoryError;
    }
    if (!objects.IsEmpty()) {
        if (const int status = agent->setObjectsText(objects); status != StatusOk) {
            displayErrorMessage(MeroManagementModule, __LINE__);
            return status;
        }
    }
    return finishCreation(*agent, parent, configure);
}

int MeroAgentManagement::newSuperAgent(const MeroId& agentId, const SV::String& objects,
                                       MeroKilnParser* definition, const SV::String& calendar,
                                       const SV::String& infoText, SV::Window* parent, const int& configure) {
    if (const int status = checkEditable(); status != StatusOk) {
        return status;
    }
    MeroSuperAgent* const agent = ensureSuperAgent(agentId);
    if (agent == nullptr) {
        return StatusRepositoryError;
    }
    if (const int status = agent->setObjectsText(objects); status != StatusOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return status;
    }
    if (const int status = agent->readDefinition(definition); status != StatusOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return status;
    }
    if (agent->setCalendarText(calendar) != StatusOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusBadCalendar;
    }
    if (agent->setInfoText(infoText) != StatusOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusInfoTextNotStored;
    }
    return finishCreation(*agent, parent, configure);
}

int MeroAgentManagement::finishCreation(MeroSuperAgent& agent, SV::Window* parent, int configure) {
    if (!isAgentValid(agent, MeroEmptyObjects::Accepted)) {
        return showStatusMessage(StatusInvalidAgents, parent);
    }
    return configure == 0 ? StatusOk : StatusRefused;
}

int MeroAgentManagement::createSuperAgent(const MeroId& modelId, MeroId& agentId, const SV::String& objects,
                                          SV::Window* parent, const int& configure) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    MeroId classId = MeroNoId;
    if (const int status = findAgentClass(modelId, classId); status != StatusOk) {
        return status;
    }
    return createSuperAgent(modelId, classId, agentId, objects, parent, configure);
}

int MeroAgentManagement::createSuperAgent(const MeroId& modelId, const MeroId& classId, MeroId& agentId,
                                          const SV::String& objects, SV::Window* parent,
                                          const int& configure) {
    if (const int status = makeInstance(modelId, classId, agentId, parent); status != StatusOk) {
        return status;
    }
    const int status = newSuperAgent(agentId, objects, parent, configure);
    return status == StatusOk ? status : undoCreation(modelId, agentId, status);
}

int MeroAgentManagement::createSuperAgent(const MeroId& modelId, const MeroId& classId, MeroId& agentId,
                                          const SV::String& objects, MeroKilnParser* definition,
                                          const SV::String& calendar, const SV::String& infoText,
                                          SV::Window* parent, const int& configure,
                                          const SV::String& namePrefix) {
    if (const int status = makeInstance(modelId, classId, agentId, parent); status != StatusOk) {
        return status;
    }
    if (!namePrefix.IsEmpty()) {
        if (const int status = nameInstance(modelId, agentId, namePrefix); status != StatusOk) {
            return status;
        }
    }
    const int status = newSuperAgent(agentId, objects, definition, calendar, infoText, parent, configure);
    return status == StatusOk ? status : undoCreation(modelId, agentId, status);
}

int MeroAgentManagement::makeInstance(MeroId modelId, MeroId classId, MeroId& agentId, SV::Window* parent) {
    if (const int status = checkEditable(); status != StatusOk) {
        return status;
    }
    if (const int status = warnWithoutWriteAccess(modelId, MessageCreationWithoutAccess, parent);
        status != StatusOk) {
        return status;
    }
    return repositoryDoes([&](auto& repository) {
        return repository.enhanced().createInstance(modelId, classId, {}, agentId, true);
    })
               ? StatusOk
               : StatusRepositoryError;
}

int MeroAgentManagement::nameInstance(MeroId modelId, MeroId agentId, const SV::String& namePrefix) {
    int code = RepositoryNameInUse;
    for (std::int64_t number = agentId;
         code == RepositoryNameInUse && number <= std::numeric_limits<MeroId>::max();
         number += NameNumberStep) {
        const SV::String name = namePrefix + "-" + SV::String(number);
        MeroId conflictingId = MeroNoId;
        code = callRepository([&](auto& repository) {
            return repository.enhanced().RenameInstance(modelId, agentId, name, conflictingId, true);
        });
    }
    if (code != RepositoryOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    return StatusOk;
}

int MeroAgentManagement::undoCreation(MeroId modelId, MeroId agentId, int status) {
    deleteSuperAgent(agentId);
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().deleteInstance(modelId, agentId, false);
        })) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    return status;
}

int MeroAgentManagement::configureSuperAgent(const MeroId& agentId, SV::Window* parent) {
    if (const int status = checkEditable(); status != StatusOk) {
        return status;
    }
    MeroId modelId = MeroNoId;
    if (!repositoryDoes(
            [&](auto& repository) { return repository.enhanced().getModelOfInstance(agentId, modelId); })) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    if (const int status = warnWithoutWriteAccess(modelId, MessageConfigurationWithoutAccess, parent);
        status != StatusOk) {
        return status;
    }
    ensureSuperAgent(agentId, modelId);
    return StatusRefused;
}

int MeroAgentManagement::deleteSuperAgent(const MeroId& agentId) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    if (MeroSuperAgent* const agent = superAgents->find(agentId); agent != nullptr) {
        // In a run its components are still attached, and events must not reach what is gone.
        agent->clearResults();
        superAgents->remove(agentId);
    }
    return StatusOk;
}

int MeroAgentManagement::getExistingSuperAgents(const ISortedSet<MeroId>& bpModels,
                                                const ISortedSet<MeroId>& weModels,
                                                ISortedSet<MeroId>& usable, ISortedSet<MeroId>& invalid,
                                                const int& algorithm, const int& withSubProcesses) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    ISortedSet<MeroId> processModels = bpModels;
    ISortedSet<MeroId> environments = weModels;
    if (withSubProcesses != 0 &&
        (!addLoadedSubProcesses(processModels) || !addLoadedSubProcesses(environments))) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    const int status = sortAgentsOfModels(environments, CoreEnvironmentAgentBase, algorithm, usable, invalid);
    return status == StatusOk
               ? sortAgentsOfModels(processModels, CoreProcessAgentBase, algorithm, usable, invalid)
               : status;
}

int MeroAgentManagement::sortAgentsOfModels(const ISortedSet<MeroId>& models, MeroCoreVarType agentClass,
                                            int algorithm, ISortedSet<MeroId>& usable,
                                            ISortedSet<MeroId>& invalid) {
    for (const MeroId modelId : models) {
        ISortedSet<MeroId> agentIds;
        if (!findAgentsInModel(modelId, agentClass, agentIds)) {
            displayErrorMessage(MeroManagementModule, __LINE__);
            return StatusRepositoryError;
        }
        for (const MeroId agentId : agentIds) {
            MeroSuperAgent& agent = ensureSuperAgent(agentId, modelId);
            if (!isAgentValid(agent, MeroEmptyObjects::Refused)) {
                invalid.insert(agentId);
            } else if (agent.isActiveInAnalysis(algorithm)) {
                usable.insert(agentId);
            }
        }
    }
    return StatusOk;
}

int MeroAgentManagement::getActivationOfAgent(const MeroId& agentId, int& active) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    const MeroSuperAgent* const agent = ensureSuperAgent(agentId);
    if (agent == nullptr) {
        return StatusRepositoryError;
    }
    active = agent->getActivation();
    return StatusOk;
}

int MeroAgentManagement::setActivationOfAgent(const MeroId& agentId, const int& active) {
    if (const int status = checkEditable(); status != StatusOk) {
        return status;
    }
    MeroSuperAgent* const agent = ensureSuperAgent(agentId);
    if (agent == nullptr) {
        return StatusRepositoryError;
    }
    agent->setActivation(active);
    SV::String text;
    MeroKilnParser parser(agent->getDefinitionText(text), "???", "???");
    if (parser.Parse() != 0) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusBadDefinition;
    }
    parser.SetCurElemIndex(0);
    if (agent->readDefinition(&parser) != StatusOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
    }
    return StatusOk;
}

int MeroAgentManagement::getNumberOfAgentsInModel(const MeroId& modelId, const int& withSubProcesses,
                                                  const int& onlyValid) {
    constexpr int NoCount = -1;
    if (!initialised) {
        return NoCount;
    }
    ISortedSet<MeroId> models;
    MeroCoreVarType agentClass = CoreEnvironmentAgentBase;
    if (withSubProcesses != 0) {
        agentClass = CoreProcessAgentBase;
        ISortedSet<MeroId> loaded;
        if (computeSubProcesses(modelId, models, NotForWriting, RefuseLoads, loaded) != StatusOk) {
            discardSubProcesses(loaded);
            return StatusRepositoryError;
        }
    }
    models.insert(modelId);
    int count = 0;
    for (const MeroId model : models) {
        ISortedSet<MeroId> agentIds;
        if (!findAgentsInModel(model, agentClass, agentIds)) {
            displayErrorMessage(MeroManagementModule, __LINE__);
            return NoCount;
        }
        for (const MeroId agentId : agentIds) {
            if (onlyValid == 0) {
                ++count;
                continue;
            }
            MeroSuperAgent& agent = ensureSuperAgent(agentId, model);
            const bool counts = isAgentValid(agent, MeroEmptyObjects::Refused) && agent.getActivation() != 0;
            count += counts ? 1 : 0;
        }
    }
    return count;
}

int MeroAgentManagement::openAgentsInModelsDlg(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& changed,
                                               const MeroId& weModelId, [[maybe_unused]] SV::Window* parent,
                                               const int& algorithm) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    const MeroWaitCursor wait;
    return checkCorruptRefObjects(models, weModelId, algorithm, changed);
}
