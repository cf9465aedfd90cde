#include "platform/toolkit/qt/qt_toolkit.h"

#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QFontMetrics>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTextDocument>
#include <QTimer>
#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/sv_boxes.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_menu.h"
#include "component/host/sv_timer.h"

#include "platform/toolkit/forms.h"
#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/field_dress.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/qt/window_peer.h"
#include "platform/toolkit/toolkit_messages.h"

namespace mero::qt {

namespace {

std::unique_ptr<SV::Peer> makePeerFor(SV::Control& control, QWidget* widget) {
    switch (control.GetClass()) {
        case SV::ControlClass::TreeListBox:
            return makeTreePeer(control, widget);
        case SV::ControlClass::TabControl:
            return makeTabPeer(control, widget);
        case SV::ControlClass::ToolBox:
            return makeToolBoxPeer(control, widget);
        case SV::ControlClass::Browser:
            return makeBrowserPeer(control, widget);
        case SV::ControlClass::FunctionGraph:
            return makeGraphPeer(control, widget);
        case SV::ControlClass::Diagram:
            return makeDiagramPeer(control, widget);
        default:
            return makeSimplePeer(control, widget);
    }
}

QWidget* dialogParent(const SV::Window* parent) {
    QWidget* widget = widgetOf(parent);
    return widget != nullptr ? widget->window() : QApplication::activeWindow();
}

/// Wait cursors would hide the one of a box.
class WithoutWaitCursor {
public:
    WithoutWaitCursor() : waits(QApplication::overrideCursor() != nullptr) {
        if (waits) {
            QApplication::restoreOverrideCursor();
        }
    }
    WithoutWaitCursor(const WithoutWaitCursor&) = delete;
    WithoutWaitCursor& operator=(const WithoutWaitCursor&) = delete;
    ~WithoutWaitCursor() {
        if (waits) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
        }
    }

private:
    bool waits;
};

void fillBox(QMessageBox& box, SV::BoxKind kind, int style) {
    constexpr int StyleOkCancel = 32;
    switch (kind) {
        case SV::BoxKind::Query:
            box.setIcon(QMessageBox::Question);
            if (style == StyleOkCancel) {
                box.addButton(plain(SV::String(MessageGoOn)), QMessageBox::AcceptRole);
                box.setEscapeButton(box.addButton(plain(SV::String(MessageCancel)), QMessageBox::RejectRole));
            } else {
                box.addButton(plain(SV::String(MessageYes)), QMessageBox::YesRole);
                box.setEscapeButton(box.addButton(plain(SV::String(MessageNo)), QMessageBox::NoRole));
            }
            return;
        case SV::BoxKind::Error:
            box.setIcon(QMessageBox::Warning);
            break;
        default:
            box.setIcon(QMessageBox::Information);
            break;
    }
    box.addButton(plain(SV::String(MessageOk)), QMessageBox::AcceptRole);
}

}  // namespace

QtToolkit::QtToolkit() = default;

QtToolkit::~QtToolkit() {
    if (&SV::Toolkit::GetGlobal() == this) {
        SV::Toolkit::SetGlobal(nullptr);
    }
}

std::unique_ptr<SV::Peer> QtToolkit::makeWindowPeer(SV::Window& window, SV::ResId formId,
                                                    SV::FormState& initial) {
    const Form* form = findForm(formId);
    if (form == nullptr) {
        displayErrorMessage("toolkit", static_cast<int>(formId.value));
        return nullptr;
    }
    initial = form->state;
    return std::make_unique<WindowPeer>(window, *form);
}

std::unique_ptr<SV::Peer> QtToolkit::makeControlPeer(SV::Control& control, SV::FormState& initial) {
    const FormControl* found = formControlOf(control);
    if (found == nullptr) {
        return nullptr;
    }
    initial = found->state;
    auto* window = dynamic_cast<WindowPeer*>(formWindowOf(control)->GetPeer());
    QWidget* widget = window != nullptr ? window->find(found->name) : nullptr;
    return widget != nullptr ? makePeerFor(control, widget) : nullptr;
}

void QtToolkit::runModal(SV::ModalDialog& dialog) {
    auto* peer = dynamic_cast<WindowPeer*>(dialog.GetPeer());
    if (peer == nullptr) {
        return;
    }
    QTimer answer;
    if (const auto responder = SV::DialogDesk::GetGlobal().getResponder()) {
        QObject::connect(&answer, &QTimer::timeout, [&dialog, responder] {
            responder(dialog);
            if (dialog.IsInExecute()) {
                dialog.EndDialog(SV::DialogCancelled);
            }
        });
        answer.setSingleShot(true);
        answer.start(0);
    }
    const WithoutWaitCursor cursor;
    peer->runUntilHidden();
}

