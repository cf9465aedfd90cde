#include <cmath>
#include <functional>

#include "tests/platform/engine/run_statistics.h"
#include "tests/platform/engine/work_load_fixture.h"

namespace mero {
namespace {

/// Runs against what queueing theory says (L. Kleinrock: Queueing Systems, volume 1, 1975), each within the
/// 99 % confidence interval of the mean over replications.
class QueueingTheoryTest : public WorkLoadFixture {
protected:
    static constexpr int Replications = 20;
    /// Two-sided 99 % quantile of Student's distribution with 19 degrees of freedom.
    static constexpr double Quantile = 2.861;
    static constexpr std::int64_t WarmUp = 1'000'000;
    static constexpr std::int64_t Observation = 20'000'000;

    /// Mean and half width of the confidence interval.
    struct Estimate {
        double mean = 0.0;
        double halfWidth = 0.0;
    };
    using Measure = std::function<double(const RunStatistics&)>;

    std::vector<Estimate> estimate(const ProcessBuilder& model, const std::vector<Measure>& measures) {
        settings.analysis = Analysis::StaticWorkLoad;
        settings.seed = 2;
        settings.models = {model.id()};
        settings.environment = staff.id();
        settings.warmUp = WarmUp;
        settings.until = WarmUp + Observation;
        const auto simulation = Simulation::prepare(repository, settings);
        EXPECT_TRUE(simulation.isGood()) << simulation.error().text;
        std::vector<std::vector<double>> values(measures.size());
        for (std::uint64_t replication = 1; replication <= Replications; ++replication) {
            RunStatistics statistics(repository);
            ControlComponent control;
            control.setSink(&statistics);
            EXPECT_GT(simulation.value().run(control, {}, replication).finished, 0U);
            for (std::size_t index = 0; index < measures.size(); ++index) {
                values[index].push_back(measures[index](statistics));
            }
        }
        std::vector<Estimate> estimates;
        for (const std::vector<double>& sample : values) {
            estimates.push_back(estimateOf(sample));
        }
        return estimates;
    }

    static Estimate estimateOf(const std::vector<double>& sample) {
        const auto count = static_cast<double>(sample.size());
        double sum = 0.0;
        double squares = 0.0;
        for (const double value : sample) {
            sum += value;
            squares += value * value;
        }
        const double mean = sum / count;
        const double variance = (squares - count * mean * mean) / (count - 1.0);
        return {mean, Quantile * std::sqrt(variance / count)};
    }

    /// Inside the interval, which itself is narrow enough to tell a wrong engine.
    static void expectInside(const Estimate& estimate, double truth, const std::string& what) {
        EXPECT_NEAR(estimate.mean, truth, estimate.halfWidth) << what;
        EXPECT_LT(estimate.halfWidth, 0.05 * truth) << what;
    }

    static Measure waitingAt(const std::string& object) {
        return [object](const RunStatistics& run) { return run.waitings.at(object).value(); };
    }
    /// Of all workers together.
    static Measure utilisation(double workers) {
        return [workers](const RunStatistics& run) {
            double worked = 0.0;
            for (const auto& [worker, seconds] : run.worked) {
                worked += seconds;
            }
            return worked / (workers * (run.runEnd - run.runStart));
        };
    }

