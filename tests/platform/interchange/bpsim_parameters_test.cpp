#include "tests/platform/interchange/parameter_import.h"

namespace mero {

namespace {

/// A process with one element of parameters for the task, the start event or whatever `elements` name.
std::string processWith(const std::string& elements, const std::string& scenarioParameters = "") {
    return R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL"
      xmlns:b="http://www.bpsim.org/schemas/1.0"><resource id="r" name="Clerk"/>
      <process id="p" name="Shop"><startEvent id="s" name="Start"/><task id="a" name="Check"/>
      <exclusiveGateway id="x"/><sequenceFlow id="f" sourceRef="x" targetRef="a"/></process>
      <b:Scenario id="one">)" +
           scenarioParameters + elements + R"(</b:Scenario><b:Scenario name="two"/></definitions>)";
}

std::string parametersOf(const std::string& id, const std::string& group, const std::string& parameter,
                         const std::string& value) {
    return "<b:ElementParameters elementRef=\"" + id + "\"><b:" + group + "><b:" + parameter + ">" + value +
           "</b:" + parameter + "></b:" + group + "></b:ElementParameters>";
}

class BpsimParameters : public test::ParameterImport {
protected:
    Result<ImportReport> import(const std::string& process) {
        return importBpmn({process, "shop.bpmn"}, repository);
    }
};

TEST_F(BpsimParameters, EveryKindOfTimeBecomesADistribution) {
    const std::vector<std::pair<std::string, std::string>> table{
        {R"(<b:NumericParameter value="2"/>)", "fixed(120)"},
        {R"(<b:FloatingParameter value="0.5" timeUnit="hour"/>)", "fixed(1800)"},
        {R"(<b:DurationParameter value="PT1H30M"/>)", "fixed(5400)"},
        {R"(<b:UniformDistribution min="1" max="2"/>)", "uniform(60,120)"},
        {R"(<b:TriangularDistribution min="1" max="4" mode="2" timeUnit="s"/>)", "triangular(1,2,4)"},
        {R"(<b:NegativeExponentialDistribution mean="3"/>)", "exponential(180)"},
        {R"(<b:NormalDistribution mean="3" standardDeviation="1"/>)", "normal(180,60)"},
        {R"(<b:TruncatedNormalDistribution mean="3" standardDeviation="1" min="1" max="5"/>)",
         "normal(180,60) in [60,300]"},
        {R"(<b:LogNormalDistribution mean="3" standardDeviation="2"/>)", "lognormal(180,14400)"},
        {R"(<b:GammaDistribution shape="2" scale="3"/>)", "gamma(360,64800)"},
        {R"(<b:ErlangDistribution mean="3" k="4"/>)", "erlang(180,4)"},
        {R"(<b:WeibullDistribution shape="2" scale="3"/>)", "weibull(2,180)"},
        {R"(<b:BetaDistribution shape="2" scale="3"/>)", "beta(2,3,0,60)"},
        {R"(<b:PoissonDistribution mean="3"/>)", "poisson(3,60)"},
        {R"(<b:BinomialDistribution probability="0.5" trials="4"/>)", "binomial(0.5,4,60)"},
        {R"(<b:UserDistribution><b:UserDistributionDataPoint probability="0.3"><b:NumericParameter value="1"/>
            </b:UserDistributionDataPoint><b:UserDistributionDataPoint probability="0.7">
            <b:FloatingParameter value="5"/></b:UserDistributionDataPoint></b:UserDistribution>)",
         "discrete(60:0.3; 300:0.7)"},
        {R"(<b:EnumParameter><b:NumericParameter value="1"/><b:NumericParameter value="2"/></b:EnumParameter>)",
         "discrete(60:1; 120:1)"}};
    for (const auto& [value, distribution] : table) {
        Repository fresh;
        const std::string process = processWith(parametersOf("a", "TimeParameters", "ProcessingTime", value));
        const auto report = importBpmn({process, "shop.bpmn"}, fresh);
        ASSERT_TRUE(report) << report.error().text;
        const Object* task = fresh.findObject(fresh.findModel("Shop")->id, MeroNoId, "Check");
        EXPECT_EQ(fresh.textOf(*task, "Duration").GetStr(), distribution) << value;
        EXPECT_EQ(report.value().notes.size(), 1U) << "the second scenario";
    }
}

