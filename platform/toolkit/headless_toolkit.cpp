#include "platform/toolkit/headless_toolkit.h"

#include <utility>

#include "component/host/basic_services.h"
#include "component/host/printer.h"
#include "component/host/sv_boxes.h"
#include "component/host/sv_dialog.h"

#include "platform/toolkit/forms.h"

namespace mero {

std::unique_ptr<SV::Peer> HeadlessToolkit::makeWindowPeer(SV::Window&, SV::ResId formId,
                                                          SV::FormState& initial) {
    if (const Form* form = findForm(formId)) {
        initial = form->state;
    } else {
        displayErrorMessage("toolkit", static_cast<int>(formId.value));
    }
    return nullptr;
}

std::unique_ptr<SV::Peer> HeadlessToolkit::makeControlPeer(SV::Control& control, SV::FormState& initial) {
    if (const FormControl* found = formControlOf(control)) {
        initial = found->state;
    }
    return nullptr;
}

void HeadlessToolkit::runModal(SV::ModalDialog& dialog) {
    if (const auto responder = SV::DialogDesk::GetGlobal().getResponder()) {
        responder(dialog);
    }
}

int HeadlessToolkit::runBox(SV::BoxKind, SV::Window*, int, const SV::String&) {
    return SV::BoxCancelled;
}

int HeadlessToolkit::runMenu(SV::Window*, const SV::PopupMenu&) {
    return 0;
}

SV::String HeadlessToolkit::chooseFile(SV::Window*, const SV::String&, const SV::String&, const SV::String&,
                                       bool) {
    return {};
}

int HeadlessToolkit::textWidth(const SV::String& text) {
    constexpr int PixelsPerCharacter = 7;
    return static_cast<int>(text.CountCodePoints()) * PixelsPerCharacter;
}

bool HeadlessToolkit::printDocument(SV::Window*, const SV::String&, const SV::String& html) {
    printed = html;
    return true;
}

}  // namespace mero

namespace SV {

namespace {

Toolkit*& installedToolkit() {
    static Toolkit* installed = nullptr;
    return installed;
}

}  // namespace

Toolkit& Toolkit::GetGlobal() {
    static mero::HeadlessToolkit headless;
    Toolkit* installed = installedToolkit();
    return installed != nullptr ? *installed : headless;
}

Toolkit* Toolkit::SetGlobal(Toolkit* toolkit) {
    return std::exchange(installedToolkit(), toolkit);
}

}  // namespace SV

MeroPrinter* Mero_GetPrinter([[maybe_unused]] bool withFile) {
    static MeroPrinter printer;
    return SV::Toolkit::GetGlobal().hasPrinter() ? &printer : nullptr;
}
