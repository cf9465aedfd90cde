#include "tests/platform/engine/run_statistics.h"
#include "tests/platform/engine/work_load_fixture.h"

namespace mero {
namespace {

/// The volume and capacity analysis.
class CapacityTest : public WorkLoadFixture {
protected:
    CapacityTest() { settings.analysis = Analysis::Capacity; }
};

TEST_F(CapacityTest, StaffIsNamedAndNeverBusy) {
    staff.add("Worker", "Ann", {{"Calendar", text("CALENDAR DAILY hours:\"12:00-13:00\"")}});
    staff.add("Equipment", "Van");
    ProcessBuilder model(repository, "Order");
    const MeroId fork = model.add("Start event", "Begin");
    for (const char* name : {"A", "B"}) {
        model.flow(fork, model.add("Task", name,
                                   {{"Execution time", text("00:000:00:01:00")},
                                    {"Waiting time", text("00:000:00:00:05")},
                                    {"Performer", text("{\"Ann\":\"Worker\"}")},
                                    {"Resources", text("all \"Resource\"")}}));
    }
    model.flow(fork, model.add("Task", "C", {{"Resources", text("all \"Resource\"")}}));
    log.tellsReached = true;
    const RunSummary summary = simulate(model, 1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 22@0 A, 22@0 B, 22@0 C, 8@0 C+Van, 17@0 C+Van, 20@0 C+Van, 9@0 C+Van, "
              "1@5 A Ann, 8@5 A Ann+Van, 17@5 A Ann+Van, 1@5 B Ann, 8@5 B Ann+Van, 17@5 B Ann+Van, "
              "20@65 A Ann+Van, 9@65 A Ann+Van, 20@65 B Ann+Van, 9@65 B Ann+Van, 13@65 #1, 6@65");
    EXPECT_EQ(summary.finished, 1U);
}

TEST_F(CapacityTest, CandidatesAreEquallyLikelyAndIndependentOfEachOther) {
    const MeroId role = staff.add("Role", "Clerk");
    staff.addWorkers(role, "Clerk", 3);
    ProcessBuilder model(repository, "Order");
    const auto task = [&](std::string_view name) {
        return model.add(
            "Task", name,
            {{"Execution time", text("00:000:00:01:00")}, {"Performer", text("role \"Clerk\"")}});
    };
    model.chain({model.add("Start event", "Begin"), task("A"), task("B")});

    class Pairs : public EventSink {
    public:
        void record(const SimEvent& event) override {
            if (event.code == EventExecutiveAssigned) {
                (first == MeroNoId ? first : second) = event.assignedExecutiveId;
            } else if (event.code == EventProcessEnd) {
                ++counts[{first, second}];
                first = second = MeroNoId;
            }
        }
        MeroId first = MeroNoId;
        MeroId second = MeroNoId;
        std::map<std::pair<MeroId, MeroId>, int> counts;
    } pairs;
    settings.models = {model.id()};
    settings.instances = 9000;
    settings.environment = staff.id();
    ControlComponent control;
    control.setSink(&pairs);
    const auto simulation = Simulation::prepare(repository, settings);
    ASSERT_TRUE(simulation.isGood());
    EXPECT_EQ(simulation.value().run(control).finished, 9000U);
    ASSERT_EQ(pairs.counts.size(), 9U);
    double deviation = 0.0;
    for (const auto& [pair, count] : pairs.counts) {
        deviation += (count - 1000.0) * (count - 1000.0) / 1000.0;
    }
    // 99 % quantile of the chi-square distribution with 8 degrees of freedom
    EXPECT_LT(deviation, 20.09);
}

TEST_F(CapacityTest, BrokenOffWorkGivesItsResourceBack) {
    staff.add("Worker", "Ann");
    staff.add("Equipment", "Van");
    ProcessBuilder model(repository, "Order");
    const MeroId work = model.add("Task", "Work",
                                  {{"Execution time", text("00:000:00:01:00")},
                                   {"Performer", text("all \"Worker\"")},
                                   {"Resources", text("all \"Equipment\"")}});
    const MeroId late = model.add("Intermediate event", "Late",
                                  {{"Event kind", text("timer")}, {"Duration", text("fixed(30)")}});
    model.attach(late, work);
    model.chain({model.add("Start event", "Begin"), work, model.add("End event", "End")});
    simulate(model, 1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Work Ann, 8@0 Work Ann+Van, 17@0 Work Ann+Van, 18@30 Work Ann+Van, "
              "9@30 Work Ann+Van, 13@30 #1, 6@30");
}

}  // namespace
}  // namespace mero
