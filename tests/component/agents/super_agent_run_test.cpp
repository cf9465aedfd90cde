#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/agents/support_agent.h"
#include "component/management/run_globals.h"
#include "platform/engine/control_component.h"
#include "platform/engine/sim_event.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/recording_control.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

const std::string agentOfAllAnalyses =
    "AGENT\npath-analysis\nvolume-analysis\nwlstatic-analysis\nwlnonstatic-analysis\n";

/// An agent "M" in "Order", attached.
class SuperAgentRun : public testing::Test {
protected:
    void use(const std::string& definition, const std::string& objects = taskObjects) {
        platform.emplace(modelsWithAgent(definition, objects));
        agent.emplace();
        agent->attachToInstance(platform->agent("Order", "M"), platform->model("Order"));
    }

    void TearDown() override {
        gDaysPerYear = 365.0;
        gHoursPerDay = 24.0;
        gSimStartTime = 0;
    }

    /// Replaces the stored definition behind the agent's back.
    void store(const std::string& definition) {
        const MeroId instance = agent->getInstanceId();
        const auto* const attribute = Library::standard().findAttribute(
            platform->repository().findObject(instance)->classId, "Definition");
        ASSERT_TRUE(platform->repository().setValue(instance, attribute->id, SV::String(definition)));
    }

    std::optional<EmbeddedPlatform> platform;
    std::optional<MeroSuperAgent> agent;
    RecordingControl control;
};

TEST_F(SuperAgentRun, StartTellsWhetherThereIsAnythingToDo) {
    struct Case {
        const char* title;
        std::string definition;
        int algorithm;
        int status;
        std::vector<std::string> internalErrors;
    };
    const Case cases[] = {
        {"one sub-agent", agentOfAllAnalyses + frequencySection, AnalysisPath, StatusOk, {}},
        {"inactive",
         agentOfAllAnalyses + "deactivate " + frequencySection,
         AnalysisPath,
         StatusNothingToDo,
         {}},
        {"analysis off", "AGENT volume-analysis " + frequencySection, AnalysisPath, StatusNothingToDo, {}},
        {"sub-agent outside", agentOfAllAnalyses + frequencySection, AnalysisVolume, StatusNothingToDo, {}},
        {"sub-agent outside of work load",
         agentOfAllAnalyses + frequencySection,
         AnalysisStaticWorkLoad,
         StatusNothingToDo,
         {}},
        {"no sub-agents", agentOfAllAnalyses, AnalysisPath, StatusNothingToDo, {}},
        {"unknown algorithm", agentOfAllAnalyses + frequencySection, 5, StatusRefused, {"aeagents"}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.title);
        use(example.definition);
        EXPECT_EQ(agent->startRun(example.algorithm, &control), example.status);
        EXPECT_TRUE(agent->isStarted());
        EXPECT_EQ(agent->getSubAgents().size(), example.status == StatusOk ? 1U : 0U);
        EXPECT_EQ(agent->getSupportAgent(), nullptr);
        EXPECT_EQ(control.attached.size(), agent->getSubAgents().size());
        EXPECT_EQ(EmbeddedPlatform::internalErrors(), example.internalErrors);

        EXPECT_EQ(agent->clearResults(), StatusOk);
        EXPECT_FALSE(agent->isStarted());
        EXPECT_EQ(agent->getAnalysisType(), AnalysisNone);
        EXPECT_TRUE(control.attached.empty());
        EXPECT_EQ(agent->clearResults(), StatusNoRun);
    }
}

TEST_F(SuperAgentRun, WorkLoadAnalysesHaveASupportAgent) {
    use(agentOfAllAnalyses + "FREQUENCY name:\"F\" wlstatic-analysis resultscope:mainobjects absolute");
    EXPECT_EQ(agent->startRun(AnalysisStaticWorkLoad, &control), StatusOk);
    ASSERT_NE(agent->getSupportAgent(), nullptr);
    ASSERT_EQ(control.attached.size(), 2U);
    EXPECT_EQ(control.attached.back(), agent->getSupportAgent()->getPassiveComponent());
    EXPECT_EQ(agent->clearResults(), StatusOk);
    EXPECT_EQ(agent->getSupportAgent(), nullptr);
    EXPECT_TRUE(control.attached.empty());
}

TEST_F(SuperAgentRun, SecondStartIsAFaultOfTheHost) {
    use(agentOfAllAnalyses + frequencySection);
    agent->startRun(AnalysisPath, &control);
    EXPECT_EQ(agent->startRun(AnalysisPath, &control), StatusRunInProgress);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagnrl"}));
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
    EXPECT_EQ(control.attachments, 1);
    agent->clearResults();
}

