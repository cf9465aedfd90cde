#include "platform/toolkit/qt/qt_toolkit.h"

#include <QApplication>
#include <gtest/gtest.h>

#include "platform/toolkit/internal_errors.h"
#include "platform/toolkit/qt/palette.h"
#include "tests/platform/toolkit/qt/widget_driver.h"
#include "tests/platform/toolkit/toolkit_cases.h"

namespace mero::test {

namespace {

/// One application for all tests of the program.
class ApplicationEnvironment : public testing::Environment {
public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QApplication>(count, arguments);
        qt::applyLook(*application, false);
        toolkit = std::make_unique<qt::QtToolkit>();
        SV::Toolkit::SetGlobal(toolkit.get());
    }
    void TearDown() override {
        toolkit.reset();
        application.reset();
    }

private:
    int count = 1;
    char name[16] = "toolkit_qt_test";
    char* arguments[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    std::unique_ptr<qt::QtToolkit> toolkit;
};

const testing::Environment* const Environment =
    testing::AddGlobalTestEnvironment(std::make_unique<ApplicationEnvironment>().release());

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
