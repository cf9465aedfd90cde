#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/recording_control.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

constexpr int NoDialog = 0;
constexpr int WithDialog = 1;
const SV::String always = "CALENDAR DAILY hours:\"00:00-24:00\"";

class AgentStorage : public testing::Test {
protected:
    void use(const std::string& document) {
        management.reset();
        platform.emplace(document);
        management.emplace();
    }

    [[nodiscard]] MeroId agentClass() const {
        return Library::standard().findClass(ClassCodeProcessLibrary, "Process agent")->id;
    }

    int createWithTexts(const SV::String& definition, const SV::String& calendar, const SV::String& prefix,
                        MeroId& id, const SV::String& objects = taskObjects) {
        MeroKilnParser parser(definition, "test", "test");
        parser.Parse();
        return management->createSuperAgent(platform->model("Order"), agentClass(), id, objects, &parser,
                                            calendar, "note", nullptr, NoDialog, prefix);
    }

    [[nodiscard]] std::string nameOf(MeroId id) {
        return std::string(platform->repository().findObject(id)->name.view());
    }

    void startRun() {
        management->simStart(AnalysisPath, &control, {1, 2, 3, 4}, {platform->model("Order")}, 0, nullptr,
                             365.0, 24.0);
    }

    std::optional<EmbeddedPlatform> platform;
    RecordingControl control;
    std::optional<MeroAgentManagement> management;
};

TEST_F(AgentStorage, CreatedAgentHasTheClassOfItsModelsKindAndDefaultTexts) {
    use(sampleModels(""));
    for (const char* const model : {"Order", "Staff"}) {
        MeroId id = MeroNoId;
        ASSERT_EQ(management->createSuperAgent(platform->model(model), id, "", nullptr, NoDialog), StatusOk);
        EXPECT_EQ(platform->repository().findObject(id)->modelId, platform->model(model));
        EXPECT_NE(platform->textOf(id, "Definition"), "");
        EXPECT_NE(platform->textOf(id, "Calendar"), "");
    }
    MeroId id = MeroNoId;
    EXPECT_EQ(management->createSuperAgent(platform->object("Order", "Check"), id, "", nullptr, NoDialog),
              StatusRefused);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeamanag"}));
}

TEST_F(AgentStorage, CreatedAgentHasAllTextsThatItIsGiven) {
    use(sampleModels(""));
    MeroId id = MeroNoId;
    ASSERT_EQ(createWithTexts(canonicalDefinition, always, "", id), StatusOk);
    EXPECT_EQ(platform->textOf(id, "Definition"), canonicalDefinition);
    EXPECT_EQ(platform->textOf(id, "Objects"), taskObjects);
    EXPECT_EQ(platform->textOf(id, "Calendar"), always.view());
    EXPECT_EQ(platform->textOf(id, "Info text"), "note");
}

TEST_F(AgentStorage, NameOfAPrefixTakesTheFirstFreeNumberInStepsOfThree) {
    use(sampleModels(""));
    MeroId first = MeroNoId;
    ASSERT_EQ(createWithTexts(canonicalDefinition, always, "A", first), StatusOk);
    EXPECT_EQ(nameOf(first), "A-" + std::to_string(first));
    const MeroId next = first + 1;
    ASSERT_TRUE(platform->repository().renameObject(first, SV::String("A-" + std::to_string(next))));
    MeroId second = MeroNoId;
    ASSERT_EQ(createWithTexts(canonicalDefinition, always, "A", second), StatusOk);
    ASSERT_EQ(second, next);
    EXPECT_EQ(nameOf(second), "A-" + std::to_string(next + 3));
}

