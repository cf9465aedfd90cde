#include "component/display/change_time_scope_dialog.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/core_time.h"
#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"

#include "component/agents/agent_types.h"
#include "component/display/time_scope.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr char ModuleName[] = "aeadsply";
constexpr SV::ResId MessageNotATime(0x2004FA6);
constexpr SV::ResId MessageEditTime(0x2004FA7);
constexpr int EditTimeItem = 1;

}  // namespace

namespace Form = MeroTimeScopeForm;

MeroChangeTimeScopeDialog::MeroChangeTimeScopeDialog(SV::Window* parent, int analysisType,
                                                     SV::String& scopeLabel, SV::String& scopeTime)
    : MeroModalDialog(parent, Form::Form),
      label(scopeLabel),
      time(scopeTime),
      frame(this, Form::Frame),
      yearRadio(this, Form::YearRadio),
      quarterRadio(this, Form::QuarterRadio),
      monthRadio(this, Form::MonthRadio),
      dayRadio(this, Form::DayRadio),
      userRadio(this, Form::UserRadio),
      nameLabel(this, Form::NameLabel),
      nameEdit(this, Form::NameEdit),
      periodLabel(this, Form::PeriodLabel),
      periodEdit(this, Form::PeriodEdit),
      timeToolBox(this, Form::TimeToolBox),
      calendarBox(this, Form::CalendarBox),
      okButton(this, Form::OkButton),
      cancelButton(this, Form::CancelButton),
      helpButton(this, Form::HelpButton),
      readyScopes{{yearRadio, MeroTimeScopeLabel::Year, gTimeScopeYear, true},
                  {quarterRadio, MeroTimeScopeLabel::Quarter, gTimeScopeQuarter, true},
                  {monthRadio, MeroTimeScopeLabel::Month, gTimeScopeMonth, true},
                  {dayRadio, MeroTimeScopeLabel::Day, gTimeScopeDay, false}} {
    timeToolBox.InsertItem(EditTimeItem, SV::Image(Form::TimeButtonImage), SV::String(MessageEditTime));
    connectHandlers();
    showScope();
    if (isWorkLoadAnalysis(analysisType)) {
        calendarBox.Hide();
    }
}

void MeroChangeTimeScopeDialog::connectHandlers() {
    for (const ReadyScope& scope : readyScopes) {
        scope.radio.SetClickHdl([this, &scope] { showReadyScope(scope); });
    }
    userRadio.SetClickHdl([this] { enterOwnScope(); });
    calendarBox.SetClickHdl([this] { convertPeriod(); });
    timeToolBox.SetSelectHdl([this](int) { editPeriod(); });
    okButton.SetClickHdl([this] { accept(); });
}

void MeroChangeTimeScopeDialog::showScope() {
    const SV::String text = normalizeScope(time);
    const ReadyScope* const ready = label.IsEmpty() ? readyScopes : findReadyScope(text);
    if (ready != nullptr) {
        checkOnly(ready->radio);
        showReadyScope(*ready);
        return;
    }
    checkOnly(userRadio);
    nameEdit.SetText(label);
    periodEdit.SetText(text);
    enterOwnScope();
}

const MeroChangeTimeScopeDialog::ReadyScope* MeroChangeTimeScopeDialog::findReadyScope(
    const SV::String& text) const {
    const auto* const found = std::ranges::find(readyScopes, text, calendarTextOf);
    return found != std::ranges::end(readyScopes) ? found : nullptr;
}

SV::String MeroChangeTimeScopeDialog::calendarTextOf(const ReadyScope& scope) {
    SV::String text = scope.text;
    if (!scope.isCalendarTime && !convertScopeToCalendarBase(scope.text, text)) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return text;
}

void MeroChangeTimeScopeDialog::checkOnly(SV::RadioButton& radio) {
    for (SV::RadioButton* const each : {&yearRadio, &quarterRadio, &monthRadio, &dayRadio, &userRadio}) {
        each->Check(each == &radio);
    }
}

void MeroChangeTimeScopeDialog::showReadyScope(const ReadyScope& scope) {
    calendarBox.Check(scope.isCalendarTime);
    nameEdit.SetText(SV::String(scope.name));
    periodEdit.SetText(scope.text);
    enableOwnScope(false);
}

void MeroChangeTimeScopeDialog::enterOwnScope() {
    enableOwnScope(true);
    nameEdit.GrabFocus();
}

void MeroChangeTimeScopeDialog::enableOwnScope(bool enable) {
    for (SV::Control* const each :
         {static_cast<SV::Control*>(&calendarBox), static_cast<SV::Control*>(&nameLabel),
          static_cast<SV::Control*>(&nameEdit), static_cast<SV::Control*>(&periodLabel),
          static_cast<SV::Control*>(&periodEdit)}) {
        each->Enable(enable);
    }
    timeToolBox.EnableItem(EditTimeItem, enable);
}

void MeroChangeTimeScopeDialog::convertPeriod() {
    SV::String converted;
    const bool isTime = calendarBox.IsChecked()
                            ? convertScopeToCalendarBase(periodEdit.GetText(), converted)
                            : convertScopeToSimulationBase(periodEdit.GetText(), converted);
    if (isTime) {
        periodEdit.SetText(converted);
    }
    checkOnly(userRadio);
}

void MeroChangeTimeScopeDialog::editPeriod() {
    MeroEditTimeDlg dialog(this, periodEdit.GetText(), gDaysPerYear, gHoursPerDay);
    if (dialog.Execute() == SV::DialogOk) {
        periodEdit.SetText(dialog.GetTimeText());
    }
}

void MeroChangeTimeScopeDialog::accept() {
    const auto* const chosen =
        std::ranges::find_if(readyScopes, [](const ReadyScope& each) { return each.radio.IsChecked(); });
    if (chosen != std::ranges::end(readyScopes)) {
        label = SV::String(chosen->name);
        time = calendarTextOf(*chosen);
    } else if (!acceptOwnScope()) {
        return;
    }
    EndDialog(SV::DialogOk);
}

bool MeroChangeTimeScopeDialog::acceptOwnScope() {
    SV::String text = periodEdit.GetText();
    if (!MeroCoreTime::isTime(text)) {
        showInfoBox(SV::String(MessageNotATime), this);
        periodEdit.GrabFocus();
        return false;
    }
    if (!calendarBox.IsChecked() && !convertScopeToCalendarBase(text, text)) {
        displayErrorMessage(ModuleName, __LINE__);
        return false;
    }
    time = normalizeScope(text);
    label = nameEdit.GetText();
    return true;
}
