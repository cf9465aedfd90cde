#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/agent_result_windows.h"
#include "component/management/run_globals.h"
#include "platform/toolkit/internal_errors.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/measured_world.h"
#include "tests/platform/toolkit/qt/qt_application.h"
#include "tests/platform/toolkit/qt/widget_driver.h"

namespace mero::test {

namespace {

const testing::Environment* const Environment = addQtApplication();

class SelectionWidgets : public testing::TestWithParam<ToolkitCase> {};

TEST_P(SelectionWidgets, MouseAndKeysGiveTheSameState) {
    WidgetDriver user;
    InternalErrorLog::GetGlobal().clear();
    EXPECT_EQ(GetParam().run(user), GetParam().expected);
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The dialog's own loop runs, and nothing answers but keys and mouse.
TEST(SelectionWidgetsAlone, TablesCanBeUsedBesideTheModalDialogAndCloseWithIt) {
    MeasuredWorld world({.sections = "FREQUENCY name:\"F\" resultscope:mainobjects absolute\n"});
    world.play("3,0\n11,0,1,Order,1\n" + linesOf({0, 3600, "1,Order,1", "a", "Check", "Bob"}) +
               "13,3600,1,Order,1\n6,3600\n");
    MeroSuperAgent& agent = *world.subAgent().getOwnerSuperAgent();
    std::string notes;
    QTimer::singleShot(0, [&] {
        const auto tables = [&] { return agent.getResultWindows()->getBrowserWindows(); };
        QWidget* const dialog = QApplication::activeModalWidget();
        auto* const tree = dialog->findChild<QTreeView*>("tree");
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualRect(tree->model()->index(1, 0, tree->model()->index(0, 0))).center());
        QTest::keyClick(tree, Qt::Key_Return);
        notes += std::to_string(tables().size());
        QTest::mouseClick(widgetFor(*tables().front())->findChild<QPushButton*>("closeButton"),
                          Qt::LeftButton);
        notes += std::to_string(tables().size());
        QTest::mouseClick(dialog->findChild<QPushButton*>("showButton"), Qt::LeftButton);
        notes += std::to_string(tables().size());
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(gAgentManagement->showResults(nullptr), StatusOk);
    EXPECT_EQ(notes, "101");
    EXPECT_EQ(agent.getResultWindows(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

const auto NameOfCase = [](const auto& each) { return each.param.name; };
INSTANTIATE_TEST_SUITE_P(TimeScope, SelectionWidgets, testing::ValuesIn(timeScopeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(AgentTree, SelectionWidgets, testing::ValuesIn(agentTreeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(AgentTypes, SelectionWidgets, testing::ValuesIn(agentTypeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(ResultChoice, SelectionWidgets, testing::ValuesIn(resultChoiceCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(ResultDialog, SelectionWidgets, testing::ValuesIn(resultDialogCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(DiagramStart, SelectionWidgets, testing::ValuesIn(diagramStartCases()), NameOfCase);

}  // namespace

}  // namespace mero::test
