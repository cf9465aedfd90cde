#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <memory>
#include <vector>

#include "apps/workbench/diagram_view.h"
#include "apps/workbench/model_list.h"
#include "apps/workbench/run_panel.h"
#include "apps/workbench/run_session.h"
#include "apps/workbench/workspace.h"

class QComboBox;
class QDockWidget;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QStackedWidget;

namespace mero {

/// The window of the workbench: models on the left, the drawing of one in the middle, the run on the right,
/// messages below. A run goes on while the window stays alive; nothing but Cancel can be done meanwhile that
/// changes the repository.
class MainWindow : public QMainWindow {
public:
    MainWindow();
    ~MainWindow() override;

    /// Each tells in the messages what went wrong, and leaves things as they were.

    bool openRepository(const QString& path, RepositoryFile::Use use);
    bool importFile(const QString& path, const QStringList& parameterFiles);
    /// The shipped example in a new repository in `folder`.
    bool openExample(const QString& folder);
    bool addMeasures();
    /// Of a template that the library offers for the shown model and the chosen analysis.
    bool addAgent(MeroId agentTemplate);
    /// Returns when the run is over.
    void simulate();
    void cancel() { isCancelled = true; }
    void showResults();
    void showModel(MeroId model);
    /// Colours the drawing by a measure of the last run, by its place in `measureBox`; 0 for none.
    void showMeasure(int place);

    [[nodiscard]] bool isRunning() const { return running; }
    [[nodiscard]] Workspace* getWorkspace() const { return workspace.get(); }
    [[nodiscard]] DiagramView& diagramView() { return *diagram; }
    [[nodiscard]] ModelList& modelList() { return *models; }
    [[nodiscard]] RunPanel& runPanel() { return *panel; }
    [[nodiscard]] QComboBox& measureBox() { return *measures; }
    [[nodiscard]] QString messages() const;
    /// Filled when it is about to be shown.
    [[nodiscard]] QMenu& templateMenu() { return *templates; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    using Action = void (MainWindow::*)();

    [[nodiscard]] QWidget* makeDiagramPage();
    void makeDocks();
    void addDock(Qt::DockWidgetArea area, SV::ResId title, const char* name, QWidget* content);
    void showRepositoryPage();
    void makeMenus();
    QAction* addAction(QMenu& menu, SV::ResId text, const QKeySequence& keys, Action action,
                       std::vector<QAction*>* group = nullptr);
    void restore();
    void remember() const;
    void rememberRepository(const QString& path) const;
    void fillRecent(QMenu& menu);
    void fillTemplates(QMenu& menu);

    void askNew();
    void askOpen();
    void askImport();
    void askImportWithParameters();
    void askImportLog();
    void askExample();
    void askSavePicture();
    void addMeasuresByMenu() { static_cast<void>(addMeasures()); }
    void toggleAgent();
    void fitDrawing();
    void zoomIn();
    void zoomOut();
    void toggleDark();
    [[nodiscard]] bool importByUser(SV::ResId title, bool withParameters);

    bool agentAdded(const Result<MeroId>& agent);
    void refresh();
    void selectionChanged();
    void openObject(MeroId object);
    [[nodiscard]] QString tipOf(MeroId object) const;
    void showFlows();
    void forgetRun();
    void takeMeasures(const RunSummary& summary, const RunRequest& request);
    void tellRun(const RunSummary& summary, double seconds);
    bool showProgress(const RunRequest& request, std::uint64_t started, std::int64_t time);
    void setRunning(bool isRunning);
    void updateActions();
    void tell(const QString& text);

    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<RunSession> session;
    std::vector<RunMeasure> runMeasures;
    bool running = false;
    bool isCancelled = false;
    bool closesAfterRun = false;
    QElapsedTimer sinceStart;
    QElapsedTimer sinceProgress;

    QStackedWidget* pages = nullptr;
    DiagramView* diagram = nullptr;
    QLabel* hint = nullptr;
    QComboBox* measures = nullptr;
    ModelList* models = nullptr;
    RunPanel* panel = nullptr;
    QPlainTextEdit* messageView = nullptr;
    std::vector<QAction*> repositoryActions;  ///< need an open repository and no run
    std::vector<QAction*> fileActions;        ///< need that no run is going on
    std::vector<QDockWidget*> docks;          ///< hidden until a repository is open
    QMenu* templates = nullptr;
    QAction* agentAction = nullptr;
    QAction* resultsAction = nullptr;
    QAction* simulateAction = nullptr;
    MeroId shownModel = MeroNoId;
};

}  // namespace mero
