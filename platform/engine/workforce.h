#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "platform/engine/crew.h"
#include "platform/engine/holders.h"
#include "platform/engine/staff_plan.h"
#include "platform/engine/work_queue.h"

namespace mero {

/// Workers and resources that are contended for on calendar time. A pass gets both at once: of the free ones
/// that its rules name, those who have been free for the longest time; it waits if either is missing. Who
/// becomes free takes the foremost of all passes that he may work on. Between two steps of a run nobody is
/// free who could serve a waiting pass.
class Workforce {
public:
    static constexpr std::uint32_t None = Holders::None;

    struct Grant {
        PoolHandle pass;
        Holders holders;
    };

    /// Everybody whose shift contains time 0 is there.
    explicit Workforce(const StaffPlan& staffPlan);

    [[nodiscard]] const StaffPlan& plan() const { return staff; }
    [[nodiscard]] const Crew& workers() const { return workerCrew; }
    [[nodiscard]] const Crew& resources() const { return resourceCrew; }

    /// Serves the pass at once, or puts it into a queue: then `ticket` is its place there.
    std::optional<Holders> ask(std::uint32_t need, std::int32_t priority, PoolHandle pass,
                               PoolHandle& ticket);
    void withdraw(PoolHandle ticket) { giveUp(ticket.index); }
    /// They serve others by `nextGrant`.
    void release(const Holders& holders);
    /// Serves waiting passes with those who were released or came on shift; nothing when no more can be
    /// served. To be called until then.
    std::optional<Grant> nextGrant();
    /// A pass waits, or is worked on or suspended.
    [[nodiscard]] bool isWanted() const { return waiting + held != 0; }

    /// When the next shift begins or ends.
    [[nodiscard]] double nextBorder() const { return border; }
    /// Crosses all borders at `nextBorder()`. `left` and `returned` get the passes whose worker, or resource,
    /// goes or comes, once for each.
    void crossBorders(std::vector<PoolHandle>& left, std::vector<PoolHandle>& returned);

private:
    struct Ticket {
        std::uint32_t serial = 0;
        PoolHandle pass;
    };
    /// A member of either crew.
    struct Freed {
        bool isWorker;
        std::uint32_t member;
    };
    /// Members of either crew with the same shift.
    struct Shift {
        bool on = false;
        double border = 0.0;
        std::vector<std::uint32_t> workers;
        std::vector<std::uint32_t> resources;
    };

    void crossBorder(const Shift& shift, Crew& crew, bool isWorker, std::vector<PoolHandle>& left,
                     std::vector<PoolHandle>& returned);
    void giveUp(std::uint32_t ticket);
    [[nodiscard]] bool isWaitedIn(std::uint32_t need);
    /// Who would serve the need; nothing if worker or resource is missing.
    [[nodiscard]] std::optional<Holders> freeFor(std::uint32_t need) const;
    /// The need with the foremost pass that the freed one's turn can serve; `None` if there is none.
    [[nodiscard]] std::uint32_t needServedBy(const Freed& candidate);
    Holders hold(const Holders& holders, PoolHandle pass);

    const StaffPlan& staff;
    Crew workerCrew;
    Crew resourceCrew;
    std::vector<WorkQueue> queues;  ///< by need
    std::vector<std::vector<std::uint32_t>> needsOfWorker;
    std::vector<std::vector<std::uint32_t>> needsOfResource;
    std::vector<Shift> shifts;
    double border = std::numeric_limits<double>::infinity();
    Pool<Ticket> tickets;
    std::vector<Freed> freed;
    std::size_t listed = 0;  ///< of `freed`, so many have been listed, and had their turn
    std::size_t served = 0;
    std::uint64_t lastNumber = 0;
    std::uint64_t waiting = 0;  ///< passes
    std::uint64_t held = 0;     ///< workers and resources
};

}  // namespace mero
