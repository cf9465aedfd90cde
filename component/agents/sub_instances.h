#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "component/agents/sub_process_instance.h"
#include "component/results/position_index.h"

/// The sub-process instances of one main process, by key and by call path. Few of them are found by looking
/// at their hashes, which stand beside each other, those of a handful in place; indices come in only where
/// there are more. Instances stay where they are until they are erased, and their memory serves the next
/// ones.
class MeroSubInstances {
public:
    [[nodiscard]] std::size_t size() const { return alive; }
    /// Any of them, in no order that lasts over an erasure.
    [[nodiscard]] MeroAgentSubProcessInstance& operator[](std::size_t position) const {
        return *entries[position].instance;
    }

    /// Null if there is none.
    [[nodiscard]] MeroAgentSubProcessInstance* find(const SV::String& key) const;
    /// One of those with the call path, which all have the same collector; null if there is none.
    [[nodiscard]] MeroAgentSubProcessInstance* findByPath(MeroPathView path) const;
    /// Begins an instance, whose key must not be there.
    MeroAgentSubProcessInstance& add(const SV::String& key, MeroId model, MeroPathView path,
                                     MeroAgentSubProcessInstance* collector);
    /// Those that have the same call path have to go with it.
    void erase(const SV::String& key);
    /// Ends all; much of the memory serves the next ones.
    void clear();

    /// Whether there is or was one.
    [[nodiscard]] bool hasMemory() const { return !entries.empty(); }
    /// Asks for the memory of the instance whose key has this hash; if there is none, for what the next
    /// addition needs.
    void prefetch(std::size_t keyHash) const;
    /// Asks for the memory of all, unless there are many.
    void prefetchAll() const;

private:
    /// Begins with a line of the cache, so that it takes as few of them as can be.
    struct alignas(64) SubInstance : MeroAgentSubProcessInstance {};
    /// The tags, lower halves of the hashes, spare looking at other instances where they lie.
    struct Entry {
        std::unique_ptr<SubInstance> instance;
        std::uint32_t keyTag = 0;
        std::uint32_t pathTag = 0;
    };
    /// By path stands the first instance of each.
    struct Indices {
        MeroPositionIndex byKey;
        MeroPositionIndex byPath;
    };

    static constexpr std::size_t Missing = MeroPositionIndex::Missing;
    static constexpr std::size_t Handful = 4;
    /// Up to so many instances are searched one by one.
    static constexpr std::size_t LinearLimit = 16;
    /// So many that aren't alive are kept.
    static constexpr std::size_t MostIdle = 16;

    [[nodiscard]] static std::uint32_t tagOf(std::size_t hash) { return static_cast<std::uint32_t>(hash); }
    [[nodiscard]] std::size_t positionOf(const SV::String& key) const;
    [[nodiscard]] std::size_t positionOfPath(MeroPathView path, std::uint32_t tag) const;
    /// Position of the wanted one among those that have the tag; for few.
    template <class IsWanted>
    [[nodiscard]] std::size_t findOneByOne(std::uint32_t Entry::*tagOfEntry, std::uint32_t tag,
                                           IsWanted isWanted) const;
    [[nodiscard]] Entry& takeIdleEntry();
    void dropIdleEntries();
    void addToIndices(std::size_t position);
    void moveInIndices(std::size_t from, std::size_t to);

    MeroSmallVector<Entry, Handful> entries;  ///< those that are alive come first
    std::uint32_t alive = 0;
    bool indexed = false;  ///< `indices` hold those that are alive
    std::unique_ptr<Indices> indices;
};
