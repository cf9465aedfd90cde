#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_set>

#include "component/agents/sub_process_instance.h"

/// How the values of a new sub-process are collected.
enum class MeroCollecting { ByItself, ByCollectorOfCaller };

/// Frees an instance unless it lies in its process, as that of the main process does.
struct MeroReleaseInstance {
    bool inProcess = false;

    void operator()(MeroAgentSubProcessInstance* instance) const {
        if (!inProcess) {
            std::default_delete<MeroAgentSubProcessInstance>()(instance);
        }
    }
};

/// One live main process with its tree of sub-process instances, from its start to its end. Keys are those
/// that the engine gives out.
class MeroAgentProcessInstance {
public:
    using InstancePointer = std::unique_ptr<MeroAgentSubProcessInstance, MeroReleaseInstance>;
    using Instances = MeroKeyedTable<SV::String, InstancePointer, 1>;

    /// Start time of a process whose start isn't measured.
    static constexpr double StartNotMeasured = -1.0;

    MeroAgentProcessInstance() = default;
    MeroAgentProcessInstance(const MeroAgentProcessInstance&) = delete;
    MeroAgentProcessInstance& operator=(const MeroAgentProcessInstance&) = delete;

    /// Begins a process, without any instance yet.
    void begin(const SV::String& mainKey, MeroId model, double start);
    /// Frees all instances with their values.
    void clear();

    [[nodiscard]] const SV::String& getKey() const { return key; }
    [[nodiscard]] MeroId getModelId() const { return modelId; }
    /// Start of the process; nothing if it isn't measured.
    [[nodiscard]] std::optional<double> getStartTime() const;

    /// The instance of the main process itself. A key that is there stays as it is.
    void addTopInstance(const SV::String& instanceKey, MeroId model);
    /// A sub-process, or a pass, under the instance that calls it. A model that stands in the call path
    /// already cuts the path back to the part before it, and equal paths are collected in one place. False if
    /// the caller isn't there; a key that is there stays as it is.
    bool addSubProcess(const SV::String& instanceKey, const SV::String& callerKey, MeroId model,
                       MeroCollecting collecting);
    /// Takes an instance out, with all that it collects. False, and an internal error, if it is attached
    /// nowhere; false if it isn't there. Taking out one that has values is an internal error, reported.
    bool removeSubProcess(const SV::String& instanceKey, bool hadValues);

    /// Null before `addTopInstance`.
    [[nodiscard]] MeroAgentSubProcessInstance* getTopInstance() { return top; }
    [[nodiscard]] bool hasInstance(const SV::String& instanceKey) const {
        return instances.contains(instanceKey);
    }
    /// Null if there is none.
    [[nodiscard]] MeroAgentSubProcessInstance* getInstance(const SV::String& instanceKey);
    /// Collector of the instance; null if there is none.
    [[nodiscard]] MeroAgentSubProcessInstance* getCollector(const SV::String& instanceKey);
    /// All instances in the order of their keys.
    [[nodiscard]] Instances& getInstances();

    // On the collector of the instance; false or null if the instance isn't there.

    bool addFirstValue(const SV::String& instanceKey, MeroId objectId, double value, MeroValueUse use);
    bool addSecondValue(const SV::String& instanceKey, MeroId objectId, double value, MeroValueUse use);
    [[nodiscard]] MeroAgentObjectValue* getValue(const SV::String& instanceKey, MeroId objectId);
    [[nodiscard]] std::optional<MeroId> getInstanceModelId(const SV::String& instanceKey);

private:
    struct PathHash {
        using is_transparent = void;
        std::size_t operator()(MeroPathView path) const { return hashOfPath(path); }
        std::size_t operator()(const MeroAgentSubProcessInstance* instance) const {
            return hashOfPath(instance->getCallPath());
        }
    };
    struct PathEqual {
        using is_transparent = void;
        static MeroPathView pathOf(MeroPathView path) { return path; }
        static MeroPathView pathOf(const MeroAgentSubProcessInstance* instance) {
            return instance->getCallPath();
        }
        template <class Left, class Right>
        bool operator()(const Left& left, const Right& right) const {
            return std::ranges::equal(pathOf(left), pathOf(right));
        }
    };

    [[nodiscard]] bool isTop(const SV::String& instanceKey) const {
        return top != nullptr && top->getKey() == instanceKey;
    }
    /// Null if no instance has this call path.
    [[nodiscard]] MeroAgentSubProcessInstance* findByPath(MeroPathView path) const;
    void eraseInstance(const SV::String& instanceKey);

    MeroAgentSubProcessInstance* top = nullptr;
    std::optional<MeroAgentSubProcessInstance> topInstance;
    SV::String key;
    MeroId modelId = MeroNoId;
    double startTime = StartNotMeasured;
    Instances instances;  ///< the top instance included
    /// One instance for each call path but the top's: all instances of a path have the same collector.
    std::unordered_set<MeroAgentSubProcessInstance*, PathHash, PathEqual> paths;
};

/// Keeps the memory of processes that have ended for those that start: a run has many more of them than are
/// alive at a time. It has to outlive what it makes.
class MeroProcessInstancePool {
public:
    struct GiveBack {
        MeroProcessInstancePool* pool = nullptr;

        void operator()(MeroAgentProcessInstance* process) const { pool->takeBack(process); }
    };
    using Pointer = std::unique_ptr<MeroAgentProcessInstance, GiveBack>;

    [[nodiscard]] Pointer make(const SV::String& mainKey, MeroId model, double start);

private:
    void takeBack(MeroAgentProcessInstance* process);

    std::vector<std::unique_ptr<MeroAgentProcessInstance>> idle;
};
