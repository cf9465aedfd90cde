#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace mero::qt {

/// A row of buttons that becomes a grid where the window is too narrow for it. In one row the first stands on
/// the left and the others on the right; in a grid all are as wide as the widest.
class WrappingRow : public QLayout {
public:
    /// Takes the place of the layouts in `root` whose widget has the property "wraps".
    static void replaceLayouts(QWidget& root);

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    void setGeometry(const QRect& room) override;

private:
    [[nodiscard]] QSize largestItem() const;
    /// As many as fit, and at least one.
    [[nodiscard]] int columnsIn(int width) const;
    void placeInOneRow(const QRect& room);
    void placeInGrid(const QRect& room, int columns);

    std::vector<std::unique_ptr<QLayoutItem>> items;
};

}  // namespace mero::qt
