#include <CLI/CLI.hpp>
#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

#include "component/host/sv_boxes.h"

#include "apps/mero/measured_run.h"
#include "apps/mero/repository_file.h"
#include "platform/engine/trace_replay.h"
#include "platform/interchange/event_trace.h"
#include "platform/toolkit/internal_errors.h"
#include "tests/apps/mero/program_run.h"
#include "tests/component/support/failing_repository.h"
#include "tests/system/golden_examples.h"

namespace mero::test {

namespace {

struct FaultyRun {
    ResultDocument document;
    std::string told;       ///< on the console
    std::string operation;  ///< that failed; empty if none did
};

/// Plays an example while call `failingCall` of the repository fails.
FaultyRun playWithFault(const GoldenExample& example, int failingCall) {
    std::vector<std::string> arguments = example.arguments();
    arguments.erase(arguments.begin());
    std::reverse(arguments.begin(), arguments.end());
    CLI::App program;
    RunOptions options;
    std::string eventsFile;
    options.describe(program);
    program.add_option("--events", eventsFile);
    program.parse(std::move(arguments));

    const auto file = RepositoryFile::open(options.repositoryFile, RepositoryFile::Use::Read);
    Repository& repository = file.value()->repository();
    const auto plan = planRun(options, repository);
    const auto trace = readEventTraceFile(eventsFile, repository, plan.value().environment);

    SV::BoxDesk::GetGlobal().clearRecords();
    InternalErrorLog::GetGlobal().clear();
    std::ostringstream out;
    std::ostringstream err;
    const Console console{out, err};
    MeasuredRun run(repository, options, plan.value(), console);
    FaultyRun faulty;
    {
        const FailingRepository failing(failingCall);
        ControlComponent control;
        run.start(control);
        replayTrace(trace.value(), control);
        faulty.document = run.finish().document;
        faulty.operation = failing.failedOperation();
    }
    faulty.told = err.str();
    return faulty;
}

std::string valuesOf(ResultDocument document) {
    document.simStart = 0;
    document.simEnd = 0;
    document.messages.clear();
    document.internalErrors.clear();
    return writeResultDocument(std::move(document));
}

class RunFaultsTest : public testing::TestWithParam<const char*> {};

/// A measure that silently lacks a part is worse than one that is missing.
TEST_P(RunFaultsTest, FailureOfAnyCallIsToldOrChangesNoValue) {
    const GoldenExample example{GetParam(), sourceFile(std::string("tests/system/golden/") + GetParam())};
    const FaultyRun whole = playWithFault(example, FailingRepository::NoCall);
    const std::string values = valuesOf(whole.document);
    for (int call = 1;; ++call) {
        const FaultyRun faulty = playWithFault(example, call);
        if (faulty.operation.empty()) {
            EXPECT_GT(call, 10);
            break;
        }
        const bool isTold = faulty.document.internalErrors != whole.document.internalErrors ||
                            faulty.document.messages != whole.document.messages ||
                            faulty.document.simStart != whole.document.simStart || faulty.told != whole.told;
        EXPECT_TRUE(isTold || valuesOf(faulty.document) == values)
            << "call " << call << ", " << faulty.operation << ": a value changed and nobody was told";
    }
}

/// Together they have every measure, both kinds of model and all texts of an agent.
INSTANTIATE_TEST_SUITE_P(Worked, RunFaultsTest,
                         testing::Values("04-change-side-by-side", "11-formula-quotient", "14-office-hours",
                                         "28-calls-sum-strain", "35-workers-work-load-cycle-time",
                                         "42-dropped-sum-weighted-cost"));

}  // namespace

}  // namespace mero::test
