#pragma once

#include "component/host/sv_dialog.h"

#include "component/results/result_options.h"

/// What a result window shows, and how: two windows with the same view show the same.
struct MeroResultView {
    SV::String title;  ///< identifies the view; it isn't the caption of the window
    MeroDisplayKind kind = DisplayNothing;
    double scale = 1.0;  ///< that the values of measures which scale were multiplied by
    MeroResultOptions options;

    /// A scale that isn't a number is like no other. Of the options only what changes the picture counts.
    [[nodiscard]] bool isSameAs(const MeroResultView& other) const;
};

/// Base of the windows that show results of a super agent. They stay beside the dialog that they were opened
/// from, read the results once, and own nothing of them.
class MeroAgentBasicResultInterface : public MeroModelessDialog {
public:
    [[nodiscard]] const MeroResultView& getView() const { return view; }
    [[nodiscard]] const SV::String& getTitle() const { return view.title; }
    [[nodiscard]] MeroDisplayKind getDisplayKind() const { return view.kind; }
    [[nodiscard]] double getScale() const { return view.scale; }
    [[nodiscard]] const MeroResultOptions& getOptions() const { return view.options; }

    /// Shows the window, also a minimised one, before the others.
    void bringToFront();

protected:
    /// The window stays hidden. `parent` isn't owned and has to outlive it.
    MeroAgentBasicResultInterface(SV::Window* parent, SV::ResId form, MeroResultView shownView);

private:
    MeroResultView view;
};
