#include "component/display/agent_tree_list_box.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "component/host/basic_services.h"
#include "component/host/host_dialogs.h"
#include "component/host/model_references.h"
#include "component/host/model_types.h"

#include "component/agents/agent_types.h"
#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "component/management/agent_queries.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"

namespace {

constexpr char ModuleName[] = "aeadsply";
constexpr int IconSize = 16;

constexpr SV::ResId ActiveImage(0x2005043);
constexpr SV::ResId InactiveImage(0x2005044);
constexpr SV::ResId InvalidImage(0x2005045);
constexpr SV::ResId MessageUnreadable(0x2005041);
constexpr SV::ResId MessageNotLoaded(0x2005046);
constexpr SV::ResId MessageAlreadyListed(0x2005048);

int reportRepositoryError(int line) {
    displayErrorMessage(ModuleName, line);
    return StatusRepositoryError;
}

/// The first status that isn't good.
int firstFailure(int earlier, int later) {
    return earlier != StatusOk ? earlier : later;
}

SV::Image imageOfState(MeroAgentEntryState state) {
    switch (state) {
        case AgentEntryActive:
            return SV::Image(ActiveImage);
        case AgentEntryInactive:
            return SV::Image(InactiveImage);
        default:
            return SV::Image(InvalidImage);
    }
}

SV::Image unknownModelImage() {
    return SV::ImagePool::GetImage("selbox/unknow2.png");
}

SV::Image imageOfModel(MeroId modelId) {
    SV::Image image = unknownModelImage();
    MeroAgentTreeListBox::getModelIcon(modelId, image);
    return image;
}

SV::String withRemark(const SV::String& text, SV::ResId remark) {
    return text + SV::String(" ") + SV::String(remark);
}

SV::String nameOf(MeroId objectId) {
    SV::String name;
    return getAttributeText(objectId, name, ClassCodeInstanceName) == StatusOk ? name : SV::String("?");
}

bool isLoaded(MeroId modelId) {
    auto* const repository = MeroCoreModelingManager::GetGlobal();
    return repository != nullptr && repository->loadSave().IsModelLoaded(modelId);
}

bool isEnvironmentLoaded(MeroId modelId) {
    ISortedSet<MeroId> loaded;
    bool allLoaded = false;
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().modelsLoaded({modelId}, loaded, ClassCodeEnvironmentModel,
                                                      allLoaded);
        })) {
        reportRepositoryError(__LINE__);
        return false;
    }
    return allLoaded;
}

/// Follows the typed characters through the access word. True when the last one has matched; any other key
/// begins anew.
bool completesAccessWord(char32_t character) {
    static constexpr std::string_view AccessWord = "mirrorcabinet";
    static std::size_t position = 0;
    position = character == static_cast<char32_t>(AccessWord[position]) ? position + 1 : 0;
    if (position < AccessWord.size()) {
        return false;
    }
    position = 0;
    return true;
}

/// A line of the text of a predefined agent.
SV::String keyLine(const char* key, const SV::String& value) {
    return SV::String("\n") + SV::String(key) + SV::String(": \"") + Mero_Mask(value, '"', '\\') +
           SV::String("\"");
}

}  // namespace

MeroAgentTreeListBox::MeroAgentTreeListBox(SV::Window* parent, SV::ResId id, bool severalSelected)
    : MeroSearchTreeListBox(parent, id, severalSelected ? TreeStyleSeveralSelected : TreeStyleOneSelected) {}

MeroId MeroAgentTreeListBox::addEntry(MeroId parentEntry, const SV::String& text, const SV::Image& image) {
    InsertEntry(nextEntry, text, parentEntry, image);
    return nextEntry++;
}

// Models

