#include "platform/toolkit/qt/window_peer.h"

#include <QApplication>
#include <QBuffer>
#include <QKeyEvent>
#include <QLayout>
#include <QSettings>
#include <QUiLoader>
#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/sv_dialog.h"

#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/icons.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/qt/wrapping_row.h"

namespace mero::qt {

namespace {

QWidget* load(const Form& form) {
    QByteArray document = QByteArray::fromStdString(form.document);
    QBuffer buffer(&document);
    buffer.open(QIODevice::ReadOnly);
    QUiLoader loader;
    loader.setLanguageChangeEnabled(false);
    return loader.load(&buffer);
}

QString sizeKey(SV::ResId formId) {
    return QString("windows/%1").arg(formId.value, 0, 16);
}

}  // namespace

WindowPeer::WindowPeer(SV::Window& shownWindow, const Form& form) : window(shownWindow), formId(form.id) {
    root = load(form);
    if (root == nullptr) {
        displayErrorMessage("toolkit", static_cast<int>(form.id.value));
        return;
    }
    WrappingRow::replaceLayouts(*root);
    root->setAttribute(Qt::WA_DeleteOnClose, false);
    root->installEventFilter(this);
    root->resize(form.size.width, form.size.height);
}

WindowPeer::~WindowPeer() {
    if (loop != nullptr) {
        loop->quit();
    }
    if (root != nullptr) {
        root->removeEventFilter(this);
        root->hide();
        // The widget may be in the midst of one of its events.
        root->setParent(nullptr);
        root->deleteLater();
    }
}

QWidget* WindowPeer::find(const std::string& name) const {
    return root != nullptr ? root->findChild<QWidget*>(QString::fromStdString(name)) : nullptr;
}

void WindowPeer::embed() {
    embedded = true;
}

void WindowPeer::changed(const SV::Change& change) {
    if (root == nullptr) {
        return;
    }
    const bool wasUpdating = std::exchange(updating, true);
    switch (change.aspect) {
        case SV::Aspect::Text:
            root->setWindowTitle(withoutMnemonic(window.GetText()));
            break;
        case SV::Aspect::Enabled:
            root->setEnabled(window.IsEnabled());
            break;
        case SV::Aspect::Visible:
            showOrHide();
            break;
        case SV::Aspect::Position:
            root->move(window.GetPosPixel().x, window.GetPosPixel().y);
            placed = true;
            break;
        case SV::Aspect::Size:
            root->resize(window.GetOutputSizePixel().width, window.GetOutputSizePixel().height);
            break;
        case SV::Aspect::MinimumSize:
            keepContentsApart();
            break;
        case SV::Aspect::Minimized:
            if (window.IsMinimized()) {
                root->showMinimized();
            } else if (root->isMinimized()) {
                root->showNormal();
            }
            break;
        case SV::Aspect::Front:
            root->raise();
            break;
        case SV::Aspect::Focus:
            root->activateWindow();
            break;
        case SV::Aspect::Picture:
            root->setWindowIcon(iconOf(window.GetIcon()));
            break;
        default:
            break;
    }
    updating = wasUpdating;
}

void WindowPeer::keepContentsApart() {
    QSize least(window.GetMinOutputSizePixel().width, window.GetMinOutputSizePixel().height);
    const QLayout* const layout = root->layout();
    if (least.isNull()) {
        return;
    }
    if (layout != nullptr) {
        least = least.expandedTo(layout->totalMinimumSize());
        if (layout->hasHeightForWidth()) {
            least.rheight() = std::max(least.height(), layout->totalMinimumHeightForWidth(root->width()));
        }
    }
    root->setMinimumSize(least);
}

void WindowPeer::setFrame() {
    const auto* dialog = dynamic_cast<const SV::ModalDialog*>(&window);
    const bool isModal = dialog != nullptr && dialog->IsInExecute();
    // What is made while a modal dialog runs belongs to it, so that it can be used beside it.
    QWidget* parent = QApplication::activeModalWidget();
    if (parent == nullptr) {
        parent = widgetOf(window.GetParent());
    }
    parent = parent != nullptr ? parent->window() : nullptr;
    if (parent != root && parent != root->parentWidget()) {
        root->setParent(parent, isModal ? Qt::Dialog : Qt::Window);
    }
    root->setWindowModality(isModal ? Qt::ApplicationModal : Qt::NonModal);
}

void WindowPeer::showOrHide() {
    if (embedded) {
        return;
    }
    if (!window.IsVisible()) {
        remember();
        root->hide();
        if (loop != nullptr) {
            loop->quit();
        }
        return;
    }
    if (root->isVisible()) {
        return;
    }
    setFrame();
    const QSize remembered = QSettings().value(sizeKey(formId)).toSize();
    if (remembered.isValid()) {
        root->resize(remembered.expandedTo(root->minimumSizeHint()));
    }
    root->resize(root->size().expandedTo(root->minimumSizeHint()));
    root->setWindowTitle(withoutMnemonic(window.GetText()));
    root->show();
    if (placed) {
        root->move(window.GetPosPixel().x, window.GetPosPixel().y);
    }
}

void WindowPeer::remember() const {
    if (root->isVisible() && !QCoreApplication::organizationName().isEmpty()) {
        QSettings().setValue(sizeKey(formId), root->size());
    }
}

void WindowPeer::runUntilHidden() {
    QEventLoop nested;
    QEventLoop* outer = std::exchange(loop, &nested);
    if (window.IsVisible()) {
        nested.exec(QEventLoop::DialogExec);
    }
    loop = outer;
}

bool WindowPeer::eventFilter(QObject* watched, QEvent* event) {
    if (watched != root || embedded) {
        return false;
    }
    switch (event->type()) {
        case QEvent::Close:
            event->ignore();
            window.userClose();
            return true;
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
                window.userClose();
                return true;
            }
            return false;
        case QEvent::LayoutRequest:
            keepContentsApart();
            return false;
        case QEvent::Resize:
            keepContentsApart();
            [[fallthrough]];
        case QEvent::Move:
            if (!updating) {
                window.userPlace({root->x(), root->y()}, {root->width(), root->height()});
            }
            return false;
        default:
            return false;
    }
}

QWidget* widgetOf(const SV::Window* window) {
    for (; window != nullptr; window = window->GetParent()) {
        if (const auto* peer = dynamic_cast<const WindowPeer*>(window->GetPeer())) {
            return peer->getWidget();
        }
        if (const auto* peer = dynamic_cast<const ControlPeer*>(window->GetPeer())) {
            return peer->getWidget();
        }
    }
    return nullptr;
}

}  // namespace mero::qt
