#include "platform/interchange/repository_document.h"

#include <gtest/gtest.h>

#include "tests/platform/interchange/test_files.h"

namespace mero {

namespace {

std::string documentOf(const std::string& models) {
    return R"({"format": "mero-repository", "version": 1, "models": [)" + models + "]}";
}

std::string modelOf(const std::string& content) {
    return documentOf(R"({"name": "Order", "type": "Business process")" +
                      (content.empty() ? "" : ", " + content) + "}");
}

TEST(RepositoryDocument, EveryWorkedExampleKeepsItsContentOverAWholeRound) {
    const auto examples = test::contentOf(test::sourceFile("tests/system/golden"));
    ASSERT_EQ(examples.size(), 72U);
    for (const auto& example : examples) {
        Repository first;
        const auto read = readRepositoryDocument(test::readFile(example / "repo.json"), "repo.json", first);
        ASSERT_TRUE(read) << example << ": " << read.error().text;
        const std::string written = writeRepositoryDocument(first);
        Repository second;
        const auto again = readRepositoryDocument(written, "again", second);
        ASSERT_TRUE(again) << example << ": " << again.error().text;
        EXPECT_EQ(writeRepositoryDocument(second), written) << example;
        ASSERT_EQ(first.modelIds(), second.modelIds()) << example;
        for (const MeroId id : first.modelIds()) {
            const Model& model = *first.findModel(id);
            const Model& copy = *second.findModel(id);
            EXPECT_EQ(model.objects, copy.objects) << example;
            EXPECT_EQ(model.relations.size(), copy.relations.size()) << example;
            for (const MeroId object : model.objects) {
                EXPECT_EQ(first.findObject(object)->name, second.findObject(object)->name) << example;
                EXPECT_EQ(first.findObject(object)->values, second.findObject(object)->values) << example;
            }
        }
    }
}

TEST(RepositoryDocument, IdentifiersFollowTheOrderOfTheDocument) {
    Repository repository;
    ASSERT_TRUE(readRepositoryDocument(documentOf(R"({"name": "A", "type": "Business process",
                       "agents": [{"name": "M", "class": "Process agent", "definition": "AGENT"}],
                       "objects": [{"name": "X", "class": "Task"}, {"name": "Y", "class": "Task"}],
                       "relations": [{"class": "Sequence flow", "from": "X", "to": "Y"}]},
                      {"name": "B", "type": "Working environment", "access": "read", "loaded": false,
                       "objects": [{"name": "Ann", "class": "Worker"}]})"),
                                       "a.json", repository));
    EXPECT_EQ(repository.modelIds(), (std::vector<MeroId>{1000001, 1000005}));
    EXPECT_EQ(repository.findObject(1000002)->name, "X");
    EXPECT_EQ(repository.findObject(1000004)->name, "M");
    EXPECT_EQ(repository.findObject(1000006)->name, "Ann");
    EXPECT_EQ(repository.findModel(1000005)->access, ModelAccess::Read);
    EXPECT_FALSE(repository.findModel(1000005)->loaded);
}

TEST(RepositoryDocument, ValuesKeepEveryBitAndEveryCharacter) {
    const std::string text = modelOf(R"("objects": [
        {"name": "\"a\\b\n;\u00e4", "class": "Task",
         "attributes": {"Costs": 0.1, "Number": -2147483648, "Execution time": "01:002:03:04:05"}},
        {"name": "tiny", "class": "Task", "attributes": {"Costs": 5e-324}},
        {"name": "whole", "class": "Task", "attributes": {"Costs": 3}},
        {"name": "start", "class": "Start event", "attributes": {"Time period": "per year"}}],
      "relations": [{"class": "Sequence flow", "from": "tiny", "to": "whole",
                     "attributes": {"Probability": 0.30000000000000004, "Condition": "a < b"}},
                    {"class": "Sequence flow", "from": "whole", "to": "tiny", "attributes": {"Probability": 0}},
                    {"class": "Sequence flow", "from": "whole", "to": "start"}])");
    Repository repository;
    ASSERT_TRUE(readRepositoryDocument(text, "a.json", repository));
    Repository again;
    ASSERT_TRUE(readRepositoryDocument(writeRepositoryDocument(repository), "again", again));
    const Object& odd = *again.findObject(1000002);
    EXPECT_EQ(odd.name, "\"a\\b\n;\xC3\xA4");
    EXPECT_EQ(again.numberOf(odd, "Costs"), 0.1);
    EXPECT_EQ(again.numberOf(odd, "Number"), -2147483648.0);
    EXPECT_EQ(again.textOf(odd, "Execution time"), "01:002:03:04:05");
    EXPECT_EQ(again.numberOf(*again.findObject(1000003), "Costs"), 5e-324);
    EXPECT_EQ(again.numberOf(*again.findObject(1000004), "Costs"), 3.0);
    const Relation& flow = *again.findRelation(again.relationsFrom(1000003).front());
    EXPECT_EQ(again.numberOf(flow, "Probability"), 0.30000000000000004);
    EXPECT_EQ(again.textOf(flow, "Condition"), "a < b");
    const auto others = again.relationsFrom(1000004);
    EXPECT_EQ(again.findRelation(others[0])->values.size(), 1U) << "a probability of 0 isn't a missing one";
    EXPECT_TRUE(again.findRelation(others[1])->values.empty());
}

