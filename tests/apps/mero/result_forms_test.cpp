#include <gtest/gtest.h>

#include "apps/mero/html_page.h"
#include "apps/mero/shown_values.h"
#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

/// Process "Desk" whose task is done by Ann and Bob, both of the role "Clerk"; an agent "Load" measures their
/// strain and an agent "Counts" how often the task is executed.
std::string deskDocument() {
    return R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Desk", "type": "Business process",
    "objects": [ { "name": "Begin", "class": "Start event" },
      { "name": "Serve <b>", "class": "Task",
        "attributes": { "Execution time": "00:000:00:30:00", "Performer": "role \"Clerk\"" } },
      { "name": "End", "class": "End event" } ],
    "relations": [ { "class": "Sequence flow", "from": "Begin", "to": "Serve <b>" },
      { "class": "Sequence flow", "from": "Serve <b>", "to": "End" } ],
    "agents": [
      { "name": "Counts", "class": "Process agent", "objects": "all \"Activity\"",
        "definition": "AGENT\nFREQUENCY name:\"F & <i>\" resultscope:mainobjects absolute\nCYCLETIME name:\"T\" resultscope:mainobjects" },
      { "name": "Load", "class": "Process agent", "objects": "all \"Activity\"",
        "definition": "AGENT\nUWWECOST name:\"Cost\" resultscope:mainobjects class:\"Worker\" attribute:\"Hourly wages\"" } ] },
  { "name": "Staff", "type": "Working environment",
    "objects": [ { "name": "Ann", "class": "Worker", "attributes": { "Hourly wages": 10 } },
      { "name": "Bob", "class": "Worker", "attributes": { "Hourly wages": 10 } },
      { "name": "Clerk", "class": "Role" } ],
    "relations": [ { "class": "Has role", "from": "Ann", "to": "Clerk" },
      { "class": "Has role", "from": "Bob", "to": "Clerk" } ] } ] })";
}

/// Process "Desk" with two activities "Serve" of different classes; an agent with a measure that scales and
/// one that doesn't.
std::string mixedDocument() {
    return R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Desk", "type": "Business process",
    "objects": [ { "name": "Begin", "class": "Start event" },
      { "name": "Serve", "class": "Task" }, { "name": "Serve", "class": "User task" },
      { "name": "End", "class": "End event" } ],
    "relations": [ { "class": "Sequence flow", "from": "Begin", "to": { "model": "Desk", "class": "Task", "name": "Serve" } },
      { "class": "Sequence flow", "from": { "model": "Desk", "class": "Task", "name": "Serve" },
        "to": { "model": "Desk", "class": "User task", "name": "Serve" } },
      { "class": "Sequence flow", "from": { "model": "Desk", "class": "User task", "name": "Serve" }, "to": "End" } ],
    "agents": [ { "name": "Counts", "class": "Process agent", "objects": "all \"Activity\"",
        "definition": "AGENT\nAVGSUM name:\"R\" resultscope:mainobjects class:\"Activity\" attribute:\"Costs\" attribute-type:numeric\nCYCLETIME name:\"T\" resultscope:mainobjects" } ] } ] })";
}

class ResultFormsTest : public testing::Test {
protected:
    ResultFormsTest() { writeFile(document, deskDocument()); }

    [[nodiscard]] ProgramRun simulate(const std::vector<std::string>& further) const {
        std::vector<std::string> words{"simulate",      document,   "--models",    "Desk",
                                       "--environment", "Staff",    "--instances", "20",
                                       "--analysis",    "capacity", "--start",     "2026-01-05T08:00"};
        words.insert(words.end(), further.begin(), further.end());
        return runProgram(words);
    }

