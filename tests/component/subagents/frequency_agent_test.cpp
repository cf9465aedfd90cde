#include "component/subagents/frequency_agent.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"
#include "platform/engine/trace_replay.h"
#include "platform/interchange/event_trace.h"
#include "tests/component/support/embedded_platform.h"

namespace {

using mero::test::EmbeddedPlatform;

std::string document(const std::string& definition,
                     const std::string& calendar = "CALENDAR DAILY hours:\\\"00:00-24:00\\\"") {
    return R"({ "format": "mero-repository", "version": 1, "models": [
      { "name": "Order", "type": "Business process",
        "objects": [ { "name": "Check", "class": "Task" }, { "name": "Idle", "class": "Task" },
                     { "name": "Ship", "class": "Call activity", "attributes": { "Referenced model": "Shipping" } } ],
        "agents": [ { "name": "M", "class": "Process agent", "objects": "all \"Activity\" + all \"Call\"",
                      "calendar": ")" +
           calendar + R"(", "definition": ")" + definition + R"(" } ] },
      { "name": "Shipping", "type": "Business process", "objects": [ { "name": "Pack", "class": "Task" } ] } ] })";
}

/// One run over a trace; the results are read while it is still open.
class FrequencyRun {
public:
    FrequencyRun(const std::string& definition, int analysis = AnalysisPath,
                 const std::string& calendar = "CALENDAR DAILY hours:\\\"00:00-24:00\\\"")
        : platform(document("AGENT\\nFREQUENCY name:\\\"F\\\" " + definition, calendar)) {
        const SV::DateTime start(SV::Date(5, 1, 2026), SV::Time(0, 0));
        const ISortedSet<MeroId> models{platform.model("Order"), platform.model("Shipping")};
        EXPECT_EQ(management.simStart(analysis, &control, {0, 0, 0, 0}, models, 0, &start, 365.0, 24.0),
                  StatusOk);
    }
    FrequencyRun(const FrequencyRun&) = delete;
    FrequencyRun& operator=(const FrequencyRun&) = delete;
    ~FrequencyRun() { management.simEnd(); }

    /// Lines "code,time,main_key,model,key,object,called_model,called_key,calling_object"; the main model is
    /// Order.
    void play(const std::string& lines) {
        std::istringstream input(
            "code,time,main_key,model,key,object,called_model,called_key,calling_object,main_model\n" +
            withMainModel(lines));
        const auto trace = mero::readEventTrace(input, "trace", platform.repository(), MeroNoId);
        ASSERT_TRUE(trace) << trace.error().text;
        mero::replayTrace(trace.value(), control);
    }
    [[nodiscard]] MeroAtomarAgent& agent() const {
        MeroSuperAgent* superAgent = nullptr;
        gAgentManagement->getAgentFromID(superAgent, platform.agent("Order", "M"), 1);
        return *superAgent->getSubAgents().front();
    }
    /// Value by object name; absent objects are absent.
    [[nodiscard]] std::map<std::string, double> values() {
        std::map<std::string, double> byName;
        MeroAgentResultSet* const set = agent().getResultSet({});
        for (const MeroDoubleResult* const result : set->getResults(true)) {
            SV::String name;
            getAttributeText(result->getObjectId(), name, ClassCodeInstanceName);
            byName[std::string(name.view())] = result->getTotal();
        }
        return byName;
    }

private:
    static std::string withMainModel(const std::string& lines) {
        std::string complete;
        std::istringstream input(lines);
        for (std::string line; std::getline(input, line);) {
            line.append(static_cast<std::size_t>(8 - std::ranges::count(line, ',')), ',');
            complete += line + ",Order\n";
        }
        return complete;
    }

    EmbeddedPlatform platform;
    mero::ControlComponent control;
    MeroAgentManagement management;
};

using Values = std::map<std::string, double>;

TEST(FrequencyAgent, PassesOfOneObjectAddUpAndAreDividedByFinishedInstances) {
    FrequencyRun run("resultscope:mainobjects relative");
    run.play(
        "3,0\n11,0,1\n17,1,1,Order,1,Check\n17,2,1,Order,1,Check\n13,3,1,Order,1\n"
        "11,4,2\n17,5,2,Order,2,Check\n13,6,2,Order,2\n11,7,3\n17,8,3,Order,3,Check\n6,9\n");
    EXPECT_EQ(run.values(), (Values{{"Check", 1.5}, {"Order", 1.0}, {"Idle", 0.0}}));
    EXPECT_EQ(run.values(), (Values{{"Check", 1.5}, {"Order", 1.0}, {"Idle", 0.0}}))
        << "reading changes nothing";
    EXPECT_EQ(run.agent().getAgentState(), AgentFinished);
}

