#include "component/display/select_result_manager.h"

#include "component/host/basic_services.h"
#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"

#include "component/agents/agent_types.h"
#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"

namespace {

constexpr char ModuleName[] = "aeadsply";
constexpr int HelpAgentInfo = 52090;

constexpr SV::ResId MessageDescription(0x2004EDE);
constexpr SV::ResId MessageMeasures(0x2004EDF);

// Why a control can't be used.
constexpr SV::ResId ReasonNoAgent(0x2011091);
constexpr SV::ResId ReasonNoValues(0x2011092);
constexpr SV::ResId ReasonNoHistory(0x2011093);
constexpr SV::ResId ReasonNotGroupable(0x2011094);
constexpr SV::ResId ReasonNotForCurves(0x2011095);
constexpr SV::ResId ReasonLocked(0x2011096);
constexpr SV::ResId ReasonBusy(0x2011097);

bool isChosen(const SV::RadioButton& radio) {
    return radio.IsChecked() && radio.IsEnabled();
}

/// The check of a radio button that can't be used goes to another, if that can.
void handOver(SV::RadioButton& from, SV::RadioButton& to) {
    if (from.IsChecked() && !from.IsEnabled() && to.IsEnabled()) {
        from.Uncheck();
        to.Check();
    }
}

SV::String reasonText(bool isUsable, SV::ResId reason) {
    return isUsable ? SV::String() : SV::String(reason);
}

}  // namespace

namespace Form = MeroSelectResultForm;

MeroSelectResultManager::MeroSelectResultManager(SV::Window* parent, const ISortedSet<MeroId>& agentIds,
                                                 int runAnalysis, MeroAgentManagement& agentManagement)
    : MeroModalDialog(parent, Form::Form),
      management(agentManagement),
      agents(agentIds),
      analysisType(runAnalysis),
      scale(recallResultScale()),
      treeLabel(this, Form::TreeLabel),
      tree(this, Form::Tree, false),
      resultFrame(this, Form::ResultFrame),
      valuesRadio(this, Form::ValuesRadio),
      historyRadio(this, Form::HistoryRadio),
      displayFrame(this, Form::DisplayFrame),
      totalRadio(this, Form::TotalRadio),
      detailRadio(this, Form::DetailRadio),
      graphRadio(this, Form::GraphRadio),
      optionsFrame(this, Form::OptionsFrame),
      extremesBox(this, Form::ExtremesBox),
      sumBox(this, Form::SumBox),
      grouping(this),
      scaleFrame(this, Form::ScaleFrame),
      scaleLabel(this, Form::ScaleLabel),
      unscaledRadio(this, Form::UnscaledRadio),
      scaledRadio(this, Form::ScaledRadio),
      scopeButton(this, Form::ScopeButton),
      frequencyFrame(this, Form::FrequencyFrame),
      frequencyLabel(this, Form::FrequencyLabel),
      frequencyField(this, Form::FrequencyField),
      periodButton(this, Form::PeriodButton),
      infoButton(this, Form::InfoButton),
      showButton(this, Form::ShowButton),
      closeButton(this, Form::CloseButton),
      helpButton(this, Form::HelpButton) {
    frequencyField.SetValue(scale.frequency);
    showScale();
    fillTree();
    for (SV::Control* const control :
         {static_cast<SV::Control*>(&frequencyFrame), static_cast<SV::Control*>(&frequencyLabel),
          static_cast<SV::Control*>(&frequencyField), static_cast<SV::Control*>(&periodButton)}) {
        control->Show(isScaledByFrequency());
    }
    grouping.show(analysisType != AnalysisPath);
    disableAll();
    connectHandlers();
}

MeroSelectResultManager::~MeroSelectResultManager() {
    scale.frequency = frequencyField.GetValue();
    rememberResultScale(scale);
    closeResultWindows();
}

