#include "component/host/sv_buttons.h"

namespace SV {

PushButton::PushButton(Window* parent, ResId id) : Control(parent, id, ControlClass::PushButton) {
    bind();
}

bool PushButton::userClick() {
    if (!IsReachable()) {
        return false;
    }
    Click();
    return true;
}

void OKButton::Click() {
    auto* dialog = dynamic_cast<ModalDialog*>(GetParent());
    if (HasClickHdl() || dialog == nullptr) {
        PushButton::Click();
    } else {
        dialog->EndDialog(DialogOk);
    }
}

void CancelButton::Click() {
    if (HasClickHdl() || GetParent() == nullptr) {
        PushButton::Click();
    } else {
        GetParent()->userClose();
    }
}

void HelpButton::Click() {
    if (HasClickHdl() || GetParent() == nullptr) {
        PushButton::Click();
    } else {
        Toolkit::GetGlobal().showHelp(*GetParent());
    }
}

CheckBox::CheckBox(Window* parent, ResId id) : Control(parent, id, ControlClass::CheckBox) {
    bind();
}

void CheckBox::pullState(const FormState& initial) {
    Control::pullState(initial);
    checked = initial.checked;
}

void CheckBox::Check(bool check) {
    checked = check;
    tell(Aspect::Checked);
}

bool CheckBox::userClick() {
    if (!IsReachable()) {
        return false;
    }
    Check(!checked);
    run(clickHandler);
    return true;
}

RadioButton::RadioButton(Window* parent, ResId id) : Control(parent, id, ControlClass::RadioButton) {
    bind();
}

void RadioButton::pullState(const FormState& initial) {
    Control::pullState(initial);
    checked = initial.checked;
    group = initial.radioGroup;
}

void RadioButton::Check(bool check) {
    checked = check;
    tell(Aspect::Checked);
}

bool RadioButton::userClick() {
    if (!IsReachable()) {
        return false;
    }
    if (group != 0 && GetParent() != nullptr) {
        for (Control* each : GetParent()->GetControls()) {
            auto* other = dynamic_cast<RadioButton*>(each);
            if (other != nullptr && other != this && other->group == group) {
                other->Check(false);
            }
        }
    }
    Check(true);
    run(clickHandler);
    return true;
}

}  // namespace SV
