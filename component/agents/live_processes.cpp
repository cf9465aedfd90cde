#include "component/agents/live_processes.h"

#include <algorithm>

/// The key's hint first: the index of many processes isn't in the processor's cache, while the key and the
/// process are needed anyway.
std::size_t MeroLiveProcesses::positionOf(const SV::String& key) const {
    const std::uint32_t hint = key.lookupHint();
    if (hint < used && isAt(hint, key)) {
        return hint;
    }
    const std::size_t position = positionByHash(key);
    if (position != MeroPositionIndex::Missing) {
        key.setLookupHint(static_cast<std::uint32_t>(position));
    }
    return position;
}

std::size_t MeroLiveProcesses::positionByHash(const SV::String& key) const {
    return index.find(key.hash(), [&](std::size_t position) { return isAt(position, key); });
}

MeroAgentProcessInstance* MeroLiveProcesses::find(const SV::String& key) const {
    const std::size_t position = positionOf(key);
    return position != MeroPositionIndex::Missing ? &processAt(position) : nullptr;
}

std::size_t MeroLiveProcesses::takePlace() {
    if (!freePositions.empty()) {
        const std::size_t position = freePositions.back();
        freePositions.pop_back();
        return position;
    }
    if (used == blocks.size() * BlockSize) {
        blocks.push_back(std::make_unique<Place[]>(BlockSize));
    }
    return used++;
}

MeroAgentProcessInstance* MeroLiveProcesses::add(const SV::String& key, const SV::String& topKey,
                                                 MeroId model, double start) {
    if (positionByHash(key) != MeroPositionIndex::Missing) {
        return nullptr;
    }
    const std::size_t position = takePlace();
    MeroAgentProcessInstance& process = processAt(position);
    process.begin(key, topKey, model, start);
    index.add(key.hash(), position);
    key.setLookupHint(static_cast<std::uint32_t>(position));
    return &process;
}

bool MeroLiveProcesses::erase(const SV::String& key) {
    const std::size_t position = positionOf(key);
    if (position == MeroPositionIndex::Missing) {
        return false;
    }
    index.erase(key.hash(), position);
    processAt(position).clear();
    freePositions.push_back(static_cast<std::uint32_t>(position));
    return true;
}

void MeroLiveProcesses::clear() {
    *this = {};
}

std::vector<MeroAgentProcessInstance*> MeroLiveProcesses::inOrderOfKeys() const {
    std::vector<MeroAgentProcessInstance*> processes;
    processes.reserve(size());
    for (std::size_t position = 0; position < used; ++position) {
        if (MeroAgentProcessInstance& process = processAt(position); process.isAlive()) {
            processes.push_back(&process);
        }
    }
    std::ranges::sort(processes, {},
                      [](const auto* process) -> const SV::String& { return process->getKey(); });
    return processes;
}

void MeroLiveProcesses::prefetch(const SV::String& key) const {
    // Keys and identifiers of the values are in the first, the values in the others.
    constexpr std::size_t HotParts = 3;
    if (const std::uint32_t hint = key.lookupHint(); hint < used) {
        const auto* const place = reinterpret_cast<const std::byte*>(&processAt(hint));
        for (std::size_t part = 0; part < HotParts; ++part) {
            __builtin_prefetch(place + part * alignof(Place));
        }
    }
}
