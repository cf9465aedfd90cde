#include "platform/repository/model_calls.h"

namespace mero {

namespace {

const Model* findProcessModel(const Repository& repository, std::string_view name) {
    const Model* model = repository.findModel(name);
    return model != nullptr && repository.library().modelTypes()[model->type].classId == ClassCodeProcessModel
               ? model
               : nullptr;
}

/// Objects of the model that can hold a call, ascending.
ISortedSet<MeroId> findCallObjects(const Repository& repository, MeroId modelId) {
    const Library& library = repository.library();
    ISortedSet<MeroId> objects;
    for (const MeroId classId : library.subClassesOf(library.coreVariable(CoreCall))) {
        const std::span<const MeroId> ofClass = repository.objectsOfClass(modelId, classId);
        objects.insertRange(ofClass.begin(), ofClass.end());
    }
    return objects;
}

}  // namespace

std::vector<std::string_view> splitReferences(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (end > 0) {
            lines.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

ModelCalls findModelCalls(const Repository& repository, MeroId modelId, CallDepth depth, CallRange range) {
    const MeroId referenceAttribute = repository.library().coreVariable(CoreReferencedModel);
    ModelCalls calls;
    std::vector<MeroId> open{modelId};
    while (!open.empty()) {
        const MeroId caller = open.back();
        open.pop_back();
        for (const MeroId objectId : findCallObjects(repository, caller)) {
            const AttributeValue* reference =
                findValue(repository.findObject(objectId)->values, referenceAttribute);
            if (reference == nullptr) {
                continue;
            }
            for (const std::string_view name : splitReferences(std::get<SV::String>(*reference).view())) {
                const Model* called = findProcessModel(repository, name);
                if (called == nullptr) {
                    calls.problem = calls.problem != MeroNoId ? calls.problem : objectId;
                } else if ((range == CallRange::AllModels || called->loaded) &&
                           calls.models.insert(called->id) && depth == CallDepth::Recursive) {
                    open.push_back(called->id);
                }
            }
        }
    }
    return calls;
}

}  // namespace mero