int QtToolkit::runBox(SV::BoxKind kind, SV::Window* parent, int style, const SV::String& text) {
    const WithoutWaitCursor cursor;
    QMessageBox box(dialogParent(parent));
    box.setTextFormat(Qt::PlainText);
    box.setText(plain(text));
    fillBox(box, kind, style);
    box.exec();
    const QAbstractButton* clicked = box.clickedButton();
    if (clicked == nullptr) {
        return SV::BoxCancelled;
    }
    switch (box.buttonRole(const_cast<QAbstractButton*>(clicked))) {
        case QMessageBox::AcceptRole:
            return SV::BoxOk;
        case QMessageBox::YesRole:
            return SV::BoxYes;
        case QMessageBox::NoRole:
            return SV::BoxNo;
        default:
            return SV::BoxCancelled;
    }
}

int QtToolkit::runMenu(SV::Window* parent, const SV::PopupMenu& menu) {
    QMenu shown(dialogParent(parent));
    for (const SV::MenuItem& item : menu.GetItems()) {
        if (item.id == 0) {
            shown.addSeparator();
            continue;
        }
        QAction* action = shown.addAction(withMnemonic(item.text));
        action->setData(item.id);
        action->setEnabled(item.enabled);
        action->setCheckable(item.checked);
        action->setChecked(item.checked);
    }
    const QAction* chosen = shown.exec(QCursor::pos());
    return chosen != nullptr ? chosen->data().toInt() : 0;
}

SV::String QtToolkit::chooseFile(SV::Window* parent, const SV::String& title, const SV::String& nameFilter,
                                 const SV::String& directory, bool forSaving) {
    const WithoutWaitCursor cursor;
    QWidget* above = dialogParent(parent);
    return fromQt(
        forSaving ? QFileDialog::getSaveFileName(above, plain(title), plain(directory), plain(nameFilter))
                  : QFileDialog::getOpenFileName(above, plain(title), plain(directory), plain(nameFilter)));
}

void QtToolkit::showHelp(SV::Window& window) {
    if (helpHandler) {
        helpHandler(window);
    } else {
        SV::InfoBox(&window, SV::String(MessageHelp)).Execute();
    }
}

void QtToolkit::setWait(bool on) {
    if (on) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void QtToolkit::startTimer(SV::Timer& timer) {
    auto& shown = timers[&timer];
    shown = std::make_unique<QTimer>();
    shown->setSingleShot(true);
    QObject::connect(shown.get(), &QTimer::timeout, [&timer] { timer.elapse(); });
    shown->start(timer.GetTimeout());
}

void QtToolkit::stopTimer(SV::Timer& timer) {
    const auto place = timers.find(&timer);
    if (place != timers.end()) {
        // It may be its own handler that stops it.
        place->second.release()->deleteLater();
        timers.erase(place);
    }
}

int QtToolkit::textWidth(const SV::String& text) {
    return QFontMetrics(QApplication::font()).horizontalAdvance(plain(text));
}

int QtToolkit::fieldWidth(const SV::String& field) {
    // Sums are bold; a time among others may be as long as this one, whichever is the longest text.
    static const SV::String LongTime("00:299:23:59:00");
    constexpr int Decimals = 2;
    QFont bold = QApplication::font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const QString time = dressedTime(field);
    const int width = metrics.horizontalAdvance(dressed(field, Decimals));
    return time.isEmpty() ? width : std::max(width, metrics.horizontalAdvance(dressedTime(LongTime)));
}

bool QtToolkit::hasPrinter() {
    return true;
}

bool printToPdf(const SV::String& path, const SV::String& title, const SV::String& html) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(plain(path));
    printer.setDocName(plain(title));
    QTextDocument document;
    document.setHtml(plain(html));
    document.print(&printer);
    return printer.printerState() != QPrinter::Error;
}

bool QtToolkit::printDocument(SV::Window* parent, const SV::String& title, const SV::String& html) {
    const WithoutWaitCursor cursor;
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        const SV::String path = chooseFile(parent, SV::String(MessagePrintToFile), "PDF (*.pdf)", {}, true);
        return !path.IsEmpty() && printToPdf(path, title, html);
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(plain(title));
    QPrintDialog dialog(&printer, dialogParent(parent));
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    QTextDocument document;
    document.setHtml(plain(html));
    document.print(&printer);
    return true;
}

}  // namespace mero::qt