TEST_F(SuperAgentRun, BadTextAtTheStartEndsInABox) {
    use(agentOfAllAnalyses + frequencySection);
    store("AGENT :");
    EXPECT_EQ(agent->startRun(AnalysisPath, &control), StatusBadDefinition);
    agent->clearResults();
    store(agentOfAllAnalyses + frequencySection + "\nTUSK name:\"T\"");
    EXPECT_EQ(agent->startRun(AnalysisPath, &control), StatusBadDefinition);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0, 0x2004E21}));
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagnrl"}));
    EXPECT_EQ(agent->clearResults(), StatusOk);
    EXPECT_EQ(control.attachments, 0);
}

TEST_F(SuperAgentRun, SectionThatCannotBeReadIsLeftOut) {
    use(agentOfAllAnalyses + frequencySection);
    store(agentOfAllAnalyses + frequencySection + "\nFREQUENCY path-analysis resultscope:process absolute");
    EXPECT_EQ(agent->startRun(AnalysisPath, &control), StatusOk);
    EXPECT_EQ(agent->getSubAgents().size(), 1U);
    EXPECT_NE(agent->findSubAgentByName("F"), nullptr);
    EXPECT_EQ(agent->findSubAgentByName("Frequency"), nullptr);
    agent->clearResults();
}

TEST_F(SuperAgentRun, SubAgentThatCannotBePreparedIsNeitherAttachedNorDetached) {
    use(agentOfAllAnalyses + frequencySection, "{");
    EXPECT_EQ(agent->startRun(AnalysisPath, &control), StatusOk);
    EXPECT_EQ(agent->getSubAgents().size(), 1U);
    EXPECT_EQ(control.attachments, 0);
    EmbeddedPlatform::clearRecords();
    EXPECT_EQ(agent->clearResults(), StatusOk);
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
}

TEST_F(SuperAgentRun, ComponentThatStaysAttachedIsReported) {
    use(agentOfAllAnalyses + frequencySection);
    agent->startRun(AnalysisPath, &control);
    control.refusesToDetach = true;
    EXPECT_EQ(agent->clearResults(), StatusNotDetached);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagents"}));
    EXPECT_TRUE(agent->getSubAgents().empty());
}

TEST_F(SuperAgentRun, ScaleIsProcessStartsOfAPeriodBroughtToTheScope) {
    use(agentOfAllAnalyses + frequencySection);
    double scale = 0.0;
    EXPECT_EQ(agent->computeScale("01:000:00:00:00", 10, "00:001:00:00:00", scale), StatusNoRun);
    gDaysPerYear = 250.0;
    gHoursPerDay = 8.0;
    agent->startRun(AnalysisPath, &control);
    EXPECT_EQ(agent->computeScale("01:000:00:00:00", 10, "00:001:00:00:00", scale), StatusOk);
    const double wholeSecondsOfDay = 19726.0;
    EXPECT_DOUBLE_EQ(scale, 10 / wholeSecondsOfDay * 250 * 8 * 3600);

    EXPECT_EQ(agent->computeScale("a year", 10, "00:001:00:00:00", scale), StatusRefused);
    EXPECT_EQ(scale, 1.0);
    EXPECT_EQ(agent->computeScale("01:000:00:00:00", 10, "00:000:00:00:00", scale), StatusRefused);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagnrl", "aeagents"}));
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051A8}));
    agent->clearResults();

    agent->setActivation(0);
    agent->startRun(AnalysisPath, &control);
    EXPECT_EQ(agent->computeScale("01:000:00:00:00", 10, "00:001:00:00:00", scale), StatusAgentNotRunning);
    agent->clearResults();
}

TEST_F(SuperAgentRun, ScaleOfWorkLoadIsWholeProcessesInAWorkedSecond) {
    const SV::String key("1");
    const auto scaleAfter = [&](int processes, std::int64_t seconds) {
        use(agentOfAllAnalyses +
            "FREQUENCY name:\"F\" wlnonstatic-analysis resultscope:mainobjects absolute");
        ControlComponent engine;
        EXPECT_EQ(agent->startRun(AnalysisNonStaticWorkLoad, &engine), StatusOk);
        SimEvent event;
        event.mainKey = &key;
        event.key = &key;
        event.mainModelId = event.modelId = platform->model("Order");
        event.code = EventRunStart;
        engine.send(event);
        event.time = seconds;
        for (int process = 0; process < processes; ++process) {
            event.code = EventProcessStart;
            engine.send(event);
            event.code = EventProcessEnd;
            engine.send(event);
        }
        double scale = 0.0;
        EXPECT_EQ(agent->computeScale("00:000:00:01:00", 10, "", scale), StatusOk);
        EXPECT_EQ(agent->clearResults(), StatusOk);
        return scale;
    };
    EXPECT_EQ(scaleAfter(7, 3), 120.0);
    EXPECT_EQ(scaleAfter(5, 10), 0.0);
    EXPECT_EQ(scaleAfter(5, 0), 1.0);
}

}  // namespace
}  // namespace mero::test
