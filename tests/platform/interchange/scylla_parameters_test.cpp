#include "tests/platform/interchange/parameter_import.h"

namespace mero {

namespace {

constexpr std::string_view ScyllaProcess =
    R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL">
  <process id="p" name="Shop"><startEvent id="s"/><task id="a" name="Check"/><exclusiveGateway id="x"/>
    <subProcess id="sub" name="Pack"><task id="b" name="Wrap"/></subProcess>
    <boundaryEvent id="late" name="Late" attachedToRef="a"><timerEventDefinition/></boundaryEvent>
    <sequenceFlow id="f" sourceRef="x" targetRef="a"/></process></definitions>)";

const std::string Global = R"(<globalConfiguration xmlns="http://bsim.hpi.uni-potsdam.de/scylla/simModel">
  <zoneOffset>-03:00</zoneOffset><resourceAssignmentOrder>priority,simulationTime</resourceAssignmentOrder>
  <resourceData><dynamicResource id="clerk" name="Clerk" defaultQuantity="3" defaultCost="2"
    defaultTimeUnit="MINUTES" defaultTimetableId="t"><instance name="Ann" cost="1"/></dynamicResource></resourceData>
  <timetables><timetable id="t"><timetableItem from="FRIDAY" to="MONDAY" beginTime="22:00" endTime="00:00"/></timetable>
  </timetables></globalConfiguration>)";

const std::string Simulation = R"(<definitions xmlns="http://bsim.hpi.uni-potsdam.de/scylla/simModel">
  <simulationConfiguration processRef="p" processInstances="7" startDateTime="2026-01-05T01:30:00Z[UTC]"
      endDateTime="2026-01-06T01:30:00Z" randomSeed="42">
    <startEvent id="s"><arrivalRate timeUnit="HOURS"><poissonDistribution><mean>2</mean></poissonDistribution>
      </arrivalRate></startEvent>
    <Task id="a"><duration timeUnit="MINUTES"><erlangDistribution><order>3</order><mean>4</mean></erlangDistribution>
      </duration><resources><resource id="clerk" amount="1"><assignmentDefinition><priority>5</priority>
      </assignmentDefinition></resource></resources><boundaryEvents><boundaryEvent id="late">
        <eventProbability>0.5</eventProbability><arrivalRate><constantDistribution><constantValue>9</constantValue>
        </constantDistribution></arrivalRate></boundaryEvent></boundaryEvents><costs/></Task>
    <subProcess id="sub"><userTask id="b"><duration timeUnit="SECONDS"><binomialDistribution>
      <probability>0.5</probability><amount>10</amount></binomialDistribution></duration></userTask></subProcess>
    <exclusiveGateway id="x"><outgoingSequenceFlow id="f"><branchingProbability>0.25</branchingProbability>
      </outgoingSequenceFlow></exclusiveGateway>
  </simulationConfiguration></definitions>)";

class ScyllaParameters : public test::ParameterImport {
protected:
    Result<ImportReport> import(const std::string& global, const std::string& simulation) {
        return importBpmn({ScyllaProcess, "shop.bpmn"}, repository,
                          {{simulation, "sim.xml"}, {global, "global.xml"}});
    }
};

TEST_F(ScyllaParameters, ReachTasksEventsFlowsAndWorkers) {
    const auto report = import(Global, Simulation);
    ASSERT_TRUE(report) << report.error().text;
    const Object& check = object("Shop", "Check");
    EXPECT_EQ(text(check, "Duration"), "erlang(240,3)");
    EXPECT_EQ(text(check, "Performer"), "role \"Clerk\"");
    EXPECT_EQ(repository.numberOf(check, "Priority"), 5.0);
    EXPECT_EQ(text(object("Shop / Pack", "Wrap"), "Duration"), "binomial(0.5,10,1)");
    EXPECT_EQ(text(object("Shop", "Late"), "Duration"), "fixed(9)");
    EXPECT_EQ(repository.numberOf(object("Shop", "Late"), "Probability"), 0.5);
    EXPECT_EQ(repository.numberOf(flow("Shop", "f"), "Probability"), 0.25);
    EXPECT_EQ(text(object("Shop", "Start event 1"), "Arrival"), "poisson(2,3600)");
    const Object& ann = object("Shop staff", "Ann");
    EXPECT_EQ(text(ann, "Calendar"),
              "CALENDAR \"t\" year:\"2026\"\nWEEKLY days:\"mon fri sat sun\" hours:\"22:00-24:00\"");
    EXPECT_EQ(repository.numberOf(ann, "Hourly wages"), 60.0);
    EXPECT_EQ(repository.numberOf(object("Shop staff", "Clerk 2"), "Hourly wages"), 120.0);
    EXPECT_EQ(countWorkers("Shop staff"), 3U);
    EXPECT_EQ(report.value().runOptions,
              "--instances 7 --start 2026-01-04T22:30:00 --until 00:001:00:00:00 --seed 42")
        << "the clock is that of the timetables";
    EXPECT_TRUE(mentions(report.value(), "sim.xml:10:79: costs: isn't used"));
}

