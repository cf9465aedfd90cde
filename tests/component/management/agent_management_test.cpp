#include "component/management/agent_management.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "component/agents/super_agent.h"
#include "component/management/run_globals.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/recording_control.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

const ISequence<MeroId> fourAttributes{1, 2, 3, 4};

int startPathRun(MeroAgentManagement& management, MeroControlComponent& control,
                 const ISortedSet<MeroId>& models) {
    return management.simStart(AnalysisPath, &control, fourAttributes, models, MeroNoId, nullptr, 365.0,
                               24.0);
}

TEST(AgentManagement, NothingWorksWithoutASimulationMapping) {
    MeroSimMappingHandler* const installed = MeroSimMappingHandler::SetGlobal(nullptr);
    MeroAgentManagement management;
    RecordingControl control;
    MeroId id = 1000001;
    MeroSuperAgent* agent = nullptr;
    ISortedSet<MeroId> set;
    int active = 0;
    EXPECT_EQ(gAgentManagement, nullptr);
    EXPECT_EQ(management.init(), StatusRefused);
    EXPECT_EQ(management.newSuperAgent(id, "", nullptr, 0), StatusNotInitialised);
    EXPECT_EQ(management.createSuperAgent(id, id, "", nullptr, 0), StatusNotInitialised);
    EXPECT_EQ(management.configureSuperAgent(id, nullptr), StatusNotInitialised);
    EXPECT_EQ(management.deleteSuperAgent(id), StatusNotInitialised);
    EXPECT_EQ(management.getExistingSuperAgents({}, {}, set, set, 1, 0), StatusNotInitialised);
    EXPECT_EQ(management.getActivationOfAgent(id, active), StatusNotInitialised);
    EXPECT_EQ(management.setActivationOfAgent(id, 1), StatusNotInitialised);
    EXPECT_EQ(management.getNumberOfAgentsInModel(id, 0, 0), -1);
    EXPECT_EQ(management.openAgentsInModelsDlg({}, set, 0, nullptr, 1), StatusNotInitialised);
    EXPECT_EQ(startPathRun(management, control, {}), StatusNotInitialised);
    EXPECT_EQ(management.simEnd(), StatusNotInitialised);
    EXPECT_EQ(management.showResults(nullptr), StatusNotInitialised);
    EXPECT_EQ(management.getAgentFromID(agent, id, 1), StatusNotInitialised);
    EXPECT_EQ(management.getGlobalSimAttributes(id), StatusNotInitialised);
    EXPECT_EQ(management.getApplicationModel(set), StatusRefused);
    EXPECT_EQ(management.hideEventMessage(), StatusOk);
    MeroSimMappingHandler::SetGlobal(installed);
}

TEST(AgentManagement, ThereIsOneManagementObjectAtATime) {
    const EmbeddedPlatform platform(sampleModels(""));
    MeroAgentManagement first;
    EXPECT_EQ(gAgentManagement, &first);
    {
        MeroAgentManagement second;
        EXPECT_EQ(second.init(), StatusRefused);
        EXPECT_EQ(second.simEnd(), StatusNotInitialised);
    }
    EXPECT_EQ(gAgentManagement, nullptr);
    EXPECT_EQ(first.init(), StatusOk);
}

TEST(AgentManagement, CopySharesTheAgents) {
    const EmbeddedPlatform platform(modelsWithAgent(canonicalDefinition));
    const MeroId id = platform.agent("Order", "M");
    std::optional<MeroAgentManagement> management(std::in_place);
    MeroSuperAgent* agent = nullptr;
    ASSERT_EQ(management->getAgentFromID(agent, id, 1), StatusOk);
    MeroAgentManagement copy(*management);
    management.reset();
    MeroSuperAgent* same = nullptr;
    EXPECT_EQ(copy.getAgentFromID(same, id, 0), StatusOk);
    EXPECT_EQ(same, agent);
    EXPECT_EQ(same->getInstanceId(), id);
}

TEST(AgentManagement, AgentsAreRegisteredOnTheFirstMention) {
    EmbeddedPlatform platform(modelsWithAgent(canonicalDefinition));
    MeroAgentManagement management;
    const MeroId id = platform.agent("Order", "M");
    MeroSuperAgent* agent = nullptr;
    EXPECT_EQ(management.getAgentFromID(agent, id, 0), StatusAgentUnknown);
    EXPECT_EQ(agent, nullptr);
    EXPECT_EQ(management.getAgentFromID(agent, 1999999, 1), StatusRepositoryError);
    EXPECT_TRUE(management.getSuperAgents().empty());
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeamanag"}));
    EXPECT_EQ(management.getAgentFromID(agent, id, 1), StatusOk);
    ASSERT_EQ(management.getSuperAgents().size(), 1U);
    EXPECT_EQ(management.getSuperAgents()[0].get(), agent);
    EXPECT_EQ(management.deleteSuperAgent(id), StatusOk);
    EXPECT_EQ(management.deleteSuperAgent(id), StatusOk);
    EXPECT_TRUE(management.getSuperAgents().empty());
    EXPECT_NE(platform.agent("Order", "M"), MeroNoId);
}

TEST(AgentManagement, GlobalAttributeIsTheAvailability) {
    const EmbeddedPlatform platform(sampleModels(""));
    MeroAgentManagement management;
    MeroId attribute = MeroNoId;
    EXPECT_EQ(management.getGlobalSimAttributes(attribute), StatusOk);
    EXPECT_EQ(Library::standard().findAttribute(attribute)->name, "Availability");
}

TEST(AgentManagement, EventMessageGoesWhenEveryAgentHasAskedForIt) {
    const EmbeddedPlatform platform(modelsWithAgent(
        canonicalDefinition + "\nFREQUENCY\n name:\"G\"\n path-analysis\n resultscope:process\n absolute"));
    MeroAgentManagement management;
    EXPECT_EQ(management.hideEventMessage(), StatusOk);
    management.showEventMessage("one");
    EXPECT_TRUE(management.hasEventMessage());
    EXPECT_EQ(management.hideEventMessage(), StatusOk) << "nobody is registered";
    EXPECT_FALSE(management.hasEventMessage());

    RecordingControl control;
    ASSERT_EQ(startPathRun(management, control, {platform.model("Order")}), StatusOk);
    for (int round = 0; round < 2; ++round) {
        management.showEventMessage("two");
        EXPECT_EQ(management.hideEventMessage(), StatusRefused);
        EXPECT_TRUE(management.hasEventMessage());
        EXPECT_EQ(management.hideEventMessage(), StatusOk);
        EXPECT_FALSE(management.hasEventMessage());
    }
    management.simEnd();
}

}  // namespace
}  // namespace mero::test
