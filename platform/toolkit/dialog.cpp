#include "component/host/sv_application.h"
#include "component/host/sv_dialog.h"

namespace SV {

DialogDesk& DialogDesk::GetGlobal() {
    static DialogDesk desk;
    return desk;
}

int ModalDialog::Execute() {
    // A dialog stands in the record before those that open from it.
    DialogDesk& desk = DialogDesk::GetGlobal();
    const std::size_t index = desk.records.size();
    desk.records.push_back({GetForm(), GetText(), DialogCancelled});
    result = DialogCancelled;
    inExecute = true;
    Mero_PushParentWindow(this);
    Show();
    Toolkit::GetGlobal().runModal(*this);
    inExecute = false;
    Hide();
    Mero_PopParentWindow(this);
    if (index < desk.records.size()) {
        desk.records[index].result = result;
    }
    return result;
}

void ModalDialog::EndDialog(int newResult) {
    result = newResult;
    inExecute = false;
    Hide();
}

bool ModalDialog::Close() {
    EndDialog(DialogCancelled);
    return true;
}

}  // namespace SV
