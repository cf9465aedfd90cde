#include <gtest/gtest.h>

#include "platform/toolkit/internal_errors.h"
#include "tests/platform/toolkit/toolkit_cases.h"

namespace mero::test {

namespace {

class HeadlessToolkitTest : public testing::TestWithParam<ToolkitCase> {};

TEST_P(HeadlessToolkitTest, GivesTheStateOfTheCase) {
    StateDriver user;
    InternalErrorLog::GetGlobal().clear();
    EXPECT_EQ(GetParam().run(user), GetParam().expected);
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
}

INSTANTIATE_TEST_SUITE_P(Cases, HeadlessToolkitTest, testing::ValuesIn(toolkitCases()),
                         [](const auto& each) { return each.param.name; });

}  // namespace

}  // namespace mero::test
