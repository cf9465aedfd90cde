#pragma once

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "component/host/sv_window.h"

#include "platform/toolkit/forms.h"

namespace mero::qt {

/// Shows a window by its form.
class WindowPeer : public QObject, public SV::Peer {
public:
    WindowPeer(SV::Window& shownWindow, const Form& form);
    ~WindowPeer() override;

    void changed(const SV::Change& change) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    [[nodiscard]] QWidget* getWidget() const { return root; }
    /// Null if the form has no such widget.
    [[nodiscard]] QWidget* find(const std::string& name) const;
    /// Returns when the window is hidden.
    void runUntilHidden();
    /// Makes the form part of another window's layout.
    void embed();

private:
    void showOrHide();
    void setFrame();
    /// Holds the smallest size that the program asks for, but not so small that parts would overlap.
    void keepContentsApart();
    void remember() const;

    SV::Window& window;
    SV::ResId formId;
    QPointer<QWidget> root;
    QEventLoop* loop = nullptr;
    bool embedded = false;
    bool updating = false;
    bool placed = false;
};

/// Widget of a window, or of the nearest window above it that has one; null for none.
[[nodiscard]] QWidget* widgetOf(const SV::Window* window);

}  // namespace mero::qt
