#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/engine/key_table.h"
#include "platform/engine/sim_event.h"

namespace mero {

/// A whole run in memory. An event takes 40 bytes: what many events share (process instance, executive and
/// resource, called process) is kept once and numbered, as are the keys, so that reading an event makes no
/// text and equal keys are the same text.
class EventTrace {
public:
    EventTrace() = default;
    EventTrace(EventTrace&&) = default;
    EventTrace& operator=(EventTrace&&) = default;
    EventTrace(const EventTrace&) = delete;
    EventTrace& operator=(const EventTrace&) = delete;

    void append(const SimEvent& event);
    void reserve(std::size_t events) { rows.reserve(events); }
    [[nodiscard]] std::size_t size() const { return rows.size(); }
    [[nodiscard]] bool empty() const { return rows.empty(); }

    /// Sets all fields of `event`, which then points to keys of this trace.
    void read(std::size_t index, SimEvent& event) const {
        const Row& row = rows[index];
        const Place& place = places[row.place];
        event.code = row.code;
        event.time = row.time;
        event.mainModelId = place[0];
        event.mainKey = &keyOf(place[1]);
        event.modelId = place[2];
        event.key = &keyOf(place[3]);
        event.objectId = row.objectId;
        event.passKey = &keys[row.passKey];
        const Staff& someStaff = staff[row.staff];
        event.executiveId = someStaff[0];
        event.assignedExecutiveId = someStaff[1];
        event.resourceId = someStaff[2];
        const Call& call = calls[row.call];
        event.calledModelId = call[0];
        event.calledKey = &keyOf(call[1]);
        event.callingObjectId = call[2];
    }

    /// `digestOf` the event, computed when it was appended: a replay needn't look at keys that nobody asks
    /// for.
    [[nodiscard]] std::uint64_t digest(std::size_t index) const { return rows[index].digest; }

    /// Asks the memory for the keys of the event at which components look first: those of the process and of
    /// the pass.
    void prefetchKeys(std::size_t index) const {
        if (index < rows.size()) {
            const Row& row = rows[index];
            prefetchText(keyOf(places[row.place][1]));
            prefetchText(keys[row.passKey]);
        }
    }

private:
    /// Main model, main key, model, key.
    using Place = std::array<std::int32_t, 4>;
    /// Executive, assigned executive, resource.
    using Staff = std::array<std::int32_t, 3>;
    /// Called model, called key, calling object.
    using Call = std::array<std::int32_t, 3>;

    struct Row {
        std::int64_t time;
        std::uint64_t digest;
        std::int32_t code;
        std::uint32_t place;
        MeroId objectId;
        std::uint32_t passKey;
        std::uint32_t staff;
        std::uint32_t call;
    };

    template <std::size_t Size>
    struct GroupHash {
        std::size_t operator()(const std::array<std::int32_t, Size>& group) const {
            std::uint64_t state = 0;
            for (const std::int32_t part : group) {
                state = mixBits(state ^ static_cast<std::uint32_t>(part)) + 1;
            }
            return state;
        }
    };
    /// Number 0 is the group of zeros.
    template <std::size_t Size>
    class Groups {
    public:
        using Group = std::array<std::int32_t, Size>;
        Groups() : groups(1) { numbers.emplace(Group{}, 0); }
        std::uint32_t intern(const Group& group);
        [[nodiscard]] const Group& operator[](std::uint32_t number) const { return groups[number]; }

    private:
        std::vector<Group> groups;
        std::unordered_map<Group, std::uint32_t, GroupHash<Size>> numbers;
        std::uint32_t last = 0;
    };

    /// What a text knows of itself, such as its hash, lies before its bytes.
    static void prefetchText(const SV::String& text) { __builtin_prefetch(text.GetStr() - 1); }
    [[nodiscard]] const SV::String& keyOf(std::int32_t number) const {
        return keys[static_cast<std::uint32_t>(number)];
    }
    std::int32_t internKey(const SV::String& key, std::size_t column);

    std::vector<Row> rows;
    KeyTable keys;
    std::array<std::uint32_t, 4> lastKeys{};  ///< by column of keys
    Groups<4> places;
    Groups<3> staff;
    Groups<3> calls;
};

}  // namespace mero
