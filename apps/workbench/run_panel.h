#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "apps/workbench/run_session.h"
#include "apps/workbench/workspace.h"

class QComboBox;
class QDateTimeEdit;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace mero {

/// Asks for what is to be simulated, starts it, and shows how far it is.
class RunPanel : public QWidget {
public:
    explicit RunPanel(QWidget* parent = nullptr);

    /// Models to choose from; what was chosen before stays so, as far as it is still there. Without a choice
    /// the first process is checked.
    void setModels(const std::vector<Workspace::ModelEntry>& models);
    [[nodiscard]] RunRequest request() const;
    /// Number of instances in all; 0 if the run ends by time.
    [[nodiscard]] std::uint64_t wantedInstances() const;
    [[nodiscard]] QString analysisName() const;
    /// Whether something can be simulated at all.
    [[nodiscard]] bool isReady() const;

    void setRunning(bool isRunning);
    void showProgress(double share, const QString& text);
    void setHasResults(bool hasResults);

    void setSimulateHandler(std::function<void()> handler) { simulateHandler = std::move(handler); }
    void setCancelHandler(std::function<void()> handler) { cancelHandler = std::move(handler); }
    void setResultsHandler(std::function<void()> handler) { resultsHandler = std::move(handler); }

    // For who drives the panel by mouse and keys

    [[nodiscard]] QComboBox& analysisBox() { return *analysis; }
    [[nodiscard]] QListWidget& modelList() { return *models; }
    [[nodiscard]] QSpinBox& endBox() { return *end; }
    [[nodiscard]] QPushButton& simulateButton() { return *simulate; }
    [[nodiscard]] QPushButton& cancelButton() { return *cancel; }
    [[nodiscard]] QPushButton& resultsButton() { return *results; }
    [[nodiscard]] QDateTimeEdit& startBox() { return *start; }

private:
    [[nodiscard]] QWidget* makeTask();
    [[nodiscard]] QWidget* makeConditions();
    [[nodiscard]] QWidget* makeButtons();
    void connectAll();
    void updateControls();
    [[nodiscard]] Analysis chosenAnalysis() const;

    QWidget* settings = nullptr;
    QComboBox* analysis = nullptr;
    QLabel* answer = nullptr;
    QListWidget* models = nullptr;
    QComboBox* environment = nullptr;
    QSpinBox* end = nullptr;
    QComboBox* endUnit = nullptr;
    QDateTimeEdit* start = nullptr;
    QSpinBox* seed = nullptr;
    QDoubleSpinBox* daysPerYear = nullptr;
    QDoubleSpinBox* hoursPerDay = nullptr;
    QProgressBar* progress = nullptr;
    QLabel* progressText = nullptr;
    QPushButton* simulate = nullptr;
    QPushButton* cancel = nullptr;
    QPushButton* results = nullptr;
    bool running = false;
    bool hasResults = false;
    std::function<void()> simulateHandler;
    std::function<void()> cancelHandler;
    std::function<void()> resultsHandler;
};

}  // namespace mero
