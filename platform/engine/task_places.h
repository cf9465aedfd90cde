#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/engine/process_graph.h"
#include "platform/repository/repository.h"

namespace mero {

/// Finds the activities of a graph by the names that texts of the working environment call them by.
class TaskPlaces {
public:
    TaskPlaces(const Repository& namedRepository, const ProcessGraph& graph);

    /// Numbers of the nodes in the graph; without a model those of every model.
    [[nodiscard]] const std::vector<std::uint32_t>& nodesOf(const std::optional<std::string>& model,
                                                            const std::string& task) const;
    /// Whether the repository has such an object, also in models that take no part in the run.
    [[nodiscard]] bool isKnown(const std::optional<std::string>& model, const std::string& task) const;

private:
    using Nodes = std::unordered_map<std::string, std::vector<std::uint32_t>>;

    const Repository& repository;
    Nodes everywhere;
    std::unordered_map<std::string, Nodes> byModel;
};

}  // namespace mero
