#include "platform/engine/workforce.h"

#include <algorithm>

namespace mero {

namespace {

std::vector<std::vector<std::uint32_t>> needsByMember(const StaffPlan& plan, const CrewPlan& crew,
                                                      std::uint32_t StaffPlan::Need::*group) {
    std::vector<std::vector<std::uint32_t>> needs(crew.members.size());
    for (std::uint32_t need = 0; need < plan.needs().size(); ++need) {
        if (plan.needs()[need].*group != StaffPlan::None) {
            for (const std::uint32_t member : crew.groups[plan.needs()[need].*group]) {
                needs[member].push_back(need);
            }
        }
    }
    return needs;
}

}  // namespace

Workforce::Workforce(const StaffPlan& staffPlan)
    : staff(staffPlan),
      workerCrew(staffPlan.workers()),
      resourceCrew(staffPlan.resources()),
      queues(staffPlan.needs().size()),
      needsOfWorker(needsByMember(staffPlan, staffPlan.workers(), &StaffPlan::Need::workerGroup)),
      needsOfResource(needsByMember(staffPlan, staffPlan.resources(), &StaffPlan::Need::resourceGroup)),
      shifts(staffPlan.shifts().size()) {
    for (std::uint32_t worker = 0; worker < workerCrew.size(); ++worker) {
        shifts[staff.workers().members[worker].shift].workers.push_back(worker);
    }
    for (std::uint32_t resource = 0; resource < resourceCrew.size(); ++resource) {
        shifts[staff.resources().members[resource].shift].resources.push_back(resource);
    }
    for (std::size_t index = 0; index < shifts.size(); ++index) {
        Shift& shift = shifts[index];
        shift.on = staff.shifts()[index].isWorking(0.0);
        shift.border = staff.shifts()[index].nextBorder(0.0);
        border = std::min(border, shift.border);
    }
    for (std::uint32_t worker = 0; worker < workerCrew.size(); ++worker) {
        workerCrew.setOnShift(worker, shifts[staff.workers().members[worker].shift].on);
        workerCrew.list(worker);
    }
    for (std::uint32_t resource = 0; resource < resourceCrew.size(); ++resource) {
        resourceCrew.setOnShift(resource, shifts[staff.resources().members[resource].shift].on);
        resourceCrew.list(resource);
    }
}

std::optional<Holders> Workforce::ask(std::uint32_t need, std::int32_t priority, PoolHandle pass,
                                      PoolHandle& ticket) {
    // Behind a pass that waits for the same, nobody can be served.
    if (!isWaitedIn(need)) {
        if (const auto holders = freeFor(need)) {
            return hold(*holders, pass);
        }
    }
    const std::uint32_t index = tickets.take();
    tickets[index].pass = pass;
    ticket = tickets.handle(index);
    queues[need].push({priority, ++lastNumber, ticket});
    ++waiting;
    return std::nullopt;
}

void Workforce::giveUp(std::uint32_t ticket) {
    tickets.giveBack(ticket);
    --waiting;
}

bool Workforce::isWaitedIn(std::uint32_t need) {
    WorkQueue& queue = queues[need];
    while (!queue.empty() && !tickets.holds(queue.front().ticket)) {
        queue.pop();
    }
    return !queue.empty();
}

std::optional<Holders> Workforce::freeFor(std::uint32_t need) const {
    const auto& [workerGroup, resourceGroup] = staff.needs()[need];
    Holders holders;
    if (workerGroup != None) {
        holders.worker = workerCrew.firstFree(workerGroup);
        if (holders.worker == None) {
            return std::nullopt;
        }
    }
    if (resourceGroup != None) {
        holders.resource = resourceCrew.firstFree(resourceGroup);
        if (holders.resource == None) {
            return std::nullopt;
        }
    }
    return holders;
}

Holders Workforce::hold(const Holders& holders, PoolHandle pass) {
    if (holders.worker != None) {
        workerCrew.hold(holders.worker, pass);
        ++held;
    }
    if (holders.resource != None) {
        resourceCrew.hold(holders.resource, pass);
        ++held;
    }
    return holders;
}

void Workforce::release(const Holders& holders) {
    if (holders.worker != None) {
        workerCrew.release(holders.worker);
        --held;
        freed.push_back({true, holders.worker});
    }
    if (holders.resource != None) {
        resourceCrew.release(holders.resource);
        --held;
        freed.push_back({false, holders.resource});
    }
}

std::uint32_t Workforce::needServedBy(const Freed& candidate) {
    std::uint32_t chosen = None;
    if (!(candidate.isWorker ? workerCrew : resourceCrew).isFree(candidate.member)) {
        return chosen;
    }
    for (const std::uint32_t need :
         (candidate.isWorker ? needsOfWorker : needsOfResource)[candidate.member]) {
        if (isWaitedIn(need) && freeFor(need) &&
            (chosen == None || queues[need].front().goesBefore(queues[chosen].front()))) {
            chosen = need;
        }
    }
    return chosen;
}

/// Who has been free for longer may serve the pass in place of the freed one, whose turn then goes on.
std::optional<Workforce::Grant> Workforce::nextGrant() {
    for (; listed < freed.size(); ++listed) {
        (freed[listed].isWorker ? workerCrew : resourceCrew).list(freed[listed].member);
    }
    for (; served < freed.size(); ++served) {
        const std::uint32_t need = needServedBy(freed[served]);
        if (need != None) {
            const PoolHandle ticket = queues[need].front().ticket;
            const PoolHandle pass = tickets[ticket.index].pass;
            queues[need].pop();
            giveUp(ticket.index);
            return Grant{pass, hold(*freeFor(need), pass)};
        }
    }
    freed.clear();
    listed = served = 0;
    return std::nullopt;
}

void Workforce::crossBorders(std::vector<PoolHandle>& left, std::vector<PoolHandle>& returned) {
    const double now = border;
    border = std::numeric_limits<double>::infinity();
    for (std::size_t index = 0; index < shifts.size(); ++index) {
        Shift& shift = shifts[index];
        if (shift.border == now) {
            shift.on = !shift.on;
            shift.border = staff.shifts()[index].nextBorder(now);
            crossBorder(shift, workerCrew, true, left, returned);
            crossBorder(shift, resourceCrew, false, left, returned);
        }
        border = std::min(border, shift.border);
    }
}

void Workforce::crossBorder(const Shift& shift, Crew& crew, bool isWorker, std::vector<PoolHandle>& left,
                            std::vector<PoolHandle>& returned) {
    for (const std::uint32_t member : isWorker ? shift.workers : shift.resources) {
        crew.setOnShift(member, shift.on);
        if (crew.isHeld(member)) {
            (shift.on ? returned : left).push_back(crew.passOf(member));
        } else if (shift.on) {
            freed.push_back({isWorker, member});
        }
    }
}

}  // namespace mero
