#include "tests/platform/toolkit/qt/widget_driver.h"

#include <QApplication>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/qt/window_peer.h"

namespace mero::test {

namespace {

template <class Shown>
Shown* shownAs(const SV::Window& window) {
    return qobject_cast<Shown*>(widgetFor(window));
}

/// Item of a tree view by the path of positions of the entry.
QModelIndex indexOf(const MeroTreeListBox& tree, const QTreeView& view, MeroId id) {
    const MeroId parent = tree.GetParentEntry(id);
    const QModelIndex above = parent != MeroNoTreeEntry ? indexOf(tree, view, parent) : QModelIndex();
    return view.model()->index(static_cast<int>(tree.GetEntryPos(id)), 0, above);
}

void clickItem(QAbstractItemView& view, const QModelIndex& index, Qt::KeyboardModifiers modifiers = {}) {
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, view.visualRect(index).center());
}

}  // namespace

QWidget* widgetFor(const SV::Window& window) {
    return qt::widgetOf(&window);
}

void WidgetDriver::show(SV::Window& window) {
    window.Show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widgetFor(window)));
}

void WidgetDriver::click(SV::Control& button) {
    QWidget* widget = widgetFor(button);
    // The mouse reaches what can be seen and isn't blocked by a modal window.
    const QWidget* modal = QApplication::activeModalWidget();
    if (widget->isVisible() &&
        (modal == nullptr || modal == widget->window() || modal->isAncestorOf(widget))) {
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
}

void WidgetDriver::type(SV::Edit& edit, const char* text) {
    QWidget* widget = widgetFor(edit);
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    // Letters with accents come by the input method.
    QInputMethodEvent typed;
    typed.setCommitString(QString::fromUtf8(text));
    QApplication::sendEvent(widget, &typed);
}

void WidgetDriver::enter(SV::NumericField& field, int value) {
    auto* spin = shownAs<QSpinBox>(field);
    spin->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(spin->window()));
    spin->setFocus();
    QTest::keyClick(spin, Qt::Key_A, Qt::ControlModifier);
    // One entry, as by keyboard, and not one for each digit.
    spin->setKeyboardTracking(false);
    QTest::keyClicks(spin, QString::number(value));
    QTest::keyClick(spin, Qt::Key_Tab);
}

void WidgetDriver::select(SV::ListBox& list, std::size_t position) {
    if (auto* combo = shownAs<QComboBox>(list)) {
        combo->setFocus();
        if (position == 0) {
            QTest::keyClick(combo, Qt::Key_Home);
        } else {
            combo->setCurrentIndex(static_cast<int>(position) - 1);
            QTest::keyClick(combo, Qt::Key_Down);
        }
    } else if (auto* view = shownAs<QListWidget>(list)) {
        clickItem(*view, view->model()->index(static_cast<int>(position), 0));
    }
}

void WidgetDriver::select(MeroTreeListBox& tree, const std::vector<MeroId>& ids) {
    auto* view = shownAs<QTreeView>(tree);
    Qt::KeyboardModifiers modifiers;
    for (const MeroId id : ids) {
        clickItem(*view, indexOf(tree, *view, id), modifiers);
        modifiers = Qt::ControlModifier;
    }
}

void WidgetDriver::doubleClick(MeroTreeListBox& tree, MeroId id) {
    auto* view = shownAs<QTreeView>(tree);
    const QModelIndex index = indexOf(tree, *view, id);
    clickItem(*view, index);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
}

void WidgetDriver::collapse(MeroTreeListBox& tree, MeroId id) {
    auto* view = shownAs<QTreeView>(tree);
    view->selectionModel()->setCurrentIndex(indexOf(tree, *view, id), QItemSelectionModel::NoUpdate);
    QTest::keyClick(view, Qt::Key_Left);
}

void WidgetDriver::key(MeroTreeListBox& tree, char character) {
    QTest::keyClick(widgetFor(tree), character);
}

void WidgetDriver::activate(MeroTabControl& tabs, MeroId page) {
    const std::vector<MeroId> pages = tabs.GetPages();
    const auto position = static_cast<int>(std::ranges::find(pages, page) - pages.begin());
    QTabBar* bar = shownAs<QTabWidget>(tabs)->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(position).center());
}

void WidgetDriver::clickRow(MeroBrowser& browser, int row) {
    auto* view = widgetFor(browser)->findChild<QTableView*>();
    const QString label = qt::plain(browser.GetObjects()->getField(row, 0));
    for (int each = 0; each < view->model()->rowCount(); ++each) {
        const QModelIndex index = view->model()->index(each, 0);
        if (index.data().toString() == label) {
            clickItem(*view, index);
            return;
        }
    }
}

void WidgetDriver::close(SV::Window& window) {
    widgetFor(window)->close();
}

}  // namespace mero::test
