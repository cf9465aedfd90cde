#include "apps/workbench/main_window.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "component/host/sv_boxes.h"

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName("workbench-test");
        window = std::make_unique<MainWindow>();
        window->show();
    }
    ~MainWindowTest() override { SV::BoxDesk::GetGlobal().setResponder({}); }

    void openNew(const char* name = "new.mero") {
        ASSERT_TRUE(window->openRepository(folder.filePath(name), RepositoryFile::Use::Create));
    }
    void openPurchasing() {
        openNew();
        ASSERT_TRUE(
            window->importFile(QString::fromStdString(sourceFile("examples/PurchasingExample.bpmn")),
                               {QString::fromStdString(sourceFile("examples/PurchasingExample.json"))}));
        ASSERT_TRUE(window->addMeasures());
    }
    [[nodiscard]] MeroId objectNamed(std::string_view name) const {
        const Repository& repository = window->getWorkspace()->repository();
        return repository.findObject(repository.findModel("PurchasingExample")->id, MeroNoId, name)->id;
    }

    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window;
};

TEST_F(MainWindowTest, ImportsSimulatesAndColoursTheProcess) {
    openPurchasing();
    RunPanel& panel = window->runPanel();
    EXPECT_TRUE(panel.simulateButton().isEnabled());
    EXPECT_FALSE(panel.resultsButton().isEnabled());
    panel.endBox().setValue(200);
    QTest::mouseClick(&panel.simulateButton(), Qt::LeftButton);
    ASSERT_FALSE(window->isRunning());
    EXPECT_TRUE(window->messages().contains("200 instances started, 200 finished"))
        << window->messages().toStdString();
    EXPECT_TRUE(panel.resultsButton().isEnabled());

    // "no measure" and the three of the new agent, of which the first is shown.
    ASSERT_EQ(window->measureBox().count(), 4);
    EXPECT_EQ(window->measureBox().currentIndex(), 1);
    const auto& overlay = window->diagramView().getOverlay();
    ASSERT_TRUE(overlay.has_value());
    EXPECT_EQ(overlay->measure, "Executions per process");
    EXPECT_DOUBLE_EQ(overlay->values.at(objectNamed("Pay Invoice")), 1.0);
    EXPECT_FALSE(
        overlay->values.contains(window->getWorkspace()->repository().findModel("PurchasingExample")->id));

    window->measureBox().setCurrentIndex(2);
    EXPECT_EQ(window->diagramView().getOverlay()->unit, MeasureOverlay::Unit::Seconds);
    EXPECT_GT(window->diagramView().getOverlay()->scale().maximum, 0.0);
    window->measureBox().setCurrentIndex(0);
    EXPECT_FALSE(window->diagramView().getOverlay().has_value());
}

TEST_F(MainWindowTest, CancelEndsARunAndKeepsTheResultsSoFar) {
    openPurchasing();
    RunPanel& panel = window->runPanel();
    panel.endBox().setValue(10'000'000);
    bool wasAlive = false;
    QTimer whileRunning;
    QObject::connect(&whileRunning, &QTimer::timeout, [&] {
        // Cancelled any earlier, the run may have no finished instance.
        if (panel.findChild<QProgressBar*>()->value() == 0) {
            return;
        }
        whileRunning.stop();
        wasAlive = window->isRunning() && panel.cancelButton().isVisible() && !panel.modelList().isEnabled();
        EXPECT_FALSE(window->menuBar()->actions().front()->menu()->actions().front()->isEnabled());
        QTest::mouseClick(&panel.cancelButton(), Qt::LeftButton);
    });
    whileRunning.start(50);
    QTest::mouseClick(&panel.simulateButton(), Qt::LeftButton);
    EXPECT_TRUE(wasAlive);
    EXPECT_FALSE(window->isRunning());
    EXPECT_TRUE(window->messages().contains("Cancelled")) << window->messages().toStdString();
    EXPECT_EQ(window->measureBox().count(), 4);
    EXPECT_FALSE(panel.cancelButton().isVisible());
    EXPECT_TRUE(panel.modelList().isEnabled());
}

TEST_F(MainWindowTest, ClosingDuringARunEndsTheRunFirst) {
    openPurchasing();
    window->runPanel().endBox().setValue(10'000'000);
    QTimer::singleShot(60, [&] { window->close(); });
    window->simulate();
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->isRunning());
}

TEST_F(MainWindowTest, TheSameSeedGivesTheSameMeasuresAndChangesForgetThem) {
    openPurchasing();
    window->runPanel().endBox().setValue(50);
    window->simulate();
    const auto first = window->diagramView().getOverlay()->values;
    window->simulate();
    EXPECT_EQ(window->diagramView().getOverlay()->values, first);
    ASSERT_TRUE(window->addMeasures());
    EXPECT_FALSE(window->diagramView().getOverlay().has_value());
    EXPECT_FALSE(window->runPanel().resultsButton().isEnabled());
    EXPECT_EQ(window->modelList().topLevelItem(0)->childCount(), 2);
}

