#include <gtest/gtest.h>

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

constexpr const char* OneMeasure = "AGENT path-analysis FREQUENCY name:\"N\" absolute resultscope:process";

/// The same commands on both kinds of repository.
class AgentsCommandTest : public testing::TestWithParam<const char*> {
protected:
    AgentsCommandTest() {
        writeFile(document, orderDocument());
        if (repository != document) {
            runProgram({"import", repository, document});
        }
    }

    ProgramRun agents(std::vector<std::string> words) const {
        words.insert(words.begin(), {"agents", repository});
        return runProgram(words);
    }
    [[nodiscard]] std::string content() const { return runProgram({"export", repository, "-"}).out; }

    TemporaryFolder folder;
    std::string document = folder / "order.json";
    std::string repository = folder / GetParam();
};

TEST_P(AgentsCommandTest, AddedAgentMeasuresInTheNextRun) {
    const ProgramRun added = agents({"add", "--model", "Order", "--name", "New", "--objects",
                                     "{\"Pack\":\"Task\"}", "--definition", OneMeasure});
    ASSERT_EQ(added.status, 0) << added.err;
    EXPECT_NE(agents({"list"}).out.find("New     Order  active  N"), std::string::npos)
        << agents({"list"}).out;
    const ProgramRun run =
        runProgram({"simulate", repository, "--models", "Order", "--instances", "3", "--results", "csv"});
    EXPECT_NE(run.out.find(",New,N,"), std::string::npos) << run.out << run.err;
}

TEST_P(AgentsCommandTest, SetChangesOnlyWhatItNames) {
    const std::string texts = folder / "definition.txt";
    writeFile(texts, OneMeasure);
    ASSERT_EQ(
        agents({"set", "--name", "Counts", "--definition-file", texts, "--info", "Asked by Ann"}).status, 0);
    const std::string shown = agents({"show", "--name", "Counts"}).out;
    EXPECT_NE(shown.find("resultscope:process"), std::string::npos) << shown;
    EXPECT_NE(shown.find("all \"Activity\""), std::string::npos);
    EXPECT_NE(shown.find("Asked by Ann"), std::string::npos);
    ASSERT_EQ(agents({"set", "--name", "Counts", "--rename", "Passes"}).status, 0);
    EXPECT_EQ(agents({"show", "--name", "Counts"}).status, 1);
    EXPECT_EQ(agents({"show", "--name", "Passes"}).status, 0);
}

TEST_P(AgentsCommandTest, InactiveAgentsTakeNoPartAndRemovedOnesAreGone) {
    ASSERT_EQ(agents({"deactivate", "--name", "Counts"}).status, 0);
    EXPECT_NE(agents({"list"}).out.find("inactive"), std::string::npos);
    const ProgramRun run = runProgram({"simulate", repository, "--models", "Order", "--instances", "3"});
    EXPECT_EQ(run.out, "");
    ASSERT_EQ(agents({"activate", "--name", "Counts"}).status, 0);
    EXPECT_EQ(agents({"list"}).out.find("inactive"), std::string::npos);
    ASSERT_EQ(agents({"remove", "--name", "Counts"}).status, 0);
    EXPECT_NE(agents({"list"}).err.find("no agents yet"), std::string::npos);
}

TEST_P(AgentsCommandTest, RefusedTextsTellThePlaceAndChangeNothing) {
    struct Case {
        std::vector<std::string> words;
        std::string message;
    };
    const std::string before = content();
    for (const Case& refused :
         {Case{{"set", "--name", "Counts", "--definition", "AGENT\n\"x"}, "line 2, column"},
          Case{{"set", "--name", "Counts", "--definition", "FREQUENCY"}, "begins with the element AGENT"},
          Case{{"set", "--name", "Counts", "--definition", "AGENT NONSENSE name:\"N\""}, "NONSENSE"},
          Case{{"set", "--name", "Counts", "--objects", "all \"Task\" +"}, "--objects: "},
          Case{{"set", "--name", "Counts", "--objects", "{\"Nowhere\":\"Task\"}"}, "finds no objects"},
          Case{{"set", "--name", "Counts", "--calendar", "DAILY"}, "--calendar: "},
          Case{{"add", "--model", "Order", "--name", "Counts", "--objects", "all \"Task\""}, "already"},
          Case{{"add", "--model", "Nowhere", "--name", "X", "--objects", "all \"Task\""}, "no model"},
          Case{{"add", "--model", "Order", "--name", "X", "--objects", "all \"Tusk\""}, "X"},
          Case{{"remove", "--name", "X"}, "no agent \"X\""}}) {
        const ProgramRun run = agents(refused.words);
        EXPECT_EQ(run.status, 1) << testing::PrintToString(refused.words);
        EXPECT_NE(run.err.find(refused.message), std::string::npos) << run.err;
        EXPECT_EQ(content(), before) << testing::PrintToString(refused.words);
    }
}

TEST_P(AgentsCommandTest, CheckNamesInvalidAgents) {
    EXPECT_EQ(agents({"check"}).status, 0);
    std::string broken = orderDocument();
    const std::string good = R"("objects": "all \"Activity\"")";
    broken.replace(broken.find(good), good.size(), R"("objects": "all \"Activity\" +")");
    writeFile(document, broken);
    const ProgramRun run = runProgram({"agents", document, "check"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("Order / Counts: objects: "), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("1 of 1 agents"), std::string::npos);
}

TEST_P(AgentsCommandTest, CheckNamesMeasuresThatNoRunMeasures) {
    agents({"add", "--model", "Order", "--name", "Work", "--objects", "all \"Task\"", "--definition",
            "AGENT capacity-analysis RESPCHANGE name:\"R\" resultscope:process "
            "UWWECOST name:\"U\" resultscope:process class:\"Role\" attribute:\"Name\" "
            "WWECOST name:\"W\" resultscope:process class:\"Worker\" "
            "STRAIN name:\"S\" resultscope:process class:\"Worker\""});
    const ProgramRun run = agents({"check"});
    EXPECT_EQ(run.status, 1);
    for (const char* const told :
         {"Order / Work: measure \"R\" can't be measured: it has no class\n",
          "measure \"U\" can't be measured: its class \"Role\" is neither a kind of \"Executive\" nor",
          "measure \"W\" can't be measured: it has no attribute\n",
          "1 of 2 agents have measures that no run measures"}) {
        EXPECT_NE(run.err.find(told), std::string::npos) << told << '\n' << run.err;
    }
    EXPECT_EQ(run.err.find("\"S\""), std::string::npos) << run.err;
}

INSTANTIATE_TEST_SUITE_P(Repositories, AgentsCommandTest, testing::Values("order.json", "order.mero"),
                         [](const auto& file) {
                             return std::string(file.index == 0 ? "Document" : "Database");
                         });

}  // namespace

}  // namespace mero::test
