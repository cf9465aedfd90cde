#include "component/display/agent_class_select_dialog.h"

#include "component/host/basic_services.h"
#include "component/host/resource_ids.h"

namespace {

constexpr char ModuleName[] = "aeadsply";

}  // namespace

namespace Form = MeroAgentClassForm;

MeroAgentClassSelectDialog::MeroAgentClassSelectDialog(SV::Window* parent, const ISortedSet<MeroId>& classes)
    : MeroModalDialog(parent, Form::Form),
      label(this, Form::Label),
      classList(this, Form::ClassList),
      okButton(this, Form::OkButton),
      cancelButton(this, Form::CancelButton),
      helpButton(this, Form::HelpButton) {
    if (classes.empty() || classList.ShowObjects(classes) != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    classList.SelectEntry(classList.GetChild(MeroNoTreeEntry, 0));
    okButton.Enable(classList.GetSelectionCount() > 0);
    classList.SetSelectHdl([this] { okButton.Enable(classList.GetSelectionCount() > 0); });
}
