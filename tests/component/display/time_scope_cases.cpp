#include "component/host/extension_controls.h"
#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"

#include "component/agents/agent_types.h"
#include "component/display/change_time_scope_dialog.h"
#include "component/management/run_globals.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/dialog_run.h"

namespace mero::test {

namespace {

namespace Form = MeroTimeScopeForm;

/// A run with a year of 200 days of 8 hours, so that its day isn't a calendar day.
struct ShortDays {
    ShortDays() {
        gDaysPerYear = 200;
        gHoursPerDay = 8;
    }
    ShortDays(const ShortDays&) = delete;
    ShortDays& operator=(const ShortDays&) = delete;
    ~ShortDays() {
        gDaysPerYear = 365;
        gHoursPerDay = 24;
    }
};

/// Radio, edits, calendar box and whether a period of the user's own can be entered, as they stand.
std::string stateOf(const SV::Window& dialog) {
    const char* radio = "none";
    const std::pair<SV::ResId, const char*> radios[] = {{Form::YearRadio, "year"},
                                                        {Form::QuarterRadio, "quarter"},
                                                        {Form::MonthRadio, "month"},
                                                        {Form::DayRadio, "day"},
                                                        {Form::UserRadio, "own"}};
    for (const auto& [id, name] : radios) {
        radio = control<SV::RadioButton>(dialog, id).IsChecked() ? name : radio;
    }
    const auto& box = control<SV::CheckBox>(dialog, Form::CalendarBox);
    return std::string(radio) + "|" + textOf(dialog, Form::NameEdit) + "|" +
           textOf(dialog, Form::PeriodEdit) + "|" + (box.IsChecked() ? "calendar" : "run") +
           (box.IsVisible() ? "" : " hidden") +
           (control<SV::Edit>(dialog, Form::PeriodEdit).IsEnabled() ? "|open" : "|fixed");
}

struct Scope {
    SV::String label;
    SV::String time;
};

/// Opens the dialog on the scope; gives its state then, what `use` notes, its result and the scope behind it.
std::string open(Scope scope, int analysis, const std::function<void(SV::ModalDialog&, std::string&)>& use) {
    MeroChangeTimeScopeDialog dialog(nullptr, analysis, scope.label, scope.time);
    std::string notes = stateOf(dialog);
    const int result = runDialog(dialog, [&](SV::ModalDialog& asked) { use(asked, notes); });
    return notes + " -> " + std::to_string(result) + " " + scope.label.GetStr() + "|" + scope.time.GetStr();
}

std::string readyScopes(UserDriver& user) {
    const ShortDays base;
    std::string notes;
    for (const SV::ResId radio : {Form::YearRadio, Form::QuarterRadio, Form::MonthRadio, Form::DayRadio}) {
        Scope chosen;
        MeroChangeTimeScopeDialog dialog(nullptr, AnalysisPath, chosen.label, chosen.time);
        runDialog(dialog, [&](SV::ModalDialog& asked) {
            user.click(*asked.FindControl(radio));
            notes += stateOf(asked);
            user.click(*asked.FindControl(Form::OkButton));
        });
        notes += " -> " + std::string(chosen.time.GetStr());
        // What was stored finds its radio again.
        const MeroChangeTimeScopeDialog again(nullptr, AnalysisPath, chosen.label, chosen.time);
        notes += control<SV::RadioButton>(again, radio).IsChecked() ? "\n" : " lost\n";
    }
    return notes;
}

std::string ownScope(UserDriver& user) {
    const ShortDays base;
    return open({"Season", "00:073:00:00:00"}, AnalysisVolume,
                [&](SV::ModalDialog& asked, std::string& notes) {
                    user.click(*asked.FindControl(Form::CalendarBox));
                    notes += "\n" + stateOf(asked);
                    user.type(control<SV::Edit>(asked, Form::PeriodEdit), "00:100:00:00:00");
                    user.type(control<SV::Edit>(asked, Form::NameEdit), "Half");
                    user.click(*asked.FindControl(Form::OkButton));
                });
}

std::string monthByHand(UserDriver& user) {
    Scope scope{"My month", "00:007:00:00:00"};
    MeroChangeTimeScopeDialog dialog(nullptr, AnalysisPath, scope.label, scope.time);
    runDialog(dialog, [&](SV::ModalDialog& asked) {
        user.type(control<SV::Edit>(asked, Form::PeriodEdit), "00:030:10:00:00");
        user.click(*asked.FindControl(Form::OkButton));
    });
    const MeroChangeTimeScopeDialog again(nullptr, AnalysisPath, scope.label, scope.time);
    return std::string(scope.label.GetStr()) + " " + stateOf(again);
}

std::string notATime(UserDriver& user) {
    const AnsweredBoxes boxes;
    const std::string notes =
        open({"Season", "00:073:00:00:00"}, AnalysisPath, [&](SV::ModalDialog& asked, std::string& seen) {
            user.type(control<SV::Edit>(asked, Form::PeriodEdit), "a season");
            user.click(*asked.FindControl(Form::CalendarBox));
            seen += "\n" + stateOf(asked);
            user.click(*asked.FindControl(Form::OkButton));
            seen += asked.IsInExecute() ? " stays" : " ends";
            user.click(*asked.FindControl(Form::CancelButton));
        });
    return notes + " " + AnsweredBoxes::messages();
}

std::string editedByFields(UserDriver& user) {
    return open({"Season", "00:073:00:00:00"}, AnalysisStaticWorkLoad,
                [&](SV::ModalDialog& asked, std::string& notes) {
                    runNextDialog(
                        [&](SV::ModalDialog& edited) {
                            user.enter(control<SV::NumericField>(edited, MeroEditTimeForm::Days), 14);
                            user.click(*edited.FindControl(MeroEditTimeForm::OkButton));
                        },
                        [&] { control<MeroToolBox>(asked, Form::TimeToolBox).userPress(1); });
                    notes += "\n" + stateOf(asked);
                    user.click(*asked.FindControl(Form::OkButton));
                });
}

}  // namespace

std::vector<ToolkitCase> timeScopeCases() {
    return {
        {"ReadyScopesAreStoredInCalendarTimeAndFoundAgain", readyScopes,
         "year|year|01:000:00:00:00|calendar|fixed -> 01:000:00:00:00\n"
         "quarter|quarter|00:091:06:00:00|calendar|fixed -> 00:091:06:00:00\n"
         "month|month|00:030:10:00:00|calendar|fixed -> 00:030:10:00:00\n"
         "day|day|00:001:00:00:00|run|fixed -> 00:001:19:48:00\n"},
        {"APeriodKeepsItsShareOfTheYear", ownScope,
         "own|Season|00:073:00:00:00|calendar|open\nown|Season|00:040:00:00:00|run|open -> "
         "1 Half|00:182:12:00:00"},
        {"APeriodOfAMonthOpensAsMonth", monthByHand, "My month month|month|00:030:10:00:00|calendar|fixed"},
        {"WhatIsNotATimeStaysAndKeepsTheDialogOpen", notATime,
         "own|Season|00:073:00:00:00|calendar|open\nown|Season|a season|run|open stays -> "
         "0 Season|00:073:00:00:00 2004FA6"},
        {"WorkLoadEditsCalendarTimeAlone", editedByFields,
         "own|Season|00:073:00:00:00|calendar hidden|open\nown|Season|00:014:00:00:00|calendar hidden|open "
         "-> 1 Season|00:014:00:00:00"},
    };
}

}  // namespace mero::test
