#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSizeGrip>
#include <QSpinBox>
#include <QTextCursor>
#include <QVBoxLayout>

#include "component/host/sv_buttons.h"
#include "component/host/sv_edits.h"
#include "component/host/sv_lists.h"

#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

namespace {

class PushButtonPeer : public ControlPeer {
public:
    PushButtonPeer(SV::PushButton& button, QAbstractButton* shown) : ControlPeer(button, shown) {
        connect(shown, &QAbstractButton::clicked, this, [&button] { button.userClick(); });
    }
};

/// A check box or radio button.
template <class Button>
class CheckablePeer : public ControlPeer {
public:
    CheckablePeer(Button& checkable, QAbstractButton* shown)
        : ControlPeer(checkable, shown), button(checkable) {
        connect(shown, &QAbstractButton::clicked, this, [this] {
            button.userClick();
            // A refused click leaves the state as it was.
            changed({SV::Aspect::Checked});
        });
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect != SV::Aspect::Checked) {
            return;
        }
        auto* shown = qobject_cast<QAbstractButton*>(widget);
        // An exclusive button can't be unchecked.
        const bool isExclusive = shown->autoExclusive();
        shown->setAutoExclusive(false);
        shown->setChecked(button.IsChecked());
        shown->setAutoExclusive(isExclusive);
    }

private:
    Button& button;
};

class LinePeer : public ControlPeer {
public:
    LinePeer(SV::Edit& shownEdit, QLineEdit* shown)
        : ControlPeer(shownEdit, shown), edit(shownEdit), line(shown) {
        connect(line, &QLineEdit::textEdited, this, [this](const QString& text) {
            if (!edit.userType(fromQt(text))) {
                changed({SV::Aspect::Text});
            }
        });
        connect(line, &QLineEdit::selectionChanged, this, [this] { readSelection(); });
        connect(line, &QLineEdit::cursorPositionChanged, this, [this] { readSelection(); });
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect == SV::Aspect::Text && line->text() != plain(edit.GetText())) {
            line->setText(plain(edit.GetText()));
        } else if (change.aspect == SV::Aspect::ReadOnly) {
            line->setReadOnly(edit.IsReadOnly());
        } else if (change.aspect == SV::Aspect::TextSelection) {
            const int begin = charPosition(edit.GetText(), edit.GetSelection().begin);
            line->setSelection(begin, charPosition(edit.GetText(), edit.GetSelection().end) - begin);
        }
    }

private:
    void readSelection() {
        if (!isUpdating()) {
            const bool isSelected = line->hasSelectedText();
            edit.userSelect(
                {bytePosition(line->text(), isSelected ? line->selectionStart() : line->cursorPosition()),
                 bytePosition(line->text(), isSelected ? line->selectionEnd() : line->cursorPosition())});
        }
    }

    SV::Edit& edit;
    QLineEdit* line;
};

class TextPeer : public ControlPeer {
public:
    TextPeer(SV::MultiLineEdit& shownEdit, QPlainTextEdit* shown)
        : ControlPeer(shownEdit, shown), edit(shownEdit), view(shown) {
        view->setTabChangesFocus(true);
        connect(view, &QPlainTextEdit::textChanged, this, [this] {
            if (!isUpdating() && !edit.userType(fromQt(view->toPlainText()))) {
                changed({SV::Aspect::Text});
            }
        });
        connect(view, &QPlainTextEdit::cursorPositionChanged, this, [this] {
            if (!isUpdating()) {
                const QTextCursor cursor = view->textCursor();
                edit.userSelect({bytePosition(view->toPlainText(), cursor.selectionStart()),
                                 bytePosition(view->toPlainText(), cursor.selectionEnd())});
            }
        });
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect == SV::Aspect::Text && view->toPlainText() != plain(edit.GetText())) {
            view->setPlainText(plain(edit.GetText()));
        } else if (change.aspect == SV::Aspect::ReadOnly) {
            view->setReadOnly(edit.IsReadOnly());
        } else if (change.aspect == SV::Aspect::TextSelection) {
            QTextCursor cursor = view->textCursor();
            cursor.setPosition(charPosition(edit.GetText(), edit.GetSelection().begin));
            cursor.setPosition(charPosition(edit.GetText(), edit.GetSelection().end),
                               QTextCursor::KeepAnchor);
            view->setTextCursor(cursor);
        }
    }

private:
    SV::MultiLineEdit& edit;
    QPlainTextEdit* view;
};

class NumberPeer : public ControlPeer {
public:
    NumberPeer(SV::NumericField& shownField, QSpinBox* shown)
        : ControlPeer(shownField, shown), field(shownField), spin(shown) {
        spin->setGroupSeparatorShown(true);
        spin->setAlignment(Qt::AlignRight);
        connect(spin, &QSpinBox::valueChanged, this, [this](int value) {
            if (!isUpdating()) {
                field.userEnter(value);
            }
        });
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect == SV::Aspect::Text || change.aspect == SV::Aspect::Range) {
            spin->setRange(field.GetMin(), field.GetMax());
            spin->setValue(field.GetValue());
        }
    }

private:
    SV::NumericField& field;
    QSpinBox* spin;
};

