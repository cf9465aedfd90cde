#include "component/management/general_services.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "component/host/core_time.h"

#include "component/agents/agent_types.h"
#include "component/agents/atomar_agent.h"
#include "component/management/run_globals.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/failing_repository.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

TEST(StatusMessages, EachStatusHasItsBoxOrIsAnInternalError) {
    const EmbeddedPlatform platform(sampleModels(""));
    struct Case {
        int status;
        std::uint32_t box;  ///< 0 for an internal error
    };
    const Case cases[] = {
        {2, 0x2004E20},  {4, 0x2004E21}, {5, 0},          {6, 0x2004E23},  {8, 0},
        {9, 0x2004E25},  {10, 0},        {19, 0x2004E28}, {21, 0x2004E2A}, {23, 0x2004E29},
        {28, 0x2004E2E}, {0, 0x2004E27}, {15, 0x2004E27}, {99, 0x2004E27},
    };
    for (const Case& example : cases) {
        EmbeddedPlatform::clearRecords();
        SV::GetpApp()->Wait(true);
        EXPECT_EQ(showStatusMessage(example.status), example.status);
        EXPECT_TRUE(SV::GetpApp()->IsWait());
        EXPECT_EQ(EmbeddedPlatform::boxes(),
                  example.box != 0 ? std::vector<std::uint32_t>{example.box} : std::vector<std::uint32_t>{});
        EXPECT_EQ(EmbeddedPlatform::internalErrors(),
                  example.box == 0 ? std::vector<std::string>{"aeagnrl"} : std::vector<std::string>{});
    }
    EXPECT_EQ(showStatusMessage(StatusTextTooLong), StatusOk);
    EXPECT_FALSE(SV::GetpApp()->IsWait()) << "a text that is too long leaves the wait state off";
}

TEST(StatusMessages, BoxIsShownWithoutTheWaitCursor) {
    const EmbeddedPlatform platform(sampleModels(""));
    bool waitedInBox = true;
    SV::BoxDesk::GetGlobal().setResponder([&](SV::BoxKind, SV::Window* parent, int, const SV::String&) {
        waitedInBox = SV::GetpApp()->IsWait();
        EXPECT_EQ(parent, SV::GetpApp()->GetAppWindow());
        return SV::BoxOk;
    });
    const MeroWaitCursor wait;
    EXPECT_EQ(showStatusInfo(StatusSelectionCancelled), StatusSelectionCancelled);
    EXPECT_FALSE(waitedInBox);
    EXPECT_TRUE(SV::GetpApp()->IsWait());
    showStatusInfo(StatusDeclined);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x2004E2D, 0x2004E27}));
}

TEST(AgentTypes, KeywordsAndKindsGoTogether) {
    std::vector<int> types;
    EXPECT_EQ(getAllSubAgentTypes(types), StatusOk);
    EXPECT_EQ(types, (std::vector<int>{2, 4, 5, 6, 7, 8, 9, 10, 11, 3, 12}));
    for (const int type : types) {
        EXPECT_NE(isEventProcessingType(type), isCombiningType(type)) << type;
        const SV::String keyword = getKeywordOfType(type);
        EXPECT_EQ(getTypeOfKeyword(keyword), type == AgentTypeSupport ? AgentTypeUnknown : type);
        EXPECT_EQ(isAgentKeyword(keyword, false), type != AgentTypeSupport);
    }
    EXPECT_EQ(getTypeOfKeyword("AGENT"), AgentTypeSuper);
    EXPECT_TRUE(isAgentKeyword("AGENT", true));
    EXPECT_FALSE(isAgentKeyword("AGENT", false));
    EXPECT_EQ(getTypeOfKeyword("agent"), AgentTypeUnknown);
    EXPECT_FALSE(isEventProcessingType(AgentTypeSuper));
}

TEST(AgentTypes, SomeStandInProcessModelsOnly) {
    const EmbeddedPlatform platform(sampleModels(""));
    const std::vector<int> processOnly{2, 6, 10, 11};
    std::vector<int> types;
    getAllSubAgentTypes(types);
    for (const int type : types) {
        const bool anywhere = std::find(processOnly.begin(), processOnly.end(), type) == processOnly.end();
        EXPECT_TRUE(isTypeAllowedInModel(type, platform.model("Order")));
        EXPECT_EQ(isTypeAllowedInModel(type, platform.model("Staff")), anywhere);
        EXPECT_TRUE(isTypeAllowedInLibrary(type, ClassCodeProcessLibrary));
        EXPECT_EQ(isTypeAllowedInLibrary(type, ClassCodeEnvironmentLibrary), anywhere);
    }
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
    EXPECT_FALSE(isTypeAllowedInModel(13, platform.model("Order")));
    EXPECT_FALSE(isTypeAllowedInLibrary(AgentTypeSuper, ClassCodeProcessLibrary));
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagnrl", "aeagnrl"}));

    EXPECT_NE(createEventAgent(AgentTypeFrequency, platform.model("Order"), nullptr), nullptr);
    EXPECT_EQ(createEventAgent(AgentTypeFrequency, platform.model("Staff"), nullptr), nullptr);
    int status = StatusOk;
    const FailingRepository failing(1);
    EXPECT_EQ(createSubAgent(AgentTypeFrequency, platform.model("Order"), nullptr, status), nullptr);
    EXPECT_EQ(status, StatusRepositoryError);
}

