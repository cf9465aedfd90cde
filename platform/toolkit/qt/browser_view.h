#pragma once

#include <QTableView>
#include <QWidget>
#include <vector>

#include "platform/toolkit/qt/browser_model.h"

class QLineEdit;

namespace mero::qt {

/// Table whose first column and whose last rows stay in sight: four views that scroll together.
class BrowserView : public QWidget {
public:
    explicit BrowserView(QWidget* parent);

    void setObjects(const MeroShrinkExpandBrowserObjects* objects);
    /// Rows were expanded, shrunk or added; what is selected and in sight stays as far as it can.
    void refresh();
    void sortBy(int column);
    void setColumnWidth(int column, int width);
    void showRow(BrowserModel::RowHandle handle);
    /// Rows as the model has them, in order.
    [[nodiscard]] std::vector<BrowserModel::RowHandle> selectedRows() const;
    [[nodiscard]] BrowserModel& getBody() { return body; }
    [[nodiscard]] BrowserModel& getSummary() { return summary; }
    [[nodiscard]] QTableView& getLabels() { return *labels; }
    [[nodiscard]] QTableView& getValues() { return *values; }
    [[nodiscard]] QLineEdit& getSearchLine() { return *search; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QTableView* makeView(QAbstractItemModel& model, bool isLabel, bool isSummary);
    void scrollTogether();
    void placeColumns();
    void placeParts();

    BrowserModel body{BrowserModel::Part::Body};
    BrowserModel summary{BrowserModel::Part::Summary};
    const MeroShrinkExpandBrowserObjects* table = nullptr;
    QLineEdit* search;
    QTableView* labels;
    QTableView* values;
    QTableView* summaryLabels;
    QTableView* summaryValues;
};

}  // namespace mero::qt