    TemporaryFolder folder;
    std::string document = folder / "desk.json";
};

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(ResultFormsTest, CsvFollowsTheOptionsOfTables) {
    const std::string plain = simulate({"--results", "csv"}).out;
    EXPECT_TRUE(
        contains(plain, ",Desk,Counts,F & <i>,Desk,Serve <b>,Task,Desk / Serve <b>,20,,1,object,capacity,1,"))
        << plain;
    EXPECT_TRUE(contains(plain, ",T,Desk,Serve <b>,Task,Desk / Serve <b>,1800,s,1,object,")) << plain;
    EXPECT_FALSE(contains(plain, ",sum,"));
    const std::string total = simulate({"--results", "csv", "--total", "--sum", "--extremes"}).out;
    EXPECT_TRUE(contains(total, ",T,Desk,Serve <b>,Task,Serve <b>,1800,s,1,object,")) << total;
    EXPECT_TRUE(contains(total, ",1,sum,"));
    EXPECT_TRUE(contains(total, ",T,,,,,1800,s,1,minimum,")) << total;
    // Ten starts a day over a week: what scales is multiplied by 70, and says so.
    const std::string scaled = simulate({"--results", "csv", "--scaled", "10", "--period", "00:001:00:00:00",
                                         "--scope", "00:007:00:00:00"})
                                   .out;
    EXPECT_TRUE(contains(scaled, "Cost,Staff,Ann,")) << scaled;
    EXPECT_TRUE(contains(scaled, ",,70,object,")) << scaled;
}

TEST_F(ResultFormsTest, GroupsCarryTheValuesOfWorkersToTheirRole) {
    const ProgramRun grouped = simulate({"--group", "Role/Has role", "--total"});
    EXPECT_TRUE(contains(grouped.out, "Clerk (Staff)")) << grouped.out << grouped.err;
    EXPECT_FALSE(contains(grouped.out, "Ann")) << grouped.out;
    EXPECT_TRUE(contains(grouped.out, "grouped: Role over Has role"));
    EXPECT_TRUE(contains(grouped.out, "Serve <b> (Desk)")) << "agents without workers stay as they are";
    const ProgramRun none = simulate({"--group", "Organisational unit/Belongs to", "--total"});
    EXPECT_TRUE(contains(none.out, "Ann (Staff)")) << none.out;
    EXPECT_FALSE(contains(none.out, "grouped:"));
    EXPECT_TRUE(contains(none.err, "mero: ")) << none.err;
}

TEST_F(ResultFormsTest, JsonHoldsTablesAndTheRunOnlyWhereTheyAreAskedFor) {
    EXPECT_FALSE(contains(simulate({"--results", "json"}).out, "\"tables\""));
    const std::string asked = simulate({"--results", "json", "--detail"}).out;
    EXPECT_TRUE(contains(asked, "\"tables\"")) << asked;
    EXPECT_TRUE(contains(asked, "\"environment\": \"Staff\""));
    writeFile(folder / "r.json", asked);
    EXPECT_EQ(runProgram({"show", folder / "r.json"}).status, 0);
}

TEST_F(ResultFormsTest, TablesSayTheScaleOfTheirColumnsAndAnUnusualTimeBase) {
    const std::vector<std::string> scaling{"--scaled",        "10",      "--period",
                                           "00:001:00:00:00", "--scope", "00:007:00:00:00"};
    const std::string out = simulate(scaling).out;
    EXPECT_TRUE(contains(out, "Load (Desk)\n")) << out;
    EXPECT_TRUE(contains(out, "scale: 70 (10 starts in 00:001:00:00:00, over 00:007:00:00:00)\n")) << out;
    EXPECT_FALSE(contains(out, "time base")) << out;
    writeFile(folder / "mixed.json", mixedDocument());
    std::vector<std::string> words{"simulate", folder / "mixed.json", "--models", "Desk", "--instances",
                                   "20",       "--hours-per-day",     "8"};
    words.insert(words.end(), scaling.begin(), scaling.end());
    const std::string mixed = runProgram(words).out;
    EXPECT_TRUE(contains(mixed, "scale: by column (10 starts")) << mixed;
    EXPECT_TRUE(contains(mixed, "time base: 365 days a year, 8 hours a day")) << mixed;
    EXPECT_TRUE(contains(mixed, "R [scale 70]      T [scale 1]\n")) << mixed;
}

