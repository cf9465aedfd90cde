#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

#include "platform/interchange/xes_import.h"
#include "platform/interchange/xes_trace.h"
#include "tests/platform/interchange/test_files.h"

namespace mero {

namespace {

/// What is measured of the events of a run.
struct Figures {
    std::map<std::string, int> passes;          ///< ended, by activity
    std::map<std::string, double> secondsSum;   ///< of work, by activity
    std::map<std::string, double> busySeconds;  ///< of ended passes, by worker
    int cases = 0;
    int handovers = 0;
    int openCases = 0;
};

Figures figuresOf(XesTrace& trace, const Repository& repository) {
    Figures figures;
    std::map<std::string, std::int64_t> started;
    std::map<std::string, MeroId> lastWorker;
    std::int64_t lastTime = 0;
    SimEvent event;
    while (true) {
        const Result<bool> more = trace.next(event);
        EXPECT_TRUE(more.isGood());
        if (!more || !more.value()) {
            return figures;
        }
        EXPECT_GE(event.time, lastTime);
        lastTime = event.time;
        const std::string pass = event.passKey->GetStr();
        const std::string mainKey = event.mainKey->GetStr();
        if (event.code == EventProcessStart) {
            ++figures.cases;
            ++figures.openCases;
            EXPECT_TRUE(lastWorker.emplace(mainKey, MeroNoId).second);
        } else if (event.code == EventProcessEnd) {
            --figures.openCases;
        } else if (event.code == EventWorkStart) {
            EXPECT_TRUE(started.emplace(pass, event.time).second) << pass;
        } else if (event.code == EventWorkEnd) {
            const std::string activity = repository.findObject(event.objectId)->name.GetStr();
            ++figures.passes[activity];
            const auto seconds = static_cast<double>(event.time - started.at(pass));
            figures.secondsSum[activity] += seconds;
            MeroId& last = lastWorker.at(mainKey);
            const MeroId worker = event.executiveId;
            if (worker != MeroNoId) {
                figures.busySeconds[repository.findObject(worker)->name.GetStr()] += seconds;
            }
            figures.handovers += last != MeroNoId && worker != MeroNoId && last != worker ? 1 : 0;
            last = worker;
        }
    }
}

void compareDurations(const nlohmann::json& reference, const Figures& figures) {
    for (const auto& [activity, values] : reference.at("activities").items()) {
        if (values.contains("start_to_complete_s")) {
            EXPECT_NEAR(figures.secondsSum.at(activity) / figures.passes.at(activity),
                        values["start_to_complete_s"]["mean"].get<double>(), 1e-6)
                << activity;
        }
    }
    if (reference.contains("own_fifo_pairing")) {
        for (const auto& [activity, values] : reference["own_fifo_pairing"]["activities"].items()) {
            EXPECT_NEAR(figures.secondsSum.at(activity) / values["n"].get<double>(),
                        values["mean"].get<double>(), 1e-6)
                << activity;
        }
        for (const auto& [worker, seconds] : reference["own_fifo_pairing"]["resource_busy_s"].items()) {
            EXPECT_NEAR(figures.busySeconds.at(worker), seconds.get<double>(), 1e-6) << worker;
        }
    }
}

class RecordedLog : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(RecordedLog, GivesTheFiguresOfTheReference) {
    const std::filesystem::path& file = GetParam();
    Repository repository;
    const Result<ImportReport> report = importXesFile(file, repository);
    ASSERT_TRUE(report.isGood()) << report.error().text;
    std::ifstream input(file, std::ios::binary);
    XesTrace trace(input, file.string(), repository, report.value().models.front(),
                   report.value().environment, XesClock::WallClock);
    ASSERT_TRUE(trace.prepare().isGood());
    Figures figures = figuresOf(trace, repository);

    std::string title = file.filename().string();
    title.resize(title.find(".xes"));
    const auto reference =
        nlohmann::json::parse(test::readFile(file.parent_path() / "reference" / (title + ".json")));
    if (reference["events"] == 0) {
        EXPECT_EQ(figures.cases, 0);
        return;
    }
    EXPECT_EQ(figures.cases, reference["cases"].get<int>());
    EXPECT_EQ(figures.openCases, 0);
    EXPECT_LE(figures.passes.size(), reference["activities"].size());
    for (const auto& [activity, values] : reference["activities"].items()) {
        const int passes = figures.passes[activity];
        EXPECT_EQ(passes, values["count"].get<int>()) << activity;
        EXPECT_NEAR(static_cast<double>(passes) / figures.cases, values["passes_per_case"].get<double>(),
                    1e-6);
    }
    compareDurations(reference, figures);
    if (reference.contains("handovers")) {
        EXPECT_EQ(figures.handovers, reference["handovers"]["total"].get<int>());
    }
}

std::vector<std::filesystem::path> recordedLogs() {
    std::vector<std::filesystem::path> logs;
    for (const auto& file : test::contentOf(test::sourceFile("tests/platform/interchange/data/xes"))) {
        if (isXesFile(file)) {
            logs.push_back(file);
        }
    }
    return logs;
}

INSTANTIATE_TEST_SUITE_P(Recorded, RecordedLog, testing::ValuesIn(recordedLogs()), [](const auto& parameter) {
    std::string name = parameter.param.filename().string();
    std::erase_if(name, [](char letter) { return std::isalnum(static_cast<unsigned char>(letter)) == 0; });
    return name;
});

}  // namespace

}  // namespace mero
