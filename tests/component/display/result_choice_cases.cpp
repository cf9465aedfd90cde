#include <algorithm>

#include "component/host/resource_ids.h"

#include "component/agents/super_agent.h"
#include "component/display/select_result_manager.h"
#include "component/management/run_globals.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/dialog_run.h"
#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

namespace Form = MeroSelectResultForm;

// Measures of an agent, by what they leave to choose.
const std::string values = "FREQUENCY name:\"V\" resultscope:mainobjects absolute\n";
const std::string curves =
    "FREQUENCY name:\"H\" resultscope:mainobjects history-mem dont-show-result absolute\n";
const std::string both = "FREQUENCY name:\"B\" resultscope:mainobjects history-mem absolute\n";
const std::string groupable =
    "UWWECOST name:\"G\" volume-analysis wlstatic-analysis resultscope:mainobjects class:\"Worker\" "
    "attribute:\"Hourly wages\"\n";

/// The selection dialog over one agent with results.
class Choice {
public:
    Choice(const std::string& head, const std::string& measures, int analysis)
        : world({.sections = head + measures, .analysis = analysis}),
          agentId(world.host().agent("Order", "M")),
          dialog(nullptr, onlyAgent(agentId), analysis, *gAgentManagement) {
        world.play("3,0\n11,0,1,Order,1\n" + linesOf({0, 36000, "1,Order,1", "a", "Check", "Bob"}) +
                   "13,36000,1,Order,1\n6,36000\n");
    }

    void select(UserDriver& user) {
        auto& tree = control<MeroAgentTreeListBox>(dialog, Form::Tree);
        user.select(tree, {tree.getEntryOfAgent(agentId)});
    }
    void selectModel(UserDriver& user) {
        auto& tree = control<MeroAgentTreeListBox>(dialog, Form::Tree);
        user.select(tree, {tree.getEntryOfModel(world.host().model("Order"))});
    }
    [[nodiscard]] MeroSuperAgent& agent() const {
        MeroSuperAgent* found = nullptr;
        gAgentManagement->getAgentFromID(found, agentId, 0);
        return *found;
    }

private:
    static ISortedSet<MeroId> onlyAgent(MeroId id) {
        ISortedSet<MeroId> ids;
        ids.insert(id);
        return ids;
    }

    MeasuredWorld world;
    MeroId agentId;

public:
    MeroSelectResultManager dialog;
};

template <class Kind>
std::string markOf(const SV::Window& dialog, SV::ResId id, const char* name) {
    const auto& shown = control<Kind>(dialog, id);
    if (!shown.IsVisible()) {
        return "";
    }
    return std::string(name) + (shown.IsEnabled() ? "+" : "-") + (shown.IsChecked() ? "*" : "") + " ";
}

std::string markOf(const SV::Window& dialog, SV::ResId id, const char* name) {
    const auto& shown = control<SV::Control>(dialog, id);
    return shown.IsVisible() ? std::string(name) + (shown.IsEnabled() ? "+ " : "- ") : "";
}

/// What is shown: enabled with "+", checked with "*".
std::string stateOf(const SV::Window& dialog) {
    using Radio = SV::RadioButton;
    using Box = SV::CheckBox;
    return markOf<Radio>(dialog, Form::ValuesRadio, "values") +
           markOf<Radio>(dialog, Form::HistoryRadio, "history") + "| " +
           markOf<Radio>(dialog, Form::TotalRadio, "total") +
           markOf<Radio>(dialog, Form::DetailRadio, "detail") +
           markOf<Radio>(dialog, Form::GraphRadio, "graph") + "| " +
           markOf<Box>(dialog, Form::ExtremesBox, "extremes") + markOf<Box>(dialog, Form::SumBox, "sum") +
           markOf<Box>(dialog, Form::GroupBox, "group") + markOf(dialog, Form::ClassList, "class") + "| " +
           markOf<Radio>(dialog, Form::UnscaledRadio, "plain") +
           markOf<Radio>(dialog, Form::ScaledRadio, "scaled") +
           markOf(dialog, Form::FrequencyField, "frequency") + "| " +
           markOf(dialog, Form::ShowButton, "show");
}