int MeroAgentTreeListBox::insertModels(const ISortedSet<MeroId>& modelIds, MeroId extraModel, int analysis) {
    int status = StatusOk;
    for (const MeroId modelId : modelIds) {
        status = firstFailure(status, insertRootModel(modelId, isLoaded(modelId), analysis));
    }
    if (extraModel != MeroNoId) {
        status = firstFailure(status, insertRootModel(extraModel, isEnvironmentLoaded(extraModel), analysis));
    }
    ExpandAll();
    return status;
}

int MeroAgentTreeListBox::insertModel(MeroId modelId) {
    return insertModels({modelId}, MeroNoId, AnalysisNone);
}

int MeroAgentTreeListBox::insertRootModel(MeroId modelId, bool isModelLoaded, int analysis) {
    if (modelEntries.contains(modelId) || unloadedEntries.contains(modelId)) {
        return StatusOk;
    }
    SV::String name;
    if (getAttributeText(modelId, name, ClassCodeInstanceName) != StatusOk) {
        return reportRepositoryError(__LINE__);
    }
    if (!isModelLoaded) {
        unloadedEntries.insert(
            modelId, addEntry(MeroNoTreeEntry, withRemark(name, MessageNotLoaded), imageOfModel(modelId)));
        return StatusOk;
    }
    modelEntries.insert(modelId, addEntry(MeroNoTreeEntry, name, imageOfModel(modelId)));
    const int status = insertAgentsOfModel(modelId, analysis);
    return firstFailure(status, insertReferencedModels(modelId, analysis));
}

int MeroAgentTreeListBox::insertReferencedModels(MeroId modelId, int analysis) {
    const MeroId library =
        isBusinessProcessModel(modelId) ? ClassCodeProcessLibrary : ClassCodeEnvironmentLibrary;
    ISortedSet<MeroId> classes;
    if (MeroReferencedModelsHandler::getAllSubmodelReferencingClasses(library, classes) != RepositoryOk) {
        return reportRepositoryError(__LINE__);
    }
    int status = StatusOk;
    for (const MeroId classId : classes) {
        status = firstFailure(status, insertReferencesOfClass(modelId, classId, analysis));
    }
    return status;
}

int MeroAgentTreeListBox::insertReferencesOfClass(MeroId modelId, MeroId classId, int analysis) {
    MeroId attribute = MeroNoId;
    ISortedSet<MeroId> instances;
    if (MeroReferencedModelsHandler::getSubModelAttributeOfClass(classId, attribute) != RepositoryOk ||
        !repositoryDoes([&](auto& repository) {
            return repository.basic().getAllInstancesOfClassAndSubClassInModel(modelId, classId, instances,
                                                                               true);
        })) {
        return reportRepositoryError(__LINE__);
    }
    int status = StatusOk;
    ISortedSet<MeroId> listed;
    for (const MeroId instance : instances) {
        SV::String text;
        int code = RepositoryOk;
        MeroCoreInterReferenceHandler references(modelId, instance, attribute);
        if (getAttributeText(instance, text, attribute) != StatusOk ||
            references.initHandler(text, code) != RepositoryOk) {
            status = firstFailure(status, reportRepositoryError(__LINE__));
            continue;
        }
        bool tellsUnreadable = true;
        for (std::size_t index = 0; index < references.getInterReferenceCount(); ++index) {
            const MeroCoreInterModelReference reference = references.getInterReference(index);
            MeroId referencedModel = MeroNoId;
            if (reference.GetIDOfReferencedModel(referencedModel) == RepositoryOk) {
                status = firstFailure(status,
                                      insertReference(modelId, reference, referencedModel, analysis, listed));
            } else if (std::exchange(tellsUnreadable, false)) {
                addEntry(modelEntries.entryOf(modelId),
                         nameOf(instance) + SV::String(": ") + SV::String(MessageUnreadable),
                         unknownModelImage());
            }
        }
    }
    return status;
}

