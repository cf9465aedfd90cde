#include "component/host/calendar_dialog.h"

#include <algorithm>
#include <sstream>
#include <string>

#include "component/host/calendar.h"
#include "component/host/kiln_parser.h"
#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"

#include "platform/toolkit/toolkit_messages.h"

namespace {

constexpr std::array<const char*, 7> DayNames{"mon", "tue", "wed", "thu", "fri", "sat", "sun"};

SV::ResId labelOf(std::uint32_t day) {
    return SV::ResId(MeroCalendarForm::FirstDayLabel.value + 2 * day);
}

SV::ResId editOf(std::uint32_t day) {
    return SV::ResId(MeroCalendarForm::FirstDayEdit.value + 2 * day);
}

/// A key with its value, as an element has it.
SV::String attribute(const char* key, const SV::String& value) {
    return SV::String(" ") + SV::String(key) + ":" + MeroKilnParser::GetKilnTextOfStrValue(value);
}

}  // namespace

MeroCalendarDialog::MeroCalendarDialog(SV::Window* parent, const SV::String& title,
                                       const SV::String& calendarText)
    : MeroModalDialog(parent, MeroCalendarForm::Form),
      head("CALENDAR"),
      hint(this, MeroCalendarForm::Hint),
      dayLabels{SV::FixedText(this, labelOf(0)), SV::FixedText(this, labelOf(1)),
                SV::FixedText(this, labelOf(2)), SV::FixedText(this, labelOf(3)),
                SV::FixedText(this, labelOf(4)), SV::FixedText(this, labelOf(5)),
                SV::FixedText(this, labelOf(6))},
      dayEdits{SV::Edit(this, editOf(0)), SV::Edit(this, editOf(1)), SV::Edit(this, editOf(2)),
               SV::Edit(this, editOf(3)), SV::Edit(this, editOf(4)), SV::Edit(this, editOf(5)),
               SV::Edit(this, editOf(6))},
      specialLabel(this, MeroCalendarForm::SpecialLabel),
      special(this, MeroCalendarForm::Special),
      okButton(this, MeroCalendarForm::OkButton),
      cancelButton(this, MeroCalendarForm::CancelButton) {
    SetText(title);
    readCalendar(calendarText);
    okButton.SetClickHdl([this] { okPressed(); });
}

void MeroCalendarDialog::readCalendar(const SV::String& calendarText) {
    MeroKilnParser parser(calendarText, GetText(), SV::String());
    if (parser.Parse() != 0 || parser.GetElemCount() == 0) {
        return;
    }
    if (parser.HasStrValue()) {
        head += SV::String(" ") + MeroKilnParser::GetKilnTextOfStrValue(parser.GetStrValue());
    }
    if (parser.IsContained("year")) {
        head += attribute("year", parser.GetStrValue("year"));
    }
    // The days of a week replace those of every day, wherever they stand.
    SV::String specialLines;
    for (const char* rank : {"DAILY", "WEEKLY", "DAY", "DATE"}) {
        for (int element = 1; element < parser.GetElemCount(); ++element) {
            parser.SetCurElemIndex(element);
            if (parser.GetKeyword() != SV::String(rank)) {
                continue;
            }
            const SV::String hours = parser.GetStrValue("hours");
            const SV::String days = parser.GetStrValue("days");
            const char* key = SV::String(rank) == SV::String("DAY") ? "number" : "date";
            if (parser.IsContained(key)) {
                specialLines += SV::String(rank) + attribute(key, parser.GetStrValue(key)) +
                                attribute("hours", hours) + "\n";
                continue;
            }
            for (std::size_t day = 0; day < DaysOfWeek; ++day) {
                if (!parser.IsContained("days") || days.Search(DayNames.at(day)) != SV::String::NotFound) {
                    dayEdits.at(day).SetText(hours);
                }
            }
        }
    }
    special.SetText(specialLines);
}

SV::String MeroCalendarDialog::getNewCalendarAsString() const {
    SV::String text = head;
    const SV::String& first = dayEdits.front().GetText();
    const bool areSame =
        std::ranges::all_of(dayEdits, [&](const SV::Edit& each) { return each.GetText() == first; });
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        const SV::String& hours = dayEdits.at(day).GetText();
        const auto before = dayEdits.begin() + static_cast<std::ptrdiff_t>(day);
        const bool isTold = std::any_of(dayEdits.begin(), before,
                                        [&](const SV::Edit& each) { return each.GetText() == hours; });
        if (hours.IsEmpty() || isTold) {
            continue;
        }
        SV::String days;
        for (std::size_t other = day; other < DaysOfWeek; ++other) {
            if (dayEdits.at(other).GetText() == hours) {
                days += SV::String(days.IsEmpty() ? "" : " ") + SV::String(DayNames.at(other));
            }
        }
        text += SV::String("\n") +
                (areSame ? SV::String("DAILY") : SV::String("WEEKLY") + attribute("days", days)) +
                attribute("hours", hours);
    }
    std::istringstream lines(special.GetText().GetStr());
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) {
            text += SV::String("\n") + SV::String(line);
        }
    }
    return text;
}

void MeroCalendarDialog::okPressed() {
    constexpr int FirstDay = 1;
    constexpr int DaysOfYear = 365;
    MeroCalendar calendar(0, 0, FirstDay, DaysOfYear);
    if (calendar.initializeCalendar(getNewCalendarAsString()) != 0) {
        MeroErrorBox(this, SV::BoxStyleError, SV::String(mero::MessageBadCalendar) + calendar.getErrorText())
            .Execute(0);
        return;
    }
    EndDialog(SV::DialogOk);
}
