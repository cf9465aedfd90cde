#pragma once

#include <array>

#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_edits.h"

/// Edits the working hours of a calendar: ranges for each day of the week, and lines for special days.
class MeroCalendarDialog : public MeroModalDialog {
public:
    /// `calendarText` has to be a good calendar; another one opens with empty days.
    MeroCalendarDialog(SV::Window* parent, const SV::String& title, const SV::String& calendarText);

    /// Of what the fields hold; good after OK. The calendar's name and year stay.
    [[nodiscard]] SV::String getNewCalendarAsString() const;

private:
    static constexpr std::size_t DaysOfWeek = 7;

    void readCalendar(const SV::String& calendarText);
    void okPressed();

    SV::String head;  ///< the calendar's own element
    SV::FixedText hint;
    std::array<SV::FixedText, DaysOfWeek> dayLabels;
    std::array<SV::Edit, DaysOfWeek> dayEdits;
    SV::FixedText specialLabel;
    SV::MultiLineEdit special;
    SV::OKButton okButton;
    SV::CancelButton cancelButton;
};
