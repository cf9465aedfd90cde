#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "component/results/result_item.h"

/// What was measured on one object.
class MeroAtomarResult {
public:
    MeroAtomarResult(MeroId object, MeroId key) : objectId(object), itemKey(key) {}
    MeroAtomarResult(const MeroAtomarResult&) = delete;
    MeroAtomarResult& operator=(const MeroAtomarResult&) = delete;
    virtual ~MeroAtomarResult() = default;

    [[nodiscard]] MeroId getObjectId() const { return objectId; }
    [[nodiscard]] bool hasObjectId(MeroId id) const { return objectId == id; }
    [[nodiscard]] MeroId getItemKey() const { return itemKey; }
    /// 0, and an internal error, if the repository doesn't know it.
    [[nodiscard]] MeroId getModelOfObject() const;

private:
    MeroId objectId;
    MeroId itemKey;
};

/// All values of one object, one item for each path, in the order of their path keys.
class MeroDoubleResult : public MeroAtomarResult {
public:
    MeroDoubleResult(MeroId object, MeroId key, int combinationMode, int sourceType)
        : MeroAtomarResult(object, key), mode(combinationMode), sourceAgentType(sourceType) {}

    /// Adds to the item of the path, which is made if it isn't there.
    MeroDoubleResultItem& addToItem(double value, MeroPathView path);
    /// Next item of a pass; null at the end, after which a new pass begins.
    MeroDoubleResultItem* getNextItem();
    void rewindCursor() { cursor = 0; }
    [[nodiscard]] const std::vector<std::unique_ptr<MeroDoubleResultItem>>& getItems() const;
    /// Sum of the values of all items.
    [[nodiscard]] double getTotal() const;
    /// Divisor of every item; only in `ResultModeMean`, but keeping it is always allowed.
    bool setDivisorAll(int change);
    /// Divisor of one item; only in modes with a divisor, but keeping it is always allowed.
    bool setDivisorItem(int change, MeroPathView path);
    [[nodiscard]] bool hasItem(MeroPathView path) const { return findItem(path) != nullptr; }
    /// Null if there is none.
    [[nodiscard]] MeroDoubleResultItem* findItem(MeroPathView path) const;
    [[nodiscard]] int getSourceAgentType() const { return sourceAgentType; }

private:
    /// Up to this many items a search compares the paths; beyond, `index` is used.
    static constexpr std::size_t LinearLimit = 8;

    /// In the order of making until they are read: then new ones are brought into the order of the others.
    mutable std::vector<std::unique_ptr<MeroDoubleResultItem>> items;
    mutable std::size_t ordered = 0;  ///< so many at the front are in order
    MeroSharedDivisor sharedDivisor;
    std::unordered_multimap<std::size_t, MeroDoubleResultItem*> index;
    std::size_t cursor = 0;
    int mode;
    int sourceAgentType;
};
