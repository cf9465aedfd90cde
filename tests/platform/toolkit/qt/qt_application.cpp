#include "tests/platform/toolkit/qt/qt_application.h"

#include <QApplication>
#include <memory>

#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/qt_toolkit.h"

namespace mero::test {

namespace {

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
    char name[16] = "qt_test";
    char* arguments[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    std::unique_ptr<qt::QtToolkit> toolkit;
};

}  // namespace

testing::Environment* addQtApplication() {
    return testing::AddGlobalTestEnvironment(std::make_unique<ApplicationEnvironment>().release());
}

}  // namespace mero::test
