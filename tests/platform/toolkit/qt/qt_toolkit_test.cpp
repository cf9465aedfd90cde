#include <QCoreApplication>
#include <QEvent>
#include <gtest/gtest.h>

#include "platform/toolkit/internal_errors.h"
#include "tests/platform/toolkit/qt/qt_application.h"
#include "tests/platform/toolkit/qt/widget_driver.h"
#include "tests/platform/toolkit/toolkit_cases.h"

namespace mero::test {

namespace {

const testing::Environment* const Environment = addQtApplication();

class QtToolkitTest : public testing::TestWithParam<ToolkitCase> {};

TEST_P(QtToolkitTest, WidgetsGiveTheStateOfTheCase) {
    WidgetDriver user;
    InternalErrorLog::GetGlobal().clear();
    EXPECT_EQ(GetParam().run(user), GetParam().expected);
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

INSTANTIATE_TEST_SUITE_P(Cases, QtToolkitTest, testing::ValuesIn(toolkitCases()),
                         [](const auto& each) { return each.param.name; });

}  // namespace

}  // namespace mero::test
