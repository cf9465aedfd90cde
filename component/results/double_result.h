#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "component/results/position_index.h"
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
    /// In the order of their keys; valid until the next one is made.
    [[nodiscard]] std::span<MeroDoubleResultItem* const> getItems() const;
    /// Sum of the values of all items.
    [[nodiscard]] double getTotal() const;
    /// Divisor of every item; only in `ResultModeMean`, but keeping it is always allowed.
    bool setDivisorAll(int change);
    /// Divisor of one item; only in modes with a divisor, but keeping it is always allowed.
    bool setDivisorItem(int change, MeroPathView path);
    [[nodiscard]] bool hasItem(MeroPathView path) const { return findItem(path) != nullptr; }
    /// Null if there is none.
    [[nodiscard]] MeroDoubleResultItem* findItem(MeroPathView path) const;

    // Ask for the memory that the item of a path needs, in this order, each when the one before has come.

    /// Of the result itself, with its first item.
    void prefetch() const;
    /// Of the index, where there are many items.
    void prefetchIndex(MeroPathView path) const;
    /// Of what the index points to.
    void prefetchPlace(MeroPathView path) const;
    /// Of the item.
    void prefetchItem(MeroPathView path) const;

    [[nodiscard]] int getSourceAgentType() const { return sourceAgentType; }

private:
    /// Items besides the first one.
    struct OtherItems {
        std::vector<std::unique_ptr<MeroDoubleResultItem>> items;  ///< in the order of making
        MeroPositionIndex index;                                   ///< empty while there are few items
        /// With the first one; brought up to date when it is read.
        std::vector<MeroDoubleResultItem*> ordered;

        [[nodiscard]] MeroDoubleResultItem* find(MeroPathView path) const;
        void indexNewItem();
    };

    [[nodiscard]] MeroDoubleResultItem& addItem(MeroPathView path);

    /// Up to this many items a search compares the paths; beyond, an index is used.
    static constexpr std::size_t LinearLimit = 8;

    // Most objects have one item, which lies here.
    std::optional<MeroDoubleResultItem> first;
    MeroDoubleResultItem* onlyItem = nullptr;  ///< the first, as a sequence of one
    std::unique_ptr<OtherItems> others;
    MeroSharedDivisor sharedDivisor;
    std::uint32_t cursor = 0;
    int mode;
    int sourceAgentType;
};
