#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

class CommandsTest : public testing::Test {
protected:
    CommandsTest() { writeFile(document, orderDocument()); }

    TemporaryFolder folder;
    std::string document = folder / "order.json";
    std::string database = folder / "order.mero";
};

TEST(ProgramTest, EveryHelpBeginsWithAnExample) {
    const std::vector<std::vector<std::string>> commands{{},
                                                         {"import"},
                                                         {"export"},
                                                         {"simulate"},
                                                         {"replay"},
                                                         {"agents"},
                                                         {"show"},
                                                         {"agents", "r", "list"},
                                                         {"agents", "r", "add"},
                                                         {"agents", "r", "set"},
                                                         {"agents", "r", "remove"},
                                                         {"agents", "r", "activate"},
                                                         {"agents", "r", "check"},
                                                         {"agents", "r", "show"}};
    for (std::vector<std::string> command : commands) {
        command.emplace_back("--help");
        const ProgramRun run = runProgram(command);
        EXPECT_EQ(run.status, 0) << command.front();
        EXPECT_EQ(run.out.rfind("Example:\n  mero ", 0), 0U) << run.out;
    }
}

TEST_F(CommandsTest, WrongUsageGivesTwoAndChangesNothing) {
    const std::vector<std::vector<std::string>> usages{
        {},
        {"measure"},
        {"simulate", document},
        {"simulate", document, "--models", "Order"},
        {"simulate", document, "--models", "Order", "--instances", "0"},
        {"simulate", document, "--models", "Order", "--instances", "1", "--analysis", "static"},
        {"simulate", document, "--models", "Order", "--instances", "1", "--scaled", "1"},
        {"simulate", document, "--models", "Order", "--until", "tomorrow"},
        {"simulate", document, "--models", "Order", "--instances", "1", "--results", "page"},
        {"simulate", document, "--models", "Order", "--instances", "1", "--group", "Role"},
        {"simulate", document, "--models", "Order", "--instances", "1", "--detail", "--total"},
        {"replay", document, "--events", "e.csv", "--models", "Order", "--analysis", "static"},
        {"replay", document, "--events", "e.csv", "--models", "Order", "--start", "2026-02-30T08:00"},
        {"agents", document},
        {"agents", document, "set", "--name", "Counts"},
        {"show"},
        {"--language", "xx", "show", document},
    };
    for (const auto& usage : usages) {
        const ProgramRun run = runProgram(usage);
        EXPECT_EQ(run.status, 2) << testing::PrintToString(usage);
        EXPECT_FALSE(run.err.empty());
        EXPECT_TRUE(run.out.empty());
    }
    EXPECT_EQ(readFile(document), orderDocument());
}

TEST_F(CommandsTest, RefusalsNameTheReason) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const std::string missing = folder / "missing.json";
    for (const Case& refused :
         {Case{{"simulate", document, "--models", "Ordr", "--instances", "1"}, "no model \"Ordr\""},
          Case{{"simulate", document, "--models", "Staff", "--instances", "1"}, "working environment"},
          Case{{"simulate", document, "--models", "Order", "--environment", "Order", "--instances", "1"},
               "not a working environment"},
          Case{{"simulate", document, "--models", "Order", "--instances", "1", "--group", "Role/Part"},
               "no relation \"Part\""},
          Case{{"simulate", document, "--models", "Order", "--instances", "1", "--group", "Task/Has role"},
               "no class \"Task\""},
          Case{{"simulate", missing, "--models", "Order", "--instances", "1"}, missing},
          Case{{"replay", document, "--events", missing, "--models", "Order"}, missing},
          Case{{"export", document, folder / "no/such/folder.json"}, "can't be written"},
          Case{{"export", document, document + ".mero", "--language", "en"}, ""},
          Case{{"show", missing}, missing}, Case{{"import", database, missing}, missing}}) {
        const ProgramRun run = runProgram(refused.arguments);
        if (refused.message.empty()) {
            EXPECT_EQ(run.status, 0) << run.err;
            continue;
        }
        EXPECT_EQ(run.status, 1) << testing::PrintToString(refused.arguments);
        EXPECT_NE(run.err.find(refused.message), std::string::npos) << run.err;
    }
    EXPECT_FALSE(std::filesystem::exists(database));
}