class ComboPeer : public ControlPeer {
public:
    ComboPeer(SV::ListBox& shownList, QComboBox* shown)
        : ControlPeer(shownList, shown), list(shownList), combo(shown) {
        connect(combo, &QComboBox::activated, this, [this](int index) {
            if (index >= 0) {
                list.userSelect(static_cast<std::size_t>(index));
            }
        });
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect == SV::Aspect::ItemsInserted) {
            combo->insertItem(change.position,
                              plain(list.GetEntry(static_cast<std::size_t>(change.position))));
        } else if (change.aspect == SV::Aspect::ItemsRemoved) {
            combo->removeItem(change.position);
        } else if (change.aspect == SV::Aspect::ItemsCleared) {
            combo->clear();
        } else if (change.aspect != SV::Aspect::Selection) {
            return;
        }
        const std::size_t selected = list.GetSelectEntryPos();
        combo->setCurrentIndex(selected == SV::ListEntryNotFound ? -1 : static_cast<int>(selected));
    }

private:
    SV::ListBox& list;
    QComboBox* combo;
};

class ListPeer : public ControlPeer {
public:
    ListPeer(SV::ListBox& shownList, QListWidget* shown)
        : ControlPeer(shownList, shown), list(shownList), view(shown) {
        const bool isMulti = shownList.GetClass() == SV::ControlClass::MultiListBox;
        view->setSelectionMode(isMulti ? QAbstractItemView::ExtendedSelection
                                       : QAbstractItemView::SingleSelection);
        view->setUniformItemSizes(true);
        connect(view, &QListWidget::itemSelectionChanged, this, [this] {
            if (!isUpdating()) {
                list.userSelect(selectedRows());
            }
        });
        connect(view, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
            list.userDoubleClick(static_cast<std::size_t>(view->row(item)));
        });
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect == SV::Aspect::ItemsInserted) {
            view->insertItem(change.position,
                             plain(list.GetEntry(static_cast<std::size_t>(change.position))));
        } else if (change.aspect == SV::Aspect::ItemsRemoved) {
            const std::unique_ptr<QListWidgetItem> removed(view->takeItem(change.position));
        } else if (change.aspect == SV::Aspect::ItemsCleared) {
            view->clear();
        } else if (change.aspect == SV::Aspect::Selection) {
            for (int row = 0; row < view->count(); ++row) {
                const bool isSelected = list.IsEntryPosSelected(static_cast<std::size_t>(row));
                if (view->item(row)->isSelected() != isSelected) {
                    view->item(row)->setSelected(isSelected);
                }
            }
            // Arrow keys go on from the selected entry.
            if (list.GetSelectEntryCount() == 1) {
                view->setCurrentRow(static_cast<int>(list.GetSelectEntryPos()),
                                    QItemSelectionModel::NoUpdate);
            }
        }
    }

private:
    [[nodiscard]] std::vector<std::size_t> selectedRows() const {
        std::vector<std::size_t> rows;
        for (int row = 0; row < view->count(); ++row) {
            if (view->item(row)->isSelected()) {
                rows.push_back(static_cast<std::size_t>(row));
            }
        }
        return rows;
    }

    SV::ListBox& list;
    QListWidget* view;
};

class GripPeer : public ControlPeer {
public:
    GripPeer(SV::Control& grip, QWidget* place) : ControlPeer(grip, place) {
        auto layout = std::make_unique<QVBoxLayout>();
        layout->setContentsMargins({});
        layout->addWidget(std::make_unique<QSizeGrip>(place).release(), 0, Qt::AlignRight | Qt::AlignBottom);
        place->setLayout(layout.release());
    }
};

template <class Peer, class Shown, class State>
std::unique_ptr<SV::Peer> makePeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<Peer>(static_cast<State&>(control), qobject_cast<Shown*>(widget));
}

}  // namespace

std::unique_ptr<SV::Peer> makeSimplePeer(SV::Control& control, QWidget* widget) {
    switch (control.GetClass()) {
        case SV::ControlClass::PushButton:
            return makePeer<PushButtonPeer, QAbstractButton, SV::PushButton>(control, widget);
        case SV::ControlClass::CheckBox:
            return makePeer<CheckablePeer<SV::CheckBox>, QAbstractButton, SV::CheckBox>(control, widget);
        case SV::ControlClass::RadioButton:
            return makePeer<CheckablePeer<SV::RadioButton>, QAbstractButton, SV::RadioButton>(control,
                                                                                              widget);
        case SV::ControlClass::Edit:
            return makePeer<LinePeer, QLineEdit, SV::Edit>(control, widget);
        case SV::ControlClass::MultiLineEdit:
            return makePeer<TextPeer, QPlainTextEdit, SV::MultiLineEdit>(control, widget);
        case SV::ControlClass::NumericField:
            return makePeer<NumberPeer, QSpinBox, SV::NumericField>(control, widget);
        case SV::ControlClass::ListBox:
        case SV::ControlClass::MultiListBox:
        case SV::ControlClass::FunctionGraphLegend:
            if (qobject_cast<QComboBox*>(widget) != nullptr) {
                return makePeer<ComboPeer, QComboBox, SV::ListBox>(control, widget);
            }
            return makePeer<ListPeer, QListWidget, SV::ListBox>(control, widget);
        case SV::ControlClass::SizingGrip:
            return std::make_unique<GripPeer>(control, widget);
        default:
            return std::make_unique<ControlPeer>(control, widget);
    }
}

}  // namespace mero::qt
