#include "platform/toolkit/qt/browser_view.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/toolkit_messages.h"

namespace mero::qt {

namespace {

constexpr int IndentOfLevel = 20;

/// Draws the sign of rows with rows below them, and the indent of each level.
class LabelDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const int indent = IndentOfLevel * index.data(BrowserModel::DepthRole).toInt();
        QStyleOptionViewItem background = option;
        initStyleOption(&background, index);
        background.text.clear();
        const QWidget* view = option.widget;
        view->style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, view);
        if (index.data(BrowserModel::HasChildrenRole).toBool()) {
            QStyleOption sign;
            sign.rect =
                QRect(option.rect.left() + indent, option.rect.top(), IndentOfLevel, option.rect.height());
            sign.palette = option.palette;
            sign.state = QStyle::State_Enabled | QStyle::State_Children;
            if (index.data(BrowserModel::ExpandedRole).toBool()) {
                sign.state |= QStyle::State_Open;
            }
            view->style()->drawPrimitive(QStyle::PE_IndicatorBranch, &sign, painter, view);
        }
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        const QRect room = option.rect.adjusted(indent + IndentOfLevel, 0, -4, 0);
        const QString text =
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, room.width());
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter, text);
    }
};

void follow(QScrollBar* left, QScrollBar* right) {
    QObject::connect(left, &QScrollBar::valueChanged, right, &QScrollBar::setValue);
    QObject::connect(right, &QScrollBar::valueChanged, left, &QScrollBar::setValue);
}

int heightOfRows(const QTableView& view) {
    return view.model()->rowCount() * view.verticalHeader()->defaultSectionSize();
}

}  // namespace

