#pragma once

#include <memory>
#include <vector>

#include "component/agents/process_instance.h"
#include "component/results/position_index.h"

/// The main processes that are alive, by key. Each lies in a place that another process takes when it has
/// ended, since a run has many more processes than are alive at a time. Pointers hold until the process is
/// erased.
class MeroLiveProcesses {
public:
    [[nodiscard]] std::size_t size() const { return used - freePositions.size(); }
    [[nodiscard]] bool empty() const { return size() == 0; }

    /// Null if it isn't alive.
    [[nodiscard]] MeroAgentProcessInstance* find(const SV::String& key) const;
    /// Begins a process whose top instance has the key `topKey`. Null if the key is there already.
    MeroAgentProcessInstance* add(const SV::String& key, const SV::String& topKey, MeroId model,
                                  double start);
    /// True if the key was there.
    bool erase(const SV::String& key);
    /// Frees the memory, too.
    void clear();
    /// All that are alive.
    [[nodiscard]] std::vector<MeroAgentProcessInstance*> inOrderOfKeys() const;

    /// Asks for the memory that a pass through an object will need, if the key tells where that is.
    void prefetch(const SV::String& key) const;
    /// The same for what adding or erasing the key will need.
    void prefetchIndex(const SV::String& key) const { index.prefetch(key.hash()); }

private:
    /// What events of passes need stands at the front, in parts of memory that are fetched at once.
    struct alignas(64) Place {
        MeroAgentProcessInstance process;
    };
    static constexpr std::size_t BlockSize = 64;

    [[nodiscard]] MeroAgentProcessInstance& processAt(std::size_t position) const {
        return blocks[position / BlockSize][position % BlockSize].process;
    }
    [[nodiscard]] bool isAt(std::size_t position, const SV::String& key) const {
        const MeroAgentProcessInstance& process = processAt(position);
        return process.getKey() == key && process.isAlive();
    }
    [[nodiscard]] std::size_t positionOf(const SV::String& key) const;
    [[nodiscard]] std::size_t positionByHash(const SV::String& key) const;
    [[nodiscard]] std::size_t takePlace();

    std::vector<std::unique_ptr<Place[]>> blocks;
    std::vector<std::uint32_t> freePositions;
    MeroPositionIndex index;
    std::size_t used = 0;  ///< places that have been taken at some time
};
