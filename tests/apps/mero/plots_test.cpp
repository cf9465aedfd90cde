#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "apps/mero/result_pictures.h"
#include "platform/interchange/repository_document.h"
#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

bool hasPlotProgram() {
    return std::filesystem::exists(std::filesystem::read_symlink("/proc/self/exe").parent_path() /
                                   "mero-plot");
}

class PlotsTest : public testing::Test {
protected:
    PlotsTest() { writeFile(document, orderDocument()); }

    [[nodiscard]] std::vector<std::string> simulation(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{"simulate", document, "--models", "Order", "--instances", "20"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    TemporaryFolder folder;
    std::string document = folder / "order.json";
};

TEST_F(PlotsTest, DrawEveryMeasureAsChartAndProcessAndEveryHistoryAsCurves) {
    if (!hasPlotProgram()) {
        GTEST_SKIP() << "mero-plot isn't built";
    }
    const ProgramRun run = runProgram(simulation({"--plots", folder / "pictures"}));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.err.find("5 pictures written to "), std::string::npos) << run.err;
    for (const char* const name :
         {"Counts-F-bars", "Counts-F-Order", "Counts-A-bars", "Counts-A-Order", "Counts-A-history"}) {
        for (const char* const suffix : {".png", "@2x.png", ".svg"}) {
            EXPECT_GT(std::filesystem::file_size(folder / (std::string("pictures/") + name + suffix)), 100U);
        }
    }
    const ProgramRun plain = runProgram(simulation({}));
    EXPECT_EQ(run.out, plain.out) << "pictures change no table";

    const ProgramRun json = runProgram(simulation({"--results", "json", "--plots", folder / "more"}));
    EXPECT_EQ(json.out, runProgram(simulation({"--results", "json"})).out);
    writeFile(folder / "results.json", json.out);
    const ProgramRun shown = runProgram({"show", folder / "results.json", "--plots", folder / "shown"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_TRUE(std::filesystem::exists(folder / "shown/Counts-A-history.svg"));
}

TEST_F(PlotsTest, ReplicationsAreDrawnWithTheirMeansAlsoWhenShownLater) {
    if (!hasPlotProgram()) {
        GTEST_SKIP() << "mero-plot isn't built";
    }
    const ProgramRun run = runProgram(
        simulation({"--replications", "3", "--jobs", "1", "--results", "json", "--plots", folder / "means"}));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(std::filesystem::exists(folder / "means/Counts-F-Order.svg"));
    writeFile(folder / "replications.json", run.out);
    const ProgramRun shown = runProgram({"show", folder / "replications.json", "--plots", folder / "shown"});
    ASSERT_EQ(shown.status, 0) << shown.err;
    const std::string chart = readFile(folder / "shown/Counts-F-bars.svg");
    EXPECT_NE(chart.find(">Check<"), std::string::npos);
    EXPECT_NE(chart.find(">Pack<"), std::string::npos);
}

TEST_F(PlotsTest, APageHoldsItsPictures) {
    if (!hasPlotProgram()) {
        GTEST_SKIP() << "mero-plot isn't built";
    }
    const ProgramRun page = runProgram(simulation({"--results", "html"}));
    ASSERT_EQ(page.status, 0) << page.err;
    const auto count = [&page](std::string_view text) {
        int found = 0;
        for (std::size_t place = page.out.find(text); place != std::string::npos;
             place = page.out.find(text, place + 1)) {
            ++found;
        }
        return found;
    };
    EXPECT_EQ(count("<svg"), 5);
    EXPECT_EQ(count("<?xml"), 0);
    EXPECT_EQ(count("id=\"gradient"), 0) << "identifiers are told apart by picture";
}

TEST_F(PlotsTest, WithoutTheProgramARunIsRefusedBeforeItBegins) {
    const std::string alone = folder / "mero";
    std::filesystem::copy_file(MERO_PROGRAM, alone);
    const auto status = [&](const std::string& arguments) {
        const std::string line = "PATH=/nowhere '" + alone + "' " + arguments + " >'" + folder / "out" +
                                 "' 2>'" + folder / "err" + "'";
        return WEXITSTATUS(std::system(line.c_str()));
    };
    const std::string run = "simulate '" + document + "' --models Order --instances 5";
    EXPECT_EQ(status(run + " --plots '" + folder / "pictures" + "'"), 1);
    EXPECT_EQ(readFile(folder / "out"), "");
    EXPECT_NE(readFile(folder / "err").find("mero: pictures are drawn by the program mero-plot"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "pictures"));
    EXPECT_EQ(status(run + " --results html"), 0);
    EXPECT_NE(readFile(folder / "err").find("the page goes without pictures"), std::string::npos);
    EXPECT_NE(readFile(folder / "out").find("<html"), std::string::npos);
}

TEST(ResultPictures, PathsToAnObjectAddUpAndOtherStatisticsStayOut) {
    Repository repository;
    ASSERT_TRUE(readRepositoryDocument(orderDocument(), "order", repository));
    const Model& model = *repository.findModel("Order");
    const MeroId check = repository.findObject(model.id, MeroNoId, "Check")->id;
    ResultTable table;
    table.agent.text = "A/b \"c\"";
    table.columns = {{.measure = "F"}, {.measure = "F", .statistic = ResultStatistic::Deviation}};
    using Row = ResultTable::Row;
    using Kind = ResultTable::RowKind;
    table.rows = {
        Row{Kind::Object, 0, {"Order", model.id}, "", "Order", {9.0, 0.0}},
        Row{Kind::Object, 1, {"Check", check}, "Order", "Check (Order)", {1.5, 0.0}},
        Row{Kind::Object, 2, {"Check", check}, "Order", "Check (Order)", {2.0, 0.0}},
        Row{Kind::Object, 1, {"Pack", check + 1}, "Order", "Pack (Order)", {ResultTable::NoValue, 0.0}},
        Row{Kind::Sum, 0, {}, "", "Sum", {12.5, 0.0}}};
    const auto pictures = picturesOf({table}, RunDescription{}, repository);
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_EQ(pictures[0].picture.name, "A-b--c--F-bars");
    const auto& bars = std::get<BarPicture>(pictures[0].picture.content);
    ASSERT_EQ(bars.items.size(), 2U);
    EXPECT_EQ(bars.items[1].label, "Check");
    EXPECT_EQ(bars.items[1].values, std::vector<double>{3.5});
    const auto& process = std::get<ProcessPicture>(pictures[1].picture.content);
    EXPECT_EQ(process.measure.values, (std::map<MeroId, double>{{check, 3.5}}));
}

TEST(ResultPictures, LongNamesAreCutBetweenCharactersAndKeepWhatTheyShow) {
    std::string longName = "x";
    for (int count = 0; count < 100; ++count) {
        longName += "\u00e4";
    }
    ResultDocument document;
    document.analysis = 1;
    ResultSetDocument set;
    set.history = {{"Check", 1.0, 2.0}};
    document.agents.push_back({{longName, MeroNoId}, "Order", 1, 1.0, {{"F", "FREQUENCY", 5, 0, set}}});
    document.agents.push_back(document.agents.front());
    const auto pictures = historiesOf(document, RunDescription{});
    ASSERT_EQ(pictures.size(), 2U);
    const std::string cut = longName.substr(0, 99);
    EXPECT_EQ(pictures[0].picture.name, cut + "-history");
    EXPECT_EQ(pictures[1].picture.name, cut + "-history-2");
}

TEST(ResultPictures, LongHistoriesAreThinnedAndKeepTheirExtremes) {
    ResultDocument document;
    document.analysis = 1;
    ResultSetDocument set;
    set.history.emplace();
    for (int reading = 0; reading < 50'000; ++reading) {
        set.history->push_back({"Check", reading * 1.0, reading == 31'415 ? 99.0 : reading % 7 * 1.0});
    }
    document.agents.push_back({{"Counts", MeroNoId}, "Order", 1, 1.0, {{"F", "FREQUENCY", 5, 0, set}}});
    const auto pictures = historiesOf(document, RunDescription{});
    ASSERT_EQ(pictures.size(), 1U);
    const auto& curve = std::get<CurvePicture>(pictures[0].picture.content).curves.at(0);
    EXPECT_LE(curve.points.size(), 4000U);
    EXPECT_TRUE(std::ranges::is_sorted(curve.points, {}, &DrawPoint::x));
    EXPECT_EQ(curve.points.front(), (DrawPoint{0, 0}));
    EXPECT_EQ(curve.points.back().x, 49'999.0);
    EXPECT_EQ(std::ranges::max(curve.points, {}, &DrawPoint::y), (DrawPoint{31'415, 99}));
}

}  // namespace

}  // namespace mero::test
