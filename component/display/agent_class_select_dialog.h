#pragma once

#include "component/host/containers.h"
#include "component/host/select_boxes.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_edits.h"

/// Asks for the class of a new agent where a library has several.
class MeroAgentClassSelectDialog : public MeroModalDialog {
public:
    /// The first class is selected. No class at all is an internal error.
    MeroAgentClassSelectDialog(SV::Window* parent, const ISortedSet<MeroId>& classes);

    /// Of the dialog that ended with `SV::DialogOk`.
    [[nodiscard]] MeroId getSelectedClass() const { return classList.GetSelectedObject(); }

private:
    SV::FixedText label;
    MeroCoreObjectSelectBox classList;
    SV::OKButton okButton;
    SV::CancelButton cancelButton;
    SV::HelpButton helpButton;
};
