#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

#include "component/host/calendar.h"

#include "platform/interchange/bpmn_import.h"
#include "platform/interchange/prosimos_distribution.h"
#include "tests/platform/interchange/parameter_import.h"

namespace mero {

namespace {

std::string distribution(const std::string& name, const std::string& parameters) {
    const nlohmann::json nameValue(name);
    const auto values = nlohmann::json::parse(parameters);
    return prosimosDistribution(DocumentNode(nameValue, "name"), DocumentNode(values, "params"));
}

TEST(ProsimosDistribution, KeepsTheMeaningOfItsParameters) {
    EXPECT_EQ(distribution("fix", R"([{"value": 2.5}, {"value": 0}, {"value": 1}])"), "fixed(2.5)");
    EXPECT_EQ(distribution("uniform", "[1, 2]"), "uniform(1,2)");
    EXPECT_EQ(distribution("uniform", R"(["7", "7"])"), "fixed(7)");
    EXPECT_EQ(distribution("expon", "[1900, 1800, 3600]"), "exponential(100) in [1800,3600]");
    EXPECT_EQ(distribution("expon", "[5, 5, 5]"), "fixed(5)");
    EXPECT_EQ(distribution("norm", "[-1, 2, 0, 90]"), "normal(-1,2) in [0,90]");
    EXPECT_EQ(distribution("norm", "[60, 0, 0, 90]"), "fixed(60)");
    EXPECT_EQ(distribution("norm", "[60, 20, -5, 90]"), "normal(60,20) in [0,90]") << "no time is below 0";
    EXPECT_EQ(distribution("lognorm", "[3, 4, 1, 9]"), "lognormal(3,4) in [1,9]");
    EXPECT_EQ(distribution("gamma", "[3, 4]"), "gamma(3,4)");
    EXPECT_EQ(distribution("triang", "[5, 1, 9]"), "triangular(1,5,9)");
}

TEST(ProsimosDistribution, RefusesParametersThatMakeNoSense) {
    for (const auto& [name, parameters] :
         std::vector<std::pair<std::string, std::string>>{{"weibull", "[1, 2]"},
                                                          {"fix", "[]"},
                                                          {"uniform", "[1]"},
                                                          {"uniform", "[2, 1]"},
                                                          {"norm", "[1, -1]"},
                                                          {"gamma", "[-1, 1]"},
                                                          {"gamma", "[1, 1, 5, 2]"},
                                                          {"fix", "[-100]"},
                                                          {"expon", "[-5]"},
                                                          {"expon", "[10, 100, 200]"},
                                                          {"fix", "[true]"},
                                                          {"fix", "[\"1x\"]"},
                                                          {"fix", "{}"},
                                                          {"fix", "[{\"val\": 1}]"},
                                                          {"fix", "[\"inf\"]"}}) {
        EXPECT_THROW(distribution(name, parameters), DocumentRefused) << name << parameters;
    }
}

constexpr std::string_view Process = R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL">
  <process id="p" name="Loan"><startEvent id="s"/><startEvent id="s2"/><task id="a" name="Check &quot;it&quot;"/>
    <task id="b" name="Pay"/><exclusiveGateway id="x"/><intermediateCatchEvent id="w"><timerEventDefinition/>
    </intermediateCatchEvent><sequenceFlow id="f" sourceRef="x" targetRef="a"/></process></definitions>)";

const std::string Parameters = R"({
  "resource_calendars": [{"id": "c1", "name": "Office", "time_periods": [
     {"from": "MONDAY", "to": "FRIDAY", "beginTime": "09:00:00.646", "endTime": "12:00:00"},
     {"from": "MONDAY", "to": "MONDAY", "beginTime": "12:00:00", "endTime": "17:00:00.718"},
     {"from": "MONDAY", "to": "MONDAY", "beginTime": "10:00:00", "endTime": "11:00:00"},
     {"from": "SATURDAY", "to": "SUNDAY", "beginTime": "23:00:00", "endTime": "23:59:59.999"}]}],
  "resource_profiles": [
     {"id": "p1", "name": "Clerk", "resource_list": [
        {"id": "r1", "name": "Clerk", "amount": "2", "cost_per_hour": "20.5", "calendar": "c1", "assignedTasks": []}]},
     {"id": "p2", "name": "Boss", "resource_list": [{"id": "r2", "name": "Ann", "amount": 1, "calendar": "c1"}]}],
  "task_resource_distribution": [
     {"task_id": "a", "resources": [
        {"resource_id": "r1", "distribution_name": "fix", "distribution_params": [{"value": 60}]},
        {"resource_id": "r2", "distribution_name": "norm", "distribution_params": [{"value": 30}, {"value": 1}]}]},
     {"task_id": "b", "resources": [
        {"resource_id": "r2", "distribution_name": "fix", "distribution_params": [{"value": 5}]}]},
     {"task_id": "unknown", "resources": [
        {"resource_id": "r2", "distribution_name": "fix", "distribution_params": [{"value": 5}]}]}],
  "event_distribution": [{"event_id": "w", "distribution_name": "fix", "distribution_params": [{"value": 7}]}],
  "gateway_branching_probabilities": [{"gateway_id": "x", "probabilities": [{"path_id": "f", "value": "0.25"},
                                                                           {"path_id": "g", "value": 0.75}]}],
  "arrival_time_distribution": {"distribution_name": "expon", "distribution_params": [{"value": 9}]},
  "arrival_time_calendar": [{"from": "MONDAY", "to": "SUNDAY", "beginTime": "00:00:00", "endTime": "00:00:00"},
                            {"from": "SUNDAY", "to": "SATURDAY", "beginTime": "01:00:00", "endTime": "24:00:00"}],
  "model_type": "CRISP", "batch_processing": [{"task_id": "a", "type": "Sequential"}],
  "case_attributes": [{"name": "amount", "type": "continuous"}], "global_attributes": [],
  "prioritisation_rules": [{"priority_level": 1, "rules": []}]})";

