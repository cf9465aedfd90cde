#include "platform/toolkit/qt/wrapping_row.h"

#include <QWidget>
#include <algorithm>

namespace mero::qt {

void WrappingRow::replaceLayouts(QWidget& root) {
    for (QWidget* const place : root.findChildren<QWidget*>()) {
        if (!place->property("wraps").toBool() || place->layout() == nullptr) {
            continue;
        }
        std::unique_ptr<QLayout> before(place->layout());
        auto row = std::make_unique<WrappingRow>();
        row->setContentsMargins(before->contentsMargins());
        row->setSpacing(before->spacing());
        std::vector<QWidget*> widgets;
        for (int index = 0; index < before->count(); ++index) {
            if (QWidget* const widget = before->itemAt(index)->widget()) {
                widgets.push_back(widget);
            }
        }
        before.reset();
        for (QWidget* const widget : widgets) {
            row->addWidget(widget);
        }
        place->setLayout(row.release());
    }
}

void WrappingRow::addItem(QLayoutItem* item) {
    items.emplace_back(item);
}

QLayoutItem* WrappingRow::itemAt(int index) const {
    return index >= 0 && index < count() ? items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* WrappingRow::takeAt(int index) {
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    const auto place = items.begin() + index;
    QLayoutItem* const taken = place->release();
    items.erase(place);
    return taken;
}

QSize WrappingRow::largestItem() const {
    QSize largest;
    for (const auto& item : items) {
        largest = largest.expandedTo(item->sizeHint());
    }
    return largest;
}

QSize WrappingRow::sizeHint() const {
    const QSize largest = largestItem();
    return {count() * (largest.width() + spacing()) - spacing(), largest.height()};
}

QSize WrappingRow::minimumSize() const {
    return largestItem();
}

int WrappingRow::columnsIn(int width) const {
    const int fitting = (width + spacing()) / (largestItem().width() + spacing());
    return std::clamp(fitting, 1, std::max(count(), 1));
}

int WrappingRow::heightForWidth(int width) const {
    const int columns = columnsIn(width);
    const int rows = (count() + columns - 1) / columns;
    return rows * (largestItem().height() + spacing()) - spacing();
}

void WrappingRow::setGeometry(const QRect& room) {
    QLayout::setGeometry(room);
    const int columns = columnsIn(room.width());
    if (columns == count()) {
        placeInOneRow(room);
    } else {
        placeInGrid(room, columns);
    }
}

void WrappingRow::placeInOneRow(const QRect& room) {
    int right = room.x() + room.width();
    for (int index = count() - 1; index >= 0; --index) {
        QLayoutItem& item = *items[static_cast<std::size_t>(index)];
        const QSize size = item.sizeHint();
        right -= size.width();
        item.setGeometry({{index > 0 ? right : room.x(), room.y()}, size});
        right -= spacing();
    }
}

void WrappingRow::placeInGrid(const QRect& room, int columns) {
    const int width = (room.width() + spacing()) / columns - spacing();
    const int height = largestItem().height();
    for (int index = 0; index < count(); ++index) {
        items[static_cast<std::size_t>(index)]->setGeometry(
            {room.x() + index % columns * (width + spacing()),
             room.y() + index / columns * (height + spacing()), width, height});
    }
}

}  // namespace mero::qt
