#include "component/host/host_dialogs.h"

#include <algorithm>
#include <cstdio>

#include "component/host/resource_ids.h"

MeroFileDialog::MeroFileDialog(SV::Window* parent, const SV::String& title, bool forSaving)
    : parentWindow(parent), titleText(title), saving(forSaving) {}

void MeroFileDialog::SetFilter(const SV::String& filterName, const SV::String& filter) {
    name = filterName;
    pattern = filter;
}

int MeroFileDialog::Execute() {
    const auto& responder = SV::DialogDesk::GetGlobal().getFileResponder();
    const SV::String filter = name.IsEmpty() ? pattern : name + " (" + pattern + ")";
    path = responder
               ? responder(titleText, saving)
               : SV::Toolkit::GetGlobal().chooseFile(parentWindow, titleText, filter, directory, saving);
    return path.IsEmpty() ? SV::DialogCancelled : SV::DialogOk;
}

MeroViewBox::MeroViewBox(SV::Window* parent, const SV::String& title, const SV::String& text)
    : MeroModalDialog(parent, MeroViewForm::Form),
      view(this, MeroViewForm::Text),
      closeButton(this, MeroViewForm::CloseButton) {
    SetText(title);
    view.SetText(text);
}

MeroInputDialog::MeroInputDialog(SV::Window* parent, const SV::String& title, const SV::String& prompt)
    : MeroModalDialog(parent, MeroInputForm::Form),
      label(this, MeroInputForm::Label),
      edit(this, MeroInputForm::Edit),
      okButton(this, MeroInputForm::OkButton),
      cancelButton(this, MeroInputForm::CancelButton) {
    SetText(title);
    label.SetText(prompt);
    edit.GrabFocus();
}

MeroEditTimeDlg::MeroEditTimeDlg(SV::Window* parent, const SV::String& time, double daysPerYear,
                                 double hoursPerDay)
    : MeroModalDialog(parent, MeroEditTimeForm::Form),
      yearsLabel(this, MeroEditTimeForm::YearsLabel),
      years(this, MeroEditTimeForm::Years),
      daysLabel(this, MeroEditTimeForm::DaysLabel),
      days(this, MeroEditTimeForm::Days),
      hoursLabel(this, MeroEditTimeForm::HoursLabel),
      hours(this, MeroEditTimeForm::Hours),
      minutesLabel(this, MeroEditTimeForm::MinutesLabel),
      minutes(this, MeroEditTimeForm::Minutes),
      secondsLabel(this, MeroEditTimeForm::SecondsLabel),
      seconds(this, MeroEditTimeForm::Seconds),
      okButton(this, MeroEditTimeForm::OkButton),
      cancelButton(this, MeroEditTimeForm::CancelButton) {
    // Read and written again, so that each part is below the one above it in this base.
    MeroCoreTime value;
    value.setBase(daysPerYear, hoursPerDay);
    value._s2d(time);
    int parts[5] = {};
    if (MeroCoreTime::isTime(time)) {
        std::sscanf(value.asText().GetStr(), "%d:%d:%d:%d:%d", &parts[0], &parts[1], &parts[2], &parts[3],
                    &parts[4]);
    }
    SV::NumericField* fields[] = {&years, &days, &hours, &minutes, &seconds};
    for (std::size_t each = 0; each < std::size(parts); ++each) {
        fields[each]->SetValue(parts[each]);
    }
}

SV::String MeroEditTimeDlg::GetTimeText() const {
    char text[80];
    std::snprintf(text, sizeof text, "%02d:%03d:%02d:%02d:%02d", years.GetValue(), days.GetValue(),
                  hours.GetValue(), minutes.GetValue(), seconds.GetValue());
    return text;
}