TEST_F(ResultFormsTest, ObjectsOfOneNameAreToldApartByTheirClass) {
    std::string twins = mixedDocument();
    writeFile(folder / "twins.json", twins);
    for (const char* const replications : {"", "2"}) {
        std::vector<std::string> words{
            "simulate", folder / "twins.json", "--models", "Desk", "--instances", "2", "--results"};
        if (*replications != '\0') {
            words.insert(words.begin() + 1, {"--replications", replications});
        }
        words.emplace_back("csv");
        const std::string csv = runProgram(words).out;
        EXPECT_TRUE(contains(csv, ",Serve,Task,Desk / Serve,")) << csv;
        EXPECT_TRUE(contains(csv, ",Serve,User task,Desk / Serve,")) << csv;
        words.back() = "json";
        words.emplace_back("--detail");
        const std::string json = runProgram(words).out;
        EXPECT_TRUE(contains(json, "\"objectClass\": \"User task\"")) << json;
    }
}

TEST_F(ResultFormsTest, ShowingADocumentWithTablesShowsThoseWithTheirRun) {
    const std::vector<std::string> options{"--total",  "--sum",           "--scaled", "10",
                                           "--period", "00:001:00:00:00", "--scope",  "00:007:00:00:00"};
    const std::string tables = simulate(options).out;
    std::vector<std::string> words = options;
    words.insert(words.end(), {"--results", "json"});
    writeFile(folder / "r.json", simulate(words).out);
    std::string shown = runProgram({"show", folder / "r.json"}).out;
    const std::string file = "file: " + (folder / "r.json") + "\n";
    std::size_t count = 0;
    for (std::size_t at = shown.find(file); at != std::string::npos; at = shown.find(file)) {
        shown.erase(at, file.size());
        ++count;
    }
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(shown, tables);
}

TEST_F(ResultFormsTest, TheTitleOfARunNamesItsModels) {
    EXPECT_TRUE(contains(simulate({}).out, "run: simulation of Desk with Staff, 20 instances, seed 1\n"));
    const std::string events = folder / "e.csv";
    ASSERT_EQ(simulate({"--record-events", events}).status, 0);
    const std::vector<std::string> replay{"replay",        document, "--events",   events,
                                          "--models",      "Desk",   "--analysis", "capacity",
                                          "--environment", "Staff",  "--start",    "2026-01-05T08:00"};
    const std::string out = runProgram(replay).out;
    EXPECT_TRUE(contains(out, "run: replay of e.csv on Desk with Staff\n")) << out;
}

TEST_F(ResultFormsTest, GroupsThatCannotBeFormedNameTheAgent) {
    const ProgramRun none = simulate({"--group", "Organisational unit/Belongs to", "--total"});
    EXPECT_TRUE(contains(none.err, "to group them. Agent: Load (Desk)\n")) << none.err;
}

TEST_F(ResultFormsTest, NumbersOutOfRangeAreRefusedReadably) {
    for (const auto& [option, value, reason] :
         {std::tuple{"--scaled", "-1", "\"-1\" isn't a whole number, 0 or more"},
          {"--scaled", "1.5", "\"1.5\" isn't a whole number, 0 or more"},
          {"--scaled", "99999999999", "\"99999999999\" isn't a whole number, 0 or more"},
          {"--days-per-year", "0", "\"0\" isn't a number above 0"},
          {"--days-per-year", "nan", "\"nan\" isn't a number above 0"},
          {"--hours-per-day", "x", "\"x\" isn't a number above 0"}}) {
        const ProgramRun refused = simulate({option, value});
        EXPECT_EQ(refused.status, 2) << value;
        EXPECT_TRUE(contains(refused.err, reason)) << refused.err;
        EXPECT_LT(refused.err.size(), 300U) << refused.err;
    }
}