TEST_F(AgentStorage, InvalidNewAgentIsTakenBack) {
    struct Case {
        const char* title;
        SV::String definition;
        SV::String calendar;
        SV::String objects;
        int status;
        std::vector<std::uint32_t> boxes;
        std::vector<std::string> internalErrors;
    };
    const Case cases[] = {
        {"bad calendar",
         canonicalDefinition,
         "CALENDAR DAILY",
         taskObjects,
         StatusInvalidAgents,
         {0x2004E2A},
         {}},
        {"bad objects", canonicalDefinition, always, "{", StatusInvalidAgents, {0x2004E2A}, {}},
        {"no own section",
         frequencySection,
         always,
         taskObjects,
         StatusRefused,
         {},
         {"aeagents", "aeamanag"}},
        {"long objects",
         canonicalDefinition,
         always,
         SV::String(std::string(3601, ' ')),
         StatusTextTooLong,
         {},
         {"aeamanag"}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.title);
        use(sampleModels(""));
        const std::string before = platform->snapshot();
        MeroId id = MeroNoId;
        EXPECT_EQ(createWithTexts(example.definition, example.calendar, "A", id, example.objects),
                  example.status);
        EXPECT_EQ(platform->snapshot(), before);
        EXPECT_TRUE(management->getSuperAgents().empty());
        EXPECT_EQ(EmbeddedPlatform::boxes(), example.boxes);
        EXPECT_EQ(EmbeddedPlatform::internalErrors(), example.internalErrors);
    }
}

TEST_F(AgentStorage, ModelWithoutWriteAccessIsToldInABox) {
    use(sampleModels(""));
    ASSERT_TRUE(platform->repository().setAccess(platform->model("Free"), ModelAccess::Read));
    const std::string before = platform->snapshot();
    MeroId id = MeroNoId;
    EXPECT_EQ(management->createSuperAgent(platform->model("Free"), id, "", nullptr, NoDialog),
              StatusRepositoryError);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051C4}));
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
    EXPECT_EQ(platform->snapshot(), before);
}

TEST_F(AgentStorage, DialogsThatAreNotThereAnswerNo) {
    use(modelsWithAgent(canonicalDefinition));
    const std::string before = platform->snapshot();
    const MeroId agent = platform->agent("Order", "M");
    MeroId id = MeroNoId;
    ISortedSet<MeroId> changed;
    EXPECT_EQ(management->createSuperAgent(platform->model("Order"), id, "", nullptr, WithDialog),
              StatusRefused);
    EXPECT_EQ(management->newSuperAgent(agent, "", nullptr, WithDialog), StatusRefused);
    EXPECT_EQ(management->configureSuperAgent(agent, nullptr), StatusRefused);
    EXPECT_EQ(management->openAgentsInModelsDlg({platform->model("Order")}, changed, platform->model("Staff"),
                                                nullptr, AnalysisAny),
              StatusRefused);
    EXPECT_FALSE(SV::GetpApp()->IsWait());
    EXPECT_EQ(platform->snapshot(), before);
}

TEST_F(AgentStorage, RunForbidsChanges) {
    use(modelsWithAgent(canonicalDefinition));
    const MeroId agent = platform->agent("Order", "M");
    startRun();
    MeroId id = MeroNoId;
    EXPECT_EQ(management->newSuperAgent(agent, "", nullptr, NoDialog), StatusRefusedInRun);
    EXPECT_EQ(management->createSuperAgent(platform->model("Order"), id, "", nullptr, NoDialog),
              StatusRefusedInRun);
    EXPECT_EQ(createWithTexts(canonicalDefinition, always, "", id), StatusRefusedInRun);
    EXPECT_EQ(management->configureSuperAgent(agent, nullptr), StatusRefusedInRun);
    EXPECT_EQ(management->setActivationOfAgent(agent, 0), StatusRefusedInRun);
    int active = 0;
    EXPECT_EQ(management->getActivationOfAgent(agent, active), StatusOk);
    EXPECT_EQ(active, 1);
    management->simEnd();
}