TEST_F(BpsimParameters, WhatCannotBeReadIsNotedAndTheRestIsUsed) {
    const std::vector<std::pair<std::string, std::string>> table{
        {R"(<b:UniformDistribution min="3" max="2"/>)", "the maximum lies below the minimum"},
        {R"(<b:UniformDistribution min="three" max="2"/>)", "\"min\" has to be a number, not \"three\""},
        {R"(<b:ErlangDistribution mean="3"/>)", "the attribute \"k\" is missing"},
        {R"(<b:ExpressionParameter value="x*2"/>)", "a ExpressionParameter is no time"},
        {R"(<b:DurationParameter value="P1M"/>)", "\"P1M\" is no duration"},
        {R"(<b:UserDistribution/>)", "there are no numbers in it"},
        {R"(<b:NumericParameter value="2" timeUnit="moon"/>)", "unknown time unit \"moon\""},
        {R"(<b:NumericParameter value="2" validFor="c"/>)", "during \"c\" isn't used"}};
    for (const auto& [value, reason] : table) {
        Repository fresh;
        const std::string process = processWith(
            parametersOf("a", "TimeParameters", "ProcessingTime", value) +
            parametersOf("a", "CostParameters", "FixedCost", R"(<b:FloatingParameter value="4"/>)"));
        const auto report = importBpmn({process, "shop.bpmn"}, fresh);
        ASSERT_TRUE(report) << report.error().text;
        EXPECT_TRUE(mentions(report.value(), reason)) << reason;
        const Object* task = fresh.findObject(fresh.findModel("Shop")->id, MeroNoId, "Check");
        EXPECT_EQ(fresh.numberOf(*task, "Costs"), 4.0);
        EXPECT_TRUE(fresh.textOf(*task, "Duration").IsEmpty());
    }
}

TEST_F(BpsimParameters, CostsPrioritiesAndOtherTimesReachTheTask) {
    const auto report = import(processWith(
        parametersOf("a", "TimeParameters", "ProcessingTime",
                     R"(<b:UniformDistribution min="10" max="20"/>)") +
            parametersOf("a", "TimeParameters", "WaitTime",
                         R"(<b:NegativeExponentialDistribution mean="2"/>)") +
            parametersOf("a", "TimeParameters", "TransferTime", R"(<b:NumericParameter value="1"/>)") +
            parametersOf("a", "TimeParameters", "SetUpTime", R"(<b:NumericParameter value="1"/>)") +
            parametersOf("a", "CostParameters", "FixedCost", R"(<b:FloatingParameter value="4"/>)") +
            parametersOf("a", "CostParameters", "UnitCost", R"(<b:FloatingParameter value="2"/>)") +
            parametersOf("a", "PriorityParameters", "Priority", R"(<b:NumericParameter value="3"/>)") +
            parametersOf("f", "ControlParameters", "Probability", R"(<b:FloatingParameter value="30"/>)") +
            parametersOf("f", "ControlParameters", "Condition", R"(<b:ExpressionParameter value="x"/>)") +
            parametersOf("ghost", "CostParameters", "FixedCost", R"(<b:FloatingParameter value="4"/>)"),
        R"(<b:ScenarioParameters baseTimeUnit="s" replication="3" seed="5"/>)"));
    ASSERT_TRUE(report) << report.error().text;
    const Object& check = object("Shop", "Check");
    EXPECT_EQ(text(check, "Duration"), "uniform(10,20)");
    EXPECT_EQ(repository.numberOf(check, "Costs"), 4.0 + 2.0 * 15.0) << "a second costs 2";
    EXPECT_EQ(repository.numberOf(check, "Priority"), 3.0);
    EXPECT_EQ(text(check, "Waiting time"), "00:000:00:00:02");
    EXPECT_EQ(text(check, "Transport time"), "00:000:00:00:01");
    EXPECT_EQ(repository.numberOf(flow("Shop", "f"), "Probability"), 0.3) << "read as per cent";
    EXPECT_EQ(report.value().runOptions, "--seed 5 --replications 3");
    for (const std::string_view named :
         {"SetUpTime: of \"Check\" isn't used", "WaitTime: of \"Check\" is always its mean", "per cent",
          "Condition: of \"f\" isn't used", "there is no element \"ghost\"", "Scenario \"two\""}) {
        EXPECT_TRUE(mentions(report.value(), named)) << named;
    }
}