    MeroId station(ProcessBuilder& model, const std::string& name, std::string_view duration, int workers) {
        staff.addWorkers(staff.add("Role", name), name, workers);
        return model.add("Task", name,
                         {{"Duration", text(duration)}, {"Performer", text("role \"" + name + "\"")}});
    }
    MeroId arrivals(ProcessBuilder& model, std::string_view gap) {
        return model.add("Start event", "Begin", {{"Arrival", text(gap)}});
    }
};

TEST_F(QueueingTheoryTest, OneServerWithExponentialTimes) {
    ProcessBuilder model(repository, "Queue");
    model.chain({arrivals(model, "exponential(1000)"), station(model, "Serve", "exponential(700)", 1)});
    const auto [waiting, busy] = std::tuple(0.7 * 700.0 / (1.0 - 0.7), 0.7);
    const auto estimates = estimate(model, {waitingAt("Serve"), utilisation(1.0)});
    expectInside(estimates[0], waiting, "waiting");
    expectInside(estimates[1], busy, "utilisation");
}

TEST_F(QueueingTheoryTest, ThreeServersWithExponentialTimes) {
    ProcessBuilder model(repository, "Queue");
    model.chain({arrivals(model, "exponential(400)"), station(model, "Serve", "exponential(900)", 3)});
    // Erlang's second formula for an offered load of 2.25 and 3 servers.
    const double load = 2.25;
    const double all = load * load * load / 6.0 * 3.0 / (3.0 - load);
    const double delayed = all / (1.0 + load + load * load / 2.0 + all);
    const auto estimates = estimate(model, {waitingAt("Serve"), utilisation(3.0)});
    expectInside(estimates[0], delayed * 900.0 / (3.0 - load), "waiting");
    expectInside(estimates[1], 0.75, "utilisation");
}

TEST_F(QueueingTheoryTest, OneServerWithAFixedTime) {
    ProcessBuilder model(repository, "Queue");
    model.chain({arrivals(model, "exponential(1000)"), station(model, "Serve", "fixed(750)", 1)});
    const auto estimates = estimate(model, {waitingAt("Serve"), utilisation(1.0)});
    // Pollaczek and Khinchine, without variance
    expectInside(estimates[0], 0.75 * 750.0 / (2.0 * (1.0 - 0.75)), "waiting");
    expectInside(estimates[1], 0.75, "utilisation");
}

TEST_F(QueueingTheoryTest, OpenNetworkWithFeedback) {
    ProcessBuilder model(repository, "Network");
    const MeroId enter = station(model, "Enter", "exponential(500)", 1);
    const MeroId check = station(model, "Check", "exponential(600)", 2);
    const MeroId split = model.add("Exclusive gateway", "Split");
    const MeroId repair = station(model, "Repair", "exponential(900)", 1);
    model.chain({arrivals(model, "exponential(1000)"), enter, check, split});
    model.flow(split, enter, 0.2);
    model.flow(split, repair, 0.4);
    model.flow(split, model.add("End event", "Good"), 0.4);
    model.flow(repair, model.add("End event", "Repaired"));
    // Traffic equations: 1.25 per 1000 s through Enter and Check, 0.5 through Repair. Each station is a queue
    // with Poisson arrivals by itself (J. R. Jackson: Networks of waiting lines, Operations Research 5,
    // 1957).
    const auto single = [](double rate, double service) {
        return rate * service * service / (1.0 - rate * service);
    };
    const double checkLoad = 0.00125 * 600.0;
    const double checkWaiting = 600.0 * checkLoad * checkLoad / (4.0 - checkLoad * checkLoad);
    const auto estimates =
        estimate(model, {waitingAt("Enter"), waitingAt("Check"), waitingAt("Repair"), utilisation(4.0)});
    expectInside(estimates[0], single(0.00125, 500.0), "waiting at Enter");
    expectInside(estimates[1], checkWaiting, "waiting at Check");
    expectInside(estimates[2], single(0.0005, 900.0), "waiting at Repair");
    expectInside(estimates[3], (0.625 + 0.75 + 0.45) / 4.0, "utilisation");
}

TEST_F(QueueingTheoryTest, BranchesAndLoopsKeepTheirFrequenciesSideBySide) {
    ProcessBuilder model(repository, "Loop");
    const MeroId again = model.add("Exclusive gateway", "Again");
    const MeroId work = station(model, "Work", "exponential(100)", 1);
    const MeroId marked =
        model.add("Task", "Marked", {{"Loop", text("standard")}, {"Loop probability", 0.25}});
    model.chain({arrivals(model, "exponential(1000)"), work, again});
    model.flow(again, work, 0.6);
    model.flow(again, marked, 0.4);
    const auto passes = [](const std::string& object) {
        return
            [object](const RunStatistics& run) { return run.waitings.at(object).count / run.lengths.count; };
    };
    const auto estimates = estimate(model, {passes("Work"), passes("Marked")});
    expectInside(estimates[0], 1.0 / 0.4, "passes of a loop of flows");
    expectInside(estimates[1], 1.0 / 0.75, "passes of a loop marker");
}

TEST_F(QueueingTheoryTest, CalendarsLimitTheThroughput) {
    ProcessBuilder model(repository, "Office");
    const MeroId role = staff.add("Role", "Clerk");
    staff.addWorkers(
        role, "Clerk", 2,
        {{"Calendar",
          text("CALENDAR WEEKLY days:\"mon tue wed thu fri\" hours:\"09:00-12:00 13:00-16:00\"")}});
    model.chain({arrivals(model, "fixed(60)"),
                 model.add("Task", "Serve",
                           {{"Duration", text("fixed(1500)")}, {"Performer", text("role \"Clerk\"")}})});
    settings.models = {model.id()};
    settings.environment = staff.id();
    settings.until = 86'400 * 7 * 10;
    const auto simulation = Simulation::prepare(repository, settings);
    ASSERT_TRUE(simulation.isGood());
    ControlComponent control;
    // Two clerks with 6 hours on 50 days are never idle, and each pass takes 25 minutes of presence.
    EXPECT_EQ(simulation.value().run(control).finished, 2U * 50U * 6U * 3600U / 1500U);
}

}  // namespace
}  // namespace mero
