#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "component/host/sv_window.h"

namespace mero::qt {

class WindowPeer;

/// Shows a control by a widget of a form. While it changes the widget, `isUpdating` holds and what the widget
/// tells isn't the user's.
class ControlPeer : public QObject, public SV::Peer {
public:
    ControlPeer(SV::Control& shownControl, QWidget* shownWidget);
    ~ControlPeer() override;

    void changed(const SV::Change& change) final;
    bool eventFilter(QObject* watched, QEvent* event) override;

    [[nodiscard]] QWidget* getWidget() const { return widget; }

protected:
    /// Everything that isn't the same for all controls.
    virtual void update([[maybe_unused]] const SV::Change& change) {}
    /// Part of the widget that gets the focus and the keys; watched too.
    void setInner(QWidget* innerWidget);
    [[nodiscard]] bool isUpdating() const { return updating; }

    /// Runs what changes the widget by program.
    template <class Action>
    void quietly(const Action& action) {
        const bool before = std::exchange(updating, true);
        action();
        updating = before;
    }

    QPointer<QWidget> widget;
    QPointer<QWidget> inner;

private:
    void updateText();

    SV::Control& control;
    bool updating = false;
};

/// Peer of a control that is being made; null for a kind that needs none.
[[nodiscard]] std::unique_ptr<SV::Peer> makeSimplePeer(SV::Control& control, QWidget* widget);
[[nodiscard]] std::unique_ptr<SV::Peer> makeTreePeer(SV::Control& control, QWidget* widget);
[[nodiscard]] std::unique_ptr<SV::Peer> makeTabPeer(SV::Control& control, QWidget* widget);
[[nodiscard]] std::unique_ptr<SV::Peer> makeToolBoxPeer(SV::Control& control, QWidget* widget);
[[nodiscard]] std::unique_ptr<SV::Peer> makeBrowserPeer(SV::Control& control, QWidget* widget);
[[nodiscard]] std::unique_ptr<SV::Peer> makeGraphPeer(SV::Control& control, QWidget* widget);
[[nodiscard]] std::unique_ptr<SV::Peer> makeDiagramPeer(SV::Control& control, QWidget* widget);

}  // namespace mero::qt
