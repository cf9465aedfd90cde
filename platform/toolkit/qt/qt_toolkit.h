#pragma once

#include <functional>
#include <map>
#include <memory>

#include "component/host/sv_peer.h"

class QTimer;

namespace mero::qt {

/// Toolkit on Qt widgets. An application object has to be there before it is made, and as long as it lives.
/// Install it by `SV::Toolkit::SetGlobal` before windows are made.
class QtToolkit : public SV::Toolkit {
public:
    QtToolkit();
    ~QtToolkit() override;

    std::unique_ptr<SV::Peer> makeWindowPeer(SV::Window& window, SV::ResId form,
                                             SV::FormState& initial) override;
    std::unique_ptr<SV::Peer> makeControlPeer(SV::Control& control, SV::FormState& initial) override;
    void runModal(SV::ModalDialog& dialog) override;
    int runBox(SV::BoxKind kind, SV::Window* parent, int style, const SV::String& text) override;
    int runMenu(SV::Window* parent, const SV::PopupMenu& menu) override;
    SV::String chooseFile(SV::Window* parent, const SV::String& title, const SV::String& nameFilter,
                          const SV::String& directory, bool forSaving) override;
    void showHelp(SV::Window& window) override;
    void setWait(bool on) override;
    void startTimer(SV::Timer& timer) override;
    void stopTimer(SV::Timer& timer) override;
    [[nodiscard]] int textWidth(const SV::String& text) override;
    [[nodiscard]] int fieldWidth(const SV::String& field) override;
    [[nodiscard]] bool hasPrinter() override;
    bool printDocument(SV::Window* parent, const SV::String& title, const SV::String& html) override;

    /// What the help button does; without it a box tells that the tool tips explain the window.
    void setHelpHandler(std::function<void(SV::Window&)> handler) { helpHandler = std::move(handler); }

private:
    std::map<SV::Timer*, std::unique_ptr<QTimer>> timers;
    std::function<void(SV::Window&)> helpHandler;
};

/// Prints to a PDF file. False if it can't be written.
bool printToPdf(const SV::String& path, const SV::String& title, const SV::String& html);

}  // namespace mero::qt
