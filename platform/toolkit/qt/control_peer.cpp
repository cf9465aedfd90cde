#include "platform/toolkit/qt/control_peer.h"

#include <QAbstractButton>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>

#include "platform/toolkit/qt/icons.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

ControlPeer::ControlPeer(SV::Control& shownControl, QWidget* shownWidget)
    : widget(shownWidget), inner(shownWidget), control(shownControl) {
    widget->installEventFilter(this);
    if (auto* label = qobject_cast<QLabel*>(shownWidget)) {
        label->setTextFormat(Qt::PlainText);
    }
}

ControlPeer::~ControlPeer() {
    for (const auto& watched : {widget, inner}) {
        if (watched != nullptr) {
            watched->removeEventFilter(this);
        }
    }
}

void ControlPeer::setInner(QWidget* innerWidget) {
    inner = innerWidget;
    inner->installEventFilter(this);
    widget->setFocusProxy(inner);
}

void ControlPeer::updateText() {
    const SV::String& text = control.GetText();
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(label->buddy() != nullptr ? withMnemonic(text) : withoutMnemonic(text));
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(withMnemonic(text));
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setTitle(withMnemonic(text));
    }
    if (!control.GetToolTip().IsEmpty()) {
        widget->setToolTip(plain(control.GetToolTip()));
    }
}

void ControlPeer::changed(const SV::Change& change) {
    if (widget == nullptr) {
        return;
    }
    quietly([&] {
        switch (change.aspect) {
            case SV::Aspect::Text:
                updateText();
                break;
            case SV::Aspect::Enabled:
                widget->setEnabled(control.IsEnabled());
                break;
            case SV::Aspect::Visible:
                widget->setVisible(control.IsVisible());
                break;
            case SV::Aspect::Focus:
                inner->setFocus();
                break;
            case SV::Aspect::Picture:
                if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
                    button->setIcon(iconOf(control.GetIcon()));
                }
                break;
            default:
                break;
        }
        update(change);
    });
}

bool ControlPeer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == inner && event->type() == QEvent::FocusIn && !updating) {
        control.userFocus();
    }
    return false;
}

}  // namespace mero::qt