class ProsimosParameters : public test::ParameterImport {
protected:
    Result<ImportReport> import(const std::string& parameters) {
        return importBpmn({Process, "loan.bpmn"}, repository, {{parameters, "loan.json"}});
    }
};

TEST_F(ProsimosParameters, ReachTheElementsThatTheyName) {
    const auto report = import(Parameters);
    ASSERT_TRUE(report) << report.error().text;
    const Object& check = object("Loan", "Check \"it\"");
    EXPECT_EQ(text(check, "Duration"), "mixture(fixed(60); normal(30,1) in [0,inf])");
    EXPECT_EQ(text(check, "Performer"), R"(role "Check \"it\"")") << "clerks and bosses: a role of its own";
    EXPECT_EQ(text(object("Loan", "Pay"), "Duration"), "fixed(5)");
    EXPECT_EQ(text(check, "Execution time"), "00:000:00:00:45") << "of clerks and bosses, half and half";
    EXPECT_EQ(text(object("Loan", "Pay"), "Execution time"), "00:000:00:00:05");
    EXPECT_EQ(text(object("Loan", "Pay"), "Performer"), "role \"Boss\"");
    EXPECT_EQ(text(object("Loan", "Intermediate event 1"), "Duration"), "fixed(7)");
    const Object& start = object("Loan", "Start event 1");
    EXPECT_EQ(text(start, "Arrival"), "exponential(9)");
    EXPECT_EQ(text(start, "Arrival calendar"), "CALENDAR \"Arrivals\"\nDAILY hours:\"01:00-24:00\"");
    const Object& gateway = object("Loan", "Exclusive gateway 1");
    EXPECT_EQ(repository.numberOf(*repository.findRelation(repository.relationsFrom(gateway.id).front()),
                                  "Probability"),
              0.25);
}

TEST_F(ProsimosParameters, MakeWorkersWithRolesCalendarsAndWages) {
    const auto report = import(Parameters);
    ASSERT_TRUE(report) << report.error().text;
    const std::string calendar =
        "CALENDAR \"Office\"\nWEEKLY days:\"mon\" hours:\"09:00-17:00\"\n"
        "WEEKLY days:\"tue wed thu fri\" hours:\"09:00-12:00\"\nWEEKLY days:\"sat sun\" "
        "hours:\"23:00-24:00\"";
    for (const std::string name : {"Clerk 1", "Clerk 2", "Ann"}) {
        const Object& worker = object("Loan staff", name);
        EXPECT_EQ(text(worker, "Calendar"), calendar);
        EXPECT_EQ(repository.relationsFrom(worker.id).size(), 2U) << "the profile and the task";
    }
    EXPECT_EQ(repository.numberOf(object("Loan staff", "Clerk 2"), "Hourly wages"), 20.5);
    EXPECT_EQ(text(object("Loan staff", "Ann"), "Task durations"),
              R"x(DURATION model:"Loan" task:"Check \"it\"" distribution:"normal(30,1) in [0,inf]")x");
    EXPECT_EQ(report.value().environment, repository.findModel("Loan staff")->id);
}