TEST_F(CommandsTest, ImportAndExportKeepARepositoryWhole) {
    ASSERT_EQ(runProgram({"import", database, document}).status, 0);
    const std::string first = folder / "first.json";
    const std::string second = folder / "second.json";
    ASSERT_EQ(runProgram({"export", database, first}).status, 0);
    ASSERT_EQ(runProgram({"export", first, folder / "again.mero"}).status, 0);
    ASSERT_EQ(runProgram({"export", folder / "again.mero", second}).status, 0);
    EXPECT_EQ(readFile(first), readFile(second));
    EXPECT_EQ(runProgram({"export", database, "-"}).out, readFile(first));
    const ProgramRun twice = runProgram({"import", database, document});
    EXPECT_EQ(twice.status, 1);
    EXPECT_NE(twice.err.find("Order"), std::string::npos);
}

TEST_F(CommandsTest, ImportReportsModelsAndWhatIsNotExecuted) {
    const ProgramRun run = runProgram({"import", database, sourceFile("examples/PurchasingExample.bpmn"),
                                       "--parameters", sourceFile("examples/PurchasingExample.json")});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("Business process \"PurchasingExample\""), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("Working environment"), std::string::npos);
}

TEST_F(CommandsTest, ImportTakesSeveralFilesOfParametersAndTellsTheOptionsOfARun) {
    const std::string data = sourceFile("tests/platform/interchange/data/scylla/");
    const ProgramRun run =
        runProgram({"import", database, data + "Kreditkarte_1.bpmn", "--parameters",
                    data + "Kreditkarte_sim_1.xml", "--parameters", data + "Kreditkarte_global_1.xml"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("--instances 10 --start 2017-10-01T09:00:00"), std::string::npos) << run.out;
    const ProgramRun simulated = runProgram({"simulate", database, "--models", "Kreditkarte_1", "--instances",
                                             "10", "--start", "2017-10-01T09:00:00"});
    EXPECT_EQ(simulated.status, 0) << simulated.err;
}

TEST_F(CommandsTest, TableShowsRunAgentAnalysisScaleAndExtremes) {
    const ProgramRun run = runProgram({"simulate", document, "--models", "Order", "--instances", "200",
                                       "--sum", "--extremes", "--ascii", "--timing"});
    ASSERT_EQ(run.status, 0) << run.err;
    for (const char* const part : {"Counts (Order)", "run: simulation of Order, 200 instances, seed 1",
                                   "analysis: path   scale: 1", "1. Order", "  1.1. Check (Order)", "Sum"}) {
        EXPECT_NE(run.out.find(part), std::string::npos) << part << " in\n" << run.out;
    }
    for (const char* const part : {"200 instances started, 200 finished, 0 dropped, 0 unfinished",
                                   "fingerprint", "load: ", "run: ", "results: ", "events a second"}) {
        EXPECT_NE(run.err.find(part), std::string::npos) << part << " in\n" << run.err;
    }
    const ProgramRun total =
        runProgram({"simulate", document, "--models", "Order", "--instances", "200", "--total", "--ascii"});
    EXPECT_NE(total.out.find("\n2. "), std::string::npos) << total.out;
    EXPECT_EQ(total.out.find("1.1."), std::string::npos);
}

TEST_F(CommandsTest, ResultsBeginAfterTheWarmUpAndAreThoseOfItsRecord) {
    writeFile(document, R"json({
  "format": "mero-repository", "version": 1,
  "models": [ { "name": "Order", "type": "Business process",
    "objects": [
      { "name": "Begin", "class": "Start event",
        "attributes": { "Quantity": 259200, "Time period": "per day" } },
      { "name": "Check", "class": "Task", "attributes": { "Duration": "fixed(36)", "Execution time": "00:000:00:00:36" } } ],
    "relations": [ { "class": "Sequence flow", "from": "Begin", "to": "Check" } ],
    "agents": [ { "name": "Counts", "class": "Process agent", "objects": "all \"Activity\"",
      "calendar": "CALENDAR DAILY hours:\"00:00-24:00\"",
      "definition": "AGENT wlstatic-analysis FREQUENCY name:\"F\" resultscope:mainobjects relative AVGSUM name:\"S\" resultscope:mainobjects class:\"Activity\" attribute:\"Execution time\" attribute-type:time" } ]
  } ] })json");
    const std::string events = folder / "run.csv";
    const std::vector<std::string> common{
        document,  "--models",         "Order",           "--analysis", "static",
        "--start", "2026-01-05T00:00", "--results",       "csv",        "--scaled",
        "1",       "--scope",          "00:000:01:00:00", "--period",   "00:001:00:00:00"};
    std::vector<std::string> simulate{
        "simulate", "--until", "00:000:02:00:00", "--warm-up", "00:000:01:00:00", "--record-events", events};
    simulate.insert(simulate.end(), common.begin(), common.end());
    const ProgramRun run = runProgram(simulate);
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<std::string> replay{"replay", "--events", events};
    replay.insert(replay.end(), common.begin(), common.end());
    for (const std::string& out : {run.out, runProgram(replay).out}) {
        // Each instance passes the task once, and three a second are 10,800 in an hour.
        EXPECT_NE(out.find(",Counts,F,Order,Check,Task,Order / Check,1,"), std::string::npos) << out;
        EXPECT_NE(out.find(",Counts,S,Order,Check,Task,Order / Check,388800,s,10800,"), std::string::npos)
            << out;
    }
    std::vector<std::string> replicated{
        "simulate", "--until", "00:000:02:00:00", "--warm-up", "00:000:01:00:00", "--replications", "2"};
    replicated.insert(replicated.end(), common.begin(), common.end());
    const ProgramRun replications = runProgram(replicated);
    EXPECT_NE(replications.out.find(",Check,Task,Order / Check,2,388800,0,388800,388800,s,10800,"),
              std::string::npos)
        << "the warm-up is that of each replication: " << replications.out << replications.err;
}

