#pragma once

#include <map>
#include <optional>

#include "component/host/containers.h"
#include "component/host/kiln_parser.h"
#include "component/host/tree_list_box.h"

#include "component/display/model_type_index.h"

/// List of the predefined agents of the application library that suit a model, for making a new agent of one;
/// the first entry makes an agent without measures.
///
/// The library holds them as one definition text of several agents, each an "AGENT" element with its name as
/// value, followed by its measures. Beside the usual keywords the head may name the analyses (only for these
/// it is offered then), the model types as `allowed-modeltype-1` and on without gap, the `agent-class`, and
/// the texts `calendar`, `infotext` and `objects` of the new agent.
class MeroAgentTypeBox : public MeroSearchTreeListBox {
public:
    /// `AnalysisNone` offers what isn't made for certain analyses. A library text that can't be parsed is
    /// told in a box and gives no entries.
    MeroAgentTypeBox(SV::Window* parent, SV::ResId id, int analysis);

    /// Offers what suits the model, keeping the selected entry where it can. A model whose type isn't
    /// simulated empties and disables the box.
    void updateForModel(MeroId modelId);
    /// True if an agent could be made now.
    [[nodiscard]] bool hasSelection() const;
    /// Where the selected entry is told; not owned, null for nowhere.
    void setInfoWindow(SV::Window* window) { infoWindow = window; }
    void showTemplateInfo();
    /// 1 when an agent was made; `newAgentId` is it. 0 otherwise, after a box where there is something to
    /// tell.
    int createSuperAgentFromSelection(MeroId modelId, MeroId& newAgentId);

private:
    enum class Kind { Empty, Template };

    void loadTemplates(int analysis);
    [[nodiscard]] bool isOfferedFor(int analysis) const;
    void indexTemplate();
    /// Whether all measures of the current element may stand in models of the library, that of the model type
    /// where one is named.
    [[nodiscard]] bool isTemplateAllowedFor(const SV::String& typeName, MeroId libraryClassId);
    void insertTemplates(const ISortedSet<int>& elements);

    [[nodiscard]] SV::String infoOfTemplate(int element);
    /// Class that the template names; 0, and an internal error for a wrong name, if there is none.
    [[nodiscard]] MeroId classOfTemplate(MeroId modelClass) const;
    /// Class of the new agent; nothing if the user cancels.
    [[nodiscard]] std::optional<MeroId> chooseClass(const ISortedSet<MeroId>& classes, MeroId modelClass,
                                                    Kind kind);
    int createFromTemplate(MeroId modelId, MeroId classId, MeroId& newAgentId);

    MeroKilnParser templates;
    std::map<SV::String, MeroModelTypeIndex> modelTypeIndex;
    ISortedSet<int> businessProcessIndices;
    ISortedSet<int> workEnvironmentIndices;
    MeroId emptyEntry = 0;
    SV::Window* infoWindow = nullptr;
};
