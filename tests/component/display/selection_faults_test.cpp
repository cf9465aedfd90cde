#include <gtest/gtest.h>

#include "component/host/resource_ids.h"

#include "component/agents/agent_types.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/agent_result_windows.h"
#include "component/display/agent_tree_list_box.h"
#include "component/display/agent_type_box.h"
#include "component/display/select_result_manager.h"
#include "component/management/run_globals.h"
#include "tests/component/support/dialog_run.h"
#include "tests/component/support/failing_repository.h"
#include "tests/component/support/measured_world.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {

namespace {

/// Does `act` once with a good repository, then with each of its calls failing in turn. `act` gives what it
/// came to, which may differ from the good one only after a box or an internal error.
template <class Act>
void failEachCall(Act act) {
    std::string good;
    int calls = 0;
    for (int failing = FailingRepository::NoCall; failing <= calls; ++failing) {
        const AnsweredBoxes boxes;
        std::string failed;
        bool isTold = false;
        const std::string came = act([&](const auto& use) {
            InternalErrorLog::GetGlobal().clear();
            const FailingRepository repository(failing);
            use();
            calls = failing == FailingRepository::NoCall ? repository.callCount() : calls;
            failed = repository.failedOperation();
            isTold = !EmbeddedPlatform::internalErrors().empty() || !AnsweredBoxes::messages().empty();
        });
        if (failing == FailingRepository::NoCall) {
            good = came;
        } else if (failed != "IsModelLoaded") {
            EXPECT_TRUE(came == good || isTold) << failing << " " << failed << ": " << came;
        }
    }
    EXPECT_GT(calls, 20);
}

TEST(SelectionFaults, TreeLeavesOutWhatTheRepositoryDoesNotTell) {
    failEachCall([](const auto& run) {
        const EmbeddedPlatform platform(
            sampleModels(agentDocument("M", "Process agent", canonicalDefinition, taskObjects)));
        MeroAgentManagement management;
        SV::ModalDialog window(nullptr, MeroAgentsInModelsForm::Form);
        MeroAgentTreeListBox tree(&window, MeroAgentsInModelsForm::Tree, true);
        tree.setManagement(management);
        run([&] { tree.insertModels({platform.model("Order")}, platform.model("Staff"), AnalysisPath); });
        return std::to_string(tree.GetEntryCount());
    });
}

TEST(SelectionFaults, CreationTellsWhatFailed) {
    failEachCall([](const auto& run) {
        const EmbeddedPlatform platform(sampleModels(""));
        MeroAgentManagement management;
        SV::ModalDialog window(nullptr, MeroAgentsInModelsForm::Form);
        MeroId made = MeroNoId;
        int status = StatusRefused;
        run([&] {
            MeroAgentTypeBox box(&window, MeroAgentsInModelsForm::TypeBox, AnalysisPath);
            box.updateForModel(platform.model("Order"));
            box.SelectEntry(box.GetChild(MeroNoTreeEntry, 1));
            status = box.createSuperAgentFromSelection(platform.model("Order"), made);
        });
        return std::to_string(status);
    });
}

TEST(SelectionFaults, DialogGoesOnWithWhatIsThere) {
    namespace Form = MeroSelectResultForm;
    failEachCall([](const auto& run) {
        MeasuredWorld world({.sections = "UWWECOST name:\"G\" volume-analysis resultscope:mainobjects "
                                         "class:\"Worker\" attribute:\"Hourly wages\"\n",
                             .analysis = AnalysisVolume});
        world.play("3,0\n11,0,1,Order,1\n" + linesOf({0, 3600, "1,Order,1", "a", "Check", "Bob"}) +
                   "13,3600,1,Order,1\n6,3600\n");
        const MeroId agent = world.host().agent("Order", "M");
        ISortedSet<MeroId> agents;
        agents.insert(agent);
        std::size_t tables = 0;
        run([&] {
            MeroSelectResultManager dialog(nullptr, agents, AnalysisVolume, *gAgentManagement);
            dialog.Show();
            auto& tree = control<MeroAgentTreeListBox>(dialog, Form::Tree);
            tree.userSelect(tree.getEntryOfAgent(agent));
            control<SV::CheckBox>(dialog, Form::GroupBox).userClick();
            tree.userOpenPopup();
            control<SV::PushButton>(dialog, Form::InfoButton).userClick();
            control<SV::PushButton>(dialog, Form::ShowButton).userClick();
            const auto* windows = world.subAgent().getOwnerSuperAgent()->getResultWindows();
            tables = windows != nullptr ? windows->getBrowserWindows().size() : 0;
        });
        return std::to_string(tables);
    });
}

}  // namespace

}  // namespace mero::test