/// What can be chosen for an agent right after it has been selected.
ToolkitCase rule(const char* name, const std::string& head, const std::string& measures, int analysis,
                 const std::string& expected) {
    return {name,
            [=](UserDriver& user) {
                Choice choice(head, measures, analysis);
                user.show(choice.dialog);
                choice.select(user);
                return stateOf(choice.dialog);
            },
            expected};
}

/// As `rule`, and after each of the clicks.
ToolkitCase clicks(const char* name, const std::string& head, const std::string& measures, int analysis,
                   const std::vector<SV::ResId>& clicked, const std::string& expected) {
    return {name,
            [=](UserDriver& user) {
                Choice choice(head, measures, analysis);
                user.show(choice.dialog);
                choice.select(user);
                std::string states;
                for (const SV::ResId each : clicked) {
                    user.click(*choice.dialog.FindControl(each));
                    states += stateOf(choice.dialog) + "\n";
                }
                return states;
            },
            expected};
}

std::string modelSelected(UserDriver& user) {
    Choice choice("", both, AnalysisVolume);
    user.show(choice.dialog);
    std::string states = stateOf(choice.dialog);
    choice.select(user);
    choice.selectModel(user);
    const bool isSame = states == stateOf(choice.dialog);
    states += markOf(choice.dialog, Form::Tree, "tree") + markOf(choice.dialog, Form::CloseButton, "close") +
              markOf(choice.dialog, Form::HelpButton, "help");
    return states + (isSame ? "as before" : "changed");
}

std::string groupingIsKept(UserDriver& user) {
    Choice choice("grouping-class:\"Role\"\n", groupable, AnalysisVolume);
    user.show(choice.dialog);
    choice.select(user);
    user.click(*choice.dialog.FindControl(Form::GroupBox));
    auto& classes = control<SV::ListBox>(choice.dialog, Form::ClassList);
    auto& relations = control<SV::ListBox>(choice.dialog, Form::RelationList);
    const auto lists = [&] {
        std::string text;
        for (const SV::ListBox* list : {&classes, &relations}) {
            for (std::size_t each = 0; each < list->GetEntryCount(); ++each) {
                text += std::string(list->GetEntry(each).GetStr()) +
                        (list->IsEntryPosSelected(each) ? "* " : " ");
            }
            text += "| ";
        }
        return text;
    };
    std::string notes = lists();
    user.select(classes, classes.GetEntryPos("Organisational unit"));
    notes += lists();
    const AnsweredBoxes boxes;
    user.click(*choice.dialog.FindControl(Form::ShowButton));
    MeroResultOptions options;
    choice.agent().getResultOptions(options);
    notes += std::to_string(options.groupChecked) + " " + options.groupClass.GetStr() + "/" +
             options.groupRelation.GetStr();
    choice.agent().closeResultWindows();
    return notes;
}

}  // namespace

