#pragma once

#include <array>
#include <memory>
#include <vector>

#include "component/host/types.h"

#include "component/agents/object_value.h"
#include "component/results/position_index.h"

/// What was measured on the objects of one process instance, by object. A process passes a handful of
/// objects: their values lie in place, the identifiers apart from the values, so that a search among them and
/// the value that it finds are two looks into memory. Pointers to values hold until the next addition or
/// ordering.
class MeroObjectValues {
public:
    struct Entry {
        MeroId object;
        const MeroAgentObjectValue& value;
    };
    class Iterator {
    public:
        Iterator(const MeroObjectValues& entries, std::size_t start) : owner(entries), position(start) {}
        Entry operator*() const { return {owner.objectAt(position), owner.valueAt(position)}; }
        Iterator& operator++() {
            ++position;
            return *this;
        }
        bool operator==(const Iterator& other) const { return position == other.position; }

    private:
        const MeroObjectValues& owner;
        std::size_t position;
    };

    [[nodiscard]] bool empty() const { return count == 0; }
    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, count}; }

    [[nodiscard]] bool contains(MeroId object) const { return positionOf(object) != Missing; }
    /// Null if there is none.
    [[nodiscard]] MeroAgentObjectValue* find(MeroId object) {
        const std::size_t position = positionOf(object);
        return position != Missing ? &valueAt(position) : nullptr;
    }
    /// The object must have none.
    MeroAgentObjectValue& add(MeroId object);
    /// Keeps the memory.
    void clear();
    /// Brings the entries into the order of the objects' decimal texts.
    void sort();
    /// Asks for the memory of the first few.
    void prefetch() const { __builtin_prefetch(&values); }

private:
    static constexpr std::size_t Missing = MeroPositionIndex::Missing;
    static constexpr std::size_t InPlace = 6;

    /// All entries, where there are more than find room in place.
    struct Many {
        std::vector<MeroId> objects;
        std::vector<MeroAgentObjectValue> values;
        MeroPositionIndex index;

        void add(MeroId object, const MeroAgentObjectValue& value);
        void clear();
        void sort();
    };

    [[nodiscard]] bool isInPlace() const { return count <= InPlace; }
    [[nodiscard]] MeroId objectAt(std::size_t position) const {
        return isInPlace() ? objects[position] : many->objects[position];
    }
    [[nodiscard]] const MeroAgentObjectValue& valueAt(std::size_t position) const {
        return isInPlace() ? values[position] : many->values[position];
    }
    [[nodiscard]] MeroAgentObjectValue& valueAt(std::size_t position) {
        return isInPlace() ? values[position] : many->values[position];
    }
    [[nodiscard]] std::size_t positionOf(MeroId object) const {
        return isInPlace() ? positionInPlace(object) : positionAmongMany(object);
    }
    [[nodiscard]] std::size_t positionInPlace(MeroId object) const {
        for (std::size_t position = 0; position < count; ++position) {
            if (objects[position] == object) {
                return position;
            }
        }
        return Missing;
    }
    [[nodiscard]] std::size_t positionAmongMany(MeroId object) const;

    std::uint32_t count = 0;
    std::array<MeroId, InPlace> objects{};
    std::array<MeroAgentObjectValue, InPlace> values;
    std::unique_ptr<Many> many;
};
