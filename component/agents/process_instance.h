#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "component/agents/sub_instances.h"

/// How the values of a new sub-process are collected.
enum class MeroCollecting { ByItself, ByCollectorOfCaller };

/// What the passes of one main process in the model of an agent span.
struct MeroMainProcessBlock {
    double startTime;  ///< of the first pass
    double endTime;    ///< of the last pass closed, or the block's start
    std::int32_t openCount = 1;
};

/// One live main process with its tree of sub-process instances, from its start to its end. Keys are those
/// that the engine gives out.
class alignas(64) MeroAgentProcessInstance {
public:
    /// Start time of a process whose start isn't measured.
    static constexpr double StartNotMeasured = -1.0;

    MeroAgentProcessInstance() = default;
    MeroAgentProcessInstance(const MeroAgentProcessInstance&) = delete;
    MeroAgentProcessInstance& operator=(const MeroAgentProcessInstance&) = delete;

    /// Begins a process with its top instance, that of the main process itself; one that is alive goes.
    void begin(const SV::String& mainKey, const SV::String& topKey, MeroId model, double start);
    /// Lets go of all instances with their values; much of the memory serves the next process.
    void clear();

    [[nodiscard]] const SV::String& getKey() const { return key; }
    [[nodiscard]] MeroId getModelId() const { return modelId; }
    /// Start of the process; nothing if it isn't measured.
    [[nodiscard]] std::optional<double> getStartTime() const;

    /// A sub-process, or a pass, under the instance that calls it. A model that stands in the call path
    /// already cuts the path back to the part before it, and equal paths are collected in one place. False if
    /// the caller isn't there; a key that is there stays as it is.
    bool addSubProcess(const SV::String& instanceKey, const SV::String& callerKey, MeroId model,
                       MeroCollecting collecting);
    /// Takes an instance out, with all that it collects. False, and an internal error, if it is attached
    /// nowhere; false if it isn't there. Taking out one that has values is an internal error, reported.
    bool removeSubProcess(const SV::String& instanceKey, bool hadValues);

    /// From `begin` to `clear`.
    [[nodiscard]] bool isAlive() const { return topInstance.isAlive(); }
    /// Nothing while there is none; only agents that measure it keep it.
    [[nodiscard]] std::optional<MeroMainProcessBlock>& getBlock() { return block; }
    /// Where the agent keeps what outlives the process; nothing until it has looked for it.
    [[nodiscard]] std::optional<std::uint32_t>& getPlaceOfKept() { return placeOfKept; }
    [[nodiscard]] std::optional<std::uint32_t> getPlaceOfKept() const { return placeOfKept; }
    [[nodiscard]] const MeroAgentSubProcessInstance& getTopInstance() const { return topInstance; }
    [[nodiscard]] bool hasInstance(const SV::String& instanceKey) const {
        return isTop(instanceKey) || subInstances.find(instanceKey) != nullptr;
    }
    /// Null if there is none.
    [[nodiscard]] MeroAgentSubProcessInstance* getInstance(const SV::String& instanceKey);
    /// Collector of the instance; null if there is none.
    [[nodiscard]] MeroAgentSubProcessInstance* getCollector(const SV::String& instanceKey);
    /// All instances in the order of their keys, in place of what the sequence held.
    void getInstances(std::vector<MeroAgentSubProcessInstance*>& inOrder);

    // On the collector of the instance; false or null if the instance isn't there.

    bool addFirstValue(const SV::String& instanceKey, MeroId objectId, double value, MeroValueUse use);
    bool addSecondValue(const SV::String& instanceKey, MeroId objectId, double value, MeroValueUse use);
    [[nodiscard]] MeroAgentObjectValue* getValue(const SV::String& instanceKey, MeroId objectId);
    [[nodiscard]] std::optional<MeroId> getInstanceModelId(const SV::String& instanceKey);

    /// What has to be there before the rest can be asked for.
    static constexpr std::size_t LinesOfHead = 3;

    // Ask for the rest; the head is read for it.

    /// For a value of the instance whose key has this hash, or of a new one.
    void prefetchForPass(std::size_t keyHash) const;
    /// For all that is read when the process ends.
    void prefetchForEnd() const;

private:
    [[nodiscard]] bool isTop(const SV::String& instanceKey) const {
        return topInstance.getKey() == instanceKey && isAlive();
    }
    /// Null if no instance has this call path.
    [[nodiscard]] MeroAgentSubProcessInstance* findByPath(MeroPathView path);
    void eraseSubInstance(const SV::String& instanceKey);

    // Three lines of the cache are what each event of a pass needs, with the head of the top instance; its
    // values are behind them.
    SV::String key;
    MeroId modelId = MeroNoId;
    double startTime = StartNotMeasured;
    MeroSubInstances subInstances;
    std::optional<std::uint32_t> placeOfKept;
    MeroAgentSubProcessInstance topInstance;
    std::optional<MeroMainProcessBlock> block;
};
