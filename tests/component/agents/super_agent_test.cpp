#include "component/agents/super_agent.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "component/management/general_services.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

constexpr int RefuseEmpty = 0;
constexpr int AllowEmpty = 1;

int check(MeroSuperAgent& agent, int allowEmpty) {
    int definitionOk = 0;
    int calendarOk = 0;
    int objectsOk = 0;
    return agent.checkAgent(definitionOk, calendarOk, objectsOk, allowEmpty);
}

TEST(SuperAgent, EmptyTextsGetTheirDefaultsStored) {
    EmbeddedPlatform platform(sampleModels(agentDocument("M", "Process agent", "", "", "")));
    const MeroId instance = platform.agent("Order", "M");
    MeroSuperAgent agent;
    EXPECT_EQ(agent.attachToInstance(instance, platform.model("Order")), StatusOk);
    EXPECT_EQ(platform.textOf(instance, "Definition"),
              "AGENT\npath-analysis\nvolume-analysis\nwlstatic-analysis\nwlnonstatic-analysis");
    EXPECT_EQ(platform.textOf(instance, "Calendar"), "CALENDAR\nDAILY hours:\"00:00-24:00\"");
    EXPECT_EQ(platform.textOf(instance, "Objects"), "");
    EXPECT_EQ(agent.getActivation(), 1);
    EXPECT_FALSE(agent.getSettings().extremeChecked);
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
}

TEST(SuperAgent, EnvironmentAgentKeepsItsTextsInItsOwnAttributes) {
    EmbeddedPlatform platform(
        sampleModels("", agentDocument("W", "Environment agent", "AGENT volume-analysis", "all \"Worker\"")));
    const MeroId instance = platform.agent("Staff", "W");
    MeroSuperAgent agent;
    ASSERT_EQ(agent.attachToInstance(instance, platform.model("Staff")), StatusOk);
    EXPECT_EQ(platform.textOf(instance, "Definition"), "AGENT\nvolume-analysis");
    EXPECT_EQ(agent.setInfoText("note"), StatusOk);
    EXPECT_EQ(platform.textOf(instance, "Info text"), "note");
    ISortedSet<MeroId> objects;
    EXPECT_EQ(agent.evaluateObjects(objects), StatusOk);
    EXPECT_EQ(objects, ISortedSet<MeroId>{platform.object("Staff", "Ann")});
}

TEST(SuperAgent, InstanceThatIsNoAgentMakesATemporaryOne) {
    const EmbeddedPlatform platform(sampleModels(""));
    const std::string before = platform.snapshot();
    MeroSuperAgent agent;
    EXPECT_EQ(agent.attachToInstance(platform.object("Order", "Check"), platform.model("Order")),
              StatusRefused);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagents"}));
    SV::String text = "left";
    EXPECT_EQ(agent.getInstanceId(), MeroNoId);
    EXPECT_EQ(agent.getName(text), StatusNoInstance);
    EXPECT_EQ(agent.setName("N"), StatusNoInstance);
    EXPECT_EQ(agent.setInfoText("note"), StatusRefused);
    EXPECT_EQ(agent.getInfoText(text), "");
    EXPECT_EQ(agent.setCalendarText("C"), StatusOk);
    EXPECT_EQ(agent.setObjectsText("O"), StatusOk);
    EXPECT_EQ(agent.getCalendarText(text), "C");
    EXPECT_EQ(agent.getObjectsText(text), "O");
    EXPECT_EQ(platform.snapshot(), before);
}

TEST(SuperAgent, NameIsTheInstances) {
    EmbeddedPlatform platform(sampleModels(agentDocument("M", "Process agent", "AGENT", "") + "," +
                                           agentDocument("N", "Process agent", "AGENT", "")));
    MeroSuperAgent agent;
    agent.attachToInstance(platform.agent("Order", "M"), platform.model("Order"));
    EXPECT_EQ(agent.setName("N"), StatusNameInUse);
    EXPECT_EQ(agent.setName("Measures"), StatusOk);
    SV::String name;
    EXPECT_EQ(agent.getName(name), StatusOk);
    EXPECT_EQ(name, "Measures");
}

TEST(SuperAgent, ObjectsTextOverTheLimitIsKeptInTheObjectOnly) {
    EmbeddedPlatform platform(modelsWithAgent(canonicalDefinition));
    const MeroId instance = platform.agent("Order", "M");
    MeroSuperAgent agent;
    agent.attachToInstance(instance, platform.model("Order"));
    const SV::String longText(std::string(MeroDefinitionLimit, ' ') + "x");
    EXPECT_EQ(agent.setObjectsText(longText), StatusTextTooLong);
    EXPECT_EQ(platform.textOf(instance, "Objects"), taskObjects);
    SV::String text;
    EXPECT_EQ(agent.getObjectsText(text), longText);
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
}

