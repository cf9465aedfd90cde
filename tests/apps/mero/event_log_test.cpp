#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

/// A name or option in what the import tells, between `words` and a quote or the end of the line.
std::string toldBehind(const std::string& words, const ProgramRun& imported) {
    const std::size_t found = imported.out.find(words);
    if (found == std::string::npos) {
        return {};
    }
    const std::size_t begin = found + words.size();
    return imported.out.substr(begin, imported.out.find_first_of("\"\n", begin) - begin);
}

/// Imports a log, measures the work load of its workers on the process and on the environment, and gives the
/// result document of the replay.
nlohmann::json measureWorkLoad(const std::string& log) {
    const TemporaryFolder folder;
    const std::string repository = folder / "log.mero";
    const ProgramRun imported = runProgram({"import", repository, log});
    EXPECT_EQ(imported.status, 0) << imported.err;
    const std::string process = toldBehind("Business process \"", imported);
    const std::string environment = toldBehind("Working environment \"", imported);
    for (const auto& [model, objects] :
         {std::pair(process, "all \"Task\""), std::pair(environment, "all \"Worker\"")}) {
        const ProgramRun added = runProgram(
            {"agents", repository, "add", "--model", model, "--name", "Measures", "--objects", objects,
             "--definition",
             "AGENT wlnonstatic-analysis WORKLOAD name:\"W\" resultscope:mainobjects class:\"Worker\""});
        EXPECT_EQ(added.status, 0) << added.err;
    }
    const ProgramRun replayed = runProgram(
        {"replay", repository, "--events", log, "--models", process, "--environment", environment,
         "--analysis", "nonstatic", "--start", toldBehind("--start ", imported), "--results", "json"});
    EXPECT_EQ(replayed.status, 0);
    EXPECT_EQ(replayed.err, "");
    return nlohmann::json::parse(replayed.out);
}

/// Logs in which every pass has a worker.
class WorkLoadOfLog : public testing::TestWithParam<const char*> {};

TEST_P(WorkLoadOfLog, IsMeasuredOfAllWhoWorked) {
    const std::string folder = sourceFile("tests/platform/interchange/data/xes/");
    const nlohmann::json results = measureWorkLoad(folder + GetParam());
    EXPECT_EQ(results["messages"], nlohmann::json::array());

    const std::string title(GetParam(), std::string_view(GetParam()).find(".xes"));
    const auto reference = nlohmann::json::parse(readFile(folder + "reference/" + title + ".json"));
    std::set<std::string> busy;
    if (reference.contains("own_fifo_pairing")) {
        for (const auto& [worker, seconds] : reference["own_fifo_pairing"]["resource_busy_s"].items()) {
            busy.insert(worker);
        }
    }
    ASSERT_EQ(results["agents"].size(), 2U);
    for (const nlohmann::json& agent : results["agents"]) {
        const nlohmann::json& load = agent["subAgents"][0];
        constexpr int Finished = 5;
        EXPECT_EQ(load["state"], Finished) << agent["model"];
        std::set<std::string> measured;
        for (const nlohmann::json& result : load["resultSet"]["results"]) {
            measured.insert(result["object"]);
        }
        EXPECT_EQ(measured, busy) << agent["model"];
    }
}

INSTANTIATE_TEST_SUITE_P(Recorded, WorkLoadOfLog,
                         testing::Values("L1_complete_events_only_with_resources_missing_timestamps.xes",
                                         "L1_no_lifecycle_transition.xes",
                                         "L1_start_complete_no_overlapping_with_resources.xes",
                                         "L1_start_complete_overlapping.xes", "bpic2013_closed.xes.gz",
                                         "repairExample.xes.gz", "running-example.xes"));

}  // namespace

}  // namespace mero::test
