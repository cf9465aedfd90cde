#include "platform/engine/task_places.h"

#include <algorithm>

namespace mero {

TaskPlaces::TaskPlaces(const Repository& namedRepository, const ProcessGraph& graph)
    : repository(namedRepository) {
    for (const ProcessModel& model : graph.models()) {
        Nodes& own = byModel[model.name];
        for (std::uint32_t index = 0; index < model.nodes.size(); ++index) {
            if (model.nodes[index].kind == NodeKind::Activity) {
                const std::string name(repository.findObject(model.nodes[index].objectId)->name.view());
                own[name].push_back(model.firstNode + index);
                everywhere[name].push_back(model.firstNode + index);
            }
        }
    }
}

const std::vector<std::uint32_t>& TaskPlaces::nodesOf(const std::optional<std::string>& model,
                                                      const std::string& task) const {
    static const std::vector<std::uint32_t> Nowhere;
    const Nodes* nodes = &everywhere;
    if (model) {
        const auto place = byModel.find(*model);
        if (place == byModel.end()) {
            return Nowhere;
        }
        nodes = &place->second;
    }
    const auto found = nodes->find(task);
    return found == nodes->end() ? Nowhere : found->second;
}

bool TaskPlaces::isKnown(const std::optional<std::string>& model, const std::string& task) const {
    const std::vector<MeroId> models = repository.modelIds();
    return std::any_of(models.begin(), models.end(), [&](MeroId id) {
        return (!model || repository.findModel(id)->name.view() == *model) &&
               repository.findObject(id, MeroNoId, task) != nullptr;
    });
}

}  // namespace mero
