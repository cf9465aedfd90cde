#include "platform/interchange/result_document.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

#include "tests/platform/interchange/test_files.h"

namespace mero {

namespace {

TEST(ResultDocument, WorkedExamplesAreWrittenAsTheyWereRead) {
    for (const auto& example : test::contentOf(test::sourceFile("tests/system/golden"))) {
        const std::string text = test::readFile(example / "expected.json");
        const auto read = readResultDocument(text, "expected.json");
        ASSERT_TRUE(read) << example << ": " << read.error().text;
        EXPECT_EQ(nlohmann::json::parse(writeResultDocument(read.value())), nlohmann::json::parse(text))
            << example;
    }
}

ResultItem item(std::vector<ResultName> path, double value) {
    return {std::move(path), value, 0};
}

ResultDocument mixedUp() {
    ResultSetDocument set;
    set.resultKind = 2;
    set.results = {{{"b", 1},
                    "M",
                    {item({{"M", 1}, {"c", 5}}, 1.0), item({{"M", 1}, {"b", 9}, {"a", 1}}, 2.0),
                     item({{"M", 1}, {"b", 3}, {"a", 2}}, 3.0), item({{"M", 1}}, 4.0)}},
                   {{"a", 7}, "M", {item({}, 0.1)}},
                   {{"a", 3}, "M", {item({}, std::numeric_limits<double>::infinity())}},
                   {{"z", 2}, "", {}},
                   {{"\xC3\xA4", 4}, "", {item({{"say \"hi\", you", 1}}, 5e-324)}}};
    ResultDocument document;
    document.agents = {
        {{"Z", 1}, "A", 1, 1.0, {{"sub", "FREQUENCY", 5, 2, set}, {"first", "STRAIN", 1, 0, {}}}},
        {{"Y", 3}, "B", 1, 1.0, {}},
        {{"Y", 2}, "A", 1, 1.0, {}}};
    return document;
}

TEST(ResultDocument, ListsAreSortedByBytesThenByIdentifier) {
    ResultDocument document = mixedUp();
    sortResults(document);
    EXPECT_EQ(document.agents[0].name.text, "Y");
    EXPECT_EQ(document.agents[0].model, "A");
    EXPECT_EQ(document.agents[1].name.text, "Z");
    EXPECT_EQ(document.agents[1].subAgents[0].name, "sub") << "order of the definition";
    const auto& results = document.agents[1].subAgents[0].resultSet->results;
    std::vector<MeroId> order;
    for (const ResultOfObject& result : results) {
        order.push_back(result.object.id);
    }
    EXPECT_EQ(order, (std::vector<MeroId>{2, 4, 3, 7, 1}));
    std::vector<double> values;
    for (const ResultItem& entry : results.back().items) {
        values.push_back(entry.value);
    }
    EXPECT_EQ(values, (std::vector<double>{4.0, 3.0, 2.0, 1.0}));
}

TEST(ResultDocument, NumbersReadBackToTheSameBits) {
    const auto read = readResultDocument(writeResultDocument(mixedUp()), "r.json");
    ASSERT_TRUE(read) << read.error().text;
    const auto& subAgents = read.value().agents[1].subAgents;
    EXPECT_FALSE(subAgents[1].resultSet.has_value());
    EXPECT_FALSE(subAgents[0].resultSet->history.has_value());
    const auto& results = subAgents[0].resultSet->results;
    EXPECT_EQ(results[1].items[0].value, 5e-324);
    EXPECT_TRUE(std::isnan(results[2].items[0].value)) << "not finite, so null";
    EXPECT_EQ(results[3].items[0].value, 0.1);
}

TEST(ResultDocument, BrokenTextsAreRefusedWithTheirPlace) {
    const std::string good = writeResultDocument(mixedUp());
    const auto broken = [&good](const std::string& from, const std::string& to) {
        std::string text = good;
        text.replace(text.find(from), from.size(), to);
        const auto read = readResultDocument(text, "r.json");
        return read ? std::string("accepted") : read.error().text;
    };
    EXPECT_EQ(broken("mero-results", "other"),
              "r.json: format: the format is \"other\", not \"mero-results\"");
    EXPECT_EQ(broken("\"state\": 5", "\"state\": \"5\""),
              "r.json: agents[1].subAgents[0].state: a whole number is expected here, not a text");
    EXPECT_EQ(broken("\"divisor\"", "\"divider\"").substr(0, 69),
              "r.json: agents[1].subAgents[0].resultSet.results[1].items[0]: unknown");
    EXPECT_FALSE(readResultDocument(good.substr(0, good.size() / 2), "r.json"));
}

}  // namespace

}  // namespace mero
