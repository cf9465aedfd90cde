#include <cctype>
#include <gtest/gtest.h>
#include <iostream>
#include <nlohmann/json.hpp>

#include "tests/apps/mero/program_run.h"
#include "tests/system/golden_examples.h"
#include "tests/system/json_comparison.h"

namespace mero::test {

namespace {

class GoldenTest : public testing::TestWithParam<GoldenExample> {};

TEST_P(GoldenTest, GivesTheExpectedResults) {
    const ProgramRun run = runProgram(GetParam().arguments());
    ASSERT_EQ(run.status, 0) << run.err;
    const auto expected = nlohmann::json::parse(readFile(GetParam().folder + "/expected.json"));
    for (const std::string& difference : differences(expected, nlohmann::json::parse(run.out))) {
        ADD_FAILURE() << difference;
    }
}

/// "01-frequency-means" as a test's name: "Example01FrequencyMeans".
std::string testName(const testing::TestParamInfo<GoldenExample>& example) {
    std::string name = "Example";
    bool startsWord = true;
    for (const char character : example.param.name) {
        if (std::isalnum(static_cast<unsigned char>(character)) == 0) {
            startsWord = true;
            continue;
        }
        name +=
            startsWord ? static_cast<char>(std::toupper(static_cast<unsigned char>(character))) : character;
        startsWord = false;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Worked, GoldenTest, testing::ValuesIn(goldenExamples()), testName);

TEST(GoldenExamplesTest, RunsAllExamplesOfTheMeasuresThatAreMade) {
    const std::size_t all = goldenExamples(true).size();
    const std::size_t run = goldenExamples().size();
    std::cout << run << " of " << all << " worked examples need only the measures that are made\n";
    EXPECT_GE(run, 6U);
    EXPECT_LE(run, all);
}

/// Every example has to be refused or played without a crash, whatever measures it asks for.
TEST(GoldenExamplesTest, PlaysEveryExampleToItsEnd) {
    for (const GoldenExample& example : goldenExamples(true)) {
        EXPECT_EQ(runProgram(example.arguments()).status, 0) << example.name;
    }
}

TEST(JsonComparisonTest, ToleratesOnlyTinyDifferencesOfNumbers) {
    const auto differ = [](const char* left, const char* right) {
        return !differences(nlohmann::json::parse(left), nlohmann::json::parse(right)).empty();
    };
    EXPECT_FALSE(differ("{\"a\":[1,2.0]}", "{\"a\":[1.0000000001,2]}"));
    EXPECT_FALSE(differ("[5e-310]", "[0]"));
    EXPECT_TRUE(differ("[1]", "[1.000001]"));
    EXPECT_TRUE(differ("[1,2]", "[1]"));
    EXPECT_TRUE(differ("{\"a\":null}", "{}"));
    EXPECT_TRUE(differ("{}", "{\"a\":null}"));
    EXPECT_TRUE(differ("[\"1\"]", "[1]"));
}

}  // namespace

}  // namespace mero::test