int MeroAgentTreeListBox::insertReference(MeroId modelId, const MeroCoreInterModelReference& reference,
                                          MeroId referencedModel, int analysis, ISortedSet<MeroId>& listed) {
    if (!listed.insert(referencedModel)) {
        return StatusOk;
    }
    const MeroId below = modelEntries.entryOf(modelId);
    const SV::Image image = imageOfModel(referencedModel);
    if (!isLoaded(referencedModel)) {
        addEntry(below, withRemark(reference.GetModelText(), MessageNotLoaded), image);
        return StatusOk;
    }
    if (modelEntries.contains(referencedModel)) {
        addEntry(below, withRemark(reference.GetModelText(), MessageAlreadyListed), image);
        return StatusOk;
    }
    modelEntries.insert(referencedModel, addEntry(below, reference.GetModelText(), image));
    const int status = insertAgentsOfModel(referencedModel, analysis);
    return firstFailure(status, insertReferencedModels(referencedModel, analysis));
}

bool MeroAgentTreeListBox::isBusinessProcessModel(MeroId modelId) {
    MeroId classId = MeroNoId;
    if (!repositoryDoes([&](auto& repository) { return repository.enhanced().classOf(modelId, classId); }) ||
        (classId != ClassCodeProcessModel && classId != ClassCodeEnvironmentModel)) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return classId == ClassCodeProcessModel;
}

bool MeroAgentTreeListBox::getModelIcon(MeroId modelId, SV::Image& image) {
    auto* const types = MeroModelTypeAttrHandler::GetGlobal();
    SV::String typeName;
    if (types == nullptr || getAttributeText(modelId, typeName, ClassCodeModelType) != StatusOk) {
        return false;
    }
    const SV::String icon = types->GetModelTypeIconImg(types->GetModelTypeIndex(typeName), IconSize);
    if (icon.IsEmpty()) {
        return false;
    }
    image = SV::ImagePool::GetImage(icon);
    return true;
}

// Agents

int MeroAgentTreeListBox::insertAgentsOfModel(MeroId modelId, int analysis) {
    if (analysis == AnalysisNone) {
        return StatusOk;
    }
    ISortedSet<MeroId> processModels;
    ISortedSet<MeroId> environments;
    (isBusinessProcessModel(modelId) ? processModels : environments).insert(modelId);
    ISortedSet<MeroId> usable;
    ISortedSet<MeroId> invalid;
    constexpr int OwnAgentsOnly = 0;
    if (management->getExistingSuperAgents(processModels, environments, usable, invalid, analysis,
                                           OwnAgentsOnly) != StatusOk) {
        return reportRepositoryError(__LINE__);
    }
    int status = StatusOk;
    for (const MeroId agentId : usable) {
        if (!agentEntries.contains(agentId)) {
            status = firstFailure(status, addAgentEntry(agentId, modelId, stateByActivation(agentId)));
        }
    }
    for (const MeroId agentId : invalid) {
        status = firstFailure(status, setAgentImage(agentId, AgentEntryInvalid)
                                          ? int{StatusOk}
                                          : addAgentEntry(agentId, modelId, AgentEntryInvalid));
    }
    return status;
}

int MeroAgentTreeListBox::insertAgent(MeroId agentId, MeroId modelId) {
    if (modelId == MeroNoId && !repositoryDoes([&](auto& repository) {
            return repository.enhanced().getModelOfInstance(agentId, modelId);
        })) {
        return reportRepositoryError(__LINE__);
    }
    const int status = modelEntries.contains(modelId) ? int{StatusOk} : insertModel(modelId);
    MeroSuperAgent* agent = nullptr;
    constexpr int Create = 1;
    if (management->getAgentFromID(agent, agentId, Create) != StatusOk) {
        return reportRepositoryError(__LINE__);
    }
    const MeroAgentEntryState state =
        isAgentValid(*agent, MeroEmptyObjects::Refused) ? stateByActivation(agentId) : AgentEntryInvalid;
    if (setAgentImage(agentId, state)) {
        return status;
    }
    const int added = addAgentEntry(agentId, modelId, state);
    Expand(modelEntries.entryOf(modelId));
    return firstFailure(status, added);
}

