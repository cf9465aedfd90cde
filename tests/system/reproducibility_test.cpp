#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <locale>
#include <regex>

#include "tests/apps/mero/program_run.h"
#include "tests/system/golden_examples.h"

namespace mero::test {

namespace {

class DecimalComma : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// A decimal comma in all streams, a German C locale where the machine has one, and a time zone a quarter of
/// an hour off, as long as it lives.
class ForeignPlace {
public:
    ForeignPlace() : before(std::locale::global(std::locale(std::locale::classic(), new DecimalComma))) {
        std::setlocale(LC_ALL, "de_DE.UTF-8");
        ::setenv("TZ", "Asia/Kathmandu", 1);
        ::tzset();
    }
    ForeignPlace(const ForeignPlace&) = delete;
    ForeignPlace& operator=(const ForeignPlace&) = delete;
    ~ForeignPlace() {
        std::locale::global(before);
        std::setlocale(LC_ALL, "C");
        ::unsetenv("TZ");
        ::tzset();
    }

private:
    std::locale before;
};

std::string fingerprintOf(const std::string& messages) {
    std::smatch found;
    return std::regex_search(messages, found, std::regex("fingerprint ([0-9a-f]{16})")) ? found[1].str() : "";
}

class ReproducibilityTest : public testing::Test {
protected:
    ReproducibilityTest() { writeFile(document, orderDocument()); }

    [[nodiscard]] ProgramRun simulate(const std::string& seed, std::vector<std::string> further = {}) const {
        std::vector<std::string> words{"simulate",    document, "--models", "Order",
                                       "--instances", "500",    "--seed",   seed};
        words.insert(words.end(), further.begin(), further.end());
        return runProgram(words);
    }

    TemporaryFolder folder;
    std::string document = folder / "order.json";
};

TEST_F(ReproducibilityTest, TheSameSeedGivesTheSameOutput) {
    const ProgramRun first = simulate("7", {"--results", "json", "--record-events", folder / "first.csv"});
    const ProgramRun second = simulate("7", {"--results", "json", "--record-events", folder / "second.csv"});
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(first.out, second.out);
    EXPECT_EQ(fingerprintOf(first.err), fingerprintOf(second.err));
    EXPECT_EQ(readFile(folder / "first.csv"), readFile(folder / "second.csv"));
    EXPECT_NE(fingerprintOf(simulate("8").err), fingerprintOf(first.err));
}

TEST_F(ReproducibilityTest, ARecordedRunReplaysToTheSameBytes) {
    const std::string events = folder / "events.csv";
    const std::string again = folder / "again.csv";
    const ProgramRun simulated = simulate("7", {"--results", "json", "--record-events", events});
    const ProgramRun replayed = runProgram({"replay", document, "--events", events, "--models", "Order",
                                            "--results", "json", "--record-events", again});
    ASSERT_EQ(replayed.status, 0) << replayed.err;
    EXPECT_EQ(simulated.out, replayed.out);
    EXPECT_EQ(readFile(events), readFile(again));
}

TEST_F(ReproducibilityTest, ObservingChangesNothing) {
    const std::string watched = fingerprintOf(simulate("7").err);
    ASSERT_EQ(runProgram({"agents", document, "remove", "--name", "Counts"}).status, 0);
    const ProgramRun unwatched = simulate("7");
    ASSERT_EQ(unwatched.status, 0) << unwatched.err;
    EXPECT_FALSE(watched.empty());
    EXPECT_EQ(fingerprintOf(unwatched.err), watched);
}

TEST_F(ReproducibilityTest, LocaleAndTimeZoneChangeNothingInFiles) {
    const auto filesOf = [&](const std::string& name) {
        std::string all;
        const std::string events = folder / (name + ".csv");
        all += simulate("7", {"--results", "json", "--record-events", events}).out;
        all += simulate("7", {"--results", "csv"}).out;
        all += readFile(events);
        for (const GoldenExample& example : goldenExamples()) {
            all += runProgram(example.arguments()).out;
        }
        const std::string imported = folder / (name + ".json");
        runProgram({"import", imported, sourceFile("examples/PurchasingExample.bpmn"), "--parameters",
                    sourceFile("examples/PurchasingExample.json")});
        return all + readFile(imported);
    };
    const std::string home = filesOf("home");
    const ForeignPlace abroad;
    EXPECT_EQ(filesOf("abroad"), home);
}

}  // namespace

}  // namespace mero::test
