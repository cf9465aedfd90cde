#include "component/agents/sub_instances.h"

#include <algorithm>
#include <utility>

// Search

template <class IsWanted>
std::size_t MeroSubInstances::findOneByOne(std::uint32_t Entry::*tagOfEntry, std::uint32_t tag,
                                           IsWanted isWanted) const {
    for (std::size_t position = 0; position < alive; ++position) {
        if (entries[position].*tagOfEntry == tag && isWanted(position)) {
            return position;
        }
    }
    return Missing;
}

std::size_t MeroSubInstances::positionOf(const SV::String& key) const {
    if (alive == 0) {
        return Missing;
    }
    const auto hasKey = [&](std::size_t position) { return entries[position].instance->getKey() == key; };
    const std::uint32_t tag = tagOf(key.hash());
    return indexed ? indices->byKey.find(tag, hasKey) : findOneByOne(&Entry::keyTag, tag, hasKey);
}

std::size_t MeroSubInstances::positionOfPath(MeroPathView path, std::uint32_t tag) const {
    const auto hasPath = [&](std::size_t position) {
        return std::ranges::equal(entries[position].instance->getCallPath(), path);
    };
    return indexed ? indices->byPath.find(tag, hasPath) : findOneByOne(&Entry::pathTag, tag, hasPath);
}

MeroAgentSubProcessInstance* MeroSubInstances::find(const SV::String& key) const {
    const std::size_t position = positionOf(key);
    return position != Missing ? entries[position].instance.get() : nullptr;
}

MeroAgentSubProcessInstance* MeroSubInstances::findByPath(MeroPathView path) const {
    const std::size_t position = positionOfPath(path, tagOf(hashOfPath(path)));
    return position != Missing ? entries[position].instance.get() : nullptr;
}

// Change

MeroAgentSubProcessInstance& MeroSubInstances::add(const SV::String& key, MeroId model, MeroPathView path,
                                                   MeroAgentSubProcessInstance* collector) {
    Entry& entry = takeIdleEntry();
    entry.keyTag = tagOf(key.hash());
    entry.pathTag = tagOf(hashOfPath(path));
    entry.instance->begin(key, model, path, collector);
    ++alive;
    if (indexed) {
        addToIndices(alive - 1);
    } else if (alive > LinearLimit) {
        if (indices == nullptr) {
            indices = std::make_unique<Indices>();
        }
        indexed = true;
        for (std::size_t position = 0; position < alive; ++position) {
            addToIndices(position);
        }
    }
    return *entry.instance;
}

MeroSubInstances::Entry& MeroSubInstances::takeIdleEntry() {
    if (alive == entries.size()) {
        entries.push_back({});
        entries.back().instance = std::make_unique<SubInstance>();
    }
    return entries[alive];
}

void MeroSubInstances::erase(const SV::String& key) {
    const std::size_t position = positionOf(key);
    if (position == Missing) {
        return;
    }
    const std::size_t last = alive - 1;
    if (indexed) {
        moveInIndices(last, position);
    }
    entries[position].instance->clear();
    std::swap(entries[position], entries[last]);
    --alive;
    dropIdleEntries();
}

void MeroSubInstances::clear() {
    for (std::size_t position = 0; position < std::min<std::size_t>(alive, MostIdle); ++position) {
        entries[position].instance->clear();
    }
    alive = 0;
    dropIdleEntries();
    if (indexed) {
        indices->byKey.clear();
        indices->byPath.clear();
        indexed = false;
    }
}

void MeroSubInstances::dropIdleEntries() {
    while (entries.size() > alive + MostIdle) {
        entries.pop_back();
    }
}

// Indices

void MeroSubInstances::addToIndices(std::size_t position) {
    const Entry& entry = entries[position];
    indices->byKey.add(entry.keyTag, position);
    if (positionOfPath(entry.instance->getCallPath(), entry.pathTag) == Missing) {
        indices->byPath.add(entry.pathTag, position);
    }
}

void MeroSubInstances::moveInIndices(std::size_t from, std::size_t to) {
    const auto standsForPath = [this](std::size_t position) {
        const Entry& entry = entries[position];
        return positionOfPath(entry.instance->getCallPath(), entry.pathTag) == position;
    };
    const bool moves = from != to;
    const bool movesForPath = moves && standsForPath(from);
    if (standsForPath(to)) {
        indices->byPath.erase(entries[to].pathTag, to);
    }
    indices->byKey.erase(entries[to].keyTag, to);
    if (moves) {
        indices->byKey.move(entries[from].keyTag, from, to);
    }
    if (movesForPath) {
        indices->byPath.move(entries[from].pathTag, from, to);
    }
}

// Prefetching

void MeroSubInstances::prefetch(std::size_t keyHash) const {
    if (indexed) {
        indices->byKey.prefetch(keyHash);
    } else {
        const auto any = [](std::size_t) { return true; };
        const std::size_t position = findOneByOne(&Entry::keyTag, tagOf(keyHash), any);
        if (position != Missing) {
            entries[position].instance->prefetch();
            return;
        }
    }
    if (alive < entries.size()) {
        entries[alive].instance->prefetch();
    }
    if (alive != 0) {
        entries[alive - 1].instance->prefetch();
    }
}

void MeroSubInstances::prefetchAll() const {
    for (std::size_t position = 0; position < std::min<std::size_t>(alive, LinearLimit); ++position) {
        entries[position].instance->prefetch();
    }
}