void MeroSelectResultManager::closeResultWindows() {
    for (const MeroId agentId : agents) {
        if (MeroSuperAgent* const agent = findAgent(agentId)) {
            agent->closeResultWindows();
        }
    }
}

void MeroSelectResultManager::connectHandlers() {
    tree.SetSelectHdl([this] { updateControls(); });
    tree.SetDoubleClickHdl([this] {
        if (showButton.IsEnabled()) {
            showSelected();
        }
    });
    tree.SetPopupHdl([this](SV::PopupMenu& menu) { fillPopup(menu); });
    tree.SetPopupSelectHdl([this](int) { applyModelFrequency(tree.getModelOfSelection()); });
    valuesRadio.SetClickHdl([this] { chooseValues(); });
    historyRadio.SetClickHdl([this] { chooseHistory(); });
    graphRadio.SetClickHdl([this] { chooseGraph(); });
    for (SV::RadioButton* const radio : {&unscaledRadio, &scaledRadio}) {
        radio->SetClickHdl([this] {
            if (isScaledByFrequency()) {
                updateFrequency();
            }
        });
    }
    scopeButton.SetClickHdl([this] { changeScope(); });
    periodButton.SetClickHdl([this] { changePeriod(); });
    infoButton.SetClickHdl([this] { showAgentInfo(); });
    showButton.SetClickHdl([this] { showSelected(); });
}

void MeroSelectResultManager::fillTree() {
    tree.setManagement(management);
    ISortedSet<MeroId> models;
    if (management.getApplicationModel(models) != StatusOk) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    for (const MeroId modelId : models) {
        tree.insertModel(modelId);
    }
    for (const MeroId agentId : agents) {
        tree.insertAgent(agentId, MeroNoId);
    }
    tree.ExpandAll();
}

bool MeroSelectResultManager::isScaledByFrequency() const {
    return analysisType == AnalysisPath || analysisType == AnalysisVolume;
}

MeroSuperAgent* MeroSelectResultManager::findAgent(MeroId agentId) const {
    constexpr int DontCreate = 0;
    MeroSuperAgent* agent = nullptr;
    if (management.getAgentFromID(agent, agentId, DontCreate) != StatusOk) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return agent;
}

// What can be chosen

void MeroSelectResultManager::enableAll(std::initializer_list<SV::Control*> controls, bool enable) {
    for (SV::Control* const control : controls) {
        control->Enable(enable);
    }
}

void MeroSelectResultManager::disableAll() {
    enableAll(
        {&resultFrame,   &valuesRadio,  &historyRadio, &displayFrame,   &totalRadio,     &detailRadio,
         &graphRadio,    &optionsFrame, &extremesBox,  &sumBox,         &scaleFrame,     &scaleLabel,
         &unscaledRadio, &scaledRadio,  &scopeButton,  &frequencyFrame, &frequencyLabel, &frequencyField,
         &periodButton,  &infoButton,   &showButton},
        false);
    grouping.disableAll();
    showButton.SetToolTip(SV::String(ReasonNoAgent));
    infoButton.SetToolTip(SV::String(ReasonNoAgent));
}

bool MeroSelectResultManager::areValuesChosen() const {
    return isChosen(valuesRadio);
}

bool MeroSelectResultManager::isHistoryChosen() const {
    return isChosen(historyRadio);
}

void MeroSelectResultManager::updateControls() {
    constexpr bool OnlyOne = true;
    MeroSuperAgent* const agent =
        tree.isAgentSelected(OnlyOne) ? findAgent(tree.getSelectedAgent()) : nullptr;
    if (agent == nullptr) {
        disableAll();
        return;
    }
    updateResultKinds(*agent);
    updateDisplayForms();
    updateScale();
    updateOptions(*agent);
    enableAll({&showButton, &infoButton}, areValuesChosen() || isHistoryChosen());
    explainDisabledControls();
}

