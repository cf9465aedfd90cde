#include <gtest/gtest.h>

#include "component/agents/atomar_agent.h"
#include "component/management/general_services.h"
#include "tests/component/support/embedded_platform.h"

namespace {

using mero::test::EmbeddedPlatform;

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process" }, { "name": "Staff", "type": "Working environment" } ] })";

struct Section {
    const char* text;     ///< canonical
    const char* another;  ///< a text that the agent isn't equal to
};

/// Keys that most sections share, as they are written.
#define COMMON(NAME) "\n name:\"" NAME "\""

class SectionTexts : public testing::TestWithParam<Section> {};

TEST_P(SectionTexts, ReadBackAsTheyAreWritten) {
    const EmbeddedPlatform platform(Models);
    MeroKilnParser parser(GetParam().text, "s", "n");
    ASSERT_EQ(parser.Parse(), 0);
    const auto agent =
        createEventAgent(getTypeOfKeyword(parser.GetKeyword()), platform.model("Order"), nullptr);
    ASSERT_NE(agent, nullptr);
    ASSERT_EQ(agent->readDefinition(&parser), StatusOk);
    SV::String written;
    EXPECT_EQ(agent->getDefinitionText(written), SV::String(GetParam().text));
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
    if (agent->isEventProcessing() && GetParam().another != nullptr) {
        EXPECT_TRUE(agent->isEqualToDefinition(parser));
        MeroKilnParser another(GetParam().another, "s", "n");
        ASSERT_EQ(another.Parse(), 0);
        EXPECT_FALSE(agent->isEqualToDefinition(another));
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllAgents, SectionTexts,
    testing::Values(
        Section{
            "AVGSUM" COMMON("S") "\n path-analysis\n resultscope:allobjects\n class:\"Task\"\n hide-class\n"
                                 " attribute:\"Execution time\"\n attribute-type:time\n lock-attribute",
            "AVGSUM name:\"S\" path-analysis resultscope:allobjects class:\"Task\" attribute:\"Execution "
            "time\" "
            "attribute-type:numeric"},
        Section{"WORKLOAD" COMMON("W") "\n history-mem\n wlstatic-analysis\n resultscope:process\n "
                                       "class:\"Worker\"\n lock-class",
                "WORKLOAD name:\"W\" history-mem wlstatic-analysis resultscope:process class:\"Role\""},
        Section{"WWECOST" COMMON("C") "\n volume-analysis\n resultscope:mainobjects\n class:\"Worker\"\n"
                                      " attribute:\"Hourly wages\"\n hide-attribute",
                "WWECOST name:\"C\" volume-analysis resultscope:mainobjects class:\"Worker\" "
                "attribute:\"Availability\""},
        Section{
            "UWWECOST" COMMON("U") "\n volume-analysis\n wlstatic-analysis\n resultscope:mainobjects\n"
                                   " class:\"Equipment\"\n attribute:\"Hourly rate\"",
            "UWWECOST name:\"U\" volume-analysis wlstatic-analysis resultscope:process class:\"Equipment\" "
            "attribute:\"Hourly rate\""},
        Section{"RESPCHANGE" COMMON(
                    "R") "\n volume-analysis\n resultscope:process\n hide-resultscope\n class:\"Worker\"",
                "RESPCHANGE name:\"R\" volume-analysis resultscope:process"},
        Section{"CYCLETIME" COMMON("T") "\n dont-show-history\n path-analysis\n resultscope:mainobjects",
                "CYCLETIME name:\"T\" path-analysis resultscope:mainobjects"}));

#undef COMMON

TEST(SectionRules, AnalysesThatAnAgentCannotServeAreSwitchedOffWithABox) {
    struct Case {
        const char* text;
        MeroAnalysisFlags left;
    };
    for (const auto& [text, left] :
         {Case{"STRAIN name:\"x\" resultscope:process path-analysis volume-analysis", {.volume = true}},
          Case{"WORKLOAD name:\"x\" resultscope:process volume-analysis wlstatic-analysis",
               {.staticWorkLoad = true}},
          Case{"WWECOST name:\"x\" resultscope:process wlstatic-analysis", {}},
          Case{"UWWECOST name:\"x\" resultscope:process path-analysis wlstatic-analysis",
               {.staticWorkLoad = true}},
          Case{"RESPCHANGE name:\"x\" resultscope:process path-analysis", {}}}) {
        const EmbeddedPlatform platform(Models);
        MeroKilnParser parser(text, "s", "n");
        ASSERT_EQ(parser.Parse(), 0);
        const auto agent =
            createEventAgent(getTypeOfKeyword(parser.GetKeyword()), platform.model("Order"), nullptr);
        EXPECT_EQ(agent->readDefinition(&parser), StatusOk) << text;
        EXPECT_EQ(agent->getAnalysisFlags(), left) << text;
        EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x200517C})) << text;
    }
}