TEST_F(CommandsTest, CalendarsWhoseWeekdaysAreNotThoseOfTheStartAreTold) {
    const auto write = [this](const std::string& head, const std::string& days) {
        writeFile(document, R"json({ "format": "mero-repository", "version": 1, "models": [
          { "name": "Order", "type": "Business process", "objects": [
              { "name": "Begin", "class": "Start event", "attributes": { "Arrival": "fixed(3600)" } },
              { "name": "Check", "class": "Task" } ],
            "relations": [ { "class": "Sequence flow", "from": "Begin", "to": "Check" } ] },
          { "name": "Staff", "type": "Working environment", "objects": [
              { "name": "Ann", "class": "Worker", "attributes": { "Calendar": "CALENDAR)json" +
                                head + " " + days + R"json( hours:\"08:00-16:00\"" } } ] } ] })json");
    };
    const std::string weekly = R"(WEEKLY days:\"mon\")";
    const auto told = [this](const std::string& start) {
        return runProgram({"simulate", document, "--models", "Order", "--environment", "Staff", "--analysis",
                           "nonstatic", "--instances", "1", "--start", start})
            .err;
    };
    write("", weekly);
    const std::string run = told("2026-01-05T00:00");
    EXPECT_NE(
        run.find("the calendar of \"Ann\" takes the start of the run for a Friday, though it is a Monday: "
                 "write CALENDAR … year:\"2026\""),
        std::string::npos)
        << run;
    EXPECT_EQ(told("2024-01-08T00:00").find("calendar of"), std::string::npos)
        << "a year that begins on Monday";
    write(R"( year:\"2026\")", weekly);
    EXPECT_EQ(told("2026-01-05T00:00").find("calendar of"), std::string::npos);
    EXPECT_NE(told("2025-01-06T00:00").find("for a Tuesday, though it is a Monday"), std::string::npos);
    write("", "DAILY");
    EXPECT_EQ(told("2026-01-05T00:00").find("calendar of"), std::string::npos);
}

