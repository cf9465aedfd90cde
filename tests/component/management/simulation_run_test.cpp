#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "component/management/run_globals.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/recording_control.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

const ISequence<MeroId> runAttributes{11, 12, 13, 14};

class SimulationRun : public testing::Test {
protected:
    void use(const std::string& document) {
        management.reset();
        platform.emplace(document);
        management.emplace();
    }

    void TearDown() override { gSimStartTime = 0; }

    int start(int algorithm = AnalysisPath, const SV::DateTime* startDate = nullptr) {
        return management->simStart(algorithm, &control, runAttributes, {platform->model("Order")},
                                    platform->model("Staff"), startDate, 365.0, 24.0);
    }

    std::optional<EmbeddedPlatform> platform;
    RecordingControl control;
    std::optional<MeroAgentManagement> management;
};

TEST_F(SimulationRun, AgentsOfAllModelsStartAndEnd) {
    use(sampleModels(agentDocument("M", "Process agent", canonicalDefinition, taskObjects),
                     agentDocument("W", "Environment agent", "AGENT", "all \"Worker\"")));
    EXPECT_EQ(management->showResults(nullptr), StatusNoRun);
    EXPECT_EQ(start(), StatusOk);
    EXPECT_EQ(start(), StatusRunInProgress);
    EXPECT_EQ(management->getCurrentAlgorithm(), AnalysisPath);
    EXPECT_EQ(management->getNumberOfInstantiatedAgents(), 1) << "the environment's has no sub-agents";
    EXPECT_EQ(gSimAttributes, (std::array<MeroId, 4>{11, 12, 13, 14}));
    ASSERT_EQ(management->getSuperAgents().size(), 2U);
    EXPECT_EQ(management->getSuperAgents()[0]->getModelId(), platform->model("Staff"));
    EXPECT_EQ(control.attached.size(), 1U);
    ISortedSet<MeroId> models;
    EXPECT_EQ(management->getApplicationModel(models), StatusOk);
    EXPECT_EQ(models, (ISortedSet<MeroId>{platform->model("Order"), platform->model("Staff")}));

    EXPECT_EQ(management->simEnd(), StatusOk);
    EXPECT_TRUE(control.attached.empty());
    EXPECT_EQ(management->getCurrentAlgorithm(), -1);
    EXPECT_EQ(management->getNumberOfInstantiatedAgents(), 0);
    EXPECT_EQ(management->simEnd(), StatusNoRun);
    EXPECT_EQ(management->getApplicationModel(models), StatusOk);
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
}

TEST_F(SimulationRun, RefusedArgumentsChangeNothing) {
    use(sampleModels(""));
    EXPECT_EQ(management->simStart(AnalysisPath, &control, {1, 2, 3}, {}, 0, nullptr, 365.0, 24.0),
              StatusRefused);
    EXPECT_EQ(management->simEnd(), StatusNoRun);
    EXPECT_EQ(management->simStart(AnalysisPath, &control, runAttributes, {}, 0, nullptr, 365.0, 24.0),
              StatusOk);
    EXPECT_EQ(management->simEnd(), StatusOk);
}

TEST_F(SimulationRun, WorkLoadNeedsAStartDate) {
    use(modelsWithAgent(canonicalDefinition));
    EXPECT_EQ(start(AnalysisStaticWorkLoad), StatusRefused);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeamanag"}));
    EXPECT_EQ(start(), StatusRunInProgress) << "a refused start needs its end";
    EXPECT_EQ(management->simEnd(), StatusOk);

    struct Case {
        SV::Date date;
        SV::Time time;
        std::int64_t seconds;
    };
    const Case cases[] = {
        {SV::Date(1, 1, 2026), SV::Time(0, 0, 0), 0},
        {SV::Date(1, 1, 2026), SV::Time(8, 5, 9), 8 * 3600 + 5 * 60 + 9},
        {SV::Date(31, 12, 2024), SV::Time(23, 59, 59), 366LL * 86400 - 1},
        {SV::Date(2, 1, 2026), SV::Time(-1000099), 86400 + 3600},
    };
    for (const Case& example : cases) {
        const SV::DateTime date(example.date, example.time);
        EXPECT_EQ(start(AnalysisStaticWorkLoad, &date), StatusOk);
        EXPECT_EQ(gSimStartTime, example.seconds);
        EXPECT_EQ(management->simEnd(), StatusOk);
    }
}