TEST_F(AgentStorage, ActivationIsStoredInTheDefinition) {
    use(modelsWithAgent(canonicalDefinition));
    const MeroId agent = platform->agent("Order", "M");
    int active = -1;
    EXPECT_EQ(management->setActivationOfAgent(agent, 0), StatusOk);
    EXPECT_EQ(management->getActivationOfAgent(agent, active), StatusOk);
    EXPECT_EQ(active, 0);
    const std::string inactive = platform->textOf(agent, "Definition");
    EXPECT_NE(inactive.find("\ndeactivate\nFREQUENCY"), std::string::npos);
    EXPECT_EQ(management->setActivationOfAgent(agent, 7), StatusOk);
    EXPECT_EQ(platform->textOf(agent, "Definition"), canonicalDefinition);
    EXPECT_EQ(management->setActivationOfAgent(1999999, 1), StatusRepositoryError);
}

TEST_F(AgentStorage, ActivationOfATextWithoutOwnSectionIsNotStored) {
    use(modelsWithAgent(frequencySection));
    const MeroId agent = platform->agent("Order", "M");
    EXPECT_EQ(management->setActivationOfAgent(agent, 0), StatusOk);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(),
              (std::vector<std::string>{"aeagents", "aeagents", "aeamanag"}));
    EXPECT_EQ(platform->textOf(agent, "Definition"), frequencySection);
}

TEST_F(AgentStorage, ExistingAgentsAreSortedByValidityAndAnalysis) {
    use(sampleModels(agentDocument("good", "Process agent", canonicalDefinition, taskObjects) + "," +
                         agentDocument("sleeping", "Process agent", "AGENT deactivate", taskObjects) + "," +
                         agentDocument("volume", "Process agent", "AGENT volume-analysis", taskObjects) +
                         "," + agentDocument("bad", "Process agent", "AGENT", ""),
                     agentDocument("W", "Environment agent", "AGENT", "all \"Worker\"")));
    const auto agent = [&](const char* name) { return platform->agent("Order", name); };
    const MeroId ofStaff = platform->agent("Staff", "W");
    const auto find = [&](int algorithm, ISortedSet<MeroId>& invalid) {
        ISortedSet<MeroId> usable;
        EXPECT_EQ(management->getExistingSuperAgents({platform->model("Order")}, {platform->model("Staff")},
                                                     usable, invalid, algorithm, 1),
                  StatusOk);
        return usable;
    };
    ISortedSet<MeroId> invalid;
    EXPECT_EQ(find(AnalysisPath, invalid), (ISortedSet<MeroId>{agent("good"), agent("sleeping"), ofStaff}));
    EXPECT_EQ(find(AnalysisAny, invalid),
              (ISortedSet<MeroId>{agent("good"), agent("sleeping"), agent("volume"), ofStaff}));
    EXPECT_EQ(find(AnalysisNone, invalid), ISortedSet<MeroId>{});
    EXPECT_EQ(invalid, ISortedSet<MeroId>{agent("bad")});
}

TEST_F(AgentStorage, AgentsAreCountedByTheKindOfTheQuestion) {
    use(sampleModels(agentDocument("good", "Process agent", canonicalDefinition, taskObjects) + "," +
                         agentDocument("sleeping", "Process agent", "AGENT deactivate", taskObjects) + "," +
                         agentDocument("bad", "Process agent", "AGENT", ""),
                     agentDocument("W", "Environment agent", "AGENT", "all \"Worker\"")));
    const MeroId order = platform->model("Order");
    EXPECT_EQ(management->getNumberOfAgentsInModel(order, 0, 0), 0);
    EXPECT_EQ(management->getNumberOfAgentsInModel(platform->model("Staff"), 0, 0), 1);
    EXPECT_EQ(management->getNumberOfAgentsInModel(order, 1, 0), 3);
    EXPECT_EQ(management->getNumberOfAgentsInModel(order, 1, 1), 1);
    EXPECT_EQ(management->getNumberOfAgentsInModel(1999999, 0, 0), -1);
}

}  // namespace
}  // namespace mero::test
