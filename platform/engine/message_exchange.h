#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/engine/pool.h"
#include "platform/toolkit/mixing.h"

namespace mero {

/// Messages between the instances of a run, and those who wait for them. An instance that a message starts
/// joins the conversation of the sender. A message goes to whoever waits for it longest in its conversation;
/// if an instance of the receiving model takes part in the conversation, it is kept there until somebody
/// does, else it goes to whoever waits longest at all, or is kept for the next one who comes.
///
/// `Plan` is what is to be done when a message comes. `isValid(plan)` tells whether it still can be done.
template <class Plan>
class MessageExchange {
public:
    [[nodiscard]] std::uint64_t newConversation() { return ++lastConversation; }
    void join(std::uint64_t conversation, std::uint32_t model) { ++members[{conversation, model}]; }
    void leave(std::uint64_t conversation, std::uint32_t model) { takeOne(members, {conversation, model}); }

    /// True if a message is there already, which is taken; else `plan` waits at the node.
    template <class IsValid>
    [[nodiscard]] bool takeOrWait(std::uint64_t conversation, std::uint32_t node, const Plan& plan,
                                  const IsValid& isValid) {
        if (takeOne(kept, {conversation, node}) || takeOne(kept, {NoConversation, node})) {
            return true;
        }
        const std::uint32_t waiter = waiters.take();
        waiters[waiter].plan = plan;
        waitingAt[node].push_back(waiters.handle(waiter));
        waitingIn[{conversation, node}].push_back(waiters.handle(waiter));
        if (++entries >= limit) {
            forgetInvalid(isValid);
        }
        return false;
    }

    /// The plan of the one who gets a message that is sent to a node of the model; nothing if it is kept.
    template <class IsValid>
    [[nodiscard]] std::optional<Plan> deliver(std::uint64_t conversation, std::uint32_t model,
                                              std::uint32_t node, const IsValid& isValid) {
        if (const auto own = waitingIn.find({conversation, node}); own != waitingIn.end()) {
            if (auto plan = takeFirst(own->second, isValid)) {
                return plan;
            }
        }
        const bool takesPart = members.contains({conversation, model});
        if (!takesPart) {
            if (auto plan = takeFirst(waitingAt[node], isValid)) {
                return plan;
            }
        }
        ++kept[{takesPart ? conversation : NoConversation, node}];
        return std::nullopt;
    }

private:
    static constexpr std::uint64_t NoConversation = 0;
    static constexpr std::size_t MinimumLimit = 1024;

    struct Waiter {
        std::uint32_t serial = 0;
        Plan plan;
    };
    using Line = std::deque<PoolHandle>;
    /// A conversation, and a node or a model.
    struct Key {
        std::uint64_t conversation;
        std::uint32_t place;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            return mixBits(key.conversation * 0x9E3779B97F4A7C15ULL + key.place);
        }
    };
    using Counts = std::unordered_map<Key, std::uint32_t, KeyHash>;

    static bool takeOne(Counts& counts, const Key& key) {
        const auto place = counts.find(key);
        if (place == counts.end()) {
            return false;
        }
        if (--place->second == 0) {
            counts.erase(place);
        }
        return true;
    }

    /// Each waiter stands in two lines; the one that isn't looked at is cleared by serials.
    template <class IsValid>
    std::optional<Plan> takeFirst(Line& line, const IsValid& isValid) {
        while (!line.empty()) {
            const PoolHandle handle = line.front();
            line.pop_front();
            if (waiters.holds(handle)) {
                const Plan plan = waiters[handle.index].plan;
                waiters.giveBack(handle.index);
                if (isValid(plan)) {
                    return plan;
                }
            }
        }
        return std::nullopt;
    }

    /// What comes to nothing would otherwise be kept for good where no message ever comes. It is looked for
    /// whenever the lines have doubled.
    template <class IsValid>
    void forgetInvalid(const IsValid& isValid) {
        entries = 0;
        for (auto& [node, line] : waitingAt) {
            std::erase_if(line, [&](const PoolHandle& handle) {
                if (!waiters.holds(handle)) {
                    return true;
                }
                if (!isValid(waiters[handle.index].plan)) {
                    waiters.giveBack(handle.index);
                    return true;
                }
                return false;
            });
            entries += line.size();
        }
        for (auto entry = waitingIn.begin(); entry != waitingIn.end();) {
            std::erase_if(entry->second, [&](const PoolHandle& handle) { return !waiters.holds(handle); });
            entry = entry->second.empty() ? waitingIn.erase(entry) : std::next(entry);
        }
        limit = 2 * entries + MinimumLimit;
    }

    Pool<Waiter> waiters;
    std::unordered_map<std::uint32_t, Line> waitingAt;  ///< by node
    std::unordered_map<Key, Line, KeyHash> waitingIn;   ///< by conversation and node
    std::size_t entries = 0;                            ///< added since the last look, and left by it
    std::size_t limit = MinimumLimit;
    Counts kept;     ///< messages, by conversation and node
    Counts members;  ///< instances, by conversation and model
    std::uint64_t lastConversation = NoConversation;
};

}  // namespace mero
