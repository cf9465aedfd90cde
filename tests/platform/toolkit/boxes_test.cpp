#include <gtest/gtest.h>

#include "component/host/basic_services.h"
#include "component/host/sv_boxes.h"

#include "platform/toolkit/internal_errors.h"
#include "platform/toolkit/parent_windows.h"

namespace {

using SV::BoxDesk;
using SV::ResId;
using SV::String;

class BoxDeskTest : public testing::Test {
protected:
    void SetUp() override { reset(); }
    void TearDown() override { reset(); }

    static void reset() {
        BoxDesk::GetGlobal().clearRecords();
        BoxDesk::GetGlobal().setResponder({});
    }
};

TEST_F(BoxDeskTest, AnUnansweredBoxIsRecordedAndCancelled) {
    EXPECT_EQ(MeroErrorBox(nullptr, SV::BoxStyleError, String(ResId(0x20051B2)) + "\"F\"").Execute(0),
              SV::BoxCancelled);
    MeroInfoBox(nullptr, "no message").Execute();
    const auto& records = BoxDesk::GetGlobal().getRecords();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].kind, SV::BoxKind::Error);
    EXPECT_EQ(records[0].message, ResId(0x20051B2));
    EXPECT_EQ(records[1].kind, SV::BoxKind::Info);
    EXPECT_EQ(records[1].message, ResId());
}

TEST_F(BoxDeskTest, TheResponderAnswersAndABoxThatItOpensStandsBehind) {
    BoxDesk::GetGlobal().setResponder([](SV::BoxKind kind, SV::Window*, int style, const String&) -> int {
        if (kind == SV::BoxKind::Query) {
            EXPECT_EQ(style, SV::BoxStyleQuery);
            MeroInfoBox(nullptr, "inner").Execute();
            return SV::BoxNo;
        }
        return SV::BoxOk;
    });
    EXPECT_EQ(MeroQueryBox(nullptr, SV::BoxStyleQuery, "outer").Execute(), SV::BoxNo);
    const auto& records = BoxDesk::GetGlobal().getRecords();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].text.view(), "outer");
    EXPECT_EQ(records[0].answer, SV::BoxNo);
    EXPECT_EQ(records[1].answer, SV::BoxOk);
}

TEST(ParentWindowTest, PoppingTakesTheLastEntryOfThatWindow) {
    SV::Window first;
    SV::Window second;
    Mero_PushParentWindow(&first);
    Mero_PushParentWindow(&second);
    Mero_PushParentWindow(&first);
    Mero_PopParentWindow(&first);
    EXPECT_EQ(mero::parentWindows(), (std::vector<SV::Window*>{&first, &second}));
    Mero_PopParentWindow(&first);
    Mero_PopParentWindow(&first);
    EXPECT_EQ(mero::parentWindows(), (std::vector<SV::Window*>{&second}));
    Mero_PopParentWindow(&second);
}

TEST(InternalErrorLogTest, KeepsErrorsInOrderAndTellsTheSink) {
    auto& log = mero::InternalErrorLog::GetGlobal();
    log.clear();
    std::string told;
    log.setSink([&told](const mero::InternalError& error) { told += error.module + ";"; });
    displayErrorMessage("aeasubag", 12);
    displayErrorMessage("aeagents", 7);
    log.setSink({});
    ASSERT_EQ(log.getErrors().size(), 2U);
    EXPECT_EQ(log.getErrors()[0].module, "aeasubag");
    EXPECT_EQ(log.getErrors()[1].line, 7);
    EXPECT_EQ(told, "aeasubag;aeagents;");
    log.clear();
}

}  // namespace