TEST(SuperAgent, ReplacedObjectTakesTheCommaInFrontOfItAlong) {
    struct Case {
        const char* objects;
        const char* oldText;
        const char* newText;
        int status;
        const char* result;
    };
    const Case cases[] = {
        {R"({"a":"x", "b":"y" })", R"("b":"y")", "", 1, R"({"a":"x"  })"},
        {R"({"a":"x", "b":"y" })", R"("a":"x")", "", 1, R"({, "b":"y" })"},
        {R"({"a":"x", "b":"y" })", R"("b":"y")", R"("c":"z")", 1, R"({"a":"x", "c":"z" })"},
        {R"("a":"x")", R"("a":"x")", "", 1, ""},
        {R"({"a":"x" })", R"("q":"x")", "z", 0, R"({"a":"x" })"},
        {R"({"a":"x" })", "", "z", 0, R"({"a":"x" })"},
    };
    const EmbeddedPlatform platform(sampleModels(""));
    for (const Case& example : cases) {
        MeroSuperAgent agent;
        agent.setObjectsText(example.objects);
        EXPECT_EQ(agent.replaceInObjectsText(example.oldText, example.newText), example.status);
        SV::String text;
        EXPECT_EQ(agent.getObjectsText(text), example.result);
    }
}

TEST(SuperAgent, ActivationIsAnyNumberButZero) {
    const EmbeddedPlatform platform(sampleModels(""));
    MeroSuperAgent agent;
    EXPECT_EQ(agent.getActivation(), 1);
    agent.setActivation(0);
    EXPECT_EQ(agent.getActivation(), 0);
    agent.setActivation(7);
    EXPECT_EQ(agent.getActivation(), 1);
}

TEST(SuperAgent, CheckTellsEachTextApart) {
    struct Case {
        const char* title;
        std::string definition;
        std::string objects;
        std::string calendar;
        int definitionOk;
        int calendarOk;
        int objectsOk;
        std::vector<std::uint32_t> boxes;
    };
    const std::string always = "CALENDAR DAILY hours:\"00:00-24:00\"";
    const std::string twice = canonicalDefinition + "\n" + frequencySection;
    const Case cases[] = {
        {"all good", canonicalDefinition, taskObjects, always, 1, 1, 1, {}},
        {"no own section", frequencySection, taskObjects, always, 1, 1, 1, {}},
        {"not Kiln", "AGENT :", taskObjects, always, 0, 1, 1, {0, 0}},
        {"two of a name", twice, taskObjects, always, 0, 1, 1, {0x20051AD}},
        {"bad calendar", canonicalDefinition, taskObjects, "CALENDAR DAILY", 1, 0, 1, {}},
        {"bad expression", canonicalDefinition, "{", always, 1, 1, 0, {}},
        {"no objects", canonicalDefinition, "", always, 1, 1, 0, {}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.title);
        EmbeddedPlatform platform(sampleModels(
            agentDocument("M", "Process agent", example.definition, example.objects, example.calendar)));
        MeroSuperAgent agent;
        agent.attachToInstance(platform.agent("Order", "M"), platform.model("Order"));
        int definitionOk = -1;
        int calendarOk = -1;
        int objectsOk = -1;
        const bool allGood = example.definitionOk + example.calendarOk + example.objectsOk == 3;
        EXPECT_EQ(agent.checkAgent(definitionOk, calendarOk, objectsOk, RefuseEmpty), allGood ? 1 : 0);
        EXPECT_EQ(definitionOk, example.definitionOk);
        EXPECT_EQ(calendarOk, example.calendarOk);
        EXPECT_EQ(objectsOk, example.objectsOk);
        EXPECT_EQ(EmbeddedPlatform::boxes(), example.boxes);
        EXPECT_EQ(check(agent, RefuseEmpty), allGood ? 1 : 0);
        EXPECT_EQ(EmbeddedPlatform::boxes(), example.boxes) << "answers are kept until a text changes";
    }
}

TEST(SuperAgent, EmptyObjectsAreGoodWhereTheyAreAllowed) {
    EmbeddedPlatform platform(modelsWithAgent(canonicalDefinition, ""));
    MeroSuperAgent agent;
    agent.attachToInstance(platform.agent("Order", "M"), platform.model("Order"));
    EXPECT_EQ(check(agent, AllowEmpty), 1);
    EXPECT_EQ(check(agent, RefuseEmpty), 0);
    EXPECT_EQ(check(agent, AllowEmpty), 1);
    agent.setObjectsText("all \"Manual task\"");
    EXPECT_EQ(check(agent, AllowEmpty), 1);
    EXPECT_EQ(check(agent, RefuseEmpty), 0);
    agent.setObjectsText("all \"Task\"");
    EXPECT_EQ(check(agent, RefuseEmpty), 1);
}

}  // namespace
}  // namespace mero::test