TEST_F(CommandsTest, OddModelsAreToldInTheWordsOfTheUser) {
    struct Case {
        std::string model;
        std::string message;
    };
    writeFile(document, R"({"format":"mero-repository","version":1,"models":[
      {"name":"Empty","type":"Business process"},
      {"name":"Endless","type":"Business process",
       "objects":[{"name":"S","class":"Start event"},{"name":"T","class":"Task"}],
       "relations":[{"class":"Sequence flow","from":"S","to":"T"}]},
      {"name":"Self","type":"Business process",
       "objects":[{"name":"S","class":"Start event"},
                  {"name":"C","class":"Call activity","attributes":{"Referenced model":"Self"}},
                  {"name":"E","class":"End event"}],
       "relations":[{"class":"Sequence flow","from":"S","to":"C"},{"class":"Sequence flow","from":"C","to":"E"}]}]})");
    for (const Case& odd :
         {Case{"Empty", "model \"Empty\" is empty"}, Case{"Endless", "\"Endless\" has no end event"},
          Case{"Self", "calls sub-processes more than 1000 levels deep"}}) {
        const ProgramRun run = runProgram({"simulate", document, "--models", odd.model, "--instances", "1"});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err.find(odd.message), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("the models have no agents"), std::string::npos) << run.err;
    }
}

TEST_F(CommandsTest, MeasuresWithoutResultsAreToldWithTheReason) {
    struct Case {
        std::string section;
        std::string told;
    };
    const std::string capacity = " resultscope:process volume-analysis ";
    for (const auto& [section, told] :
         {Case{R"(RESPCHANGE name:"M")", "measure \"M\" of agent \"Work\" wasn't measured: it has no class"},
          Case{R"(WWECOST name:"M" class:"Role" attribute:"Name")",
               "measure \"M\" of agent \"Work\" wasn't measured: its class \"Role\" is neither"},
          Case{R"(WWECOST name:"M" class:"Worker")",
               "measure \"M\" of agent \"Work\" had to stop and has no results: it has no attribute"},
          Case{R"(AVGSUM name:"M" class:"Task" attribute:"Performer" attribute-type:numeric)",
               "measure \"M\" of agent \"Work\" wasn't measured: an object that it observes"},
          Case{R"(STRAIN name:"M" class:"IT system")",
               "measure \"M\" of agent \"Work\" is shown only with --scaled N --period TIME --scope TIME"}}) {
        for (const bool withAnother : {false, true}) {
            runProgram({"agents", document, "remove", "--name", withAnother ? "Work" : "Counts"});
            runProgram({"agents", document, "add", "--model", "Order", "--name", "Work", "--objects",
                        "all \"Task\"", "--definition",
                        "AGENT " + section + capacity +
                            (withAnother ? "FREQUENCY name:\"F\" absolute" + capacity : std::string())});
            const ProgramRun run = runProgram({"simulate", document, "--models", "Order", "--environment",
                                               "Staff", "--instances", "1", "--analysis", "capacity"});
            EXPECT_EQ(run.status, 0) << section;
            EXPECT_NE(run.err.find(told), std::string::npos) << told << '\n' << run.err;
            EXPECT_EQ(run.err.find("tells more"), std::string::npos) << run.err;
            EXPECT_EQ(run.out.empty(), !withAnother) << run.out;
        }
        runProgram({"agents", document, "remove", "--name", "Work"});
    }
}

TEST_F(CommandsTest, ScaledStrainIsNotMissed) {
    runProgram({"agents", document, "add", "--model", "Order", "--name", "Work", "--objects", "all \"Task\"",
                "--definition",
                R"(AGENT STRAIN name:"M" class:"Worker" resultscope:process volume-analysis)"});
    const ProgramRun run = runProgram({"simulate", document, "--models", "Order", "--environment", "Staff",
                                       "--instances", "1", "--analysis", "capacity", "--scaled", "1",
                                       "--period", "00:001:00:00:00", "--scope", "00:001:00:00:00"});
    EXPECT_EQ(run.err.find("is shown only"), std::string::npos) << run.err;
}

