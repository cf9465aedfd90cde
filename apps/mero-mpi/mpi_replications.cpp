#include "apps/mero-mpi/mpi_replications.h"

#include <chrono>
#include <mpi.h>
#include <optional>
#include <thread>

#include "apps/mero/byte_stream.h"

namespace mero {

namespace {

constexpr std::chrono::milliseconds PollPause{1};

/// Kinds of message, as tags.
enum Message : int {
    MessageOutcome = 1,  ///< to rank 0: one finished replication
    MessageDone = 2,     ///< to rank 0: nothing follows
    MessageEnd = 3,      ///< from rank 0: leave, whatever is left to do
    MessageRefusal = 4,  ///< to rank 0: why the rank can't begin
};

void send(const std::string& bytes, int target, Message message) {
    MPI_Send(bytes.data(), static_cast<int>(bytes.size()), MPI_CHAR, target, message, MPI_COMM_WORLD);
}

/// What has been announced by `status`.
std::string receive(const MPI_Status& status) {
    int length = 0;
    MPI_Get_count(&status, MPI_CHAR, &length);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    MPI_Recv(bytes.data(), length, MPI_CHAR, status.MPI_SOURCE, status.MPI_TAG, MPI_COMM_WORLD,
             MPI_STATUS_IGNORE);
    return bytes;
}

/// The next message if one has arrived.
std::optional<MPI_Status> poll(int source, int tag) {
    int isThere = 0;
    MPI_Status status;
    MPI_Iprobe(source, tag, MPI_COMM_WORLD, &isThere, &status);
    return isThere != 0 ? std::optional<MPI_Status>(status) : std::nullopt;
}

std::string bytesOf(const FinishedReplication& finished) {
    ByteWriter writer;
    writer.number(finished.number);
    writer.number(finished.outcome ? 1 : 0);
    writer.text(finished.outcome ? finished.outcome.value() : finished.outcome.error().text);
    return std::move(writer.bytes());
}

FinishedReplication readFinished(const std::string& bytes) {
    ByteReader reader(bytes);
    const std::uint64_t number = reader.number();
    const bool isGood = reader.number() != 0;
    std::string text = reader.text();
    return {number, isGood ? Result<std::string>(std::move(text)) : Result<std::string>(Error{text})};
}

/// What rank 0 knows of the others.
class Helpers {
public:
    Helpers(const ReplicationOrder& replications, int count) : order(replications), open(count), all(count) {}

    /// Takes all messages that have arrived; false if there were none.
    bool takeMessages() {
        bool any = false;
        while (const auto status = poll(MPI_ANY_SOURCE, MPI_ANY_TAG)) {
            any = true;
            const std::string bytes = receive(*status);
            if (status->MPI_TAG == MessageDone) {
                --open;
            } else {
                take(readFinished(bytes));
            }
        }
        return any;
    }

    bool take(const FinishedReplication& finished) {
        if (!isEnded && !order.take(finished)) {
            end();
        }
        return !isEnded;
    }

    /// False if the work is to be ended.
    bool goesOn() {
        if (!isEnded && !order.goesOn()) {
            end();
        }
        return !isEnded;
    }

    void end() {
        for (int rank = 1; rank <= all && !isEnded; ++rank) {
            send({}, rank, MessageEnd);
        }
        isEnded = true;
    }

    [[nodiscard]] bool areDone() const { return open == 0; }

private:
    const ReplicationOrder& order;
    int open;  ///< ranks that may still send
    int all;
    bool isEnded = false;
};

}  // namespace

MpiReplications::MpiReplications() {
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &size);
}

Result<void> MpiReplications::meet(bool canBegin, const std::string& reason) {
    struct {
        int good;
        int rank;
    } mine{canBegin ? 1 : 0, rank}, worst{};
    met = true;
    MPI_Allreduce(&mine, &worst, 1, MPI_2INT, MPI_MINLOC, MPI_COMM_WORLD);
    if (worst.good != 0) {
        return {};
    }
    std::string told = reason;
    if (worst.rank != 0 && worst.rank == rank) {
        send(reason, 0, MessageRefusal);
    } else if (worst.rank != 0 && rank == 0) {
        MPI_Status status;
        MPI_Probe(worst.rank, MessageRefusal, MPI_COMM_WORLD, &status);
        told = receive(status);
    }
    return Error{"rank " + std::to_string(worst.rank) + " can't begin: " + told};
}

void MpiReplications::refuse(const std::string& reason) {
    // The caller has told its own reason already.
    static_cast<void>(meet(false, reason));
}

Result<bool> MpiReplications::run(const ReplicationOrder& order) {
    if (const Result<void> ready = meet(true, {}); !ready) {
        return ready.error();
    }
    if (rank == 0) {
        gather(order);
    } else {
        help(order);
    }
    return rank == 0;
}

void MpiReplications::gather(const ReplicationOrder& order) {
    Helpers helpers(order, size - 1);
    ReplicationOrder share = order;
    share.longestWait = PollPause;
    share.take = [&](const FinishedReplication& finished) { return helpers.take(finished); };
    share.goesOn = [&] {
        helpers.takeMessages();
        return helpers.goesOn();
    };
    runShare(share, 1, static_cast<std::uint64_t>(size));
    while (!helpers.areDone()) {
        helpers.goesOn();
        if (!helpers.takeMessages()) {
            std::this_thread::sleep_for(PollPause);
        }
    }
    helpers.end();
}

void MpiReplications::help(const ReplicationOrder& order) const {
    bool isEnded = false;
    const auto listen = [&] {
        if (const auto status = isEnded ? std::nullopt : poll(0, MessageEnd)) {
            receive(*status);
            isEnded = true;
        }
        return !isEnded;
    };
    ReplicationOrder share = order;
    share.longestWait = PollPause;
    share.take = [](const FinishedReplication& finished) {
        send(bytesOf(finished), 0, MessageOutcome);
        return true;
    };
    share.goesOn = listen;
    runShare(share, static_cast<std::uint64_t>(rank) + 1, static_cast<std::uint64_t>(size));
    send({}, 0, MessageDone);
    while (listen()) {
        std::this_thread::sleep_for(PollPause);
    }
}

}  // namespace mero
