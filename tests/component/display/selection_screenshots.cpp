// Saves pictures of the dialogs around the selection of results: mero-selection-screenshots FOLDER light|dark
// LANGUAGE

#include "component/host/resource_ids.h"
#include "component/host/sv_edits.h"

#include "component/agents/agent_types.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_class_select_dialog.h"
#include "component/display/agent_diagram_start_dialog.h"
#include "component/display/agent_type_box.h"
#include "component/display/change_time_scope_dialog.h"
#include "component/display/select_result_manager.h"
#include "component/display/time_scope.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"
#include "tests/component/support/dialog_run.h"
#include "tests/component/support/measured_world.h"
#include "tests/platform/toolkit/qt/picture_program.h"

namespace {

using namespace mero::test;

template <class Kind>
void click(const SV::Window& dialog, SV::ResId id) {
    control<Kind>(dialog, id).userClick();
}

/// One process, in which "Bob" checks an order.
std::string linesOfRun() {
    return "3,0\n11,0,1,Order,1\n" + linesOf({0, 3600, "1,Order,1", "a", "Check", "Bob"}) +
           "13,3600,1,Order,1\n6,3600\n";
}

void saveSelection(PictureFolder& folder, int analysis, const std::string& name) {
    namespace Form = MeroSelectResultForm;
    MeasuredWorld world({.sections =
                             "auto-showextremum\n"
                             "FREQUENCY name:\"Executions\" resultscope:mainobjects relative history-mem\n"
                             "UWWECOST name:\"Cost\" resultscope:mainobjects volume-analysis "
                             "wlstatic-analysis class:\"Worker\" attribute:\"Hourly wages\"\n",
                         .analysis = analysis});
    world.play(linesOfRun());
    const MeroId agent = world.host().agent("Order", "M");
    ISortedSet<MeroId> agents;
    agents.insert(agent);
    MeroSelectResultManager dialog(nullptr, agents, analysis, *gAgentManagement);
    dialog.Show();
    folder.save(dialog, name + "_nothing");
    auto& tree = control<MeroAgentTreeListBox>(dialog, Form::Tree);
    tree.userSelect(tree.getEntryOfAgent(agent));
    click<SV::RadioButton>(dialog, Form::ScaledRadio);
    control<SV::CheckBox>(dialog, Form::GroupBox).userClick();
    folder.save(dialog, name);
    click<SV::RadioButton>(dialog, Form::HistoryRadio);
    folder.save(dialog, name + "_history");
}

void saveScope(PictureFolder& folder) {
    SV::String label(MeroTimeScopeLabel::Month);
    SV::String time = gTimeScopeMonth;
    MeroChangeTimeScopeDialog ready(nullptr, AnalysisVolume, label, time);
    ready.Show();
    folder.save(ready, "scope_month");
    time = "00:073:00:00:00";
    MeroChangeTimeScopeDialog own(nullptr, AnalysisVolume, label, time);
    own.Show();
    folder.save(own, "scope_own");
    MeroChangeTimeScopeDialog workLoad(nullptr, AnalysisStaticWorkLoad, label, time);
    workLoad.Show();
    folder.save(workLoad, "scope_work_load");
}

void saveChart(PictureFolder& folder) {
    namespace Form = MeroDiagramStartForm;
    MeroAgentBrowserObjects table;
    table.addColumn("Executions per process", 80, 1, 2);
    table.addColumn("Costs", 80, 1, 2);
    table.addRow(-1, 1, {"1. Order processing", "250", "18250.5"});
    table.addRow(1, 2, {"1.1. Check the order (Order processing)", "250", "1250.25"});
    table.addRow(1, 3, {"1.2. Pack (Order processing)", "231", "9320"});
    bool ok = false;
    MeroAgentDiagramStartDialog dialog(nullptr, table, ok);
    dialog.Show();
    control<MeroTreeListBox>(dialog, Form::RowList).userSelect(std::vector<MeroId>{0, 1, 2});
    control<MeroTreeListBox>(dialog, Form::ColumnList).userSelect(2);
    folder.save(dialog, "chart_choice");
    click<SV::PushButton>(dialog, Form::OkButton);
    folder.save(*dialog.getGraphWindow(), "chart");
}

void saveTypes(PictureFolder& folder) {
    namespace Form = MeroAgentsInModelsForm;
    const MeasuredWorld world({.sections = ""});
    SV::ModalDialog dialog(nullptr, Form::Form);
    MeroAgentTreeListBox tree(&dialog, Form::Tree, true);
    SV::MultiLineEdit info(&dialog, Form::InfoEdit);
    MeroAgentTypeBox types(&dialog, Form::TypeBox, AnalysisVolume);
    tree.setManagement(*gAgentManagement);
    tree.insertModels({world.host().model("Order")}, world.host().model("Staff"), AnalysisVolume);
    types.setInfoWindow(&info);
    types.SetSelectHdl([&] { types.showTemplateInfo(); });
    types.updateForModel(world.host().model("Order"));
    dialog.Show();
    types.userSelect(types.GetChild(MeroNoTreeEntry, 3));
    folder.save(dialog, "predefined_agents");
    ISortedSet<MeroId> classes;
    MeroCoreModelingManager::GetGlobal()->enhanced().getAllSubClasses(Mero_GetCoreVar(CoreActivity), classes);
    MeroAgentClassSelectDialog classDialog(nullptr, classes);
    classDialog.Show();
    folder.save(classDialog, "class_choice");
}

void saveAll(PictureFolder& folder) {
    saveSelection(folder, AnalysisPath, "selection_path");
    saveSelection(folder, AnalysisVolume, "selection_capacity");
    saveSelection(folder, AnalysisStaticWorkLoad, "selection_work_load");
    saveScope(folder);
    saveChart(folder);
    saveTypes(folder);
}

}  // namespace

int main(int count, char** arguments) {
    return savePictures(count, arguments, saveAll);
}
