#include <gtest/gtest.h>

#include "platform/toolkit/internal_errors.h"
#include "tests/component/display/result_window_cases.h"

namespace mero::test {

namespace {

class ResultWindowStates : public testing::TestWithParam<ToolkitCase> {};

TEST_P(ResultWindowStates, StateAloneGivesWhatIsExpected) {
    StateDriver user;
    InternalErrorLog::GetGlobal().clear();
    EXPECT_EQ(GetParam().run(user), GetParam().expected);
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
}

INSTANTIATE_TEST_SUITE_P(Windows, ResultWindowStates, testing::ValuesIn(resultWindowCases()),
                         [](const auto& each) { return each.param.name; });

}  // namespace

}  // namespace mero::test
