#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace mero {

/// What is due when, earliest first; of what is due at the same time, what was planned first.
template <class Plan>
class EventQueue {
public:
    void push(double time, const Plan& plan) {
        entries.push_back({time, ++lastNumber, plan});
        std::push_heap(entries.begin(), entries.end(), isLater);
    }
    [[nodiscard]] bool empty() const { return entries.empty(); }
    [[nodiscard]] double nextTime() const { return entries.front().time; }
    Plan pop() {
        std::pop_heap(entries.begin(), entries.end(), isLater);
        const Plan plan = entries.back().plan;
        entries.pop_back();
        return plan;
    }
    void clear() { entries.clear(); }

private:
    struct Entry {
        double time;
        std::uint64_t number;
        Plan plan;
    };
    static bool isLater(const Entry& left, const Entry& right) {
        return left.time != right.time ? left.time > right.time : left.number > right.number;
    }

    std::vector<Entry> entries;
    std::uint64_t lastNumber = 0;
};

}  // namespace mero
