#include "platform/interchange/result_table.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace mero {

namespace {

using RowKind = ResultTable::RowKind;

ResultTable smallTable() {
    ResultTable table{{"Cou,nts", 9}, "Ord\"er", 2.5, false, {}, {}};
    table.columns = {
        {.measure = "F\nx", .type = "FREQUENCY"},
        {.measure = "T", .type = "CYCLETIME", .position = 2, .unit = ResultUnit::Seconds, .scale = 2.5}};
    table.rows = {{RowKind::Object, 0, {"Order", 1}, "", "Order", {ResultTable::NoValue, 1e-7}},
                  {RowKind::Object, 1, {"Ship", 2}, "Order", "Ship (Order)", {ResultTable::NoValue, 0.0}},
                  {RowKind::Object, 2, {"Pack", 3}, "Sub", "Pack (Sub)", {0.1, 7200.5}},
                  {RowKind::Object, 1, {"Pay", 4}, "Order", "Pay (Order)", {3.0, ResultTable::NoValue}},
                  {RowKind::Sum, 0, {}, "", "Sum", {3.1, 7200.5}}};
    table.rows[1].objectClass = "Call activity";
    table.rows[2].objectClass = "Task";
    table.rows[3].objectClass = "User task";
    return table;
}

RunDescription smallRun() {
    RunDescription run;
    run.title = "run, 1";
    run.isSimulation = true;
    run.analysis = "path";
    run.models = {"Order"};
    run.seed = 7;
    run.fingerprint = 0xabc;
    run.scaledStarts = 10;
    run.scaleScope = "00:007:00:00:00";
    run.groupClass = "Role";  // of a run; the table says whether it is grouped
    return run;
}

TEST(ResultTable, CsvLinesCarryTheirContextAndQuoteWhatWouldBreakThem) {
    const std::string begin = "\"run, 1\",\"Ord\"\"er\",\"Cou,nts\",";
    const std::string end = ",path,7,0000000000000abc,\"10 starts in the run, over 00:007:00:00:00\",\r\n";
    EXPECT_EQ(
        writeResultCsv({smallTable()}, smallRun()),
        "run,model,agent,measure,object_model,object,object_class,path,value,unit,scale,row,analysis,seed,"
        "fingerprint,scaling,grouping\r\n" +
            begin + "T,,Order,,Order,1e-07,s,2.5,object" + end +  //
            begin + "T,Order,Ship,Call activity,Order / Ship,0,s,2.5,object" + end + begin +
            "\"F\nx\",Sub,Pack,Task,Order / Ship / Pack,0.1,,1,object" + end + begin +
            "T,Sub,Pack,Task,Order / Ship / Pack,7200.5,s,2.5,object" + end + begin +
            "\"F\nx\",Order,Pay,User task,Order / Pay,3,,1,object" + end + begin + "\"F\nx\",,,,,3.1,,1,sum" +
            end + begin + "T,,,,,7200.5,s,2.5,sum" + end);
}

TEST(ResultTable, TheDocumentWithTablesKeepsItsKeysAndCanBeRead) {
    ResultDocument document;
    document.analysis = 1;
    const std::string text = writeResultDocument(document, {smallTable()}, smallRun());
    EXPECT_TRUE(readResultDocument(text, "r.json"));
    auto json = nlohmann::json::parse(text);
    EXPECT_EQ(json["run"]["seed"], 7);
    EXPECT_EQ(json["run"]["fingerprint"], "0000000000000abc");
    const auto& table = json["tables"][0];
    EXPECT_EQ(table["columns"][1]["unit"], "s");
    EXPECT_EQ(table["columns"][1]["scale"], 2.5);
    EXPECT_EQ(table["rows"][2]["path"], (std::vector<std::string>{"Order", "Ship", "Pack"}));
    EXPECT_EQ(table["rows"][3]["path"], (std::vector<std::string>{"Order", "Pay"}));
    EXPECT_TRUE(table["rows"][3]["values"][1].is_null());
    EXPECT_EQ(table["rows"][4]["row"], "sum");
    EXPECT_EQ(table["rows"][3]["objectClass"], "User task");
    json.erase("run");
    json.erase("tables");
    EXPECT_EQ(json, nlohmann::json::parse(writeResultDocument(document)));
}

TEST(ResultTable, TablesOfADocumentAreReadBackWithTheirRun) {
    RunDescription run = smallRun();
    run.hoursPerDay = 8.0;
    const std::string text = writeResultDocument(ResultDocument{}, {smallTable()}, run);
    const auto read = readTablesOfDocument(text, "r.json");
    ASSERT_TRUE(read) << read.error().text;
    ASSERT_TRUE(read.value().has_value());
    const ShownTables& shown = *read.value();
    EXPECT_EQ(shown.run.title, run.title);
    EXPECT_EQ(shown.run.hoursPerDay, 8.0);
    EXPECT_FALSE(shown.run.isReplicated);
    // What CSV tells of tables, it tells of those read back; only the run's own numbers aren't among it.
    run.isSimulation = false;
    run.fingerprint = 0;
    EXPECT_EQ(writeResultCsv(shown.tables, shown.run), writeResultCsv({smallTable()}, run));

    const auto without = readTablesOfDocument(writeResultDocument(ResultDocument{}), "r.json");
    EXPECT_TRUE(without && !without.value().has_value());
    auto json = nlohmann::json::parse(text);
    for (auto& row : json["tables"][0]["rows"]) {
        row.erase("objectClass");
    }
    EXPECT_TRUE(readTablesOfDocument(json.dump(), "r.json")) << "as documents were written before";
    json["tables"][0]["rows"][0]["values"] = nlohmann::json::array({1.0});
    const auto refused = readTablesOfDocument(json.dump(), "r.json");
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().text.starts_with("r.json: ")) << refused.error().text;
}

}  // namespace

}  // namespace mero