TEST(SectionRules, UnknownNamesAreToldAndClearTheChoice) {
    struct Case {
        const char* text;
        int status;
        std::uint32_t box;
        const char* left;
    };
    for (const auto& [text, status, box, left] :
         {Case{"STRAIN name:\"x\" resultscope:process class:\"Wroker\"", StatusRepositoryError, 0x2005173,
               "STRAIN\n name:\"x\"\n dont-show-history\n hide-show-history\n lock-show-history\n "
               "hide-history-mem\n lock-history-mem\n hide-history-disk\n lock-history-disk\n "
               "volume-analysis\n resultscope:process"},
          Case{"WWECOST name:\"x\" resultscope:process class:\"Worker\" attribute:\"Wages\"",
               StatusRepositoryError, 0x2005173,
               "WWECOST\n name:\"x\"\n volume-analysis\n resultscope:process\n class:\"Worker\""},
          Case{"AVGSUM name:\"x\" path-analysis resultscope:process class:\"Worker\"", StatusRepositoryError,
               0x2005173, "AVGSUM\n name:\"x\"\n path-analysis\n resultscope:process"},
          Case{"AVGSUM name:\"x\" path-analysis resultscope:process class:\"Task\" attribute:\"Nmuber\" "
               "attribute-type:numeric",
               StatusRepositoryError, 0x2005173, "AVGSUM\n name:\"x\"\n path-analysis\n resultscope:process"},
          Case{"AVGSUM name:\"x\" path-analysis resultscope:process class:\"Task\" attribute:\"Number\"",
               StatusBadDefinition, 0x2004E21,
               "AVGSUM\n name:\"x\"\n path-analysis\n resultscope:process\n class:\"Task\""},
          Case{"FORMULA name:\"x\"\nOBSERVED", StatusBadDefinition, 0x2004E21, nullptr}}) {
        const EmbeddedPlatform platform(Models);
        MeroKilnParser parser(text, "s", "n");
        ASSERT_EQ(parser.Parse(), 0);
        const auto agent =
            createEventAgent(getTypeOfKeyword(parser.GetKeyword()), platform.model("Order"), nullptr);
        EXPECT_EQ(agent->readDefinition(&parser), status) << text;
        EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{box})) << text;
        SV::String written;
        if (left != nullptr) {
            EXPECT_EQ(agent->getDefinitionText(written), SV::String(left)) << text;
        }
    }
}

TEST(SectionRules, SectionsWithoutANameKeepTheirInputs) {
    struct Case {
        const char* text;
        const char* end;  ///< of the section as it is written again
    };
    for (const auto& [text, end] : {Case{"FORMULA expression:\"2\" OBSERVED \"A\" OBSERVED \"B\" FORMULA",
                                         "\n expression:\"2\"\n OBSERVED \"A\"\n OBSERVED \"B\""},
                                    Case{"ANIMATION hide-name OBSERVED \"A\"", "\n OBSERVED \"A\""}}) {
        const EmbeddedPlatform platform(Models);
        MeroKilnParser parser(text, "s", "n");
        ASSERT_EQ(parser.Parse(), 0);
        const auto agent =
            createEventAgent(getTypeOfKeyword(parser.GetKeyword()), platform.model("Order"), nullptr);
        EXPECT_EQ(agent->readDefinition(&parser), StatusBadDefinition) << text;
        EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x2004E21})) << text;
        EXPECT_EQ(parser.GetCurElemIndex(), 0) << text;
        SV::String written;
        EXPECT_TRUE(agent->getDefinitionText(written).view().ends_with(end)) << written.view();
    }
}

TEST(SectionRules, UnknownNameIsToldWithTheNamesAsTheyAre) {
    const EmbeddedPlatform platform(Models);
    MeroKilnParser parser("STRAIN name:\"of %s2\" resultscope:process class:\"W%s1\"", "s", "n");
    ASSERT_EQ(parser.Parse(), 0);
    const auto agent = createEventAgent(AgentTypeStrain, platform.model("Order"), nullptr);
    EXPECT_EQ(agent->readDefinition(&parser), StatusRepositoryError);
    const auto& records = SV::BoxDesk::GetGlobal().getRecords();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_NE(records[0].text.Search("\"of %s2\""), SV::String::NotFound) << records[0].text.GetStr();
    EXPECT_NE(records[0].text.Search("\"W%s1\""), SV::String::NotFound) << records[0].text.GetStr();
}

TEST(SectionRules, SomeTypesStandInProcessModelsOnly) {
    const EmbeddedPlatform platform(Models);
    for (const int type :
         {AgentTypeAverageSum, AgentTypeCycleTime, AgentTypeFrequency, AgentTypeChangeOfWorker}) {
        EXPECT_EQ(createEventAgent(type, platform.model("Staff"), nullptr), nullptr) << type;
        EXPECT_NE(createEventAgent(type, platform.model("Order"), nullptr), nullptr) << type;
    }
    for (const int type : {AgentTypeStrain, AgentTypeWorkLoad, AgentTypeWeightedCost, AgentTypeUnweightedCost,
                           AgentTypeFormula, AgentTypeAnimation}) {
        EXPECT_NE(createEventAgent(type, platform.model("Staff"), nullptr), nullptr) << type;
    }
}

}  // namespace