int MeroAgentTreeListBox::addAgentEntry(MeroId agentId, MeroId modelId, MeroAgentEntryState state) {
    SV::String name;
    if (!modelEntries.contains(modelId) ||
        getAttributeText(agentId, name, ClassCodeInstanceName) != StatusOk) {
        return reportRepositoryError(__LINE__);
    }
    agentEntries.insert(agentId, addEntry(modelEntries.entryOf(modelId), name, imageOfState(state)));
    return StatusOk;
}

MeroAgentEntryState MeroAgentTreeListBox::stateByActivation(MeroId agentId) const {
    int active = 0;
    if (management->getActivationOfAgent(agentId, active) != StatusOk) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return active != 0 ? AgentEntryActive : AgentEntryInactive;
}

int MeroAgentTreeListBox::removeAgent(MeroId agentId) {
    if (!agentEntries.contains(agentId)) {
        return StatusNothingObserved;
    }
    RemoveEntry(agentEntries.entryOf(agentId));
    agentEntries.erase(agentId);
    return StatusOk;
}

bool MeroAgentTreeListBox::setAgentImage(MeroId agentId, MeroAgentEntryState state) {
    return SetEntryImage(agentEntries.entryOf(agentId), imageOfState(state));
}

// Selection

bool MeroAgentTreeListBox::isAgentSelected(bool onlyOne) const {
    return (!onlyOne || GetSelectionCount() == 1) && getSelectedAgent() != MeroNoId;
}

bool MeroAgentTreeListBox::isModelSelected(bool onlyOne) const {
    if (onlyOne && GetSelectionCount() != 1) {
        return false;
    }
    const std::vector<MeroId> selected = GetSelectedEntries();
    return std::ranges::any_of(selected, [this](MeroId entry) { return modelEntries.showsOne(entry); });
}

MeroId MeroAgentTreeListBox::getSelectedAgent() const {
    const std::vector<MeroId> agents = getSelectedAgents();
    return agents.empty() ? MeroNoId : agents.front();
}

std::vector<MeroId> MeroAgentTreeListBox::getSelectedAgents() const {
    std::vector<MeroId> agents;
    for (const MeroId entry : GetSelectedEntries()) {
        if (isAgentEntry(entry)) {
            agents.push_back(agentEntries.objectOf(entry));
        }
    }
    return agents;
}

MeroId MeroAgentTreeListBox::getModelOfSelection() const {
    for (const MeroId entry : GetSelectedEntries()) {
        const MeroId model = modelEntries.objectOf(isAgentEntry(entry) ? GetParentEntry(entry) : entry);
        if (model != MeroNoId) {
            return model;
        }
    }
    return MeroNoId;
}

// Hidden view

bool MeroAgentTreeListBox::KeyInput(const SV::KeyEvent& key) {
    if (completesAccessWord(key.character) && isAgentSelected(true)) {
        showStoredTexts(getSelectedAgent());
    }
    return MeroSearchTreeListBox::KeyInput(key);
}

void MeroAgentTreeListBox::showStoredTexts(MeroId agentId) {
    constexpr int DontCreate = 0;
    MeroSuperAgent* agent = nullptr;
    SV::String name;
    if (management->getAgentFromID(agent, agentId, DontCreate) != StatusOk ||
        agent->getName(name) != StatusOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return;
    }
    SV::String objects;
    SV::String calendar;
    SV::String infoText;
    const SV::String head = SV::String(" \"") + Mero_Mask(name, '"', '\\') + SV::String("\"") +
                            keyLine("objects", agent->getObjectsText(objects)) +
                            keyLine("calendar", agent->getCalendarText(calendar)) +
                            keyLine("infotext", agent->getInfoText(infoText));
    constexpr std::size_t BehindTheKeyword = 5;
    SV::String text;
    agent->getDefinitionText(text).Insert(head, BehindTheKeyword);
    MeroViewBox(this, name, text).Execute();
}
