#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <algorithm>

#include "component/host/tree_list_box.h"

#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/qt/tree_model.h"

namespace mero::qt {

namespace {

/// Gives rows without a picture the room of those with one.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        constexpr int RoomAroundText = 4;
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(size.height(), option.fontMetrics.height() + RoomAroundText));
        return size;
    }
};

class TreePeer : public ControlPeer {
public:
    TreePeer(MeroTreeListBox& shownTree, QTreeView* shown)
        : ControlPeer(shownTree, shown), tree(shownTree), view(shown), model(shownTree) {
        view->setModel(&model);
        view->header()->hide();
        view->setUniformRowHeights(true);
        view->setItemDelegate(&rows);
        // A flat list has nothing to expand.
        view->setRootIsDecorated(false);
        view->setExpandsOnDoubleClick(false);
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        view->setSelectionMode(tree.IsMultiSelection() ? QAbstractItemView::ExtendedSelection
                                                       : QAbstractItemView::SingleSelection);
        view->viewport()->installEventFilter(this);
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
            if (!isUpdating()) {
                tree.userSelect(selectedIds());
            }
        });
        connect(view, &QTreeView::doubleClicked, this,
                [this](const QModelIndex& index) { tree.userDoubleClick(model.idOf(index)); });
        connect(view, &QTreeView::expanded, this,
                [this](const QModelIndex& index) { readExpanded(index, true); });
        connect(view, &QTreeView::collapsed, this,
                [this](const QModelIndex& index) { readExpanded(index, false); });
    }

    ~TreePeer() override {
        if (widget != nullptr) {
            view->viewport()->removeEventFilter(this);
            view->setModel(nullptr);
            view->setItemDelegate(nullptr);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ContextMenu) {
            const auto* asked = static_cast<QContextMenuEvent*>(event);
            const QModelIndex under = view->indexAt(view->viewport()->mapFromGlobal(asked->globalPos()));
            if (asked->reason() == QContextMenuEvent::Mouse && under.isValid() &&
                !tree.IsSelected(model.idOf(under))) {
                view->setCurrentIndex(under);
            }
            tree.userOpenPopup();
            return true;
        }
        if (watched == view && event->type() == QEvent::KeyPress && useKey(*static_cast<QKeyEvent*>(event))) {
            return true;
        }
        if (watched == view->viewport() && event->type() == QEvent::Paint && tree.GetEntryCount() == 0) {
            paintEmptyText();
        }
        return ControlPeer::eventFilter(watched, event);
    }

protected:
    void update(const SV::Change& change) override {
        switch (change.aspect) {
            case SV::Aspect::ItemsInserted:
                model.insert(change.item, change.position);
                if (change.item != MeroNoTreeEntry) {
                    view->setRootIsDecorated(true);
                }
                break;
            case SV::Aspect::ItemsRemoved:
                model.remove(change.item, change.position);
                break;
            case SV::Aspect::ItemsCleared:
                model.clear();
                view->setRootIsDecorated(false);
                break;
            case SV::Aspect::ItemChanged:
                model.entryChanged(change.item);
                break;
            case SV::Aspect::Selection:
                showSelection();
                break;
            case SV::Aspect::Expanded:
                showExpanded(change.item);
                break;
            case SV::Aspect::Drawing:
                view->viewport()->update();
                break;
            default:
                break;
        }
    }

private:
    bool useKey(const QKeyEvent& key) {
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            return tree.GetSelectionCount() == 1 && tree.userDoubleClick(tree.GetSelectedEntry());
        }
        const QList<uint> characters = key.text().toUcs4();
        return characters.size() == 1 && key.text().at(0).isPrint() &&
               tree.userKey({static_cast<char32_t>(characters.front())});
    }

    [[nodiscard]] std::vector<MeroId> selectedIds() const {
        std::vector<MeroId> ids;
        for (const QModelIndex& index : view->selectionModel()->selectedIndexes()) {
            ids.push_back(model.idOf(index));
        }
        return ids;
    }

    void readExpanded(const QModelIndex& index, bool expanded) {
        if (!isUpdating()) {
            tree.userExpand(model.idOf(index), expanded);
        }
    }

    void showSelection() {
        QItemSelection selection;
        const std::vector<MeroId> ids = tree.GetSelectedEntries();
        for (const MeroId id : ids) {
            const QModelIndex index = model.indexOf(id);
            selection.select(index, index);
        }
        view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        if (!ids.empty()) {
            view->selectionModel()->setCurrentIndex(model.indexOf(ids.front()),
                                                    QItemSelectionModel::NoUpdate);
            view->scrollTo(model.indexOf(ids.front()));
        }
    }

    void showExpanded(MeroId id) {
        if (id != MeroNoTreeEntry) {
            view->setExpanded(model.indexOf(id), tree.IsExpanded(id));
            return;
        }
        const bool isAny = tree.GetRootCount() > 0 && tree.IsExpanded(tree.GetChild(MeroNoTreeEntry, 0));
        if (isAny) {
            view->expandAll();
        } else {
            view->collapseAll();
        }
    }

    void paintEmptyText() {
        QPainter painter(view->viewport());
        painter.setPen(view->palette().color(QPalette::PlaceholderText));
        const QRect room = view->viewport()->rect().adjusted(12, 12, -12, -12);
        painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, plain(tree.GetEmptyText()));
    }

    MeroTreeListBox& tree;
    QTreeView* view;
    TreeModel model;
    RowDelegate rows;
};

}  // namespace

std::unique_ptr<SV::Peer> makeTreePeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<TreePeer>(static_cast<MeroTreeListBox&>(control),
                                      qobject_cast<QTreeView*>(widget));
}

}  // namespace mero::qt
