#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"

#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/agent_result_windows.h"
#include "component/display/select_result_manager.h"
#include "component/display/time_scope.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/dialog_run.h"
#include "tests/component/support/measured_world.h"
#include "tests/component/support/recording_control.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {

namespace {

namespace Form = MeroSelectResultForm;

const std::string events = "3,0\n11,0,1,Order,1\n" + linesOf({0, 3600, "1,Order,1", "a", "Check", "Bob"}) +
                           "13,3600,1,Order,1\n6,3600\n";

/// Forgets the scale of earlier openings.
void forgetScale() {
    const SV::String year(MeroTimeScopeLabel::Year);
    rememberResultScale({year, gTimeScopeYear, 1, year, gTimeScopeYear});
}

/// A run with results, in which the selection is opened by its door.
class ShownResults {
public:
    explicit ShownResults(int analysis = AnalysisPath)
        : world({.sections = "AVGSUM name:\"N\" resultscope:mainobjects history-mem class:\"Task\" "
                             "attribute:\"Number\" attribute-type:numeric\n",
                 .analysis = analysis}) {
        forgetScale();
        world.play(events);
    }
    int open(const std::function<void(SV::ModalDialog&, MeroAgentTreeListBox&, MeroId)>& use) {
        int status = StatusRefused;
        runNextDialog(
            [&](SV::ModalDialog& dialog) {
                auto& tree = control<MeroAgentTreeListBox>(dialog, Form::Tree);
                use(dialog, tree, tree.getEntryOfAgent(world.host().agent("Order", "M")));
            },
            [&] { status = gAgentManagement->showResults(nullptr); });
        return status;
    }
    [[nodiscard]] std::size_t tables() const {
        const MeroAgentResultWindows* windows = agent().getResultWindows();
        return windows != nullptr ? windows->getBrowserWindows().size() : 0;
    }
    [[nodiscard]] MeroAgentBrowserWindow& lastTable() const {
        return *agent().getResultWindows()->getBrowserWindows().back();
    }
    [[nodiscard]] MeroSuperAgent& agent() const { return *world.subAgent().getOwnerSuperAgent(); }

private:
    MeasuredWorld world;
};

std::string tablesOfAScale(UserDriver& user) {
    ShownResults results;
    std::string notes;
    const int status = results.open([&](SV::ModalDialog& dialog, MeroAgentTreeListBox& tree, MeroId agent) {
        user.doubleClick(tree, agent);
        notes += std::string(results.lastTable().GetText().GetStr()) + "\n";
        user.click(*dialog.FindControl(Form::ScaledRadio));
        user.enter(control<SV::NumericField>(dialog, Form::FrequencyField), 250);
        user.click(*dialog.FindControl(Form::ShowButton));
        notes += std::string(results.lastTable().GetText().GetStr()) + " " +
                 results.lastTable().getObjects().getField(0, 1).GetStr() + "\n";
        user.click(*dialog.FindControl(Form::DetailRadio));
        user.click(*dialog.FindControl(Form::ShowButton));
        notes += std::to_string(results.tables());
        user.click(*dialog.FindControl(Form::HistoryRadio));
        user.click(*dialog.FindControl(Form::ShowButton));
        notes += std::to_string(results.tables()) +
                 (results.agent().getResultWindows()->getGraphWindow() != nullptr ? " curves " : " none ");
        user.click(*dialog.FindControl(Form::CloseButton));
        notes += std::to_string(dialog.GetResult());
    });
    return notes + std::to_string(status) + std::to_string(results.tables());
}

std::string busyWindows(UserDriver& user) {
    ShownResults results;
    std::string notes;
    results.open([&](SV::ModalDialog& dialog, MeroAgentTreeListBox& tree, MeroId agent) {
        user.doubleClick(tree, agent);
        auto& owner = dynamic_cast<MeroBusyOwner&>(dialog);
        owner.enterBusy();
        {
            const MeroBusyScope work(owner);
            user.click(*dialog.FindControl(Form::CloseButton));
        }
        user.close(dialog);
        notes += std::to_string(dialog.IsVisible()) + std::to_string(results.tables());
        owner.leaveBusy();
        user.close(dialog);
        notes += std::to_string(dialog.IsVisible()) + std::to_string(results.tables());
    });
    return notes;
}

std::string memory(UserDriver& user) {
    ShownResults results(AnalysisVolume);
    std::string notes;
    const auto note = [&](const SV::Window& dialog) {
        notes += textOf(dialog, Form::ScaledRadio) + "|" + textOf(dialog, Form::FrequencyLabel) + "|" +
                 std::to_string(control<SV::NumericField>(dialog, Form::FrequencyField).GetValue()) + "\n";
    };
    const auto choose = [&](SV::Window& dialog, SV::ResId button, SV::ResId radio) {
        runNextDialog(
            [&](SV::ModalDialog& asked) {
                user.click(*asked.FindControl(radio));
                user.click(*asked.FindControl(MeroTimeScopeForm::OkButton));
            },
            [&] { user.click(*dialog.FindControl(button)); });
    };
    results.open([&](SV::ModalDialog& dialog, MeroAgentTreeListBox& tree, MeroId agent) {
        note(dialog);
        user.select(tree, {agent});
        user.click(*dialog.FindControl(Form::ScaledRadio));
        choose(dialog, Form::ScopeButton, MeroTimeScopeForm::MonthRadio);
        choose(dialog, Form::PeriodButton, MeroTimeScopeForm::DayRadio);
        user.enter(control<SV::NumericField>(dialog, Form::FrequencyField), 40);
        user.click(*dialog.FindControl(Form::CloseButton));
    });
    results.open([&](SV::ModalDialog& dialog, MeroAgentTreeListBox&, MeroId) { note(dialog); });
    forgetScale();
    return notes;
}

std::string information(UserDriver& user) {
    ShownResults results;
    results.agent().setInfoText("Counts.");
    std::string notes;
    results.open([&](SV::ModalDialog& dialog, MeroAgentTreeListBox& tree, MeroId agent) {
        user.select(tree, {agent});
        runNextDialog(
            [&](SV::ModalDialog& view) {
                notes += std::string(view.GetText().GetStr()) + "\n" + textOf(view, MeroViewForm::Text);
                user.close(view);
            },
            [&] { user.click(*dialog.FindControl(Form::InfoButton)); });
    });
    return notes;
}

/// A process model whose start event has a quantity in a period.
std::string startingModel(const char* name, int quantity, const char* period) {
    return std::string(R"({"name":")") + name +
           R"(","type":"Business process","objects":[{"name":"Start","class":"Start event",
            "attributes":{"Quantity":)" +
           std::to_string(quantity) + R"(,"Time period":")" + period + R"("}}]})";
}

std::string frequencyMenu(UserDriver& user) {
    const EmbeddedPlatform platform(
        R"({"format":"mero-repository","version":1,"models":[)" + startingModel("A", 12, "per day") + "," +
        startingModel("B", 0, "per year") + "," + startingModel("C", 7, "per month") +
        R"(,{"name":"Staff","type":"Working environment"}]})");
    forgetScale();
    RecordingControl engine;
    MeroAgentManagement management;
    ISortedSet<MeroId> models;
    for (const char* const name : {"A", "B", "C"}) {
        models.insert(platform.model(name));
    }
    constexpr double WorkingDays = 200.0;
    constexpr double WorkingHours = 8.0;
    management.simStart(AnalysisVolume, &engine, {0, 0, 0, 0}, models, platform.model("Staff"), nullptr,
                        WorkingDays, WorkingHours);
    std::string notes;
    {
        MeroSelectResultManager dialog(nullptr, {}, AnalysisVolume, management);
        user.show(dialog);
        auto& tree = control<MeroAgentTreeListBox>(dialog, Form::Tree);
        for (const char* const name : {"A", "B", "C", "Staff"}) {
            user.select(tree, {tree.getEntryOfModel(platform.model(name))});
            const SV::PopupMenu menu = tree.GetPopupMenu();
            notes += menu.GetItems().front().text.GetStr();
            notes += tree.userChoosePopup(20366) ? " taken: " : " refused: ";
            notes += textOf(dialog, Form::FrequencyLabel) + " " +
                     std::to_string(control<SV::NumericField>(dialog, Form::FrequencyField).GetValue()) +
                     "\n";
        }
        std::int32_t count = 0;
        SV::String unit;
        SV::String period;
        MeroSelectResultManager::getModelFrequency(platform.model("A"), count, unit, period);
        notes += std::string(unit.GetStr()) + " " + period.GetStr();
    }
    management.simEnd();
    gDaysPerYear = 365.0;
    gHoursPerDay = 24.0;
    forgetScale();
    return notes;
}

}  // namespace

std::vector<ToolkitCase> resultDialogCases() {
    return {
        {"TablesAndCurvesOpenBesideTheDialogAndGoWithIt", tablesOfAScale,
         "Results of M: values for the run as simulated\n"
         "Results of M: values for year, 250 process starts per year 750\n"
         "33 curves 110"},
        {"WorkOfAWindowKeepsTheDialogOpen", busyWindows, "1100"},
        {"ScaleIsRememberedToTheNextOpening", memory,
         "~year|~process starts per year:|1\n~month|~process starts per day:|40\n"},
        {"InformationTellsTextAndMeasures", information,
         "M\nDescription of the agent:\n\nCounts.\n\n\nMeasures of the agent:\n\n* N\n"},
        {"FrequencyOfTheModelCanBeTakenOver", frequencyMenu,
         "Process starts of the ~model (12 / day) taken: ~process starts per day: 12\n"
         "Process starts of the ~model (0 / year) refused: ~process starts per day: 12\n"
         "Process starts of the ~model (7 / month) taken: ~process starts per month: 7\n"
         "Process starts of the ~model refused: ~process starts per month: 7\n"
         "day 00:001:19:48:00"},
    };
}

}  // namespace mero::test
