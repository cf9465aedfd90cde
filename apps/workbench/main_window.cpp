#include "apps/workbench/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QSettings>
#include <algorithm>

#include "component/host/core_time.h"

#include "apps/workbench/example.h"
#include "apps/workbench/texts.h"
#include "apps/workbench/workbench_messages.h"
#include "component/agents/agent_types.h"
#include "platform/toolkit/qt/field_dress.h"

namespace mero {

namespace {

QString textOf(const std::string& text) {
    return QString::fromStdString(text);
}

QString numberOf(std::uint64_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

QString shownSeconds(double seconds) {
    constexpr double DaysPerYear = 365.0;
    constexpr double HoursPerDay = 24.0;
    return qt::dressedTime(MeroCoreTime(seconds, DaysPerYear, HoursPerDay).asText());
}

}  // namespace

MainWindow::~MainWindow() {
    session.reset();
}

bool MainWindow::openRepository(const QString& path, RepositoryFile::Use use) {
    // There is one workspace at a time, and the one before goes only if the new one can be opened.
    auto file = RepositoryFile::open(path.toStdString(), use);
    if (!file) {
        tell(say(WorkbenchText::NotOpened, {textOf(file.error().text)}));
        return false;
    }
    forgetRun();
    session.reset();
    workspace.reset();
    workspace = std::make_unique<Workspace>(path.toStdString(), std::move(file.value()));
    session = std::make_unique<RunSession>(workspace->repository(), workspace->management());
    shownModel = MeroNoId;
    rememberRepository(path);
    tell(say(WorkbenchText::Opened, {path}));
    showRepositoryPage();
    refresh();
    return true;
}

bool MainWindow::importFile(const QString& path, const QStringList& parameterFiles) {
    if (workspace == nullptr) {
        return false;
    }
    forgetRun();
    std::vector<std::string> parameters;
    for (const QString& file : parameterFiles) {
        parameters.push_back(file.toStdString());
    }
    const Result<ImportReport> report = workspace->import(path.toStdString(), parameters);
    if (!report) {
        tell(say(WorkbenchText::NotImported, {textOf(report.error().text)}));
        return false;
    }
    for (const ImportNote& note : report.value().notes) {
        tell("  " + textOf(noteText(note)));
    }
    const bool hasEnvironment = report.value().environment != MeroNoId;
    tell(
        say(WorkbenchText::Imported, {path, numberOf(report.value().models.size() + (hasEnvironment ? 1 : 0)),
                                      numberOf(report.value().notes.size())}));
    if (!report.value().models.empty()) {
        shownModel = report.value().models.front();
    }
    refresh();
    return true;
}

bool MainWindow::openExample(const QString& folder) {
    const Result<ExampleFiles> files = writeExample(folder.toStdString());
    if (!files) {
        tell(say(WorkbenchText::NotOpened, {textOf(files.error().text)}));
        return false;
    }
    const QString path = folder + "/PurchasingExample.mero";
    // A new one each time, so that the example is always what it was.
    if (workspace != nullptr && textOf(workspace->path()) == path) {
        forgetRun();
        session.reset();
        workspace.reset();
    }
    for (const char* const suffix : {"", "-wal", "-shm"}) {
        QFile::remove(path + suffix);
    }
    return openRepository(path, RepositoryFile::Use::Create) &&
           importFile(textOf(files.value().process), {textOf(files.value().parameters)}) && addMeasures();
}

bool MainWindow::addMeasures() {
    if (workspace == nullptr || shownModel == MeroNoId) {
        return false;
    }
    forgetRun();
    return agentAdded(workspace->addMeasures(shownModel));
}

bool MainWindow::addAgent(MeroId agentTemplate) {
    if (workspace == nullptr || shownModel == MeroNoId) {
        return false;
    }
    forgetRun();
    const int analysis = static_cast<int>(panel->request().analysis);
    return agentAdded(workspace->addAgent(shownModel, analysis, agentTemplate));
}

bool MainWindow::agentAdded(const Result<MeroId>& agent) {
    if (!agent) {
        tell(textOf(agent.error().text));
        return false;
    }
    refresh();
    return true;
}

void MainWindow::toggleAgent() {
    const MeroId agent = models->getSelected();
    for (const Workspace::ModelEntry& model : workspace->models()) {
        for (const Workspace::AgentEntry& entry : model.agents) {
            if (entry.id == agent) {
                forgetRun();
                const Result<void> changed =
                    workspace->setActive(agent, entry.state != Workspace::AgentState::Active);
                if (!changed) {
                    tell(textOf(changed.error().text));
                }
            }
        }
    }
    refresh();
}

void MainWindow::refresh() {
    const std::vector<Workspace::ModelEntry> entries = workspace->models();
    models->setModels(entries);
    panel->setModels(entries);
    if (shownModel == MeroNoId && !entries.empty()) {
        shownModel = entries.front().id;
    }
    showModel(shownModel);
}

void MainWindow::selectionChanged() {
    const MeroId model = models->getSelectedModel();
    if (model != MeroNoId && model != shownModel) {
        showModel(model);
    }
    const auto measure = std::ranges::find(runMeasures, models->getSelected(), &RunMeasure::agent);
    if (measure != runMeasures.end()) {
        showMeasure(static_cast<int>(measure - runMeasures.begin()) + 1);
    }
    updateActions();
}

void MainWindow::showModel(MeroId model) {
    shownModel = model;
    if (models->getSelectedModel() != model) {
        models->select(model);
    }
    diagram->setDiagram(drawProcess(workspace->repository(), model));
    showFlows();
    const Model* const found = workspace->repository().findModel(model);
    hint->setText(found == nullptr                       ? say(WorkbenchText::NoModels)
                  : diagram->getDiagram().shapes.empty() ? say(WorkbenchText::NothingToDraw)
                  : runMeasures.empty()                  ? say(WorkbenchText::NoMeasures)
                                                         : QString());
    const auto agents = models->find(model);
    if (found != nullptr && !diagram->getDiagram().shapes.empty() && agents != nullptr &&
        agents->childCount() == 0) {
        hint->setText(say(WorkbenchText::NoAgents));
    }
    hint->setVisible(!hint->text().isEmpty());
    updateActions();
}

void MainWindow::openObject(MeroId object) {
    const Object* const found = workspace->repository().findObject(object);
    if (found == nullptr) {
        return;
    }
    const Model* const called =
        workspace->repository().findModel(workspace->repository().textOf(*found, "Referenced model").view());
    if (called != nullptr) {
        showModel(called->id);
    }
}

QString MainWindow::tipOf(MeroId object) const {
    const Object* const found = workspace->repository().findObject(object);
    if (found == nullptr) {
        return {};
    }
    const Library::Class* const kind = workspace->repository().library().findClass(found->classId);
    return textOf(std::string(found->name.view())) + "\n" + textOf(kind->name);
}

void MainWindow::simulate() {
    if (workspace == nullptr || running || !panel->isReady()) {
        return;
    }
    const RunRequest request = panel->request();
    setRunning(true);
    sinceStart.start();
    sinceProgress.start();
    const Result<RunSummary> summary = session->run(request, [&](std::uint64_t started, std::int64_t time) {
        return showProgress(request, started, time);
    });
    const double seconds = static_cast<double>(sinceStart.elapsed()) / 1000.0;
    if (summary) {
        tellRun(summary.value(), seconds);
        takeMeasures(summary.value(), request);
    } else {
        tell(say(WorkbenchText::NotSimulated, {textOf(summary.error().text)}));
    }
    setRunning(false);
    if (closesAfterRun) {
        close();
    }
}

bool MainWindow::showProgress(const RunRequest& request, std::uint64_t started, std::int64_t time) {
    constexpr int Interval = 33;
    constexpr qint64 UntilTimeLeftIsKnown = 1000;
    if (sinceProgress.elapsed() < Interval) {
        return !isCancelled;
    }
    const std::uint64_t wanted = panel->wantedInstances();
    const double share = wanted > 0      ? static_cast<double>(started) / static_cast<double>(wanted)
                         : request.until ? static_cast<double>(time) / static_cast<double>(*request.until)
                                         : 0.0;
    const QString total = wanted > 0 ? numberOf(wanted) : QString("?");
    const auto elapsed = static_cast<double>(sinceStart.elapsed()) / 1000.0;
    const bool isLeftKnown = sinceStart.elapsed() > UntilTimeLeftIsKnown && share > 0.0;
    panel->showProgress(share, isLeftKnown ? say(WorkbenchText::ProgressLeft,
                                                 {numberOf(started), total,
                                                  shownSeconds(elapsed * (1 - std::min(share, 1.0)) / share)})
                                           : say(WorkbenchText::Progress, {numberOf(started), total}));
    QApplication::processEvents();
    sinceProgress.restart();
    return !isCancelled;
}

void MainWindow::tellRun(const RunSummary& summary, double seconds) {
    for (const std::string& problem : session->problems()) {
        tell("  " + textOf(problem));
    }
    for (const auto& [report, count] : summary.reports) {
        tell("  " + textOf(report) + " (" + numberOf(count) + ")");
    }
    if (session->startStatus() != StatusOk && session->startStatus() != StatusInvalidAgents) {
        tell(say(WorkbenchText::AgentsNotStarted));
    }
    tell(say(WorkbenchText::RunDone,
             {numberOf(summary.started), numberOf(summary.finished), numberOf(summary.dropped),
              numberOf(summary.unfinished), numberOf(summary.events), QLocale().toString(seconds, 'f', 2)}));
    if (summary.cancelled) {
        tell(say(WorkbenchText::RunCancelled));
    }
}

void MainWindow::takeMeasures(const RunSummary& summary, const RunRequest& request) {
    runMeasures =
        session->measures(say(WorkbenchText::RunContext,
                              {panel->analysisName(), numberOf(summary.started), numberOf(request.seed)})
                              .toStdString());
    const QSignalBlocker blocker(measures);
    measures->clear();
    measures->addItem(say(WorkbenchText::NoColour));
    int first = 0;
    for (const RunMeasure& measure : runMeasures) {
        measures->addItem(textOf(measure.overlay.agent + ": " + measure.overlay.measure));
        const bool isHere = std::ranges::any_of(measure.overlay.values, [this](const auto& entry) {
            return diagram->getDiagram().find(entry.first) != nullptr;
        });
        first = first == 0 && isHere ? measures->count() - 1 : first;
    }
    if (runMeasures.empty()) {
        tell(say(WorkbenchText::NothingMeasured));
    }
    hint->setVisible(hint->isVisible() && runMeasures.empty());
    showMeasure(first);
    showFlows();
}

/// The first measure of frequency that knows shapes of the drawing tells of its flows, whatever colours it.
void MainWindow::showFlows() {
    const auto tells = [this](const RunMeasure& measure) {
        return measure.isFrequency && std::ranges::any_of(measure.overlay.values, [this](const auto& entry) {
                   return diagram->getDiagram().find(entry.first) != nullptr;
               });
    };
    const auto found = std::ranges::find_if(runMeasures, tells);
    diagram->setExecutions(found != runMeasures.end() ? found->overlay.values : std::map<MeroId, double>{});
}

void MainWindow::showMeasure(int place) {
    const QSignalBlocker blocker(measures);
    measures->setCurrentIndex(place);
    if (place <= 0 || static_cast<std::size_t>(place) > runMeasures.size()) {
        diagram->setOverlay(std::nullopt);
        return;
    }
    MeasureOverlay overlay = runMeasures[static_cast<std::size_t>(place) - 1].overlay;
    // The scale is that of what is seen; a model's own value would outweigh its parts.
    std::erase_if(overlay.values, [this](const auto& entry) {
        return workspace->repository().findObject(entry.first) == nullptr;
    });
    diagram->setOverlay(std::move(overlay));
}

void MainWindow::forgetRun() {
    if (session != nullptr && session->hasRun()) {
        session->end();
    }
    runMeasures.clear();
    const QSignalBlocker blocker(measures);
    measures->clear();
    measures->addItem(say(WorkbenchText::NoColour));
    diagram->setOverlay(std::nullopt);
    diagram->setExecutions({});
    panel->setHasResults(false);
}

void MainWindow::showResults() {
    if (session != nullptr && session->hasRun() && !running) {
        static_cast<void>(session->showResults(nullptr));
    }
}

void MainWindow::setRunning(bool isRunning) {
    running = isRunning;
    isCancelled = false;
    panel->setRunning(isRunning);
    panel->setHasResults(session->hasRun());
    updateActions();
}

void MainWindow::tell(const QString& text) {
    messageView->appendPlainText(text);
}

QString MainWindow::messages() const {
    return messageView->toPlainText();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (running) {
        // The run stands on the stack; it ends at its next step, and the window after it.
        closesAfterRun = true;
        isCancelled = true;
        event->ignore();
        return;
    }
    remember();
    event->accept();
}

}  // namespace mero
