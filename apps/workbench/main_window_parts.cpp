#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QSettings>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "apps/workbench/main_window.h"
#include "apps/workbench/texts.h"
#include "apps/workbench/welcome_page.h"
#include "apps/workbench/workbench_messages.h"
#include "platform/toolkit/qt/icons.h"
#include "platform/toolkit/qt/palette.h"

namespace mero {

namespace {

constexpr auto GeometryKey = "window/geometry";
constexpr auto StateKey = "window/state";
constexpr auto DarkKey = "window/dark";
constexpr auto RecentKey = "repositories/recent";
constexpr int MostRecent = 8;

/// Qt's parents own; `release` hands a widget over to the one that it is given to next.
template <class Widget, class... Arguments>
Widget* make(Arguments&&... arguments) {
    return std::make_unique<Widget>(std::forward<Arguments>(arguments)...).release();
}

enum Page : int { PageWelcome = 0, PageDiagram = 1 };

}  // namespace

MainWindow::MainWindow() {
    setWindowTitle(say(WorkbenchText::Title));
    setWindowIcon(qt::namedIcon("application"));
    pages = make<QStackedWidget>();
    pages->addWidget(make<WelcomePage>(
        WelcomePage::Handlers{[this] { askExample(); }, [this] { askImportWithParameters(); },
                              [this] { askImportLog(); }, [this] { askOpen(); }}));
    pages->addWidget(makeDiagramPage());
    setCentralWidget(pages);
    makeDocks();
    makeMenus();
    restore();
    updateActions();
}

QWidget* MainWindow::makeDiagramPage() {
    auto* const page = make<QWidget>();
    auto* const column = make<QVBoxLayout>();
    column->setContentsMargins({});
    column->setSpacing(0);
    auto* const bar = make<QHBoxLayout>();
    bar->setContentsMargins(12, 8, 12, 8);
    bar->setSpacing(8);
    measures = make<QComboBox>();
    measures->addItem(say(WorkbenchText::NoColour));
    measures->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    measures->setAccessibleName(say(WorkbenchText::ColourBy));
    auto* const title = make<QLabel>(label(WorkbenchText::ColourBy));
    title->setBuddy(measures);
    hint = make<QLabel>();
    hint->setWordWrap(true);
    bar->addWidget(title);
    bar->addWidget(measures);
    bar->addWidget(hint, 1);
    bar->addStretch();
    diagram = make<DiagramView>();
    diagram->setTipOf([this](MeroId object) { return tipOf(object); });
    diagram->setOpenHandler([this](MeroId object) { openObject(object); });
    column->addLayout(bar);
    column->addWidget(diagram, 1);
    page->setLayout(column);
    connect(measures, &QComboBox::currentIndexChanged, this, [this](int place) { showMeasure(place); });
    return page;
}

void MainWindow::makeDocks() {
    models = make<ModelList>();
    models->setSelectHandler([this] { selectionChanged(); });
    addDock(Qt::LeftDockWidgetArea, WorkbenchText::Models, "models", models);
    panel = make<RunPanel>();
    panel->setSimulateHandler([this] { simulate(); });
    panel->setCancelHandler([this] { cancel(); });
    panel->setResultsHandler([this] { showResults(); });
    auto* const area = make<QScrollArea>();
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(panel);
    area->setMinimumWidth(panel->minimumSizeHint().width() + 16);
    addDock(Qt::RightDockWidgetArea, WorkbenchText::MenuRun, "run", area);
    messageView = make<QPlainTextEdit>();
    messageView->setReadOnly(true);
    messageView->setAccessibleName(say(WorkbenchText::MessagesTitle));
    constexpr int MostMessages = 5000;
    messageView->setMaximumBlockCount(MostMessages);
    addDock(Qt::BottomDockWidgetArea, WorkbenchText::MessagesTitle, "messages", messageView);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

void MainWindow::addDock(Qt::DockWidgetArea area, SV::ResId title, const char* name, QWidget* content) {
    auto* const dock = make<QDockWidget>(say(title));
    dock->setObjectName(name);
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setWidget(content);
    addDockWidget(area, dock);
    docks.push_back(dock);
}

void MainWindow::showRepositoryPage() {
    pages->setCurrentIndex(PageDiagram);
    for (QDockWidget* const dock : docks) {
        dock->show();
    }
}

QAction* MainWindow::addAction(QMenu& menu, SV::ResId text, const QKeySequence& keys, Action action,
                               std::vector<QAction*>* group) {
    QAction* const made = menu.addAction(label(text));
    made->setShortcut(keys);
    connect(made, &QAction::triggered, this, action);
    if (group != nullptr) {
        group->push_back(made);
    }
    return made;
}

void MainWindow::makeMenus() {
    QMenu& file = *menuBar()->addMenu(label(WorkbenchText::MenuFile));
    addAction(file, WorkbenchText::New, QKeySequence::New, &MainWindow::askNew, &fileActions);
    addAction(file, WorkbenchText::Open, QKeySequence::Open, &MainWindow::askOpen, &fileActions);
    QMenu& recent = *file.addMenu(label(WorkbenchText::Recent));
    connect(&recent, &QMenu::aboutToShow, this, [this, &recent] { fillRecent(recent); });
    fileActions.push_back(recent.menuAction());
    file.addSeparator();
    addAction(file, WorkbenchText::Import, QKeySequence("Ctrl+I"), &MainWindow::askImport, &fileActions);
    addAction(file, WorkbenchText::ImportWithParameters, QKeySequence("Ctrl+Shift+I"),
              &MainWindow::askImportWithParameters, &fileActions);
    addAction(file, WorkbenchText::OpenExample, {}, &MainWindow::askExample, &fileActions);
    addAction(file, WorkbenchText::SavePicture, QKeySequence("Ctrl+P"), &MainWindow::askSavePicture,
              &repositoryActions);
    file.addSeparator();
    QAction* const quit = file.addAction(label(WorkbenchText::Quit));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu& model = *menuBar()->addMenu(label(WorkbenchText::MenuModel));
    addAction(model, WorkbenchText::AddMeasures, QKeySequence("Ctrl+M"), &MainWindow::addMeasuresByMenu,
              &repositoryActions);
    templates = model.addMenu(label(WorkbenchText::AddAgent));
    templates->setToolTipsVisible(true);
    connect(templates, &QMenu::aboutToShow, this, [this] { fillTemplates(*templates); });
    agentAction =
        addAction(model, WorkbenchText::Activate, QKeySequence("Ctrl+Shift+A"), &MainWindow::toggleAgent);

    QMenu& view = *menuBar()->addMenu(label(WorkbenchText::MenuView));
    addAction(view, WorkbenchText::Fit, QKeySequence("Ctrl+0"), &MainWindow::fitDrawing);
    addAction(view, WorkbenchText::ZoomIn, QKeySequence::ZoomIn, &MainWindow::zoomIn);
    addAction(view, WorkbenchText::ZoomOut, QKeySequence::ZoomOut, &MainWindow::zoomOut);
    view.addSeparator();
    QAction* const dark =
        addAction(view, WorkbenchText::Dark, QKeySequence("Ctrl+D"), &MainWindow::toggleDark);
    dark->setCheckable(true);
    dark->setChecked(qt::isDark());

    QMenu& run = *menuBar()->addMenu(label(WorkbenchText::MenuRun));
    simulateAction = addAction(run, WorkbenchText::Simulate, QKeySequence("Ctrl+R"), &MainWindow::simulate);
    resultsAction = addAction(run, WorkbenchText::Results, QKeySequence("Ctrl+E"), &MainWindow::showResults);
    QAction* const stop = run.addAction(label(WorkbenchText::Cancel));
    stop->setShortcut(QKeySequence("Ctrl+."));
    connect(stop, &QAction::triggered, this, [this] { cancel(); });
}

void MainWindow::updateActions() {
    for (QAction* const action : fileActions) {
        action->setEnabled(!running);
    }
    for (QAction* const action : repositoryActions) {
        action->setEnabled(!running && workspace != nullptr && !diagram->getDiagram().shapes.empty());
    }
    templates->menuAction()->setEnabled(!running && shownModel != MeroNoId);
    const bool isAgent = models->currentItem() != nullptr && models->currentItem()->parent() != nullptr;
    agentAction->setEnabled(!running && isAgent);
    const bool isActive = isAgent && models->currentItem()->toolTip(0) == say(WorkbenchText::AgentActive);
    agentAction->setText(label(isActive ? WorkbenchText::Deactivate : WorkbenchText::Activate));
    simulateAction->setEnabled(!running && workspace != nullptr && panel->isReady());
    resultsAction->setEnabled(!running && session != nullptr && session->hasRun());
}

void MainWindow::restore() {
    const QSettings settings;
    constexpr QSize FirstSize(1280, 800);
    if (!restoreGeometry(settings.value(GeometryKey).toByteArray())) {
        resize(FirstSize);
    }
    if (!restoreState(settings.value(StateKey).toByteArray())) {
        resizeDocks({docks[0], docks[1]}, {230, 340}, Qt::Horizontal);
        resizeDocks({docks[2]}, {120}, Qt::Vertical);
    }
    for (QDockWidget* const dock : docks) {
        dock->hide();
    }
}

void MainWindow::remember() const {
    QSettings settings;
    settings.setValue(GeometryKey, saveGeometry());
    settings.setValue(StateKey, saveState());
    settings.setValue(DarkKey, qt::isDark());
}

void MainWindow::rememberRepository(const QString& path) const {
    QSettings settings;
    QStringList recent = settings.value(RecentKey).toStringList();
    recent.removeAll(path);
    recent.prepend(path);
    settings.setValue(RecentKey, QStringList(recent.mid(0, MostRecent)));
}

void MainWindow::fillRecent(QMenu& menu) {
    menu.clear();
    for (const QString& path : QSettings().value(RecentKey).toStringList()) {
        connect(menu.addAction(path), &QAction::triggered, this,
                [this, path] { openRepository(path, RepositoryFile::Use::Change); });
    }
}

void MainWindow::fillTemplates(QMenu& menu) {
    menu.clear();
    if (workspace == nullptr || shownModel == MeroNoId) {
        return;
    }
    const int analysis = static_cast<int>(panel->request().analysis);
    for (const Workspace::AgentTemplate& offered : workspace->templatesFor(shownModel, analysis)) {
        QAction* const action = menu.addAction(QString::fromStdString(offered.name));
        // Rich text is wrapped.
        action->setToolTip("<p>" + QString::fromStdString(offered.info).toHtmlEscaped() + "</p>");
        const MeroId id = offered.id;
        connect(action, &QAction::triggered, this, [this, id] { addAgent(id); });
    }
}

void MainWindow::askNew() {
    QString path = QFileDialog::getSaveFileName(this, say(WorkbenchText::NewTitle), {},
                                                say(WorkbenchText::RepositoryFiles));
    if (!path.isEmpty()) {
        path += path.endsWith(".mero") || path.endsWith(".json") ? "" : ".mero";
        openRepository(path, RepositoryFile::Use::Create);
    }
}

void MainWindow::askOpen() {
    const QString path =
        QFileDialog::getOpenFileName(this, say(WorkbenchText::Open), {}, say(WorkbenchText::RepositoryFiles));
    if (!path.isEmpty()) {
        openRepository(path, RepositoryFile::Use::Change);
    }
}

/// Without a repository it needs one first.
bool MainWindow::importByUser(SV::ResId title, bool withParameters) {
    const QString path = QFileDialog::getOpenFileName(this, say(title), {}, say(WorkbenchText::ImportFiles));
    if (path.isEmpty()) {
        return false;
    }
    QStringList parameters;
    if (withParameters) {
        parameters =
            QFileDialog::getOpenFileNames(this, say(WorkbenchText::ChooseParameters), QFileInfo(path).path(),
                                          say(WorkbenchText::ParameterFiles));
    }
    if (workspace == nullptr) {
        askNew();
    }
    return workspace != nullptr && importFile(path, parameters);
}

void MainWindow::askImport() {
    static_cast<void>(importByUser(WorkbenchText::Import, false));
}

void MainWindow::askImportWithParameters() {
    static_cast<void>(importByUser(WorkbenchText::ImportProcess, true));
}

void MainWindow::askImportLog() {
    static_cast<void>(importByUser(WorkbenchText::ImportLog, false));
}

void MainWindow::askExample() {
    openExample(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/example");
}

void MainWindow::askSavePicture() {
    const QString path = QFileDialog::getSaveFileName(this, say(WorkbenchText::SavePicture), {},
                                                      say(WorkbenchText::PictureFiles));
    if (!path.isEmpty() && !diagram->savePicture(path)) {
        tell(say(WorkbenchText::PictureNotSaved, {path}));
    }
}

void MainWindow::fitDrawing() {
    diagram->fit();
}

void MainWindow::zoomIn() {
    constexpr double Step = 1.25;
    diagram->zoomBy(Step);
}

void MainWindow::zoomOut() {
    constexpr double Step = 1.25;
    diagram->zoomBy(1 / Step);
}

void MainWindow::toggleDark() {
    qt::applyLook(*qobject_cast<QApplication*>(QApplication::instance()), !qt::isDark());
}

}  // namespace mero