TEST(RepositoryTexts, ObjectExpressionsMaskNames) {
    EmbeddedPlatform platform(sampleModels(""));
    const MeroId check = platform.object("Order", "Check");
    const MeroId idle = platform.object("Order", "Idle");
    ASSERT_TRUE(platform.repository().renameObject(idle, "a \"b\\"));
    EXPECT_EQ(getOseOfObjects({}), "");
    EXPECT_EQ(getOseOfObjects({check}), R"({"Check":"Task" })");
    EXPECT_EQ(getOseOfObjects({check, idle}), R"({"Check":"Task", "a \"b\\":"Task" })");
    EXPECT_EQ(getOseOfObject(idle), R"({"a \"b\\":"Task"})");
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
    EXPECT_EQ(getOseOfObjects({check, 1999999}), "");
    EXPECT_EQ(getOseOfObject(1999999), "");
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagnrl", "aeagnrl"}));
}

TEST(RepositoryTexts, AttributesAndModelsHaveTexts) {
    EmbeddedPlatform platform(sampleModels(""));
    SV::String text;
    EXPECT_EQ(getAttributeText(platform.object("Order", "Check"), text, ClassCodeInstanceName), StatusOk);
    EXPECT_EQ(text, "Check");
    EXPECT_EQ(getAttributeText(platform.model("Order"), text, ClassCodeInstanceName), StatusOk);
    EXPECT_EQ(text.view().substr(0, 5), "Order");
    EXPECT_EQ(getAttributeNameText(Mero_GetCoreVar(CoreAvailability), text), StatusOk);
    EXPECT_EQ(text, "Availability");
    EXPECT_EQ(getAttributeText(1999999, text, ClassCodeInstanceName), StatusRepositoryError);
    EXPECT_EQ(getAttributeNameText(1999999, text), StatusRepositoryError);
    EXPECT_TRUE(isModelWritable(platform.model("Order")));
    ASSERT_TRUE(platform.repository().setAccess(platform.model("Order"), ModelAccess::Read));
    EXPECT_FALSE(isModelWritable(platform.model("Order")));
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagnrl", "aeagnrl"}));
    EXPECT_FALSE(isModelWritable(1999999));
    EXPECT_EQ(EmbeddedPlatform::internalErrors().size(), 3U);
}

TEST(TimeTexts, ShareOfAYearStaysAShareInAnotherBase) {
    gDaysPerYear = 250.0;
    gHoursPerDay = 8.0;
    SV::String converted;
    EXPECT_TRUE(convertTimeToSimBase(gTimeScopeYear, converted));
    EXPECT_EQ(converted, "01:000:00:00:00");
    EXPECT_TRUE(convertTimeToSimBase(gTimeScopeMonth, converted));
    MeroCoreTime time;
    time.setBase(250.0, 8.0);
    EXPECT_EQ(time._s2d(converted), 250.0 * 8 * 3600 / 12);
    EXPECT_FALSE(convertTimeToSimBase("a month", converted));
    EXPECT_EQ(formatTime(8 * 3600.0, 250.0, 8.0), "00:001:00:00:00");
    gDaysPerYear = 365.0;
    gHoursPerDay = 24.0;
}

TEST(SmallTexts, NumbersNamesAndIdentifiers) {
    SV::String text;
    EXPECT_EQ(doubleToIntegerText(text, 12.75), "12");
    EXPECT_EQ(doubleToIntegerText(text, -3.0), "-3");
    ISortedSet<SV::String> duplicates{"old"};
    EXPECT_TRUE(findDuplicates({"a", "b"}, duplicates));
    EXPECT_TRUE(duplicates.empty());
    EXPECT_FALSE(findDuplicates({"a", "b", "a", "b", "a"}, duplicates));
    EXPECT_EQ(duplicates, (ISortedSet<SV::String>{"a", "b"}));
    std::ostringstream stream;
    appendIdsAsText({1000001, -2}, stream);
    EXPECT_EQ(stream.str(), "1000001@-2@");
}

}  // namespace
}  // namespace mero::test