void MeroSelectResultManager::updateResultKinds(MeroSuperAgent& agent) {
    constexpr bool ByShowFlag = false;
    valuesRadio.Enable(agent.hasObjectResults(ByShowFlag));
    historyRadio.Enable(agent.hasHistory(ByShowFlag));
    resultFrame.Enable(valuesRadio.IsEnabled() || historyRadio.IsEnabled());
    handOver(valuesRadio, historyRadio);
    handOver(historyRadio, valuesRadio);
}

void MeroSelectResultManager::updateDisplayForms() {
    enableAll({&totalRadio, &detailRadio}, areValuesChosen());
    graphRadio.Enable(isHistoryChosen());
    displayFrame.Enable(totalRadio.IsEnabled() || graphRadio.IsEnabled());
    handOver(totalRadio, graphRadio);
    handOver(detailRadio, graphRadio);
    handOver(graphRadio, totalRadio);
}

void MeroSelectResultManager::updateScale() {
    enableAll({&scaleFrame, &scaleLabel, &unscaledRadio, &scaledRadio, &scopeButton},
              !graphRadio.IsChecked() && (totalRadio.IsEnabled() || detailRadio.IsEnabled()));
    updateFrequency();
}

void MeroSelectResultManager::updateFrequency() {
    enableAll({&frequencyFrame, &frequencyLabel, &frequencyField, &periodButton}, isChosen(scaledRadio));
}

void MeroSelectResultManager::updateOptions(MeroSuperAgent& agent) {
    MeroResultOptions options;
    agent.getResultOptions(options);
    extremesBox.Show(options.extremeVisible);
    sumBox.Show(options.sumVisible);
    grouping.show(options.groupVisible && analysisType != AnalysisPath);
    enableOptions(agent, areValuesChosen());
    extremesBox.Check(options.extremeChecked);
    sumBox.Check(options.sumChecked);
    grouping.check(agent.canLimitByRelation() && options.groupChecked);
    grouping.clear();
    if (grouping.isEnabled()) {
        grouping.fill(options);
    }
}

void MeroSelectResultManager::enableOptions(MeroSuperAgent& agent, bool areValuesShown) {
    MeroResultOptions options;
    agent.getResultOptions(options);
    extremesBox.Enable(areValuesShown && options.extremeEnabled);
    sumBox.Enable(areValuesShown && options.sumEnabled);
    grouping.enable(areValuesShown && agent.canLimitByRelation() && options.groupEnabled);
    optionsFrame.Enable(extremesBox.IsEnabled() || sumBox.IsEnabled() || grouping.isEnabled());
    grouping.setToolTip(reasonText(grouping.isEnabled(), !areValuesShown              ? ReasonNotForCurves
                                                         : agent.canLimitByRelation() ? ReasonLocked
                                                                                      : ReasonNotGroupable));
}

void MeroSelectResultManager::explainDisabledControls() {
    valuesRadio.SetToolTip(reasonText(valuesRadio.IsEnabled(), ReasonNoValues));
    historyRadio.SetToolTip(reasonText(historyRadio.IsEnabled(), ReasonNoHistory));
    graphRadio.SetToolTip(reasonText(historyRadio.IsEnabled(), ReasonNoHistory));
    for (SV::Control* const control :
         {static_cast<SV::Control*>(&totalRadio), static_cast<SV::Control*>(&detailRadio),
          static_cast<SV::Control*>(&unscaledRadio), static_cast<SV::Control*>(&scaledRadio),
          static_cast<SV::Control*>(&scopeButton)}) {
        control->SetToolTip(reasonText(control->IsEnabled(), ReasonNotForCurves));
    }
    for (SV::CheckBox* const box : {&extremesBox, &sumBox}) {
        box->SetToolTip(reasonText(box->IsEnabled(), areValuesChosen() ? ReasonLocked : ReasonNotForCurves));
    }
    showButton.SetToolTip(reasonText(showButton.IsEnabled(), ReasonNoAgent));
    infoButton.SetToolTip(reasonText(infoButton.IsEnabled(), ReasonNoAgent));
}

