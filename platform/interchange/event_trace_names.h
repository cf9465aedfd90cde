#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/repository/repository.h"

namespace mero {

// What the reader and the writer of event traces share: columns and names.

enum TraceColumn : std::size_t {
    ColumnCode,
    ColumnTime,
    ColumnMainModel,
    ColumnMainKey,
    ColumnModel,
    ColumnKey,
    ColumnCalledModel,
    ColumnCalledKey,
    ColumnCallingObject,
    ColumnObject,
    ColumnPass,
    ColumnExecutive,
    ColumnAssigned,
    ColumnResource,
    ColumnCount
};

inline constexpr std::array<std::string_view, ColumnCount> TraceColumnNames = {
    "code",       "time",           "main_model", "main_key", "model",     "key",      "called_model",
    "called_key", "calling_object", "object",     "pass",     "executive", "assigned", "resource"};

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
using NameTable = std::unordered_map<std::string, MeroId, TextHash, std::equal_to<>>;

/// True for "#" and digits, which stand for an identifier.
bool isIdentifierCell(std::string_view cell);

/// Names of models, objects, workers and resources as a trace uses them, in both directions.
class TraceNames {
public:
    /// `environment` may be 0. The repository has to outlive this object, unchanged.
    TraceNames(const Repository& namedRepository, MeroId environment);

    [[nodiscard]] const NameTable& executiveNames() const { return executives; }
    [[nodiscard]] const NameTable& resourceNames() const { return resources; }

    MeroId findModel(std::string_view name);

    const NameTable& objectNames(MeroId modelId);

    [[nodiscard]] std::string describeModel(MeroId modelId) const;
    [[nodiscard]] bool hasEnvironment() const { return environmentId != MeroNoId; }

    [[nodiscard]] std::string modelCell(MeroId id);
    [[nodiscard]] std::string objectCell(MeroId id, const NameTable& table) const;

private:
    /// Objects of a model by name, the first of each name; those of a core class and its sub-classes, or with
    /// `coreClass` 0 all but agents.
    [[nodiscard]] NameTable tableOf(MeroId modelId, int coreClass) const;

    const Repository& repository;
    MeroId environmentId;
    NameTable executives;
    NameTable resources;
    NameTable modelIds;
    std::unordered_map<MeroId, NameTable> objects;
    MeroId lastModelId = MeroNoId;
    const NameTable* lastTable = &executives;
};

}  // namespace mero