TEST_F(ResultFormsTest, TheHtmlPageIsWholeInItselfAndEscapesTexts) {
    const ProgramRun run = simulate({"--results", "html", "--sum"});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string& page = run.out;
    EXPECT_EQ(page.rfind("<!DOCTYPE html>", 0), 0U);
    EXPECT_TRUE(page.ends_with("</html>\n"));
    for (const char* const part :
         {"Serve &lt;b&gt; (Desk)", "F &amp; &lt;i&gt;", "prefers-color-scheme: dark", "data-depth=\"1\"",
          "<tfoot>", "title=\"00:000:00:30:00\">30 min</td>", "<dt>Fingerprint</dt>",
          "<dt>Seed</dt><dd>1</dd>"}) {
        EXPECT_TRUE(contains(page, part)) << part << " in\n" << page;
    }
    for (const char* const outside : {"http:", "https:", "src=", "href=", "@import", "url(\"", "url(h"}) {
        EXPECT_FALSE(contains(page, outside)) << outside;
    }
    EXPECT_FALSE(contains(page, "<b>"));
}

TEST(HtmlPageTest, WhatIsPointedAtIsAsExactAsWhatIsShown) {
    RunDescription run;
    run.models = {"Order"};
    ResultTable table;
    table.agent = {"Stays", 1};
    table.columns = {{.measure = "T", .unit = ResultUnit::Seconds}};
    const double third = 1.0 / 3.0;
    for (const double value : {third, 1800.25}) {
        table.rows.push_back({ResultTable::RowKind::Object, 0, {"Order", 2}, "", "Order", {value}});
    }
    const std::string page = writeHtmlPage({table}, run);
    EXPECT_TRUE(contains(page, "<td title=\"00:000:00:00:00 (0.3333333333333333 s)\">0.3333 s</td>")) << page;
    EXPECT_TRUE(contains(page, "<td title=\"00:000:00:30:00 (1800.25 s)\">30 min</td>")) << page;
}

TEST(HtmlPageTest, PicturesStandBelowTheirTableOrAtTheEnd) {
    RunDescription run;
    run.models = {"Order"};
    ResultTable table;
    table.agent = {"Counts", 1};
    table.columns = {{.measure = "F"}};
    table.rows = {{ResultTable::RowKind::Object, 0, {"Order", 2}, "", "Order", {1.0}}};
    const std::string page = writeHtmlPage(
        {table, table}, run, {{"all", "<svg id=\"end\"/>", {}}, {"a < b", "<svg id=\"one\"/>", 0}});
    const std::size_t one = page.find("<svg id=\"one\"/><figcaption>a &lt; b</figcaption>");
    EXPECT_NE(one, std::string::npos);
    EXPECT_LT(one, page.rfind("<h2>"));
    EXPECT_GT(page.find("<svg id=\"end\"/>"), page.rfind("</table>"));
}

TEST(ShownValuesTest, DurationsReadLikeTimeInTheBaseOfTheRun) {
    RunDescription run;
    run.daysPerYear = 250.0;
    run.hoursPerDay = 8.0;
    EXPECT_EQ(durationText(0.25, run), "0.25 s");
    EXPECT_EQ(durationText(59.9999, run), "60 s");
    EXPECT_EQ(durationText(3599.7, run), "1 h");
    EXPECT_EQ(durationText(2 * 28800.0 + 3 * 3600.0 + 20 * 60.0, run), "2 d 3 h 20 min");
    EXPECT_EQ(durationText(-(250 * 28800.0 + 61.0), run), "-1 y 1 min 1 s");
    EXPECT_EQ(durationText(ResultTable::NoValue, run), "-");
}

}  // namespace

}  // namespace mero::test
