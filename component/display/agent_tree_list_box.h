#pragma once

#include "component/host/containers.h"
#include "component/host/tree_list_box.h"

#include "component/display/tree_entry_index.h"

class MeroAgentManagement;
class MeroCoreInterModelReference;

/// What the picture of a super agent tells.
enum MeroAgentEntryState : int { AgentEntryActive = 1, AgentEntryInactive = 2, AgentEntryInvalid = 3 };

/// Tree of models with the super agents that they hold and, below each, the models that it calls. A model
/// stands in full once, wherever it is met first; elsewhere an entry tells that it is there already, which
/// also ends models that call each other.
///
/// Entries have identifiers of their own; agents and models are named by their repository identifiers.
/// Operations that insert give a `MeroErrorCode`: on a failure of the repository, which is an internal error,
/// what is concerned is left out and the rest is inserted.
class MeroAgentTreeListBox : public MeroSearchTreeListBox {
public:
    MeroAgentTreeListBox(SV::Window* parent, SV::ResId id, bool severalSelected);

    /// Not owned; has to be set before anything is inserted.
    void setManagement(MeroAgentManagement& agentManagement) { management = &agentManagement; }

    /// At the root, each with its agents that take part in the analysis and the models that it calls;
    /// `extraModel`, an environment or 0, comes last. Models that are there are passed over. Expands the
    /// tree.
    int insertModels(const ISortedSet<MeroId>& modelIds, MeroId extraModel, int analysis);
    /// Without agents.
    int insertModel(MeroId modelId);
    /// Below its model, which is inserted if it isn't there; `modelId` 0 looks it up.
    int insertAgent(MeroId agentId, MeroId modelId);
    /// `AnalysisNone` inserts none; as below.
    int insertAgentsOfModel(MeroId modelId, int analysis);
    int insertReferencedModels(MeroId modelId, int analysis);
    /// 35 for an agent that isn't there.
    int removeAgent(MeroId agentId);

    /// With `onlyOne` the selection has to be a single entry.
    [[nodiscard]] bool isAgentSelected(bool onlyOne) const;
    [[nodiscard]] bool isModelSelected(bool onlyOne) const;
    [[nodiscard]] bool isAgentEntry(MeroId entry) const { return agentEntries.showsOne(entry); }
    /// `MeroNoTreeEntry` for what isn't there.
    [[nodiscard]] MeroId getEntryOfAgent(MeroId agentId) const { return agentEntries.entryOf(agentId); }
    [[nodiscard]] MeroId getEntryOfModel(MeroId modelId) const { return modelEntries.entryOf(modelId); }
    /// First selected agent; 0 for none.
    [[nodiscard]] MeroId getSelectedAgent() const;
    /// All of them, in the order of the tree.
    [[nodiscard]] std::vector<MeroId> getSelectedAgents() const;
    /// The first selected model, or that of the first selected agent; 0 for none.
    [[nodiscard]] MeroId getModelOfSelection() const;
    bool setAgentImage(MeroId agentId, MeroAgentEntryState state);

    /// True for a process model, false for an environment; anything else is an internal error.
    [[nodiscard]] static bool isBusinessProcessModel(MeroId modelId);
    /// False, and no change, if the model's type has no icon.
    static bool getModelIcon(MeroId modelId, SV::Image& image);

    /// Typing "mirrorcabinet" with one agent selected shows its texts in the form of a predefined agent, for
    /// those who write such. All keys are searched as well.
    bool KeyInput(const SV::KeyEvent& key) override;

private:
    int insertRootModel(MeroId modelId, bool isLoaded, int analysis);
    /// The entry's identifier.
    MeroId addEntry(MeroId parentEntry, const SV::String& text, const SV::Image& image);
    int addAgentEntry(MeroId agentId, MeroId modelId, MeroAgentEntryState state);
    [[nodiscard]] MeroAgentEntryState stateByActivation(MeroId agentId) const;
    int insertReferencesOfClass(MeroId modelId, MeroId classId, int analysis);
    /// Below `modelId`; `listed` are the models that have been told there.
    int insertReference(MeroId modelId, const MeroCoreInterModelReference& reference, MeroId referencedModel,
                        int analysis, ISortedSet<MeroId>& listed);
    void showStoredTexts(MeroId agentId);

    MeroAgentManagement* management = nullptr;
    MeroTreeEntryIndex agentEntries;
    MeroTreeEntryIndex modelEntries;     ///< of loaded models, in full
    MeroTreeEntryIndex unloadedEntries;  ///< of models at the root that aren't loaded
    MeroId nextEntry = 0;
};
