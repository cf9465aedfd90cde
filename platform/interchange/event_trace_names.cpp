#include "platform/interchange/event_trace_names.h"

#include <fmt/format.h>

#include "component/host/core_variables.h"

#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

std::string identifierCell(MeroId id) {
    return fmt::format("#{}", id);
}

/// The name where it leads back to the identifier.
std::string cellOf(std::string_view name, MeroId id, MeroId foundByName) {
    return foundByName == id && !name.empty() && !isIdentifierCell(name) ? std::string(name)
                                                                         : identifierCell(id);
}

}  // namespace

bool isIdentifierCell(std::string_view cell) {
    return cell.size() > 1 && cell.front() == '#' &&
           cell.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

TraceNames::TraceNames(const Repository& namedRepository, MeroId environment)
    : repository(namedRepository),
      environmentId(environment),
      executives(tableOf(environment, CoreExecutive)),
      resources(tableOf(environment, CoreResource)) {}

MeroId TraceNames::findModel(std::string_view name) {
    const auto place = modelIds.find(name);
    if (place != modelIds.end()) {
        return place->second;
    }
    const Model* model = repository.findModel(name);
    const MeroId id = model != nullptr ? model->id : MeroNoId;
    modelIds.emplace(name, id);
    return id;
}

const NameTable& TraceNames::objectNames(MeroId modelId) {
    if (modelId != lastModelId) {
        const auto [place, added] = objects.try_emplace(modelId);
        if (added) {
            place->second = tableOf(modelId, MeroNoId);
        }
        lastModelId = modelId;
        lastTable = &place->second;
    }
    return *lastTable;
}

std::string TraceNames::describeModel(MeroId modelId) const {
    const Model* model = repository.findModel(modelId);
    return model != nullptr ? "model " + inQuotes(model->name.view()) : fmt::format("model #{}", modelId);
}

std::string TraceNames::modelCell(MeroId id) {
    const Model* model = repository.findModel(id);
    return model != nullptr ? cellOf(model->name.view(), id, findModel(model->name.view()))
                            : identifierCell(id);
}

std::string TraceNames::objectCell(MeroId id, const NameTable& table) const {
    const Object* object = repository.findObject(id);
    if (object == nullptr) {
        return identifierCell(id);
    }
    const auto place = table.find(object->name.view());
    return cellOf(object->name.view(), id, place != table.end() ? place->second : MeroNoId);
}

NameTable TraceNames::tableOf(MeroId modelId, int coreClass) const {
    NameTable table;
    const Model* model = repository.findModel(modelId);
    if (model == nullptr) {
        return table;
    }
    const Library& library = repository.library();
    for (const MeroId id : model->objects) {
        const Object* object = repository.findObject(id);
        const Library::Class* objectClass = library.findClass(object->classId);
        const bool wanted = coreClass == MeroNoId
                                ? objectClass != nullptr && !objectClass->agent
                                : library.isSubClassOf(library.coreVariable(coreClass), object->classId);
        if (wanted) {
            table.try_emplace(std::string(object->name.view()), id);
        }
    }
    return table;
}

}  // namespace mero