TEST_F(SimulationRun, InvalidAgentsAreUpToTheUser) {
    struct Case {
        const char* title;
        std::string orderAgents;
        std::string staffAgents;
        int answer;
        int status;
        std::vector<std::uint32_t> boxes;
        std::size_t attached;
    };
    const std::string good = agentDocument("M", "Process agent", canonicalDefinition, taskObjects);
    const std::string bad = agentDocument("B", "Process agent", canonicalDefinition, "");
    const std::string badInactive = agentDocument("B", "Process agent", "AGENT deactivate", "");
    const std::string badInStaff = agentDocument("W", "Environment agent", "AGENT deactivate", "");
    const Case cases[] = {
        {"accepted", good + "," + bad, "", SV::BoxYes, StatusInvalidAgents, {0x20051C6}, 1},
        {"declined", good + "," + bad, "", SV::BoxNo, StatusDeclined, {0x20051C6}, 0},
        {"unanswered", good + "," + bad, "", SV::BoxCancelled, StatusInvalidAgents, {0x20051C6}, 1},
        {"inactive in a process", good + "," + badInactive, "", SV::BoxNo, StatusOk, {}, 1},
        {"inactive in the environment", good, badInStaff, SV::BoxYes, StatusInvalidAgents, {0x20051C6}, 1},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.title);
        use(sampleModels(example.orderAgents, example.staffAgents));
        EmbeddedPlatform::answerBoxesWith(example.answer);
        SV::GetpApp()->Wait(true);
        EXPECT_EQ(start(), example.status);
        EXPECT_EQ(SV::GetpApp()->IsWait(), example.status != StatusDeclined);
        EXPECT_EQ(EmbeddedPlatform::boxes(), example.boxes);
        EXPECT_EQ(control.attached.size(), example.attached);
        EXPECT_EQ(management->simEnd(), StatusOk);
        EXPECT_EQ(SV::GetpApp()->IsWait(), example.status != StatusDeclined);
    }
}

TEST_F(SimulationRun, AgentsOfCalledModelsTakePartOnce) {
    use(sampleModels(""));
    MeroId id = MeroNoId;
    ASSERT_EQ(management->createSuperAgent(platform->model("Shipping"), id, "all \"Task\"", nullptr, 0),
              StatusOk);
    MeroSuperAgent* agent = nullptr;
    management->getAgentFromID(agent, id, 0);
    agent->readDefinitionText(SV::String("AGENT " + frequencySection));
    const ISortedSet<MeroId> models{platform->model("Order"), platform->model("Shipping")};
    EXPECT_EQ(management->simStart(AnalysisPath, &control, runAttributes, models, 0, nullptr, 365.0, 24.0),
              StatusOk);
    EXPECT_EQ(management->getNumberOfInstantiatedAgents(), 1);
    EXPECT_EQ(management->simEnd(), StatusOk);
    EXPECT_EQ(start(), StatusOk) << "found through the call";
    EXPECT_EQ(management->getNumberOfInstantiatedAgents(), 1);
    EXPECT_EQ(management->simEnd(), StatusOk);
}

TEST_F(SimulationRun, CalledModelThatIsNotLoadedRefusesTheRun) {
    use(sampleModels(agentDocument("M", "Process agent", canonicalDefinition, taskObjects), "",
                     "\"loaded\":false,"));
    EXPECT_EQ(start(), StatusRepositoryError);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeamanag"}));
    EXPECT_TRUE(management->getSuperAgents().empty());
    EXPECT_FALSE(platform->repository().findModel(platform->model("Shipping"))->loaded);
    EXPECT_EQ(management->getNumberOfAgentsInModel(platform->model("Order"), 1, 0), StatusRepositoryError);
    EXPECT_EQ(management->simEnd(), StatusOk);
}

TEST_F(SimulationRun, FailedDetachingEndsTheRunAllTheSame) {
    use(modelsWithAgent(canonicalDefinition));
    start();
    control.refusesToDetach = true;
    EXPECT_EQ(management->simEnd(), StatusNotDetached);
    EXPECT_TRUE(management->getSuperAgents()[0]->getSubAgents().empty());
}

TEST_F(SimulationRun, ResultsAreThereBetweenStartAndEnd) {
    use(modelsWithAgent(canonicalDefinition));
    start();
    EXPECT_EQ(management->showResults(nullptr), StatusOk);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051C7}));
    management->simEnd();
}

TEST_F(SimulationRun, DeletedAgentHearsNoMoreEvents) {
    use(modelsWithAgent(canonicalDefinition));
    start();
    EXPECT_EQ(management->deleteSuperAgent(platform->agent("Order", "M")), StatusOk);
    EXPECT_TRUE(control.attached.empty());
    EXPECT_EQ(management->simEnd(), StatusOk);
}

TEST_F(SimulationRun, MissingRepositoryIsAFailureLikeAnyOther) {
    use(modelsWithAgent(canonicalDefinition));
    MeroCoreModelingManager* const installed = MeroCoreModelingManager::SetGlobal(nullptr);
    EXPECT_EQ(start(), StatusRepositoryError);
    EXPECT_EQ(management->simEnd(), StatusOk);
    MeroId id = platform->agent("Order", "M");
    EXPECT_EQ(management->newSuperAgent(id, "", nullptr, 0), StatusRepositoryError);
    EXPECT_EQ(management->getNumberOfAgentsInModel(platform->model("Order"), 0, 0), -1);
    MeroCoreModelingManager::SetGlobal(installed);
}

}  // namespace
}  // namespace mero::test
