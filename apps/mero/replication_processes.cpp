#include "apps/mero/replication_processes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace mero {

namespace {

constexpr int StatusNoMemory = 3;
constexpr int StatusNotWritten = 4;

Error systemError(const std::string& what, int code) {
    return Error{what + ": " + std::generic_category().message(code)};
}

bool writeAll(int descriptor, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(descriptor, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

/// The life of a process for one replication. The copied streams and files belong to the first process:
/// nothing of it is flushed or closed here.
[[noreturn]] void work(const ReplicationProcesses::Work& replication, std::uint64_t number, int target,
                       pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(EXIT_FAILURE);
    }
    std::signal(SIGINT, SIG_IGN);  // the first process decides what an interruption means
    int status = EXIT_SUCCESS;
    try {
        if (!writeAll(target, replication(number))) {
            status = StatusNotWritten;
        }
    } catch (const std::bad_alloc&) {
        status = StatusNoMemory;
    }
    ::_exit(status);
}

/// How the process ended, in the user's words; good if it did its work.
Result<void> judge(int status) {
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        return Error{"its process was ended by signal " + std::to_string(signal) + " (" +
                     ::strsignal(signal) + ")"};
    }
    switch (WEXITSTATUS(status)) {
        case EXIT_SUCCESS:
            return {};
        case StatusNoMemory:
            return Error{"not enough memory"};
        default:
            return Error{"its process ended with status " + std::to_string(WEXITSTATUS(status))};
    }
}

}  // namespace

struct ReplicationProcesses::Process {
    Process(std::uint64_t replication, pid_t processId, int outcomeSource)
        : number(replication), id(processId), source(outcomeSource) {}
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() {
        ::close(source);
        if (!isReaped) {
            ::kill(id, SIGKILL);
            reap();
        }
    }

    /// Takes what has arrived; false at the end.
    bool read() {
        constexpr std::size_t PieceSize = 1 << 16;
        std::array<char, PieceSize> piece{};
        const ssize_t count = ::read(source, piece.data(), piece.size());
        if (count > 0) {
            bytes.append(piece.data(), static_cast<std::size_t>(count));
        }
        return count > 0 || (count < 0 && errno == EINTR);
    }

    int reap() {
        int status = 0;
        while (::waitpid(id, &status, 0) < 0 && errno == EINTR) {
        }
        isReaped = true;
        return status;
    }

    FinishedReplication finish() {
        const Result<void> ended = judge(reap());
        return {number, ended ? Result<std::string>(std::move(bytes)) : Result<std::string>(ended.error())};
    }

    std::uint64_t number;
    pid_t id;
    int source;
    std::string bytes;
    bool isReaped = false;
};

ReplicationProcesses::ReplicationProcesses(std::size_t mostAtOnce, Work replicationWork)
    : limit(std::max<std::size_t>(mostAtOnce, 1)), work(std::move(replicationWork)) {}

ReplicationProcesses::~ReplicationProcesses() = default;

Result<void> ReplicationProcesses::start(std::uint64_t number) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return systemError("no pipe to its process", errno);
    }
    const pid_t parent = ::getpid();
    const pid_t id = ::fork();
    if (id == 0) {
        ::close(ends[0]);
        mero::work(work, number, ends[1], parent);
    }
    const int reason = errno;
    ::close(ends[1]);
    if (id < 0) {
        ::close(ends[0]);
        return systemError("no process for it", reason);
    }
    running.push_back(std::make_unique<Process>(number, id, ends[0]));
    return {};
}

std::vector<FinishedReplication> ReplicationProcesses::wait(std::chrono::milliseconds most) {
    std::vector<pollfd> watched;
    for (const auto& process : running) {
        watched.push_back({process->source, POLLIN, 0});
    }
    std::vector<FinishedReplication> finished;
    if (::poll(watched.data(), watched.size(), static_cast<int>(most.count())) <= 0) {
        return finished;
    }
    for (std::size_t index = running.size(); index-- > 0;) {
        if (watched[index].revents != 0 && !running[index]->read()) {
            finished.push_back(running[index]->finish());
            running.erase(running.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }
    return finished;
}

}  // namespace mero