TEST(FrequencyAgent, ScopeDecidesWhereObjectsOfCalledModelsCount) {
    const std::string events =
        "3,0\n11,0,1\n17,1,1,Order,1,Check\n12,2,1,Order,1,,Shipping,s,Ship\n17,3,1,Shipping,s,Pack\n"
        "17,4,1,Shipping,s,Pack\n14,5,1,Shipping,s\n13,6,1,Order,1\n6,7\n";
    const std::map<std::string, Values> expected{
        {"process", {{"Order", 1.0}}},
        {"mainobjects", {{"Order", 1.0}, {"Check", 1.0}, {"Shipping", 1.0}}},
        {"allobjects", {{"Order", 1.0}, {"Check", 1.0}, {"Shipping", 1.0}, {"Pack", 2.0}}}};
    for (const auto& [scope, values] : expected) {
        FrequencyRun run("resultscope:" + scope + " absolute ignore-not-executed-objects");
        run.play(events);
        EXPECT_EQ(run.values(), values) << scope;
    }
}

TEST(FrequencyAgent, ObjectsThatNeverRanHaveRowsOfZeroByScope) {
    const std::map<std::string, Values> expected{
        {"process", {{"Order", 0.0}}},
        {"mainobjects", {{"Check", 0.0}, {"Idle", 0.0}}},
        {"allobjects", {{"Check", 0.0}, {"Idle", 0.0}, {"Pack", 0.0}}}};
    for (const auto& [scope, values] : expected) {
        FrequencyRun run("resultscope:" + scope + " absolute");
        run.play("3,0\n6,1\n");
        EXPECT_EQ(run.values(), values) << scope;
    }
}

TEST(FrequencyAgent, DroppedAndUnfinishedInstancesLeaveNoTraceInTheResult) {
    FrequencyRun run("resultscope:mainobjects relative ignore-not-executed-objects");
    run.play(
        "3,0\n11,0,1\n17,1,1,Order,1,Check\n15,2,1,Order,1\n13,3,1,Order,1\n"
        "11,4,2\n17,5,2,Order,2,Check\n17,5,unknown,Order,2,Check\n6,6\n13,7,2,Order,2\n");
    EXPECT_TRUE(run.values().empty());
    EXPECT_EQ(run.agent().getFinishedProcesses(), 0);
}

TEST(FrequencyAgent, OnlyInstancesWhollyInWorkingTimeCountInWorkLoadAnalyses) {
    FrequencyRun run("resultscope:mainobjects absolute ignore-not-executed-objects", AnalysisStaticWorkLoad,
                     "CALENDAR DAILY hours:\\\"00:00-01:00 02:00-03:00\\\"");
    run.play(
        "3,0\n"
        "11,0,1\n17,1800,1,Order,1,Check\n13,3600,1,Order,1\n"                  // ends as work ends
        "11,10,2\n17,4000,2,Order,2,Check\n13,7300,2,Order,2\n"                 // across the break
        "11,4000,3\n17,7200,3,Order,3,Check\n13,7300,3,Order,3\n"               // begins in the break
        "11,7200,4\n17,7200,4,Order,4,Check\n13,7200,4,Order,4\n"               // an empty span
        "11,7300,5\n12,10900,5,Order,5,,Shipping,s,Ship\n13,10900,5,Order,5\n"  // a call out of hours
        "6,11000\n");
    EXPECT_EQ(run.values(), (Values{{"Check", 2.0}, {"Order", 2.0}}));
    EXPECT_EQ(run.agent().getFinishedProcesses(), 2);
}

TEST(FrequencyAgent, ARestartForgetsValuesAndGoesOnCountingProcesses) {
    FrequencyRun run("resultscope:mainobjects relative ignore-not-executed-objects");
    run.play("3,0\n11,0,1\n17,1,1,Order,1,Check\n13,3,1,Order,1\n28,4\n");
    EXPECT_EQ(run.agent().getAgentState(), AgentPrepared);
    run.play("11,5,9\n3,6\n11,6,2\n17,7,2,Order,2,Check\n13,8,2,Order,2\n6,9\n");
    EXPECT_EQ(run.values(), (Values{{"Check", 0.5}, {"Order", 0.5}}));
}