TEST_F(CommandsTest, ShowsResultDocumentsAndHistories) {
    const std::string result = folder / "result.json";
    const ProgramRun run =
        runProgram({"simulate", document, "--models", "Order", "--instances", "10", "--results", "json"});
    writeFile(result, run.out);
    const ProgramRun shown = runProgram({"show", result, "--ascii"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_NE(shown.out.find("history of A"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("  Pack"), std::string::npos);

    const std::string history = folder / "a.hist";
    writeFile(history, "# History\n7; 1; 2.5; Check; twice\n7; 9; 3.5; Check; twice\n");
    const ProgramRun readings = runProgram({"show", history, "--ascii"});
    EXPECT_EQ(readings.status, 0) << readings.err;
    EXPECT_NE(readings.out.find("Check; twice"), std::string::npos) << readings.out;
    writeFile(history, "7; 1; many; Check\n");
    const ProgramRun bad = runProgram({"show", history});
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.err.find(history), std::string::npos) << bad.err;
}

/// Acts as a user who may write nowhere, also where tests run as root.
class WithoutWriteAccess {
public:
    explicit WithoutWriteAccess(const std::filesystem::path& file) : folder(file.parent_path()) {
        using std::filesystem::perms;
        constexpr perms ReadOnly = perms::owner_read | perms::group_read | perms::others_read;
        std::filesystem::permissions(file, ReadOnly);
        std::filesystem::permissions(folder,
                                     ReadOnly | perms::owner_exec | perms::group_exec | perms::others_exec);
        isChanged = user == 0 && ::seteuid(Nobody) == 0;
    }
    WithoutWriteAccess(const WithoutWriteAccess&) = delete;
    WithoutWriteAccess& operator=(const WithoutWriteAccess&) = delete;
    ~WithoutWriteAccess() {
        if (isChanged && ::seteuid(user) != 0) {
            std::abort();
        }
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    }

private:
    static constexpr ::uid_t Nobody = 65534;

    std::filesystem::path folder;
    ::uid_t user = ::geteuid();
    bool isChanged = false;
};

TEST_F(CommandsTest, RepositoryWithoutWriteAccessIsRefusedAndStaysAsItIs) {
    ASSERT_EQ(runProgram({"import", database, document}).status, 0);
    const std::string before = readFile(database);
    {
        const WithoutWriteAccess user(database);
        for (const std::vector<std::string>& change : std::vector<std::vector<std::string>>{
                 {"import", database, sourceFile("examples/PurchasingExample.bpmn")},
                 {"agents", database, "deactivate", "--name", "Counts"},
                 {"agents", document, "deactivate", "--name", "Counts"},
                 {"export", database, folder / "copy.json"}}) {
            const ProgramRun run = runProgram(change);
            EXPECT_EQ(run.status, 1) << testing::PrintToString(change);
            EXPECT_NE(run.err.find(folder / ""), std::string::npos) << run.err;
        }
        const ProgramRun simulated =
            runProgram({"simulate", database, "--models", "Order", "--instances", "10"});
        EXPECT_EQ(simulated.status, 0) << "reading is enough for a run: " << simulated.err;
    }
    EXPECT_EQ(readFile(database), before);
    EXPECT_EQ(readFile(document), orderDocument());
    EXPECT_FALSE(std::filesystem::exists(folder / "copy.json"));
}

TEST_F(CommandsTest, EventLogIsImportedAndReplayed) {
    const std::string log = sourceFile("tests/platform/interchange/data/xes/running-example.xes");
    const ProgramRun imported = runProgram({"import", database, log});
    ASSERT_EQ(imported.status, 0) << imported.err;
    EXPECT_NE(imported.out.find("--start 2010-12-27"), std::string::npos) << imported.out;
    const ProgramRun added =
        runProgram({"agents", database, "add", "--model", "running-example", "--name", "Measures",
                    "--objects", "all \"Activity\"", "--definition",
                    "AGENT wlnonstatic-analysis FREQUENCY name:\"Passes\" resultscope:mainobjects relative"});
    ASSERT_EQ(added.status, 0) << added.err;
    const ProgramRun replayed =
        runProgram({"replay", database, "--events", log, "--models", "running-example", "--environment",
                    "running-example resources", "--analysis", "nonstatic", "--start", "2010-12-27T00:00",
                    "--results", "csv"});
    EXPECT_EQ(replayed.status, 0) << replayed.err;
    EXPECT_NE(replayed.out.find(",check ticket,Task,running-example / check ticket,1.5,"), std::string::npos)
        << replayed.out;
}

}  // namespace

}  // namespace mero::test
