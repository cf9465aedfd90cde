#include "tests/platform/toolkit/user_driver.h"

namespace mero::test {

void StateDriver::click(SV::Control& button) {
    if (auto* push = dynamic_cast<SV::PushButton*>(&button)) {
        push->userClick();
    } else if (auto* check = dynamic_cast<SV::CheckBox*>(&button)) {
        check->userClick();
    } else if (auto* radio = dynamic_cast<SV::RadioButton*>(&button)) {
        radio->userClick();
    }
}

}  // namespace mero::test