BrowserView::BrowserView(QWidget* parent) : QWidget(parent) {
    search = std::make_unique<QLineEdit>(this).release();
    search->setPlaceholderText(plain(SV::String(MessageSearchHint)));
    search->setAccessibleName(search->placeholderText());
    search->setClearButtonEnabled(true);
    labels = makeView(body, true, false);
    values = makeView(body, false, false);
    summaryLabels = makeView(summary, true, true);
    summaryValues = makeView(summary, false, true);
    values->setSelectionModel(labels->selectionModel());
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins({});
    grid->setSpacing(0);
    grid->setVerticalSpacing(4);
    grid->addWidget(search, 0, 0, 1, 2);
    grid->addWidget(labels, 1, 0);
    grid->addWidget(values, 1, 1);
    grid->addWidget(summaryLabels, 2, 0);
    grid->addWidget(summaryValues, 2, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    setLayout(grid.release());
    scrollTogether();
}

QTableView* BrowserView::makeView(QAbstractItemModel& model, bool isLabel, bool isSummary) {
    auto view = std::make_unique<QTableView>(this);
    view->setModel(&model);
    view->setAlternatingRowColors(!isSummary);
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(isSummary ? QAbstractItemView::NoSelection : QAbstractItemView::ExtendedSelection);
    view->setFocusPolicy(isSummary ? Qt::NoFocus : Qt::StrongFocus);
    view->setTabKeyNavigation(false);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setContextMenuPolicy(Qt::NoContextMenu);
    view->setFrameShape(QFrame::NoFrame);
    view->verticalHeader()->hide();
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 8);
    view->horizontalHeader()->setVisible(!isSummary);
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setSectionsClickable(true);
    view->setHorizontalScrollBarPolicy(isLabel || isSummary ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(isLabel || isSummary ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    if (isLabel) {
        view->setItemDelegate(std::make_unique<LabelDelegate>(view.get()).release());
        view->horizontalHeader()->setStretchLastSection(false);
    }
    if (isSummary) {
        QFont bold = view->font();
        bold.setBold(true);
        view->setFont(bold);
    }
    return view.release();
}

void BrowserView::scrollTogether() {
    follow(labels->verticalScrollBar(), values->verticalScrollBar());
    follow(values->horizontalScrollBar(), summaryValues->horizontalScrollBar());
    // The labels get an empty bar beside that of the values, so that both show the same rows.
    connect(values->horizontalScrollBar(), &QScrollBar::rangeChanged, this, [this](int, int maximum) {
        labels->setHorizontalScrollBarPolicy(maximum > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    });
    connect(values->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int section, int, int width) { summaryValues->setColumnWidth(section, width); });
    connect(labels->horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int) {
        if (section == 0) {
            placeParts();
        }
    });
    for (QTableView* view : {labels, values}) {
        connect(view->horizontalHeader(), &QHeaderView::sectionClicked, this,
                [this](int column) { sortBy(column); });
    }
}

void BrowserView::setObjects(const MeroShrinkExpandBrowserObjects* objects) {
    table = objects;
    body.setObjects(objects);
    summary.setObjects(objects);
    placeColumns();
}

void BrowserView::placeColumns() {
    for (QTableView* view : {labels, summaryLabels}) {
        for (int column = 0; column < body.columnCount(); ++column) {
            view->setColumnHidden(column, column > 0);
        }
    }
    for (QTableView* view : {values, summaryValues}) {
        view->setColumnHidden(0, true);
    }
    for (int column = 0; table != nullptr && column < body.columnCount(); ++column) {
        // A column that nobody has measured keeps the view's own width.
        if (const int measured = table->getColumnWidth(column); measured > 0) {
            setColumnWidth(column, measured);
        }
    }
    placeParts();
}

void BrowserView::placeParts() {
    constexpr double LargestShare = 0.6;
    const int widest = static_cast<int>(width() * LargestShare);
    const int labelWidth = std::max(std::min(labels->columnWidth(0), widest), 80);
    labels->setFixedWidth(labelWidth);
    summaryLabels->setFixedWidth(labelWidth);
    const bool hasSummary = summary.rowCount() > 0;
    for (QTableView* view : {summaryLabels, summaryValues}) {
        view->setVisible(hasSummary);
        view->setFixedHeight(heightOfRows(*view) + 2);
    }
}

void BrowserView::refresh() {
    const std::vector<BrowserModel::RowHandle> selected = selectedRows();
    const int place = values->verticalScrollBar()->value();
    const bool isWider = body.columnCount() != labels->horizontalHeader()->count();
    body.refresh();
    summary.refresh();
    if (isWider || summary.rowCount() > 0) {
        placeColumns();
    }
    if (selected.size() == 1) {
        const int row = body.shownRowOf(selected.front());
        if (row >= 0) {
            labels->selectionModel()->setCurrentIndex(
                body.index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        }
    }
    values->verticalScrollBar()->setValue(place);
}

void BrowserView::sortBy(int column) {
    // Up, down, and the order of the table again.
    const bool isSame = body.getSortColumn() == column;
    const int newColumn = isSame && body.isDescending() ? -1 : column;
    body.sortBy(newColumn, isSame);
    for (QTableView* view : {labels, values}) {
        view->horizontalHeader()->setSortIndicatorShown(newColumn >= 0);
        view->horizontalHeader()->setSortIndicator(newColumn,
                                                   isSame ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

void BrowserView::setColumnWidth(int column, int width) {
    for (QTableView* view : {labels, values, summaryLabels, summaryValues}) {
        view->setColumnWidth(column, width);
    }
    if (column == 0) {
        placeParts();
    }
}

void BrowserView::showRow(BrowserModel::RowHandle handle) {
    const int row = body.shownRowOf(handle);
    if (row < 0) {
        return;
    }
    labels->selectionModel()->setCurrentIndex(
        body.index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    values->scrollTo(body.index(row, 1), QAbstractItemView::PositionAtCenter);
}

std::vector<BrowserModel::RowHandle> BrowserView::selectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : labels->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::ranges::sort(rows);
    std::vector<BrowserModel::RowHandle> handles;
    handles.reserve(rows.size());
    for (const int row : rows) {
        handles.push_back(body.handleAt(row));
    }
    return handles;
}

void BrowserView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeParts();
}

}  // namespace mero::qt
