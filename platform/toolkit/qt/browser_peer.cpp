#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include "component/host/browser.h"

#include "platform/toolkit/qt/browser_view.h"
#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

namespace {

class BrowserPeer : public ControlPeer {
public:
    BrowserPeer(MeroBrowser& shownBrowser, QWidget* place)
        : ControlPeer(shownBrowser, place), browser(shownBrowser) {
        auto made = std::make_unique<BrowserView>(place);
        view = made.get();
        auto layout = std::make_unique<QVBoxLayout>();
        layout->setContentsMargins({});
        layout->addWidget(made.release());
        place->setLayout(layout.release());
        setInner(&view->getLabels());
        for (QTableView* table : {&view->getLabels(), &view->getValues()}) {
            table->installEventFilter(this);
            table->viewport()->installEventFilter(this);
            connect(table, &QTableView::clicked, this, [this](const QModelIndex& index) {
                browser.userClick(rowOf(index.row()), index.column());
            });
        }
        connect(&view->getSearchLine(), &QLineEdit::textEdited, this,
                [this](const QString& text) { find(text, 0); });
        connect(&view->getSearchLine(), &QLineEdit::returnPressed, this,
                [this] { find(view->getSearchLine().text(), foundRow + 1); });
        refreshTimer.setSingleShot(true);
        refreshTimer.setInterval(0);
        connect(&refreshTimer, &QTimer::timeout, this, [this] { quietly([this] { view->refresh(); }); });
    }

    ~BrowserPeer() override {
        if (widget != nullptr) {
            view->setObjects(nullptr);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ContextMenu) {
            browser.userOpenPopup();
            return true;
        }
        if (event->type() == QEvent::KeyPress && useKey(*static_cast<QKeyEvent*>(event))) {
            return true;
        }
        return ControlPeer::eventFilter(watched, event);
    }

protected:
    void update(const SV::Change& change) override {
        switch (change.aspect) {
            case SV::Aspect::Objects:
                showObjects();
                break;
            case SV::Aspect::Expanded:
                view->refresh();
                break;
            case SV::Aspect::Field:
                view->getBody().fieldChanged(browser.GetObjects()->getHandle(change.position), change.count);
                break;
            case SV::Aspect::ColumnWidth:
                view->setColumnWidth(change.position, browser.GetObjects()->getColumnWidth(change.position));
                break;
            case SV::Aspect::Found:
                view->showRow(static_cast<BrowserModel::RowHandle>(change.item));
                break;
            case SV::Aspect::Copied:
                copy();
                break;
            default:
                break;
        }
    }

private:
    void showObjects() {
        const MeroShrinkExpandBrowserObjects* objects = browser.GetObjects();
        if (objects != shown) {
            shown = objects;
            view->setObjects(objects);
        } else {
            // Rows often come by the thousand.
            refreshTimer.start();
        }
    }

    [[nodiscard]] int rowOf(int shownRow) const {
        return browser.GetObjects()->getRowOf(view->getBody().handleAt(shownRow));
    }

    bool useKey(const QKeyEvent& key) {
        MeroShrinkExpandBrowserObjects* objects = browser.GetObjects();
        if (objects == nullptr) {
            return false;
        }
        if (key.matches(QKeySequence::Copy)) {
            copy();
            return true;
        }
        const std::vector<BrowserModel::RowHandle> selected = view->selectedRows();
        const bool isArrow = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
        if (isArrow && key.modifiers() == Qt::NoModifier && selected.size() == 1 &&
            objects->hasChildrenOf(selected.front()) &&
            objects->isExpandedOf(selected.front()) != (key.key() == Qt::Key_Right)) {
            objects->expandRow(objects->getRowOf(selected.front()), key.key() == Qt::Key_Right);
            return true;
        }
        return false;
    }

    void copy() const {
        std::vector<int> rows;
        for (const BrowserModel::RowHandle handle : view->selectedRows()) {
            rows.push_back(browser.GetObjects()->getRowOf(handle));
        }
        QApplication::clipboard()->setText(plain(browser.GetObjects()->getCopyText(rows)));
    }

    void find(const QString& text, int from) {
        MeroShrinkExpandBrowserObjects* objects = browser.GetObjects();
        if (objects == nullptr || text.isEmpty()) {
            return;
        }
        foundRow = objects->findText(fromQt(text), from);
        if (foundRow >= 0) {
            objects->showRow(foundRow);
        }
    }

    MeroBrowser& browser;
    BrowserView* view;
    const MeroShrinkExpandBrowserObjects* shown = nullptr;
    int foundRow = -1;
    QTimer refreshTimer;
};

}  // namespace

std::unique_ptr<SV::Peer> makeBrowserPeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<BrowserPeer>(static_cast<MeroBrowser&>(control), widget);
}

}  // namespace mero::qt
