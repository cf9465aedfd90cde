#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/engine/pool.h"

namespace mero {

/// Passes that wait for the same workers and resources: the highest priority first, of equal ones the one
/// that came first. Who gives up waiting stays in the queue until it comes to the front.
class WorkQueue {
public:
    struct Entry {
        std::int32_t priority;
        std::uint64_t number;  ///< order of coming, over all queues
        PoolHandle ticket;

        [[nodiscard]] bool goesBefore(const Entry& other) const {
            return priority != other.priority ? priority > other.priority : number < other.number;
        }
    };

    void push(const Entry& entry) {
        entries.push_back(entry);
        std::push_heap(entries.begin(), entries.end(), isLater);
    }
    [[nodiscard]] bool empty() const { return entries.empty(); }
    [[nodiscard]] const Entry& front() const { return entries.front(); }
    void pop() {
        std::pop_heap(entries.begin(), entries.end(), isLater);
        entries.pop_back();
    }

private:
    static bool isLater(const Entry& left, const Entry& right) { return right.goesBefore(left); }

    std::vector<Entry> entries;
};

}  // namespace mero