TEST_F(ScyllaParameters, BrokenConfigurationsAreRefusedAndTakeTheModelsAlong) {
    struct Change {
        std::string from;
        std::string to;
        std::string error;
    };
    const std::vector<Change> table{
        {"<mean>2<", "<mean>two<", "sim.xml:4:75: mean: a number is expected here, not \"two\""},
        {"<mean>4<", "<mean>-4<",
         "sim.xml:6:47: the mean is negative, or the number of phases isn't 1, 2, 3 …"},
        {"poisson", "cauchy", "sim.xml:4:"},
        {"HOURS", "WEEKS", "sim.xml:4:24: unknown time unit \"WEEKS\""},
        {"resource id=\"clerk\"", "resource id=\"boss\"", "sim.xml:7:29: there is no resource \"boss\""},
        {"0.25", "1.25", "sim.xml:13:59: a probability lies between 0 and 1"},
        {"2026-01-06", "2026-01-04", "sim.xml:2:3: the simulation ends before it starts"},
        {"2026-01-06", "tomorrow", "sim.xml:2:3: endDateTime: "},
        {"<simulationConfiguration", "<other", "sim.xml:15:5:"},
        {"\"FRIDAY\"", "\"Friday\"", "global.xml:5:33: a weekday is expected here, not \"Friday\""},
        {"22:00", "24:30", "global.xml:5:33: a time of day"},
        {"defaultQuantity=\"3\"", "defaultQuantity=\"-1\"",
         "global.xml:3:17: dynamicResource: a whole number"},
        {"defaultTimetableId=\"t\"", "defaultTimetableId=\"u\"", "global.xml:3:17: there is no timetable"},
        {"-03:00", "west", "global.xml:2:3: an offset such as"}};
    for (const Change& change : table) {
        std::string global = Global;
        std::string simulation = Simulation;
        std::string& changed = Simulation.find(change.from) == std::string::npos ? global : simulation;
        ASSERT_NE(changed.find(change.from), std::string::npos) << change.from;
        changed.replace(changed.find(change.from), change.from.size(), change.to);
        const auto report = import(global, simulation);
        ASSERT_FALSE(report) << change.to;
        EXPECT_TRUE(report.error().text.starts_with(change.error)) << report.error().text;
        EXPECT_TRUE(repository.modelIds().empty()) << change.to;
    }
    EXPECT_FALSE(import(Global, Global)) << "two global configurations";
    EXPECT_FALSE(import("{}", Simulation)) << "a document beside a configuration";
    EXPECT_FALSE(import(std::string(ScyllaProcess), Simulation)) << "a process is no configuration";
}

TEST_F(ScyllaParameters, CreditCardSampleComesWithItsNumbers) {
    const std::string process = test::dataFile("scylla/Kreditkarte_1.bpmn");
    const std::string simulation = test::dataFile("scylla/Kreditkarte_sim_1.xml");
    const std::string global = test::dataFile("scylla/Kreditkarte_global_1.xml");
    const auto report = importBpmn({process, "Kreditkarte_1.bpmn"}, repository,
                                   {{global, "global.xml"}, {simulation, "sim.xml"}});
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(text(object("Kreditkarte_1", "Auf Vollständigkeit prüfen"), "Duration"), "exponential(900)");
    EXPECT_EQ(text(object("Kreditkarte_1", "Antrag prüfen"), "Performer"), "role \"Manager\"");
    EXPECT_EQ(text(object("Kreditkarte_1", "Ablehnung"), "Duration"), "fixed(259200)")
        << "of the process, since the configuration says nothing of it";
    EXPECT_EQ(countWorkers("Kreditkarte_1 staff"), 6U);
    EXPECT_EQ(report.value().runOptions, "--instances 10 --start 2017-10-01T09:00:00");
    EXPECT_TRUE(mentions(report.value(), "5 workers at once are asked for"));
}

TEST_F(ScyllaParameters, WithoutTheGlobalConfigurationResourcesAreNamedOnly) {
    const std::string process = test::dataFile("scylla/p1_boundary.bpmn");
    const std::string simulation = test::dataFile("scylla/p1_boundary_sim.xml");
    const auto report = importBpmn({process, "p1.bpmn"}, repository, {{simulation, "sim.xml"}});
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(text(object("p1", "write thesis"), "Duration"), "discrete(600:20; 360:5; 720:1)");
    EXPECT_EQ(text(object("p1", "error in"), "Duration"), "fixed(300)");
    EXPECT_EQ(text(object("p1", "message in"), "Duration"), "")
        << "its chance is 0, a time would let it happen";
    EXPECT_TRUE(mentions(report.value(), "\"message in\" never happens"));
    EXPECT_EQ(report.value().environment, MeroNoId);
    EXPECT_TRUE(mentions(report.value(), "the global configuration isn't given"));
}

}  // namespace

}  // namespace mero
