#pragma once

#include "component/host/core_time.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_edits.h"

/// Asks for a path.
class MeroFileDialog {
public:
    /// `forSaving` allows a path that isn't there.
    MeroFileDialog(SV::Window* parent, const SV::String& title, bool forSaving);

    /// `filter` as in "*.txt".
    void SetFilter(const SV::String& filterName, const SV::String& filter);
    void SetDirectory(const SV::String& folder) { directory = folder; }
    /// `SV::DialogOk` or `SV::DialogCancelled`.
    int Execute();
    /// Empty if cancelled.
    [[nodiscard]] const SV::String& GetPath() const { return path; }

private:
    SV::Window* parentWindow;
    SV::String titleText;
    bool saving;
    SV::String name;
    SV::String pattern;
    SV::String directory;
    SV::String path;
};

/// Shows a text to be read.
class MeroViewBox : public MeroModalDialog {
public:
    MeroViewBox(SV::Window* parent, const SV::String& title, const SV::String& text);
    [[nodiscard]] SV::String GetViewText() const { return view.GetText(); }

private:
    SV::MultiLineEdit view;
    MeroCloseButton closeButton;
};

/// Asks for one line of text.
class MeroInputDialog : public MeroModalDialog {
public:
    MeroInputDialog(SV::Window* parent, const SV::String& title, const SV::String& prompt);
    void SetInput(const SV::String& text) { edit.SetText(text); }
    [[nodiscard]] SV::String GetInput() const { return edit.GetText(); }

private:
    SV::FixedText label;
    SV::Edit edit;
    SV::OKButton okButton;
    SV::CancelButton cancelButton;
};

/// Asks for a span of time by years, days, hours, minutes and seconds.
class MeroEditTimeDlg : public MeroModalDialog {
public:
    /// `time` has the form YY:DDD:HH:MM:SS in a base of `daysPerYear` and `hoursPerDay`; a text that isn't a
    /// time stands for no time at all.
    MeroEditTimeDlg(SV::Window* parent, const SV::String& time, double daysPerYear, double hoursPerDay);
    /// Of what the fields hold.
    [[nodiscard]] SV::String GetTimeText() const;

private:
    SV::FixedText yearsLabel;
    SV::NumericField years;
    SV::FixedText daysLabel;
    SV::NumericField days;
    SV::FixedText hoursLabel;
    SV::NumericField hours;
    SV::FixedText minutesLabel;
    SV::NumericField minutes;
    SV::FixedText secondsLabel;
    SV::NumericField seconds;
    SV::OKButton okButton;
    SV::CancelButton cancelButton;
};
