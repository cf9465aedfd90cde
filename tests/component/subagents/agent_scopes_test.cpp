#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;

struct ScopeCase {
    const char* name;
    std::string section;
    int analysis;
    bool inEnvironment;
    Values process;
    Values mainObjects;
    Values allObjects;

    friend void PrintTo(const ScopeCase& scopes, std::ostream* out) { *out << scopes.name; }
};

/// Two passes through Check; a call of Shipping, which calls itself, each with a pass through Load. The path
/// of the second call is cut back to Order, since Shipping stands in it already.
std::string callsAndRecursion() {
    return "3,0\n11,0,1,Order,1\n" + linesOf({0, 3600, "1,Order,1", "a", "Check", "Ann", "Van"}) +
           linesOf({3600, 7200, "1,Order,1", "b", "Check", "Bob", "Van"}) +
           "12,7200,1,Order,1,s,,,,Shipping,s,Ship\n" +
           linesOf({7200, 9000, "1,Shipping,s", "d", "Load", "Bob", "Van"}) +
           "12,9000,1,Shipping,s,t,,,,Shipping,t,Again\n" +
           linesOf({9000, 10000, "1,Shipping,t", "f", "Load", "Ann", "Van"}) +
           "14,10000,1,Shipping,t,t\n14,10400,1,Shipping,s,s\n13,10800,1,Order,1\n6,86400\n";
}

class AgentScopesTest : public testing::TestWithParam<ScopeCase> {};

TEST_P(AgentScopesTest, PlaceValuesOfCallsAndRecursions) {
    const ScopeCase& scopes = GetParam();
    for (const auto& [scope, expected] : {std::pair{"process", scopes.process},
                                          {"mainobjects", scopes.mainObjects},
                                          {"allobjects", scopes.allObjects}}) {
        MeasuredWorld world({.sections = scopes.section + " name:\"x\" resultscope:" + scope,
                             .analysis = scopes.analysis,
                             .inEnvironment = scopes.inEnvironment,
                             .objects = scopes.inEnvironment ? "all \"Worker\" + all \"Resource\""
                                                             : "all \"Activity\" + all \"Call\""});
        world.request = {.scaled = true, .frequency = 1, .frequencyPeriod = "00:000:01:00:00"};
        world.play(callsAndRecursion());
        const Values values = world.values();
        for (const auto& [path, value] : expected) {
            const auto found = values.find(path);
            ASSERT_NE(found, values.end()) << scope << ": " << path;
            EXPECT_DOUBLE_EQ(found->second, value) << scope << ": " << path;
        }
        EXPECT_EQ(values.size(), expected.size()) << scope << ": " << testing::PrintToString(values);
        EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
        EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
    }
}

constexpr double Day = 86400.0;
constexpr double DayOfAnn = 28800.0;

