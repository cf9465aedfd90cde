#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/apps/mero/program_run.h"

extern char** environ;

namespace mero::test {

namespace {

using Clock = std::chrono::steady_clock;

class ChildProcess {
public:
    explicit ChildProcess(std::vector<std::string> arguments) {
        std::vector<char*> words;
        arguments.insert(arguments.begin(), MERO_PROGRAM);
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        started = ::posix_spawn(&process, MERO_PROGRAM, &actions, nullptr, words.data(), environ) == 0;
        posix_spawn_file_actions_destroy(&actions);
    }

    void kill() const { ::kill(process, SIGKILL); }
    /// True if it ended by itself, with success.
    [[nodiscard]] bool wait() const {
        int status = 0;
        ::waitpid(process, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    bool started = false;

private:
    pid_t process = 0;
};

/// A change that is killed again and again.
struct Change {
    std::string name;
    std::string repository;
    int times;
    std::vector<std::string> command;  ///< "REPO" stands for the repository

    friend void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }
};

class KillTest : public testing::TestWithParam<Change> {
protected:
    KillTest() {
        writeFile(folder / "order.json", orderDocument());
        repository = folder / ("work/" + GetParam().repository);
        std::filesystem::create_directory(folder / "work");
        restore();
    }

    /// The repository before the change, and nothing beside it.
    void restore() const {
        std::filesystem::remove_all(folder / "work");
        std::filesystem::create_directory(folder / "work");
        ASSERT_EQ(runProgram({"import", repository, folder / "order.json"}).status, 0);
    }

    [[nodiscard]] std::vector<std::string> command() const {
        std::vector<std::string> words = GetParam().command;
        for (std::string& word : words) {
            if (word == "REPO") {
                word = repository;
            }
        }
        return words;
    }

    [[nodiscard]] std::string content() const {
        const ProgramRun run = runProgram({"export", repository, "-"});
        EXPECT_EQ(run.status, 0) << run.err;
        return run.out;
    }

    TemporaryFolder folder;
    std::string repository;
};

TEST_P(KillTest, LeavesTheOldStateOrTheNew) {
    const std::string before = content();
    const auto begin = Clock::now();
    const ChildProcess whole(command());
    ASSERT_TRUE(whole.started);
    ASSERT_TRUE(whole.wait());
    const std::chrono::duration<double> length = Clock::now() - begin;
    const std::string after = content();
    ASSERT_NE(before, after);

    std::mt19937 random(20260105);
    std::uniform_real_distribution<double> moment(0.0, length.count() * 1.1);
    int changed = 0;
    restore();
    for (int count = 0; count < GetParam().times; ++count) {
        const std::chrono::duration<double> pause(moment(random));
        const ChildProcess child(command());
        ASSERT_TRUE(child.started);
        std::this_thread::sleep_for(pause);
        child.kill();
        (void)child.wait();
        const std::string found = content();
        ASSERT_TRUE(found == before || found == after)
            << "kill " << count << " after " << pause.count() << " s";
        if (found == after) {
            ++changed;
            restore();
        }
    }
    RecordProperty("changed", changed);
    // The change still works on what the last kill left.
    const ChildProcess last(command());
    EXPECT_TRUE(last.wait());
    EXPECT_EQ(content(), after);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, KillTest,
    testing::Values(Change{"ImportIntoADatabase",
                           "r.mero",
                           200,
                           {"import", "REPO", MERO_SOURCE_DIR "/examples/PurchasingExample.bpmn"}},
                    Change{"SetInADatabase",
                           "r.mero",
                           200,
                           {"agents", "REPO", "set", "--name", "Counts", "--info", "changed"}},
                    Change{"SetInADocument",
                           "r.json",
                           100,
                           {"agents", "REPO", "set", "--name", "Counts", "--info", "changed"}}),
    [](const auto& change) { return change.param.name; });

}  // namespace

}  // namespace mero::test
