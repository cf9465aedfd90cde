#include <chrono>
#include <cmath>
#include <csignal>
#include <gtest/gtest.h>
#include <new>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>
#include <unistd.h>

#include "apps/mero/agent_definitions.h"
#include "apps/mero/replication_outcome.h"
#include "apps/mero/replication_tables.h"
#include "apps/mero/replication_transport.h"
#include "apps/mero/run_mero.h"
#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

using Json = nlohmann::json;

class ReplicationsTest : public testing::Test {
protected:
    ReplicationsTest() { writeFile(document, orderDocument()); }

    [[nodiscard]] std::vector<std::string> words(const std::vector<std::string>& further) const {
        std::vector<std::string> all{"simulate", document, "--models", "Order", "--instances", "40"};
        all.insert(all.end(), further.begin(), further.end());
        return all;
    }
    [[nodiscard]] ProgramRun simulate(const std::vector<std::string>& further) const {
        return runProgram(words(further));
    }

    TemporaryFolder folder;
    std::string document = folder / "order.json";
};

TEST_F(ReplicationsTest, TheNumberOfJobsChangesNoByte) {
    for (const char* const format : {"table", "csv", "json", "html"}) {
        const auto withJobs = [&](const char* jobs) {
            const ProgramRun run = simulate({"--replications", "9", "--seed", "3", "--sum", "--extremes",
                                             "--results", format, "--jobs", jobs});
            EXPECT_EQ(run.status, 0) << run.err;
            return run.out + run.err;
        };
        const std::string alone = withJobs("1");
        EXPECT_EQ(withJobs("2"), alone);
        EXPECT_EQ(withJobs("9"), alone);
    }
}

/// The value of a measure for the task "Check" in a document of one run.
double checkIn(const Json& document, std::size_t measure) {
    for (const Json& result : document["agents"][0]["subAgents"][measure]["resultSet"]["results"]) {
        if (result["object"] == "Check") {
            return result["items"][0]["value"];
        }
    }
    return std::nan("");
}

TEST_F(ReplicationsTest, StatisticsAreThoseOfRunsWithTheSeedsTold) {
    const ProgramRun run = simulate({"--replications", "5", "--results", "json"});
    ASSERT_EQ(run.status, 0) << run.err;
    const Json told = Json::parse(run.out);
    ASSERT_EQ(told["replications"].size(), 5U);
    constexpr std::size_t Absolute = 1;
    std::vector<double> values;
    for (const Json& replication : told["replications"]) {
        const ProgramRun one = simulate(
            {"--results", "json", "--seed", std::to_string(replication["seed"].get<std::uint64_t>())});
        EXPECT_NE(one.err.find(replication["fingerprint"].get<std::string>()), std::string::npos) << one.err;
        values.push_back(checkIn(Json::parse(one.out), Absolute));
    }
    double mean = 0.0;
    double squares = 0.0;
    for (const double value : values) {
        mean += value / 5.0;
    }
    for (const double value : values) {
        squares += (value - mean) * (value - mean);
    }
    const double deviation = std::sqrt(squares / 4.0);
    const double halfWidth = 2.7764451051977987 * deviation / std::sqrt(5.0);  // Student's t, 4 degrees
    ASSERT_GT(deviation, 0.0) << "independent seeds give different runs";
    const Json& table = told["tables"][0];
    EXPECT_EQ(table["columns"][Absolute]["measure"], "A");
    for (const Json& row : table["rows"]) {
        if (row["object"] == "Check") {
            const Json& value = row["values"][Absolute];
            EXPECT_EQ(value["replications"], 5);
            EXPECT_NEAR(value["mean"], mean, 1e-12 * mean);
            EXPECT_NEAR(value["standardDeviation"], deviation, 1e-10 * deviation);
            EXPECT_NEAR(value["lower"], mean - halfWidth, 1e-10 * mean);
            EXPECT_NEAR(value["upper"], mean + halfWidth, 1e-10 * mean);
        }
    }
}