TEST_F(BpsimParameters, QuantitiesDuringCalendarsAreShifts) {
    const std::string calendar = R"(<b:Calendar id="day" name="Day">BEGIN:VCALENDAR
BEGIN:VEVENT
DTSTART:20260105T080000
DTEND:20260105T160000
RRULE:FREQ=WEEKLY;BYDAY=MO,TU
END:VEVENT
END:VCALENDAR</b:Calendar>)";
    const auto report = import(processWith(
        parametersOf("r", "ResourceParameters", "Quantity",
                     R"(<b:NumericParameter value="1"/><b:NumericParameter value="3" validFor="day"/>)") +
            parametersOf("r", "CostParameters", "UnitCost", R"(<b:FloatingParameter value="2"/>)") +
            parametersOf("a", "ResourceParameters", "Selection",
                         R"x(<b:ExpressionParameter value="bpsim:getResource('Clerk',2)"/>)x"),
        calendar));
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(countWorkers("Shop staff"), 3U);
    EXPECT_TRUE(text(object("Shop staff", "Clerk 1"), "Calendar").find("WEEKLY") == std::string::npos);
    const std::string shift = "CALENDAR \"Day\"\nWEEKLY days:\"mon tue\" hours:\"08:00-16:00\"";
    EXPECT_EQ(text(object("Shop staff", "Clerk 2"), "Calendar"), shift);
    EXPECT_EQ(text(object("Shop staff", "Clerk 3"), "Calendar"), shift);
    EXPECT_EQ(repository.numberOf(object("Shop staff", "Clerk 3"), "Hourly wages"), 120.0);
    EXPECT_EQ(text(object("Shop", "Check"), "Performer"), "role \"Clerk\"");
    EXPECT_TRUE(mentions(report.value(), "2 of \"Clerk\" are asked for; one carries out a task"));
}

TEST_F(BpsimParameters, WrappedInARelationshipTheyAreFoundAsWell) {
    const auto report = import(test::dataFile("bpsim/BPSIM_Wrapped.bpmn"));
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(
        report.value().runOptions,
        "--instances 3000 --start 2021-10-01T00:00:00 --until 00:300:00:00:00 --warm-up 00:001:00:00:00");
    const Object& start = object("Process", "Start");
    EXPECT_EQ(text(start, "Arrival"), "exponential(660)");
    EXPECT_EQ(text(start, "Arrival calendar"),
              "CALENDAR \"Case Arrival Calendar\"\nDAILY hours:\"08:00-23:00\"");
    EXPECT_EQ(text(object("Process", "A_CANCELLED"), "Duration"), "normal(263445,37260) in [0,360000]");
    EXPECT_EQ(countWorkers("Process staff"), 53U + 9U + 58U + 59U + 1U + 49U);
}

TEST_F(BpsimParameters, GiveWayToThoseOfFiles) {
    const std::string process = processWith(
        parametersOf("a", "TimeParameters", "ProcessingTime", R"(<b:NumericParameter value="2"/>)"));
    const auto report = importBpmn({process, "shop.bpmn"}, repository,
                                   {{R"({"gateway_branching_probabilities":
        [{"gateway_id": "x", "probabilities": [{"path_id": "f", "value": 0.25}]}]})",
                                     "shop.json"}});
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_TRUE(text(object("Shop", "Check"), "Duration").empty());
    EXPECT_EQ(repository.numberOf(flow("Shop", "f"), "Probability"), 0.25);
    EXPECT_TRUE(
        mentions(report.value(), "extension elements of \"http://www.bpsim.org/schemas/1.0\": passed over"));
}

TEST_F(BpsimParameters, RealFilesOfOtherToolsCanBeRead) {
    const auto loop = import(test::dataFile("bpsim/bpsim_MultiInstanceLoopHumanTaskWithBoundaryTimer.bpmn2"));
    ASSERT_TRUE(loop) << loop.error().text;
    EXPECT_TRUE(mentions(loop.value(), "Availability: of"));
}

TEST_F(BpsimParameters, QbpParametersOfAFileAreInSeconds) {
    const std::string bytes = test::dataFile("bpsim/BPIC_2012_W_train_qbp.bpmn");
    const auto report = importBpmn({bytes, "bank.bpmn"}, repository);
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(report.value().runOptions, "--instances 471 --start 2011-11-30T08:55:37");
    EXPECT_EQ(countWorkers("bank staff"), 61U);
    EXPECT_EQ(text(object("bank", "W_Nabellen incomplete dossiers"), "Duration"),
              "lognormal(1543.1,264627087.8)");
    EXPECT_EQ(text(object("bank staff", "Role 3"), "Name"), "Role 3");
    EXPECT_EQ(
        text(object("bank staff", "Role 1 35"), "Calendar"),
        "CALENDAR \"Default\" year:\"2011\"\nWEEKLY days:\"mon tue wed thu fri\" hours:\"09:00-17:00\"");
}

}  // namespace

}  // namespace mero