INSTANTIATE_TEST_SUITE_P(
    AllAgents, AgentScopesTest,
    testing::Values(
        ScopeCase{"Frequency",
                  "FREQUENCY relative path-analysis ignore-not-executed-objects",
                  AnalysisPath,
                  false,
                  {{"Order", 1.0}},
                  {{"Order", 1.0}, {"Order / Check", 2.0}, {"Order / Shipping", 1.0}},
                  {{"Order", 1.0},
                   {"Order / Check", 2.0},
                   {"Order / Shipping", 2.0},
                   {"Order / Shipping / Load", 1.0},
                   {"Order / Load", 1.0}}},
        ScopeCase{"CycleTime",
                  "CYCLETIME path-analysis",
                  AnalysisPath,
                  false,
                  {{"Order", 10400.0}},
                  {{"Order", 10400.0}, {"Order / Check", 3600.0}, {"Order / Shipping", 2100.0}},
                  {{"Order", 10400.0},
                   {"Order / Check", 3600.0},
                   {"Order / Shipping", 2100.0},
                   {"Order / Shipping / Load", 1800.0},
                   {"Order / Load", 1000.0}}},
        // Under "mainobjects" what is reached through the cut path counts for Order itself, and in its sum.
        ScopeCase{"AverageAttributeSum",
                  "AVGSUM class:\"Task\" attribute:\"Number\" attribute-type:numeric path-analysis",
                  AnalysisPath,
                  false,
                  {{"Order", 20.0}},
                  {{"Order", 27.0}, {"Order / Check", 6.0}, {"Order / Shipping", 7.0}},
                  {{"Order", 0.0},
                   {"Order / Check", 6.0},
                   {"Order / Shipping", 7.0},
                   {"Order / Shipping / Load", 7.0},
                   {"Order / Load", 7.0}}},
        ScopeCase{"ChangeOfWorker",
                  "RESPCHANGE class:\"Worker\" volume-analysis",
                  AnalysisVolume,
                  false,
                  {{"Order", 2.0}},
                  {{"Order", 2.0}, {"Order / Shipping", 0.0}},
                  {{"Order", 2.0}, {"Order / Shipping", 0.0}}},
        ScopeCase{"Strain",
                  "STRAIN class:\"Worker\" volume-analysis",
                  AnalysisVolume,
                  false,
                  {{"Order", 4.5}, {"Order / Ann", 3.0}, {"Order / Bob", 1.5}},
                  {{"Order", 4.5},
                   {"Order / Ann", 1.0},
                   {"Order / Check", 3.0},
                   {"Order / Check / Ann", 2.0},
                   {"Order / Check / Bob", 1.0},
                   {"Order / Shipping", 0.5},
                   {"Order / Shipping / Bob", 0.5}},
                  {{"Order", 4.5},
                   {"Order / Check", 3.0},
                   {"Order / Check / Ann", 2.0},
                   {"Order / Check / Bob", 1.0},
                   {"Order / Load", 1.0},
                   {"Order / Load / Ann", 1.0},
                   {"Order / Shipping", 0.5},
                   {"Order / Shipping / Load", 0.5},
                   {"Order / Shipping / Load / Bob", 0.5}}},
        ScopeCase{"StrainOfResourcesInTheEnvironment",
                  "STRAIN class:\"IT system\" volume-analysis",
                  AnalysisVolume,
                  true,
                  {{"Van / Order", 3.0}},
                  {{"Van / Order", 0.5}, {"Van / Order / Check", 2.0}, {"Van / Order / Shipping", 0.5}},
                  {{"Van / Order / Check", 2.0},
                   {"Van / Order / Load", 0.5},
                   {"Van / Order / Shipping / Load", 0.5}}},
        ScopeCase{"WeightedCost",
                  "WWECOST class:\"Worker\" attribute:\"Hourly wages\" volume-analysis",
                  AnalysisVolume,
                  false,
                  {{"Order", 48.75}, {"Order / Ann", 30.0}, {"Order / Bob", 18.75}},
                  {{"Order", 48.75},
                   {"Order / Ann", 10.0},
                   {"Order / Check", 32.5},
                   {"Order / Check / Ann", 20.0},
                   {"Order / Check / Bob", 12.5},
                   {"Order / Shipping", 6.25},
                   {"Order / Shipping / Bob", 6.25}},
                  {{"Order", 48.75},
                   {"Order / Check", 32.5},
                   {"Order / Check / Ann", 20.0},
                   {"Order / Check / Bob", 12.5},
                   {"Order / Load", 10.0},
                   {"Order / Load / Ann", 10.0},
                   {"Order / Shipping", 6.25},
                   {"Order / Shipping / Load", 6.25},
                   {"Order / Shipping / Load / Bob", 6.25}}},
        // The row of a worker below a process carries all that he did below it.
        ScopeCase{"WeightedCostInTheEnvironment",
                  "WWECOST class:\"Worker\" attribute:\"Hourly wages\" volume-analysis",
                  AnalysisVolume,
                  true,
                  {{"Ann / Order", 30.0}, {"Bob / Order", 18.75}},
                  {{"Ann / Order", 30.0},
                   {"Ann / Order / Check", 20.0},
                   {"Bob / Order / Check", 12.5},
                   {"Bob / Order / Shipping", 6.25}},
                  {{"Ann / Order / Check", 20.0},
                   {"Ann / Order / Load", 10.0},
                   {"Bob / Order / Check", 12.5},
                   {"Bob / Order / Shipping / Load", 6.25}}},
        ScopeCase{"UnweightedCost",
                  "UWWECOST class:\"Worker\" attribute:\"Hourly wages\" volume-analysis",
                  AnalysisVolume,
                  false,
                  {{"Order / Ann", 30.0}, {"Order / Bob", 18.75}},
                  {{"Order / Ann", 10.0},
                   {"Order / Check", 16.25},
                   {"Order / Check / Ann", 20.0},
                   {"Order / Check / Bob", 12.5},
                   {"Order / Shipping / Bob", 6.25}},
                  {{"Order / Check", 16.25},
                   {"Order / Check / Ann", 20.0},
                   {"Order / Check / Bob", 12.5},
                   {"Order / Load", 10.0},
                   {"Order / Load / Ann", 10.0},
                   {"Order / Shipping / Load", 6.25},
                   {"Order / Shipping / Load / Bob", 6.25}}},
        ScopeCase{"WorkLoad",
                  "WORKLOAD class:\"Worker\" wlstatic-analysis",
                  AnalysisStaticWorkLoad,
                  false,
                  {{"Order / Ann", 4600.0 / DayOfAnn}, {"Order / Bob", 5400.0 / Day}},
                  {{"Order / Ann", 1000.0 / DayOfAnn},
                   {"Order / Check / Ann", 3600.0 / DayOfAnn},
                   {"Order / Check / Bob", 3600.0 / Day},
                   {"Order / Shipping / Bob", 1800.0 / Day}},
                  {{"Order / Check / Ann", 3600.0 / DayOfAnn},
                   {"Order / Check / Bob", 3600.0 / Day},
                   {"Order / Load / Ann", 1000.0 / DayOfAnn},
                   {"Order / Shipping / Load / Bob", 1800.0 / Day}}},
        ScopeCase{"WorkLoadInTheEnvironment",
                  "WORKLOAD class:\"Worker\" wlnonstatic-analysis",
                  AnalysisNonStaticWorkLoad,
                  true,
                  {{"Ann / Order", 4600.0 / DayOfAnn}, {"Bob / Order", 5400.0 / Day}},
                  {{"Ann / Order", 1000.0 / DayOfAnn},
                   {"Ann / Order / Check", 3600.0 / DayOfAnn},
                   {"Bob / Order / Check", 3600.0 / Day},
                   {"Bob / Order / Shipping", 1800.0 / Day}},
                  {{"Ann / Order / Check", 3600.0 / DayOfAnn},
                   {"Ann / Order / Load", 1000.0 / DayOfAnn},
                   {"Bob / Order / Check", 3600.0 / Day},
                   {"Bob / Order / Shipping / Load", 1800.0 / Day}}}),
    [](const testing::TestParamInfo<ScopeCase>& scopes) { return std::string(scopes.param.name); });

}  // namespace

}  // namespace mero::test