TEST_F(ReplicationsTest, TheDocumentIsShownAsTheTablesOfItsRun) {
    const std::string file = folder / "r.json";
    const std::vector<std::string> shared{
        "--replications",  "3",       "--sum",          "--ascii", "--scaled", "2", "--period",
        "00:001:00:00:00", "--scope", "00:007:00:00:00"};
    std::vector<std::string> json = shared;
    json.insert(json.end(), {"--results", "json"});
    writeFile(file, simulate(json).out);
    std::string expected = simulate(shared).out;
    const ProgramRun shown = runProgram({"show", file, "--ascii"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    const std::string context = "scale: 1 (2 starts in 00:001:00:00:00, over 00:007:00:00:00)\n";
    ASSERT_NE(expected.find(context), std::string::npos) << expected;
    for (std::size_t place = expected.find(context); place != std::string::npos;
         place = expected.find(context, place + 1)) {
        expected.insert(place + context.size(), "file: " + file + "\n");
    }
    EXPECT_EQ(shown.out, expected);
    writeFile(file, R"({"format":"mero-replications","version":1,"run":{"title":3}})");
    const ProgramRun bad = runProgram({"show", file});
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.err.find("run.title: a text is expected"), std::string::npos) << bad.err;
}

TEST_F(ReplicationsTest, OptionsThatBelongToOneRunAreRefused) {
    EXPECT_EQ(simulate({"--jobs", "2"}).status, 2);
    EXPECT_EQ(simulate({"--replications", "0"}).status, 2);
    EXPECT_EQ(simulate({"--replications", "2", "--jobs", "0"}).status, 2);
    EXPECT_EQ(simulate({"--replications", "2", "--record-events", folder / "e.csv"}).status, 2);
}

TEST_F(ReplicationsTest, HistoriesAreNotWrittenAndMessagesNameTheirReplications) {
    const std::string history = folder / "a.hist";
    std::string text = orderDocument();
    const std::string before = "history-mem";
    text.replace(text.find(before), before.size(), R"(history-disk history-file:\")" + history + R"(\")");
    text.replace(text.find("all \\\"Activity\\\""), 16, "{\\\"Gone\\\":\\\"Task\\\"}");
    writeFile(document, text);
    const ProgramRun single = simulate({});
    const ProgramRun replicated = simulate({"--replications", "3"});
    EXPECT_EQ(replicated.status, 0);
    EXPECT_NE(replicated.err.find("(in all 3 replications)"), std::string::npos) << single.err << "\n"
                                                                                 << replicated.err;
    writeFile(document, orderDocument().replace(orderDocument().find(before), before.size(),
                                                R"(history-disk history-file:\")" + history + R"(\")"));
    EXPECT_EQ(simulate({"--replications", "3"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(history));
    EXPECT_EQ(simulate({}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(history));
}

int questions = 0;

TEST_F(ReplicationsTest, AnInterruptionKeepsWhatHasFinishedOrSaysThatNothingHas) {
    std::ostringstream out;
    std::ostringstream err;
    Console console{out, err};
    console.interrupted = [] { return true; };
    EXPECT_EQ(runMero(words({"--replications", "4"}), console), ExitRefused);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find("interrupted before"), std::string::npos) << err.str();
    questions = 0;
    console.interrupted = [] { return ++questions > 40; };
    EXPECT_EQ(runMero(words({"--replications", "1000000", "--jobs", "1"}), console), ExitDone);
    EXPECT_NE(err.str().find("the results are of the first "), std::string::npos) << err.str();
    EXPECT_NE(out.str().find("95 % from"), std::string::npos);
}

TEST(ReplicationProcessesTest, ADeadProcessIsToldWithItsReplicationAndNothingHangs) {
    std::vector<std::string> told;
    ReplicationOrder order;
    order.count = 4;
    order.jobs = 2;
    order.goesOn = [] { return true; };
    order.work = [](std::uint64_t number) -> std::string {
        if (number == 2) {
            std::raise(SIGKILL);
        }
        if (number == 3) {
            throw std::bad_alloc();
        }
        return std::string(1U << 20, static_cast<char>('0' + number));  // more than a pipe holds
    };
    order.take = [&](const FinishedReplication& finished) {
        told.push_back(
            std::to_string(finished.number) + ": " +
            (finished.outcome ? finished.outcome.value().substr(0, 2) : finished.outcome.error().text));
        return true;
    };
    EXPECT_TRUE(LocalReplications().run(order));
    std::sort(told.begin(), told.end());
    ASSERT_EQ(told.size(), 4U);
    EXPECT_EQ(told[0], "1: 11");
    EXPECT_EQ(told[1].rfind("2: its process was ended by signal 9", 0), 0U) << told[1];
    EXPECT_EQ(told[2], "3: not enough memory");
    EXPECT_EQ(told[3], "4: 44");
}

TEST(ReplicationProcessesTest, StoppingEndsProcessesThatStillRun) {
    using namespace std::chrono_literals;
    const auto begin = std::chrono::steady_clock::now();
    TemporaryFolder folder;
    const std::string witness = folder / "pid";
    ReplicationOrder order;
    order.count = 3;
    order.jobs = 3;
    order.work = [&](std::uint64_t number) -> std::string {
        if (number == 1) {
            writeFile(witness, std::to_string(::getpid()));
        }
        std::this_thread::sleep_for(100s);
        return {};
    };
    order.take = [](const FinishedReplication&) { return true; };
    order.goesOn = [&] { return readFile(witness).empty(); };
    EXPECT_TRUE(LocalReplications().run(order));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s);
    EXPECT_NE(::kill(static_cast<pid_t>(std::stol(readFile(witness))), 0), 0) << "it is still there";
}

ResultTable tableWith(std::vector<ResultTable::Row> rows) {
    ResultTable table;
    table.agent = {"Counts", 9};
    table.columns = {{.measure = "F"}, {.measure = "T", .position = 3}};
    table.rows = std::move(rows);
    return table;
}

TEST(ReplicationTablesTest, ValuesMeetByMeasureAndPathAndMissingOnesAreNotZero) {
    using Kind = ResultTable::RowKind;
    constexpr double None = ResultTable::NoValue;
    ReplicationTables folded(0.95);
    folded.add({tableWith({{Kind::Object, 0, {"O", 1}, "", "O", {None, 2.0}},
                           {Kind::Object, 1, {"A", 2}, "O", "A (O)", {1.0, None}},
                           {Kind::Sum, 0, {}, "", "Sum", {1.0, 2.0}}})});
    folded.add({});
    ResultTable second = tableWith({{Kind::Object, 0, {"O", 1}, "", "O", {4.0}},
                                    {Kind::Object, 1, {"B", 3}, "O", "B (O)", {7.0}},
                                    {Kind::Object, 2, {"A", 2}, "O", "A (O)", {8.0}},
                                    {Kind::Object, 1, {"A", 2}, "O", "A (O)", {9.0}},
                                    {Kind::Sum, 0, {}, "", "Sum", {5.0}}});
    second.columns.erase(second.columns.begin());  // the measure "F" has no values in this one
    folded.add({second});
    const std::vector<ResultTable> tables = folded.tables();
    ASSERT_EQ(tables.size(), 1U);
    std::vector<std::string> shape;
    for (const ResultTable::Row& row : tables[0].rows) {
        shape.push_back(std::string(row.depth, ' ') + row.label);
    }
    EXPECT_EQ(shape, (std::vector<std::string>{"O", " A (O)", " B (O)", "  A (O)", "Sum"}));
    ASSERT_EQ(tables[0].columns.size(), 2 * StatisticsOfAMeasure);
    const auto cells = [&](std::size_t row, std::size_t measure) {
        const auto begin =
            tables[0].rows[row].cells.begin() + static_cast<std::ptrdiff_t>(measure * StatisticsOfAMeasure);
        return std::vector<double>(begin, begin + StatisticsOfAMeasure);
    };
    const std::vector<double> two = cells(0, 1);
    EXPECT_EQ(two[0], 2.0);
    EXPECT_EQ(two[1], 3.0);
    EXPECT_DOUBLE_EQ(two[2], std::sqrt(2.0));
    EXPECT_NEAR(two[3], 3.0 - 12.706204736174698, 1e-9);
    EXPECT_NEAR(two[4], 3.0 + 12.706204736174698, 1e-9);
    EXPECT_TRUE(std::isnan(cells(0, 0)[0])) << "no replication has it";
    EXPECT_EQ(cells(1, 0)[1], 1.0);
    EXPECT_TRUE(std::isnan(cells(1, 0)[2])) << "one value doesn't scatter";
    EXPECT_EQ(cells(1, 1)[1], 9.0);
    EXPECT_EQ(cells(3, 1)[1], 8.0);
    EXPECT_EQ(cells(4, 1)[1], 3.5);
}

TEST(ReplicationOutcomeTest, ReadsBackToTheSameBitsAndRefusesEveryShorterText) {
    ReplicationOutcome outcome;
    outcome.record = {3, ~0ULL, 5, 4, 1, 0, 77, 0x8000000000000001ULL};
    outcome.reports = {{"odd", 2}};
    outcome.messages = {"", "caf\xC3\xA9\n"};
    outcome.tables = {tableWith({{ResultTable::RowKind::Maximum, 0, {"x", -1}, "", "M", {5e-324, -0.0}}})};
    const std::string bytes = bytesOf(outcome);
    const Result<ReplicationOutcome> read = readOutcome(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(bytesOf(read.value()), bytes);
    EXPECT_EQ(read.value().tables[0].rows[0].cells[0], 5e-324);
    EXPECT_EQ(read.value().tables[0].rows[0].object.id, -1);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_FALSE(readOutcome(std::string_view(bytes).substr(0, length))) << length;
    }
    EXPECT_FALSE(readOutcome(bytes + "x"));
}

TEST(AgentDefinitionsTest, HistoriesAreTakenOutOfTheTextButNotOutOfStrings) {
    EXPECT_EQ(withoutHistories(
                  "F name:\"history-mem \\\" history-disk\" history-mem\nhide-history-disk history-disk"),
              "F name:\"history-mem \\\" history-disk\" \nhide-history-disk ");
    EXPECT_EQ(withoutHistories("F name:\"open\\"), "F name:\"open\\");
}

}  // namespace

}  // namespace mero::test