TEST_F(ProsimosParameters, NoteWhatIsNotUsed) {
    const auto report = import(Parameters);
    ASSERT_TRUE(report) << report.error().text;
    std::vector<std::string> notes;
    for (const ImportNote& note : report.value().notes) {
        notes.push_back(noteText(note));
    }
    EXPECT_EQ(
        notes,
        (std::vector<std::string>{
            "loan.json: \"model_type\": parameters: isn't used",
            "loan.json: batch_processing[0]: parameters: the batches of task \"a\" aren't formed: each case "
            "is worked on by itself",
            "loan.json: case_attributes[0]: parameters: the attribute \"amount\" isn't used",
            "loan.json: prioritisation_rules[0]: parameters: not used: all cases have the same priority",
            "loan.json: gateway_branching_probabilities[0].probabilities[1]: parameters: "
            "there is no sequence flow \"g\"",
            "loan.json: task_resource_distribution[2]: parameters: there is no element \"unknown\"",
            "loan.json: arrival_time_distribution: parameters: given to \"Start event 1\", the first "
            "of 2 start events"}));
}

TEST_F(ProsimosParameters, BrokenDocumentsAreRefusedAndTakeTheModelsAlong) {
    struct Change {
        std::string from;
        std::string to;
        std::string place;
    };
    const std::vector<Change> table{
        {"\"rules\": []}]}", "", "loan.json:"},
        {"\"c1\", \"assigned", "\"c9\", \"assigned",
         "loan.json: resource_profiles[0].resource_list[0].calendar: "},
        {"\"MONDAY\", \"to\": \"FRIDAY\"", "\"MONDAY\", \"to\": \"Friday\"",
         "loan.json: resource_calendars[0].time_periods[0].to: a weekday"},
        {"09:00:00.646", "25:00",
         "loan.json: resource_calendars[0].time_periods[0].beginTime: a time of day"},
        {"\"11:00:00\"", "\"09:30:00\"", "loan.json: resource_calendars[0].time_periods[2]: the period ends"},
        {"\"amount\": \"2\"", "\"amount\": 1e9", "loan.json: resource_profiles[0].resource_list[0].amount: "},
        {"\"0.25\"", "\"1.25\"", "loan.json: gateway_branching_probabilities[0].probabilities[0].value: "},
        {"\"resource_id\": \"r1\"", "\"resource_id\": \"r9\"",
         "loan.json: task_resource_distribution[0].resources[0].resource_id: there is no resource"},
        {"\"expon\"", "\"weibull\"", "loan.json: arrival_time_distribution.distribution_name: unknown"}};
    for (const Change& change : table) {
        std::string text = Parameters;
        ASSERT_NE(text.find(change.from), std::string::npos) << change.from;
        text.replace(text.find(change.from), change.from.size(), change.to);
        const auto report = import(text);
        ASSERT_FALSE(report) << change.to;
        EXPECT_TRUE(report.error().text.starts_with(change.place)) << report.error().text;
        EXPECT_TRUE(repository.modelIds().empty()) << change.to;
    }
    EXPECT_FALSE(import("{\"colour\": 1}"));
    EXPECT_FALSE(import("[]"));
}

TEST(PurchasingExample, ComesWithTheNumbersOfItsFiles) {
    const auto folder = test::sourceFile("examples");
    Repository repository;
    const std::string process = test::readFile(folder / "PurchasingExample.bpmn");
    const std::string parameters = test::readFile(folder / "PurchasingExample.json");
    const auto report =
        importBpmn({process, "PurchasingExample.bpmn"}, repository, {{parameters, "PurchasingExample.json"}});
    ASSERT_TRUE(report) << report.error().text;
    const Model& model = *repository.findModel("PurchasingExample");
    std::map<std::string, int> classes;
    for (const MeroId id : model.objects) {
        const Object& object = *repository.findObject(id);
        ++classes[repository.library().findClass(object.classId)->name];
        if (repository.library().findClass(object.classId)->name == "Task") {
            EXPECT_FALSE(repository.textOf(object, "Duration").IsEmpty()) << object.name.view();
        }
    }
    EXPECT_EQ(classes, (std::map<std::string, int>{
                           {"End event", 1}, {"Exclusive gateway", 6}, {"Start event", 1}, {"Task", 21}}));
    EXPECT_EQ(model.relations.size(), 31U);
    const Model& staff = *repository.findModel("PurchasingExample staff");
    EXPECT_EQ(staff.objects.size(), 28U) << "27 workers and a role";
    MeroCalendar calendar(0, 0, 1, 365);
    EXPECT_EQ(calendar.initializeCalendar(
                  repository.textOf(*repository.findObject(staff.objects.back()), "Calendar")),
              0);
}

}  // namespace

}  // namespace mero
