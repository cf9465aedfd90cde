#pragma once

#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "component/host/sv_boxes.h"
#include "component/host/sv_dialog.h"

namespace mero::test {

/// A control of a window, which has to be there.
template <class Kind>
[[nodiscard]] Kind& control(const SV::Window& window, SV::ResId id) {
    auto* const found = dynamic_cast<Kind*>(window.FindControl(id));
    if (found == nullptr) {
        throw std::logic_error("no such control");
    }
    return *found;
}

[[nodiscard]] inline std::string textOf(const SV::Window& window, SV::ResId id) {
    return control<SV::Control>(window, id).GetText().GetStr();
}

/// Lets `use` answer the next modal dialog that `act` opens; the responder from before comes back.
inline void runNextDialog(const SV::DialogDesk::Responder& use, const std::function<void()>& act) {
    auto& desk = SV::DialogDesk::GetGlobal();
    const SV::DialogDesk::Responder before = desk.getResponder();
    desk.setResponder(use);
    act();
    desk.setResponder(before);
}

/// Executes the dialog while `use` drives it. Gives its result.
inline int runDialog(SV::ModalDialog& dialog, const SV::DialogDesk::Responder& use) {
    int result = SV::DialogCancelled;
    runNextDialog(use, [&] { result = dialog.Execute(); });
    return result;
}

/// Answers all boxes while it lives, and knows which there were.
class AnsweredBoxes {
public:
    explicit AnsweredBoxes(int answer = SV::BoxOk) {
        SV::BoxDesk::GetGlobal().clearRecords();
        SV::BoxDesk::GetGlobal().setResponder(
            [answer](SV::BoxKind, SV::Window*, int, const SV::String&) { return answer; });
    }
    AnsweredBoxes(const AnsweredBoxes&) = delete;
    AnsweredBoxes& operator=(const AnsweredBoxes&) = delete;
    ~AnsweredBoxes() {
        SV::BoxDesk::GetGlobal().setResponder({});
        SV::BoxDesk::GetGlobal().clearRecords();
    }

    /// Their messages in hexadecimal.
    [[nodiscard]] static std::string messages() {
        std::ostringstream text;
        for (const auto& record : SV::BoxDesk::GetGlobal().getRecords()) {
            text << (text.tellp() > 0 ? " " : "") << std::uppercase << std::hex << record.message.value;
        }
        return text.str();
    }
};

}  // namespace mero::test
