#include <QCoreApplication>
#include <QEvent>

#include "platform/toolkit/internal_errors.h"
#include "tests/component/display/selection_cases.h"
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

const auto NameOfCase = [](const auto& each) { return each.param.name; };
INSTANTIATE_TEST_SUITE_P(TimeScope, SelectionWidgets, testing::ValuesIn(timeScopeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(AgentTree, SelectionWidgets, testing::ValuesIn(agentTreeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(AgentTypes, SelectionWidgets, testing::ValuesIn(agentTypeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(ResultChoice, SelectionWidgets, testing::ValuesIn(resultChoiceCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(ResultDialog, SelectionWidgets, testing::ValuesIn(resultDialogCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(DiagramStart, SelectionWidgets, testing::ValuesIn(diagramStartCases()), NameOfCase);

}  // namespace

}  // namespace mero::test
