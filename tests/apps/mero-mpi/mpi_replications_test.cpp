#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

/// Lets the launcher run as any user, on this machine alone, with more ranks than processors. What the
/// library of MPI never frees is no leak of ours.
void setLauncherEnvironment() {
    for (const auto& [name, value] : std::initializer_list<std::pair<const char*, const char*>>{
             {"OMPI_ALLOW_RUN_AS_ROOT", "1"},
             {"OMPI_ALLOW_RUN_AS_ROOT_CONFIRM", "1"},
             {"OMPI_MCA_rmaps_base_oversubscribe", "1"},
             {"OMPI_MCA_hwloc_base_binding_policy", "none"},
             {"OMPI_MCA_btl", "self,vader"},
             {"OMPI_MCA_btl_vader_single_copy_mechanism", "none"},
             {"OMPI_MCA_plm", "isolated"},
             {"OMPI_MCA_oob_tcp_if_include", "lo"},
             {"LSAN_OPTIONS", "detect_leaks=0"}}) {
        ::setenv(name, value, 0);
    }
}

class MpiReplicationsTest : public testing::Test {
protected:
    void SetUp() override {
        if (::access(MERO_MPI_LAUNCHER, X_OK) != 0) {
            GTEST_SKIP() << "the launcher of MPI jobs isn't there: " << MERO_MPI_LAUNCHER;
        }
        setLauncherEnvironment();
        writeFile(document, orderDocument());
    }

    /// `program` is a shell command, by default that of each rank.
    [[nodiscard]] ProgramRun launch(int ranks, const std::string& arguments,
                                    const std::string& program = MERO_MPI_PROGRAM) const {
        const std::string out = folder / "out";
        const std::string err = folder / "err";
        const std::string command = std::string(MERO_MPI_LAUNCHER) + " -n " + std::to_string(ranks) + " " +
                                    program + " " + arguments + " >" + out + " 2>" + err + " </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(out), readFile(err)};
    }

    TemporaryFolder folder;
    std::string document = folder / "order.json";
};

TEST_F(MpiReplicationsTest, RanksGiveTheBytesOfOneMachine) {
    for (const std::string format : {"table", "json"}) {
        const std::vector<std::string> words{
            "simulate", document, "--models", "Order",     "--instances", "50",   "--replications",
            "11",       "--seed", "5",        "--results", format,        "--sum"};
        std::string arguments;
        for (const std::string& word : words) {
            arguments += word + ' ';
        }
        const ProgramRun alone = runProgram(words);
        ASSERT_EQ(alone.status, 0) << alone.err;
        for (const int ranks : {1, 4}) {
            const ProgramRun shared = launch(ranks, arguments);
            EXPECT_EQ(shared.status, 0) << shared.err;
            EXPECT_EQ(shared.out, alone.out) << ranks;
            EXPECT_NE(shared.err.find(alone.err), std::string::npos) << shared.err;
        }
    }
}

TEST_F(MpiReplicationsTest, ARankThatCannotBeginEndsTheJobWithItsReason) {
    const ProgramRun usage = launch(2, "simulate " + document + " --models Order --instances 5");
    EXPECT_EQ(usage.status, 2) << usage.err;
    EXPECT_NE(usage.err.find("--replications is missing"), std::string::npos) << usage.err;
    // Rank 1 finds no repository where it looks.
    const std::string split = "sh -c 'test \"$OMPI_COMM_WORLD_RANK\" = 1 && set -- missing.json || set -- " +
                              document + "; exec " + MERO_MPI_PROGRAM +
                              " simulate \"$1\" --models Order --instances 5 --replications 4'";
    const ProgramRun missing = launch(3, "", split);
    EXPECT_EQ(missing.status, 1) << missing.err;
    EXPECT_NE(missing.err.find("rank 1 can't begin: mero: missing.json"), std::string::npos) << missing.err;
    EXPECT_EQ(missing.out, "");
}

TEST_F(MpiReplicationsTest, ADeadReplicationOfAnotherRankIsToldAndEndsAllRanks) {
    const ProgramRun run = launch(3, "", MERO_MPI_FAILING);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("3: 10485760\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("2: its process was ended by signal 9"), std::string::npos) << run.out;
    EXPECT_TRUE(run.out.ends_with("ended\n")) << run.out;
}

}  // namespace

}  // namespace mero::test
