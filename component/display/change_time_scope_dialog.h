#pragma once

#include "component/host/extension_controls.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_edits.h"

/// Asks for the period that values are scaled to: a year, quarter, month or day, or one of the user's own
/// with a name. The user writes a period of his own in calendar time, of 365 days of 24 hours, or in the time
/// base of the run, and sees it converted when he changes between them.
class MeroChangeTimeScopeDialog : public MeroModalDialog {
public:
    /// `scopeLabel` and `scopeTime` are shown and, when the dialog ends with `SV::DialogOk`, written; they
    /// have to outlive it. The time is a text of 365 days of 24 hours, also where it was written in another
    /// base. The work-load analyses run on calendar time and offer no other.
    MeroChangeTimeScopeDialog(SV::Window* parent, int analysisType, SV::String& scopeLabel,
                              SV::String& scopeTime);

private:
    struct ReadyScope {
        SV::RadioButton& radio;
        SV::ResId name;
        const SV::String& text;
        bool isCalendarTime;
    };

    void connectHandlers();
    void showScope();
    /// Null for a period of the user's own.
    [[nodiscard]] const ReadyScope* findReadyScope(const SV::String& text) const;
    /// The text in calendar time; a ready scope that is none can always be converted.
    [[nodiscard]] static SV::String calendarTextOf(const ReadyScope& scope);
    void checkOnly(SV::RadioButton& radio);
    void showReadyScope(const ReadyScope& scope);
    void enterOwnScope();
    void enableOwnScope(bool enable);
    void convertPeriod();
    void editPeriod();
    void accept();
    /// False, after a box, for a text that isn't a time.
    bool acceptOwnScope();

    SV::String& label;
    SV::String& time;
    SV::GroupBox frame;
    SV::RadioButton yearRadio;
    SV::RadioButton quarterRadio;
    SV::RadioButton monthRadio;
    SV::RadioButton dayRadio;
    SV::RadioButton userRadio;
    SV::FixedText nameLabel;
    SV::Edit nameEdit;
    SV::FixedText periodLabel;
    SV::Edit periodEdit;
    MeroToolBox timeToolBox;
    SV::CheckBox calendarBox;
    SV::OKButton okButton;
    SV::CancelButton cancelButton;
    SV::HelpButton helpButton;
    const ReadyScope readyScopes[4];
};
