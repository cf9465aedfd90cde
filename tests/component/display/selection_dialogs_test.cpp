#include <gtest/gtest.h>

#include "platform/toolkit/internal_errors.h"
#include "tests/component/display/selection_cases.h"

namespace mero::test {

namespace {

class SelectionDialogs : public testing::TestWithParam<ToolkitCase> {};

TEST_P(SelectionDialogs, StateAloneGivesWhatIsExpected) {
    StateDriver user;
    InternalErrorLog::GetGlobal().clear();
    EXPECT_EQ(GetParam().run(user), GetParam().expected);
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
}

const auto NameOfCase = [](const auto& each) { return each.param.name; };
INSTANTIATE_TEST_SUITE_P(TimeScope, SelectionDialogs, testing::ValuesIn(timeScopeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(AgentTree, SelectionDialogs, testing::ValuesIn(agentTreeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(AgentTypes, SelectionDialogs, testing::ValuesIn(agentTypeCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(ResultChoice, SelectionDialogs, testing::ValuesIn(resultChoiceCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(ResultDialog, SelectionDialogs, testing::ValuesIn(resultDialogCases()), NameOfCase);
INSTANTIATE_TEST_SUITE_P(DiagramStart, SelectionDialogs, testing::ValuesIn(diagramStartCases()), NameOfCase);

}  // namespace

}  // namespace mero::test