std::vector<ToolkitCase> resultChoiceCases() {
    const std::string plain = "| plain+* scaled+ frequency- | show+ ";
    const std::string noScale = "| plain-* scaled- frequency- | show+ ";
    return {
        rule("ValuesAlone", "", values, AnalysisPath,
             "values+* history- | total+* detail+ graph- | extremes+ sum+ " + plain),
        rule("HistoryAlone", "", curves, AnalysisPath,
             "values- history+* | total- detail- graph+* | extremes- sum- " + noScale),
        rule("ValuesAndHistory", "", both, AnalysisPath,
             "values+* history+ | total+* detail+ graph- | extremes+ sum+ " + plain),
        rule("NotGroupable", "", both, AnalysisVolume,
             "values+* history+ | total+* detail+ graph- | extremes+ sum+ group- class- " + plain),
        rule("Groupable", "", groupable, AnalysisVolume,
             "values+* history- | total+* detail+ graph- | extremes+ sum+ group+ class- " + plain),
        rule("GroupableButCurvesAlone", "", curves + "FORMULA name:\"x\" expression:\"1\"", AnalysisVolume,
             "values- history+* | total- detail- graph+* | extremes- sum- group- class- " + noScale),
        rule("GroupedByTheAgent", "auto-group\nauto-buildsum\nauto-showextremum\n", groupable, AnalysisVolume,
             "values+* history- | total+* detail+ graph- | extremes+* sum+* group+* class+ " + plain),
        rule("GroupedButNotGroupable", "auto-group\n", values, AnalysisVolume,
             "values+* history- | total+* detail+ graph- | extremes+ sum+ group- class- " + plain),
        rule("LockedByTheAgent", "auto-group\nauto-buildsum\nlock-group\nlock-buildsum\nlock-extremum\n",
             groupable, AnalysisVolume,
             "values+* history- | total+* detail+ graph- | extremes- sum-* group-* class- " + plain),
        rule("HiddenByTheAgent", "hide-group\nhide-buildsum\nhide-extremum\n", groupable, AnalysisVolume,
             "values+* history- | total+* detail+ graph- | " + plain),
        rule("WorkLoadHasNoFrequency", "", values + groupable, AnalysisStaticWorkLoad,
             "values+* history- | total+* detail+ graph- | extremes+ sum+ group+ class- | plain+* scaled+ | "
             "show+ "),
        clicks("HistoryLeavesTheGraphAlone", "auto-group\n", both + groupable, AnalysisVolume,
               {Form::DetailRadio, Form::HistoryRadio, Form::ValuesRadio, Form::GraphRadio},
               "values+* history+ | total+ detail+* graph- | extremes+ sum+ group+* class+ " + plain +
                   "\n"
                   "values+ history+* | total- detail- graph+* | extremes- sum- group-* class- " +
                   noScale +
                   "\n"
                   "values+* history+ | total+ detail+* graph+ | extremes+ sum+ group+* class+ " +
                   plain +
                   "\n"
                   "values+ history+* | total- detail- graph+* | extremes- sum- group-* class- " +
                   noScale + "\n"),
        clicks("LockedBoxesStayLocked", "lock-group\nlock-extremum\n", both + groupable, AnalysisVolume,
               {Form::HistoryRadio, Form::ValuesRadio},
               "values+ history+* | total- detail- graph+* | extremes- sum- group- class- " + noScale +
                   "\n"
                   "values+* history+ | total+ detail+* graph+ | extremes- sum+ group- class- " +
                   plain + "\n"),
        clicks("FrequencyFollowsTheScale", "", both, AnalysisPath,
               {Form::ScaledRadio, Form::HistoryRadio, Form::ValuesRadio, Form::UnscaledRadio},
               "values+* history+ | total+* detail+ graph- | extremes+ sum+ | plain+ scaled+* frequency+ | "
               "show+ \n"
               "values+ history+* | total- detail- graph+* | extremes- sum- | plain- scaled-* frequency- | "
               "show+ \n"
               "values+* history+ | total+ detail+* graph+ | extremes+ sum+ | plain+ scaled+* frequency+ | "
               "show+ \n"
               "values+* history+ | total+ detail+* graph+ | extremes+ sum+ " +
                   plain + "\n"),
        {"AModelLeavesNothingToChoose", modelSelected,
         "values-* history- | total-* detail- graph- | extremes- sum- group- class- | plain-* scaled- "
         "frequency- | show- tree+ close+ help+ as before"},
        {"GroupingIsKeptInTheAgent", groupingIsKept,
         "Organisational unit Role* | Has role* Used by | Organisational unit* Role | Belongs to* Provided "
         "by | 1 Organisational unit/Belongs to"},
    };
}

}  // namespace mero::test
