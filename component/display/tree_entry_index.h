#pragma once

#include <unordered_map>

#include "component/host/tree_list_box.h"
#include "component/host/types.h"

/// Which entry of a tree shows which repository object of one kind, in both directions.
class MeroTreeEntryIndex {
public:
    void insert(MeroId objectId, MeroId entry) {
        entries[objectId] = entry;
        objects[entry] = objectId;
    }
    void erase(MeroId objectId) {
        objects.erase(entryOf(objectId));
        entries.erase(objectId);
    }
    /// `MeroNoTreeEntry` if no entry shows it.
    [[nodiscard]] MeroId entryOf(MeroId objectId) const {
        const auto found = entries.find(objectId);
        return found != entries.end() ? found->second : MeroNoTreeEntry;
    }
    /// `MeroNoId` if the entry shows something else.
    [[nodiscard]] MeroId objectOf(MeroId entry) const {
        const auto found = objects.find(entry);
        return found != objects.end() ? found->second : MeroNoId;
    }
    [[nodiscard]] bool contains(MeroId objectId) const { return entries.contains(objectId); }
    [[nodiscard]] bool showsOne(MeroId entry) const { return objects.contains(entry); }

private:
    std::unordered_map<MeroId, MeroId> entries;
    std::unordered_map<MeroId, MeroId> objects;
};
