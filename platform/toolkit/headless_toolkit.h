#pragma once

#include "component/host/sv_peer.h"

namespace mero {

/// Toolkit without a display: windows and controls take their initial state from the forms, nothing is shown,
/// and what isn't answered by a responder is cancelled.
class HeadlessToolkit : public SV::Toolkit {
public:
    std::unique_ptr<SV::Peer> makeWindowPeer(SV::Window& window, SV::ResId form,
                                             SV::FormState& initial) override;
    std::unique_ptr<SV::Peer> makeControlPeer(SV::Control& control, SV::FormState& initial) override;
    void runModal(SV::ModalDialog& dialog) override;
    int runBox(SV::BoxKind kind, SV::Window* parent, int style, const SV::String& text) override;
    int runMenu(SV::Window* parent, const SV::PopupMenu& menu) override;
    SV::String chooseFile(SV::Window* parent, const SV::String& title, const SV::String& nameFilter,
                          const SV::String& directory, bool forSaving) override;
    void showHelp([[maybe_unused]] SV::Window& window) override {}
    void setWait([[maybe_unused]] bool on) override {}
    void startTimer([[maybe_unused]] SV::Timer& timer) override {}
    void stopTimer([[maybe_unused]] SV::Timer& timer) override {}
    [[nodiscard]] int textWidth(const SV::String& text) override;
    [[nodiscard]] bool hasPrinter() override { return true; }
    bool printDocument(SV::Window* parent, const SV::String& title, const SV::String& html) override;

    /// What was printed last.
    [[nodiscard]] const SV::String& getPrinted() const { return printed; }

private:
    SV::String printed;
};

}  // namespace mero
