#include <algorithm>
#include <gtest/gtest.h>

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

/// A file that is wrong in one way, the command that meets it, and what its message has to hold.
struct BadInput {
    std::string name;
    std::vector<std::string> command;  ///< "REPO" and "FILE" stand for the two files
    std::string bytes;
    std::string message;

    friend void PrintTo(const BadInput& input, std::ostream* out) { *out << input.name; }
};

const std::vector<std::string> Import{"import", "REPO", "FILE"};
const std::vector<std::string> Replay{"replay", "REPO", "--events", "FILE", "--models", "Order"};
const std::vector<std::string> Show{"show", "FILE"};
const std::vector<std::string> SetDefinition{"agents", "REPO", "set", "--name", "Counts", "--definition-file",
                                             "FILE"};
const std::vector<std::string> Parameters{"import", "REPO", "BPMN", "--parameters", "FILE"};

std::vector<BadInput> badInputs() {
    const std::string longLine(100000, 'x');
    return {
        {"DocumentCutShort", Import, orderDocument().substr(0, 300), "FILE:"},
        {"DocumentWithUnknownClass", Import,
         R"({"format":"mero-repository","version":1,"models":[{"name":"M","type":"Business process","objects":[{"name":"A","class":"Tusk"}]}]})",
         "models[0].objects[0].class"},
        {"DocumentWithUnknownKey", Import, R"({"format":"mero-repository","version":1,"modells":[]})",
         "modells"},
        {"DocumentWithModelOfTheSameName", Import, orderDocument(), "models[0].name"},
        {"DocumentOfAnotherFormat", Import, R"({"format":"mero-results","version":1})", "format"},
        {"XmlThatIsNoBpmn", Import, "<html><body/></html>", "FILE"},
        {"BpmnCutShort", Import, readFile(sourceFile("examples/PurchasingExample.bpmn")).substr(0, 3000),
         "FILE"},
        {"BpmnWithEntities", Import,
         "<!DOCTYPE d [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;\">]><definitions>&b;</definitions>",
         "FILE"},
        {"NothingAtAll", Import, "", "FILE"},
        {"BinaryNoise", Import, std::string("\x00\xff\xfe\x01{", 5), "FILE"},
        {"ParametersCutShort", Parameters,
         readFile(sourceFile("examples/PurchasingExample.json")).substr(0, 500), "FILE"},
        {"ParametersOfAnotherKind", Parameters, R"({"resource_profiles": 7})", "FILE"},
        {"TraceWithoutCode", Replay, "time,model\n0,Order\n", "code"},
        {"TraceWithUnknownColumn", Replay, "code,tame\n3,0\n", "tame"},
        {"TraceWithUnknownModel", Replay, "code,time,main_model\n3,0,\n11,0,Ordre\n", "FILE:3"},
        {"TraceWithUnknownObject", Replay, "code,time,model,object\n17,0,Order,Czech\n", "Czech"},
        {"TraceWithOpenQuote", Replay, "code,time,key\n3,0,\"abc\n", "FILE:"},
        {"TraceWithBadNumber", Replay, "code,time\n3,noon\n", "noon"},
        {"TraceWithLongLine", Replay, "code,time\n3," + longLine + "\n", "FILE:2"},
        {"HistoryWithBadLine", Show, "# History\n1; 2; 3; A\n1; 2\n", "FILE:3"},
        {"HistoryWithLongLine", Show, "1; 2; " + longLine + "; A\n", "FILE:1"},
        {"ResultsCutShort", Show, R"({"format":"mero-results","version":1,"agents":[)", "FILE"},
        {"DefinitionCutShort", SetDefinition, "AGENT\nFREQUENCY name:\"F", "line 2"},
        {"DefinitionWithDoubleKey", SetDefinition, "AGENT FREQUENCY name:\"F\" name:\"G\"", "line 1"},
        {"DefinitionOfNoise", SetDefinition, "\x01\x02;;;", "line 1"},
    };
}

class BadInputTest : public testing::TestWithParam<BadInput> {};

TEST_P(BadInputTest, IsRefusedWithItsPlaceAndChangesNothing) {
    const TemporaryFolder folder;
    const std::string file = folder / "input;\"ä\".txt";
    writeFile(file, GetParam().bytes);
    writeFile(folder / "order.json", orderDocument());
    ASSERT_EQ(runProgram({"import", folder / "order.mero", folder / "order.json"}).status, 0);
    for (const std::string& repository : {folder / "order.json", folder / "order.mero"}) {
        const std::string before = readFile(repository);
        std::vector<std::string> words = GetParam().command;
        std::replace(words.begin(), words.end(), std::string("REPO"), repository);
        std::replace(words.begin(), words.end(), std::string("FILE"), file);
        std::replace(words.begin(), words.end(), std::string("BPMN"),
                     sourceFile("examples/PurchasingExample.bpmn"));
        const ProgramRun run = runProgram(words);
        std::string message = GetParam().message;
        if (const std::size_t place = message.find("FILE"); place != std::string::npos) {
            message.replace(place, 4, file);
        }
        EXPECT_EQ(run.status, 1) << run.out;
        EXPECT_NE(run.err.find(message), std::string::npos) << run.err.substr(0, 1000);
        EXPECT_EQ(readFile(repository), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, BadInputTest, testing::ValuesIn(badInputs()),
                         [](const auto& sample) { return sample.param.name; });

}  // namespace

}  // namespace mero::test