void MeroSelectResultManager::chooseValues() {
    MeroSuperAgent* const agent = findAgent(tree.getSelectedAgent());
    if (agent == nullptr) {
        return;
    }
    enableAll({&totalRadio, &detailRadio}, true);
    if (graphRadio.IsChecked()) {
        graphRadio.Uncheck();
        detailRadio.Check();
    }
    updateScale();
    enableOptions(*agent, true);
    if (grouping.isEnabled() && !grouping.isFilled()) {
        MeroResultOptions options;
        agent->getResultOptions(options);
        grouping.fill(options);
    }
    explainDisabledControls();
}

void MeroSelectResultManager::chooseHistory() {
    MeroSuperAgent* const agent = findAgent(tree.getSelectedAgent());
    if (agent == nullptr) {
        return;
    }
    for (SV::RadioButton* const radio : {&totalRadio, &detailRadio}) {
        radio->Uncheck();
        radio->Disable();
    }
    graphRadio.Enable();
    graphRadio.Check();
    updateScale();
    enableOptions(*agent, false);
    explainDisabledControls();
}

void MeroSelectResultManager::chooseGraph() {
    valuesRadio.Uncheck();
    historyRadio.Check();
    chooseHistory();
}

// Results

void MeroSelectResultManager::showSelected() {
    showAgentResults(tree.getSelectedAgent());
}

void MeroSelectResultManager::showAgentResults(MeroId agentId) {
    const MeroWaitCursor wait;
    MeroSuperAgent* const agent = findAgent(agentId);
    if (agent == nullptr) {
        return;
    }
    const MeroDisplayKind kind = totalRadio.IsChecked()    ? DisplayTotal
                                 : detailRadio.IsChecked() ? DisplayDetail
                                 : graphRadio.IsChecked()  ? DisplayHistory
                                                           : DisplayNothing;
    const bool isScaled = isChosen(scaledRadio);
    scale.frequency = !isScaled || isScaledByFrequency() ? frequencyField.GetValue() : 0;
    MeroResultOptions options;
    agent->getResultOptions(options);
    options.extremeChecked = extremesBox.IsChecked();
    options.sumChecked = sumBox.IsChecked();
    grouping.write(options);
    agent->setResultOptions(options);
    agent->displayResults(this, kind, getTitle(isScaled), scale.scopeTime, isScaled, scale.frequency,
                          scale.frequencyPeriod);
}

void MeroSelectResultManager::showAgentInfo() {
    MeroSuperAgent* const agent = findAgent(tree.getSelectedAgent());
    if (agent == nullptr) {
        return;
    }
    SV::String name;
    if (agent->getName(name) != StatusOk) {
        displayErrorMessage(ModuleName, __LINE__);
        name = "?";
    }
    SV::String info;
    SV::String body;
    if (!agent->getInfoText(info).IsEmpty()) {
        body = SV::String(MessageDescription) + SV::String("\n\n") + info + SV::String("\n\n\n");
    }
    std::vector<SV::String> measures;
    agent->getSubAgentNames(measures, false);
    if (!measures.empty()) {
        body += SV::String(MessageMeasures) + SV::String("\n\n");
    }
    for (const SV::String& measure : measures) {
        body += SV::String("* ") + measure + SV::String("\n");
    }
    MeroViewBox view(this, name, body);
    view.SetHelpId(HelpAgentInfo);
    view.Execute();
}

// Closing

bool MeroSelectResultManager::Close() {
    if (!canClose) {
        return false;
    }
    closeResultWindows();
    EndDialog(SV::DialogOk);
    return true;
}

void MeroSelectResultManager::enterBusy() {
    ++busyCount;
    canClose = false;
    closeButton.Disable();
    closeButton.SetToolTip(SV::String(ReasonBusy));
}

void MeroSelectResultManager::leaveBusy() {
    if (--busyCount == 0) {
        canClose = true;
        closeButton.Enable();
        closeButton.SetToolTip(SV::String());
    }
}