TEST_F(MainWindowTest, WhatIsOpenedAgainIsWhatWasLeft) {
    openPurchasing();
    const QString path = QString::fromStdString(window->getWorkspace()->path());
    const std::size_t shapes = window->diagramView().getDiagram().shapes.size();
    EXPECT_GT(shapes, 20U);
    openNew("other.mero");
    EXPECT_TRUE(window->diagramView().getDiagram().shapes.empty());
    ASSERT_TRUE(window->openRepository(path, RepositoryFile::Use::Change));
    EXPECT_EQ(window->diagramView().getDiagram().shapes.size(), shapes);
    EXPECT_EQ(window->modelList().topLevelItem(0)->childCount(), 1);
    EXPECT_EQ(QSettings().value("repositories/recent").toStringList().front(), path);
}

TEST_F(MainWindowTest, RefusalsAreToldAndChangeNothing) {
    openPurchasing();
    const QString path = QString::fromStdString(window->getWorkspace()->path());
    EXPECT_FALSE(window->openRepository(folder.filePath("missing.mero"), RepositoryFile::Use::Change));
    EXPECT_EQ(QString::fromStdString(window->getWorkspace()->path()), path);
    EXPECT_TRUE(window->messages().contains("missing.mero"));
    const std::string broken = folder.filePath("broken.bpmn").toStdString();
    writeFile(broken, "<definitions><process");
    EXPECT_FALSE(window->importFile(QString::fromStdString(broken), {}));
    EXPECT_TRUE(window->messages().contains("Nothing was imported: "));
    EXPECT_EQ(window->modelList().topLevelItemCount(), 2);
    // Without anything to simulate the button tells why it doesn't work.
    QListWidgetItem* const model = window->runPanel().modelList().item(0);
    model->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(window->runPanel().simulateButton().isEnabled());
    EXPECT_FALSE(window->runPanel().simulateButton().toolTip().isEmpty());
}

TEST_F(MainWindowTest, WorkLoadRunsTakeStartAndEnvironment) {
    openPurchasing();
    RunPanel& panel = window->runPanel();
    EXPECT_FALSE(panel.startBox().isEnabled());
    panel.analysisBox().setCurrentIndex(3);
    EXPECT_TRUE(panel.startBox().isEnabled());
    const RunRequest request = panel.request();
    EXPECT_EQ(request.analysis, Analysis::NonStaticWorkLoad);
    EXPECT_NE(request.environment, MeroNoId);
    ASSERT_TRUE(request.start.has_value());
    panel.endBox().setValue(20);
    window->simulate();
    EXPECT_TRUE(window->messages().contains("20 instances started")) << window->messages().toStdString();
    EXPECT_EQ(window->measureBox().count(), 4);
}

TEST_F(MainWindowTest, OffersThePredefinedAgentsOfTheLibraryForModelAndAnalysis) {
    openPurchasing();
    const auto offered = [&] {
        emit window->templateMenu().aboutToShow();
        std::vector<QString> names;
        for (const QAction* const action : window->templateMenu().actions()) {
            EXPECT_FALSE(action->toolTip().isEmpty()) << action->text().toStdString();
            names.push_back(action->text());
        }
        return names;
    };
    const std::vector<QString> forPath = offered();
    ASSERT_GT(forPath.size(), 3U);
    QAction* frequency = nullptr;
    for (QAction* const action : window->templateMenu().actions()) {
        frequency = action->text() == "How often activities run" ? action : frequency;
    }
    ASSERT_NE(frequency, nullptr);
    frequency->trigger();
    EXPECT_EQ(window->modelList().topLevelItem(0)->childCount(), 2);
    window->runPanel().endBox().setValue(20);
    window->simulate();
    EXPECT_EQ(window->measureBox().count(), 6) << "three measures of the first agent, two of the new one";
    window->runPanel().analysisBox().setCurrentIndex(3);
    EXPECT_NE(offered(), forPath);
}

TEST_F(MainWindowTest, ResultsAreChosenInTheirDialog) {
    openPurchasing();
    window->runPanel().endBox().setValue(20);
    window->simulate();
    QString title;
    QTimer::singleShot(100, [&] {
        QWidget* const dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        title = dialog->windowTitle();
        dialog->close();
    });
    QTest::mouseClick(&window->runPanel().resultsButton(), Qt::LeftButton);
    EXPECT_FALSE(title.isEmpty());
    EXPECT_TRUE(window->runPanel().resultsButton().isEnabled()) << "to be opened again";
}

TEST_F(MainWindowTest, TheExampleIsReadyToSimulateAndAgentsCanBeSwitchedOff) {
    ASSERT_TRUE(window->openExample(folder.path()));
    ASSERT_TRUE(window->openExample(folder.path())) << "again, as it was";
    ASSERT_EQ(window->modelList().topLevelItem(0)->childCount(), 1);
    window->modelList().setCurrentItem(window->modelList().topLevelItem(0)->child(0));
    QAction* toggle = nullptr;
    for (QAction* const action : window->findChildren<QAction*>()) {
        toggle = action->shortcut() == QKeySequence("Ctrl+Shift+A") ? action : toggle;
    }
    ASSERT_NE(toggle, nullptr);
    toggle->trigger();
    window->runPanel().endBox().setValue(10);
    window->simulate();
    EXPECT_EQ(window->measureBox().count(), 1);
    EXPECT_TRUE(window->messages().contains("Nothing was measured"));
}

}  // namespace

}  // namespace mero::test