TEST(FrequencyAgent, ASecondStartUnderALiveKeyEndsTheAgent) {
    FrequencyRun run("resultscope:mainobjects relative");
    run.play("3,0\n11,0,1\n11,1,1\n28,2\n3,3\n");
    EXPECT_EQ(run.agent().getAgentState(), AgentFailed);
    EXPECT_EQ(run.agent().getResultSet({}), nullptr);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051B0}));
}

TEST(FrequencyAgent, HistoryCountsInstancesInPathAnalysis) {
    FrequencyRun run("resultscope:mainobjects absolute history-mem ignore-not-executed-objects");
    run.play(
        "3,0\n11,0,1\n17,1,1,Order,1,Check\n13,30,1,Order,1\n11,40,2\n17,41,2,Order,2,Check\n13,60,2,Order,"
        "2\n6,70\n");
    MeroSequenceResult* const history = run.agent().getResultSet({})->getHistory();
    std::vector<std::pair<double, double>> readings;
    for (MeroSequenceEntry entry; history->getNext(entry);) {
        readings.emplace_back(entry.time, entry.value);
    }
    EXPECT_EQ(readings, (std::vector<std::pair<double, double>>{{1, 1}, {2, 2}, {1, 1}, {2, 2}}));
}

TEST(FrequencyAgent, DefinitionTextReadsBackAsItIsWritten) {
    const EmbeddedPlatform platform(document("AGENT"));
    for (const char* const own :
         {"\n relative",
          "\n absolute\n hide-mode\n lock-mode\n ignore-not-executed-objects\n hide-ignore\n lock-ignore"}) {
        const SV::String text = SV::String(
                                    "FREQUENCY\n name:\"A \\\"b\\\"\"\n hide-name\n hide-algorithms\n "
                                    "dont-show-result\n lock-show-history\n history-disk\n"
                                    " lock-history-mem\n history-file:\"h.txt\"\n volume-analysis\n "
                                    "resultscope:allobjects\n lock-resultscope") +
                                own;
        MeroKilnParser parser(text, "s", "n");
        ASSERT_EQ(parser.Parse(), 0);
        MeroFrequencyAgent agent;
        agent.initAgent(platform.model("Order"), nullptr);
        EXPECT_FALSE(agent.isEqualToDefinition(parser));
        ASSERT_EQ(agent.readDefinition(&parser), StatusOk);
        SV::String written;
        EXPECT_EQ(agent.getDefinitionText(written), text);
        EXPECT_TRUE(agent.isEqualToDefinition(parser));
    }
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(FrequencyAgent, FaultsOfASectionAreToldAndTheRestIsRead) {
    struct Case {
        const char* text;
        int status;
        std::vector<std::uint32_t> boxes;
    };
    for (const auto& [text, status, boxes] :
         {Case{"FREQUENCY resultscope:process absolute", StatusBadDefinition, {0x2004E21}},
          Case{"FREQUENCY name:\"x\" absolute", StatusBadDefinition, {0x2004E21}},
          Case{"FREQUENCY name:\"x\" resultscope:some absolute", StatusBadDefinition, {0x2004E21}},
          Case{"FREQUENCY name:\"x\" resultscope:process", StatusOk, {0x200517C}},
          Case{"FREQUENCY name:\"x\" resultscope:process absolute relative", StatusOk, {0x200517C}},
          Case{"FREQUENCY name:\"x\" resultscope:process absolute history-mem history-disk",
               StatusOk,
               {0x2004E21}},
          Case{"STRAIN name:\"x\" resultscope:process relative", StatusWrongSection, {}}}) {
        const EmbeddedPlatform platform(document("AGENT"));
        MeroKilnParser parser(text, "s", "n");
        ASSERT_EQ(parser.Parse(), 0);
        MeroFrequencyAgent agent;
        agent.initAgent(platform.model("Order"), nullptr);
        EXPECT_EQ(agent.readDefinition(&parser), status) << text;
        EXPECT_EQ(EmbeddedPlatform::boxes(), boxes) << text;
    }
}

}  // namespace
