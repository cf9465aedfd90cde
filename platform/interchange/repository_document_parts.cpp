#include "platform/interchange/repository_document_parts.h"

namespace mero {

std::vector<MeroId> ObjectNames::find(MeroId model, MeroId classId, std::string_view name) {
    const auto& index = indexOf(model);
    const auto entry = index.find(name);
    if (entry == index.end()) {
        return {};
    }
    std::vector<MeroId> found = entry->second;
    std::erase_if(found, [&](MeroId id) {
        return classId != MeroNoId && repository.findObject(id)->classId != classId;
    });
    return found;
}

const ObjectNames::Index& ObjectNames::indexOf(MeroId model) {
    const auto [entry, fresh] = indices.try_emplace(model);
    if (fresh) {
        for (const MeroId id : repository.findModel(model)->objects) {
            const Object& object = *repository.findObject(id);
            if (!repository.library().findClass(object.classId)->agent) {
                entry->second[object.name.view()].push_back(id);
            }
        }
    }
    return entry->second;
}

}  // namespace mero
