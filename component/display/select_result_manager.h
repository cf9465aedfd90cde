#pragma once

#include <initializer_list>

#include "component/host/containers.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_edits.h"

#include "component/display/agent_tree_list_box.h"
#include "component/display/busy_owner.h"
#include "component/display/grouping_controls.h"
#include "component/display/result_scale.h"
#include "component/results/result_options.h"

class MeroAgentManagement;
class MeroSuperAgent;

/// Selection of the results of a run: an agent in the tree of models, values or history, the form of display,
/// grouping and scale. Windows with results stay open beside it, and close with it; while one of them works,
/// it can't be closed. Scale and frequency are remembered to the next opening in the same program.
class MeroSelectResultManager : public MeroModalDialog, public MeroBusyOwner {
public:
    /// `agentIds`: super agents with results. `agentManagement` isn't owned, has to outlive the dialog and
    /// gives the models of the application.
    MeroSelectResultManager(SV::Window* parent, const ISortedSet<MeroId>& agentIds, int analysisType,
                            MeroAgentManagement& agentManagement);
    ~MeroSelectResultManager() override;

    /// Shows results of the agent by what is chosen, and keeps the choice in the agent.
    void showAgentResults(MeroId agentId);
    /// Shows what the selected agent is and measures.
    void showAgentInfo();
    /// Process starts that the model's one start event has, the name of their period, and the period as a
    /// time text. 0 if the model has none, or is no process model.
    static int getModelFrequency(MeroId modelId, std::int32_t& count, SV::String& unitText,
                                 SV::String& period);
    /// Takes over the frequency of the model.
    void applyModelFrequency(MeroId modelId);

    /// Refused while a window works. Ends the dialog with `SV::DialogOk`.
    bool Close() override;
    void enterBusy() override;
    void leaveBusy() override;

private:
    void connectHandlers();
    void fillTree();
    void disableAll();
    static void enableAll(std::initializer_list<SV::Control*> controls, bool enable);
    [[nodiscard]] bool isScaledByFrequency() const;
    /// Null, after an internal error, for an agent that isn't registered.
    [[nodiscard]] MeroSuperAgent* findAgent(MeroId agentId) const;

    // What can be chosen

    void updateControls();
    void updateResultKinds(MeroSuperAgent& agent);
    void updateDisplayForms();
    void updateOptions(MeroSuperAgent& agent);
    void updateScale();
    void updateFrequency();
    void enableOptions(MeroSuperAgent& agent, bool areValuesShown);
    void explainDisabledControls();
    [[nodiscard]] bool areValuesChosen() const;
    [[nodiscard]] bool isHistoryChosen() const;
    void chooseValues();
    void chooseHistory();
    void chooseGraph();
    void showSelected();

    // Scale

    void showScale();
    void fillPopup(SV::PopupMenu& menu) const;
    void closeResultWindows();
    void changeScope();
    void changePeriod();
    void changeTime(SV::String& label, SV::String& time);
    [[nodiscard]] SV::String getTitle(bool isScaled) const;

    MeroAgentManagement& management;
    ISortedSet<MeroId> agents;
    int analysisType;
    MeroResultScale scale;
    int busyCount = 0;
    bool canClose = true;

    SV::FixedText treeLabel;
    MeroAgentTreeListBox tree;
    SV::GroupBox resultFrame;
    SV::RadioButton valuesRadio;
    SV::RadioButton historyRadio;
    SV::GroupBox displayFrame;
    SV::RadioButton totalRadio;
    SV::RadioButton detailRadio;
    SV::RadioButton graphRadio;
    SV::GroupBox optionsFrame;
    SV::CheckBox extremesBox;
    SV::CheckBox sumBox;
    MeroGroupingControls grouping;
    SV::GroupBox scaleFrame;
    SV::FixedText scaleLabel;
    SV::RadioButton unscaledRadio;
    SV::RadioButton scaledRadio;
    SV::PushButton scopeButton;
    SV::GroupBox frequencyFrame;
    SV::FixedText frequencyLabel;
    SV::NumericField frequencyField;
    SV::PushButton periodButton;
    MeroInfoButton infoButton;
    SV::PushButton showButton;
    MeroCloseButton closeButton;
    SV::HelpButton helpButton;
};
