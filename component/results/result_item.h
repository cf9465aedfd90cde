#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "component/host/sv_string.h"
#include "component/host/types.h"

#include "component/results/small_vector.h"

/// Identifiers through which an object was reached.
using MeroPath = std::vector<MeroId>;
using MeroPathView = std::span<const MeroId>;

/// How a new value combines with those that are there. Other codes replace, as 1 does.
enum MeroResultMode : int {
    ResultModeLast = 1,      ///< replaces
    ResultModeSum = 2,       ///< adds
    ResultModeMean = 3,      ///< adds; all items of an object share the divisor's changes
    ResultModeItemMean = 4,  ///< adds; each item has a divisor of its own
};

[[nodiscard]] constexpr bool hasDivisor(int mode) {
    return mode == ResultModeMean || mode == ResultModeItemMean;
}

/// Changes of a divisor that aren't the new count itself.
enum MeroDivisorChange : int {
    DivisorKept = -1,
    DivisorRaised = -2,  ///< by one
};

/// Each identifier in decimal, followed by "@": the order of items is that of these texts.
[[nodiscard]] SV::String getPathKey(MeroPathView path);

/// Whether the key of `left` comes before that of `right`, which needn't be made for it.
[[nodiscard]] bool isBeforeAsPathKey(MeroPathView left, MeroPathView right);

/// Paths to neighbouring objects of a process have neighbouring hashes, which an index keeps together.
[[nodiscard]] std::size_t hashOfPath(MeroPathView path);

/// Path as the key of a table; it has to outlive its entry.
struct MeroPathKey {
    MeroPathView path;

    friend bool operator==(MeroPathKey left, MeroPathKey right) {
        return std::ranges::equal(left.path, right.path);
    }
};

template <>
struct std::hash<MeroPathKey> {
    std::size_t operator()(MeroPathKey key) const { return hashOfPath(key.path); }
};

/// One value position of an object: the value for one path.
class MeroResultItem {
public:
    explicit MeroResultItem(MeroPathView itemPath) { path.assign(itemPath); }
    virtual ~MeroResultItem() = default;

    [[nodiscard]] MeroPathView getPath() const { return path; }
    [[nodiscard]] SV::String getKey() const { return getPathKey(path); }

private:
    MeroSmallVector<MeroId, 4> path;  ///< calls are seldom deep
};

/// Changes of a divisor that concern all items of an object at once. Items catch up when they are read, so
/// that a change costs the same for one item as for many.
struct MeroSharedDivisor {
    std::int32_t count = 0;      ///< set last
    std::int32_t raises = 0;     ///< since then
    std::uint32_t settings = 0;  ///< how often it was set

    /// As `MeroDoubleResultItem::changeDivisor`.
    bool change(int change);
};

class MeroDoubleResultItem : public MeroResultItem {
public:
    /// `sharedDivisor`, which isn't owned, has to outlive the item; null where items have divisors of their
    /// own. What it was changed by before doesn't concern the item.
    MeroDoubleResultItem(MeroPathView itemPath, int combinationMode,
                         const MeroSharedDivisor* sharedDivisor = nullptr);

    void add(double newValue);
    /// As `add`, only if the path is this item's.
    bool addForPath(double newValue, MeroPathView otherPath);
    /// Divided in the modes with a divisor, unless that is below 1.
    [[nodiscard]] double getValue() const;
    /// False, and an internal error, for a negative count; false in modes without a divisor.
    bool setDivisor(std::int32_t count);
    [[nodiscard]] std::int32_t getDivisor() const;
    /// Asks for the memory of path and value.
    void prefetch() const {
        __builtin_prefetch(this);
        __builtin_prefetch(&value);
    }
    /// A divisor as `addValue` of the result set takes it: kept, raised, or the new count if that is above 0.
    bool changeDivisor(int change);

private:
    /// Makes the divisor the item's own, up to now.
    void catchUp();

    double value = 0.0;
    std::int32_t divisor = 0;  ///< as of what it has seen of the shared one
    int mode;
    const MeroSharedDivisor* shared;
    std::int32_t raisesSeen = 0;
    std::uint32_t settingsSeen = 0;
};
