#pragma once

#include <optional>

#include "component/host/sv_string.h"

#include "component/agents/object_values.h"
#include "component/results/result_item.h"
#include "component/results/small_vector.h"

/// Whether a new value adds to the one that is there or takes its place.
enum class MeroValueUse { Accumulate, Replace };

/// Calls are seldom deep.
using MeroCallPath = MeroSmallVector<MeroId, 4>;

/// One running process or sub-process of a main process, which is held in this form as well. It collects
/// values itself, or another instance of the same main process, its collector, does so for it.
class MeroAgentSubProcessInstance {
public:
    MeroAgentSubProcessInstance() = default;
    MeroAgentSubProcessInstance(const MeroAgentSubProcessInstance&) = delete;
    MeroAgentSubProcessInstance& operator=(const MeroAgentSubProcessInstance&) = delete;

    /// Begins an instance without values. A null `collectorInstance` means that it collects itself.
    void begin(const SV::String& instanceKey, MeroId model, MeroPathView path,
               MeroAgentSubProcessInstance* collectorInstance);
    /// Lets go of key, values and attached instances; the memory serves the next instance.
    void clear();

    /// From `begin` to `clear`.
    [[nodiscard]] bool isAlive() const { return alive; }
    [[nodiscard]] const SV::String& getKey() const { return key; }
    [[nodiscard]] MeroId getModelId() const { return modelId; }
    /// Models from the top of the call chain down to this one.
    [[nodiscard]] MeroPathView getCallPath() const { return callPath; }
    /// True if another instance collects the values.
    [[nodiscard]] bool isCollected() const { return collected; }
    [[nodiscard]] MeroAgentSubProcessInstance& getCollector() { return collected ? *above : *this; }
    [[nodiscard]] const MeroAgentSubProcessInstance& getCollector() const {
        return collected ? *above : *this;
    }

    void addFirstValue(MeroId objectId, double value, MeroValueUse use);
    void addSecondValue(MeroId objectId, double value, MeroValueUse use);
    /// For reading: the values by object, in the order of the objects' decimal texts.
    [[nodiscard]] const MeroObjectValues& getValues();
    /// For writing; null if there is none.
    [[nodiscard]] MeroAgentObjectValue* getValue(MeroId objectId);
    [[nodiscard]] bool hasValue(MeroId objectId) const { return values.contains(objectId); }
    void clearValues();
    /// Asks for the memory of all that an instance with few values needs.
    void prefetch() const {
        __builtin_prefetch(&key);
        values.prefetch();
    }
    /// Asks for the memory of the first few values.
    void prefetchValues() const { values.prefetch(); }

    /// Sum over this instance and those attached to it, for one object or with `MeroNoId` for all. Nothing
    /// for a collected instance.
    [[nodiscard]] std::optional<double> sumFirstValues(MeroId objectId);
    /// As the first; nothing also if the first value of the instance has no second one, since an instance
    /// records second values for all its objects or for none.
    [[nodiscard]] std::optional<double> sumSecondValues(MeroId objectId);
    void invalidateSums();

    /// Attaches an instance, which isn't owned, so that its sums count here. False for one that is collected
    /// elsewhere.
    bool addChild(MeroAgentSubProcessInstance& child);
    /// False if it isn't attached here.
    bool removeChild(MeroAgentSubProcessInstance& child);
    [[nodiscard]] bool hasChild(const MeroAgentSubProcessInstance& child) const {
        return child.getParent() == this;
    }
    /// Instance to which this one is attached; null for none.
    [[nodiscard]] MeroAgentSubProcessInstance* getParent() const { return collected ? nullptr : above; }
    /// Lets go of the instances that are attached here.
    void releaseChildren();

private:
    [[nodiscard]] MeroAgentObjectValue& valueFor(MeroId objectId);
    template <class Part, class SumOfChild>
    [[nodiscard]] double sumOver(MeroId objectId, Part part, SumOfChild sumOfChild);
    /// The attached instance before the child, or the last one before the first.
    [[nodiscard]] MeroAgentSubProcessInstance& siblingBefore(const MeroAgentSubProcessInstance& child) const;

    // What each event of a pass needs comes first, close together: up to the first values it is two lines of
    // a cache.
    SV::String key;
    MeroAgentSubProcessInstance* above = nullptr;      ///< collector if it is collected, else the parent
    MeroAgentSubProcessInstance* next = nullptr;       ///< in the ring of what is attached to the same parent
    MeroAgentSubProcessInstance* lastChild = nullptr;  ///< its `next` is the child that was attached first
    MeroId modelId = MeroNoId;
    bool alive = false;
    bool collected = false;
    bool firstSumHolds = false;
    MeroCallPath callPath;
    MeroObjectValues values;
    double firstSum = 0.0;  ///< over all objects
};