struct Broken {
    std::string name;
    std::string text;
    std::string place;
};

void PrintTo(const Broken& broken, std::ostream* stream) {
    *stream << broken.name;
}

class BrokenRepositoryDocument : public testing::TestWithParam<Broken> {};

TEST_P(BrokenRepositoryDocument, IsRefusedWithItsPlaceAndChangesNothing) {
    Repository repository;
    ASSERT_TRUE(readRepositoryDocument(
        documentOf(
            R"({"name": "Kept", "type": "Business process", "objects": [{"name": "K", "class": "Task"}]})"),
        "kept.json", repository));
    const std::string before = writeRepositoryDocument(repository);
    const auto read = readRepositoryDocument(GetParam().text, "a.json", repository);
    ASSERT_FALSE(read);
    EXPECT_TRUE(read.error().text.starts_with("a.json:" + GetParam().place)) << read.error().text;
    EXPECT_EQ(writeRepositoryDocument(repository), before);
}

const std::string TwoTasks = R"("objects": [{"name": "A", "class": "Task"}, {"name": "B", "class": "Task"}])";

INSTANTIATE_TEST_SUITE_P(
    Faults, BrokenRepositoryDocument,
    testing::Values(
        Broken{"Nothing", "", "1:1: not a JSON text"},
        Broken{"Truncated", "{\n  \"format\": \"mero-rep", "2:"},
        Broken{"TrailingText", modelOf("") + "\n x",
               "2:2: not a JSON text: syntax error while parsing value"},
        Broken{"BadUtf8", "{\"format\": \"\xff\"}", "1:"},
        Broken{"NumberTooLarge",
               modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Costs": 1e999}}])"),
               "1:"},
        Broken{"ZeroCharacter", modelOf(R"("objects": [{"name": "A\u0000B", "class": "Task"}])"),
               " zero character in a text in models[0].objects[0]"},
        Broken{"DeepNesting", std::string(100000, '['), " nested deeper"},
        Broken{"DeepObjects", modelOf("\"objects\": " + std::string(5000, '[')), " nested deeper"},
        Broken{"NotAnObject", "[]", " an object is expected"},
        Broken{"OtherFormat", R"({"format": "x", "version": 1})", " format: "},
        Broken{"NoFormat", R"({"version": 1, "models": []})", " the key \"format\" is missing"},
        Broken{"OtherVersion", R"({"format": "mero-repository", "version": 2})", " version: "},
        Broken{"UnknownKey", modelOf(R"("colour": 1)"), " models[0]: unknown key \"colour\""},
        Broken{"DoubleKey", modelOf(R"("name": "Other")"), " double key \"name\" in models[0]"},
        Broken{"UnknownType", documentOf(R"({"name": "A", "type": "Tusk"})"),
               " models[0].type: unknown model type"},
        Broken{"ModelTwice", documentOf(R"({"name": "A", "type": "Business process"},
                                           {"name": "A", "type": "Business process"})"),
               " models[1].name: there is already"},
        Broken{"ModelKnownBefore", documentOf(R"({"name": "Kept", "type": "Company map"})"),
               " models[0].name: "},
        Broken{"EmptyName", documentOf(R"({"name": "", "type": "Company map"})"),
               " models[0].name: the name is empty"},
        Broken{"WrongAccess", modelOf(R"("access": "rw")"), " models[0].access: "},
        Broken{"LoadedNoFlag", modelOf(R"("loaded": 1)"), " models[0].loaded: true or false"},
        Broken{"ObjectsNoList", modelOf(R"("objects": {})"), " models[0].objects: a list"},
        Broken{"UnknownClass",
               modelOf(R"("objects": [{"name": "A", "class": "Task"}, {"name": "B", "class": "Tusk"}])"),
               " models[0].objects[1].class: unknown class \"Tusk\""},
        Broken{"ClassOfTheOtherLibrary", modelOf(R"("objects": [{"name": "A", "class": "Worker"}])"),
               " models[0].objects[0].class: unknown class"},
        Broken{"AbstractClass", modelOf(R"("objects": [{"name": "A", "class": "Activity"}])"),
               " models[0].objects[0].class: the class \"Activity\" is abstract"},
        Broken{"AgentAmongObjects", modelOf(R"("objects": [{"name": "A", "class": "Process agent"}])"),
               " models[0].objects[0].class: "},
        Broken{"ObjectAmongAgents", modelOf(R"("agents": [{"name": "A", "class": "Task"}])"),
               " models[0].agents[0].class: "},
        Broken{"ObjectTwice",
               modelOf(R"("objects": [{"name": "A", "class": "Task"}, {"name": "A", "class": "Task"}])"),
               " models[0].objects[1].name: "},
        Broken{"UnknownAttribute",
               modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Weight": 1}}])"),
               " models[0].objects[0].attributes.\"Weight\": "},
        Broken{"NameAsAttribute",
               modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Name": "B"}}])"),
               " models[0].objects[0].attributes.\"Name\": "},
        Broken{"FractionForInteger",
               modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Number": 1.5}}])"),
               " models[0].objects[0].attributes.\"Number\": a whole number"},
        Broken{
            "IntegerTooLarge",
            modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Number": 2147483648}}])"),
            " models[0].objects[0].attributes.\"Number\": "},
        Broken{"TextForNumber",
               modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Costs": "1"}}])"),
               " models[0].objects[0].attributes.\"Costs\": a number"},
        Broken{"NullForText",
               modelOf(R"("objects": [{"name": "A", "class": "Task", "attributes": {"Performer": null}}])"),
               " models[0].objects[0].attributes.\"Performer\": a text"},
        Broken{
            "NoTime",
            modelOf(
                R"("objects": [{"name": "A", "class": "Task", "attributes": {"Execution time": "soon"}}])"),
            " models[0].objects[0].attributes.\"Execution time\": "},
        Broken{
            "NoWordOfTheEnumeration",
            modelOf(
                R"("objects": [{"name": "A", "class": "Start event", "attributes": {"Time period": "weekly"}}])"),
            " models[0].objects[0].attributes.\"Time period\": "},
        Broken{"DanglingReference", modelOf(R"("objects": [{"name": "A", "class": "Call activity",
                                       "attributes": {"Referenced model": "Nowhere"}}])"),
               " models[0].objects[0].attributes.\"Referenced model\": there is no model \"Nowhere\""},
        Broken{"UnknownRelation",
               modelOf(TwoTasks + R"(, "relations": [{"class": "Flow", "from": "A", "to": "B"}])"),
               " models[0].relations[0].class: "},
        Broken{"DanglingEnd",
               modelOf(TwoTasks + R"(, "relations": [{"class": "Sequence flow", "from": "A", "to": "C"}])"),
               " models[0].relations[0].to: there is no object \"C\""},
        Broken{"EndInAMissingModel",
               modelOf(TwoTasks + R"(, "relations": [{"class": "Sequence flow", "from": "A",
                                                      "to": {"model": "Gone", "name": "B"}}])"),
               " models[0].relations[0].to.model: there is no model"},
        Broken{"AmbiguousEnd",
               modelOf(R"("objects": [{"name": "A", "class": "Task"}, {"name": "A", "class": "End event"}],
                          "relations": [{"class": "Sequence flow", "from": "A", "to": "A"}])"),
               " models[0].relations[0].from: several objects bear the name"},
        Broken{"RelationWithoutEnd",
               modelOf(TwoTasks + R"(, "relations": [{"class": "Sequence flow", "from": "A"}])"),
               " models[0].relations[0]: the key \"to\" is missing"}),
    [](const auto& broken) { return broken.param.name; });

TEST(RepositoryDocument, RelationsLeadToOtherModels) {
    Repository repository;
    const auto read = readRepositoryDocument(documentOf(R"({"name": "Staff", "type": "Working environment",
                       "objects": [{"name": "Ann", "class": "Worker"}, {"name": "Boss", "class": "Role"},
                                   {"name": "Boss", "class": "Worker"}],
                       "relations": [{"class": "Has role", "from": "Ann", "to": {"class": "Role", "name": "Boss"}},
                                     {"class": "Has role", "from": "Ann", "to": {"model": "More", "name": "Clerk"}}]},
                      {"name": "More", "type": "Working environment", "objects": [{"name": "Clerk", "class": "Role"}]})"),
                                             "a.json", repository);
    ASSERT_TRUE(read) << read.error().text;
    const std::string written = writeRepositoryDocument(repository);
    EXPECT_NE(written.find("\"model\": \"More\""), std::string::npos);
    Repository again;
    ASSERT_TRUE(readRepositoryDocument(written, "again", again));
    EXPECT_EQ(writeRepositoryDocument(again), written);
}

}  // namespace

}  // namespace mero
