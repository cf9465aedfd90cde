#include "platform/repository/repository_services.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/repository/enhanced_service.h"
#include "platform/repository/model_calls.h"

namespace mero {

namespace {

class BasicService : public MeroCoreMM_Basic {
public:
    explicit BasicService(const Repository& servedRepository) : repository(servedRepository) {}

    int getAttributeName(MeroId attributeId, const char*& name) override {
        const Library::Attribute* attribute = repository.library().findAttribute(attributeId);
        if (attribute == nullptr) {
            return RepositoryNotFound;
        }
        name = attribute->name.c_str();
        return RepositoryOk;
    }

    int getAllInstancesOfClassAndSubClassInModel(MeroId modelId, MeroId classId,
                                                 ISortedSet<MeroId>& instances,
                                                 bool withSubClasses) override {
        instances.clear();
        const Library& library = repository.library();
        if (library.findClass(classId) == nullptr) {
            return RepositoryClassUnknown;
        }
        if (repository.findModel(modelId) == nullptr) {
            return RepositoryNotFound;
        }
        addInstances(modelId, classId, instances);
        if (withSubClasses) {
            for (const MeroId subClassId : library.subClassesOf(classId)) {
                addInstances(modelId, subClassId, instances);
            }
        }
        return RepositoryOk;
    }

private:
    void addInstances(MeroId modelId, MeroId classId, ISortedSet<MeroId>& instances) const {
        const std::span<const MeroId> ofClass = repository.objectsOfClass(modelId, classId);
        if (!ofClass.empty()) {
            instances.insertRange(ofClass.begin(), ofClass.end());
        }
    }

    const Repository& repository;
};

class LoadSaveService : public MeroCoreMM_LoadSave {
public:
    explicit LoadSaveService(const Repository& servedRepository) : repository(servedRepository) {}

    bool IsModelLoaded(MeroId modelId) override {
        const Model* model = repository.findModel(modelId);
        return model != nullptr && model->loaded;
    }

private:
    const Repository& repository;
};

class ReferenceService : public MeroCoreMM_References {
public:
    explicit ReferenceService(const Repository& servedRepository) : repository(servedRepository) {}

    int getTargetModelID(const SV::String& reference, MeroId modelClassId, MeroId& modelId) override {
        modelId = MeroNoId;
        const Library& library = repository.library();
        const Model* model = repository.findModel(reference.view());
        if (model == nullptr ||
            (modelClassId != MeroNoId &&
             !library.isSubClassOf(modelClassId, library.modelTypes()[model->type].classId))) {
            return RepositoryNotFound;
        }
        modelId = model->id;
        return RepositoryOk;
    }

    int getAllReferencedModels(MeroId modelId, ISortedSet<MeroId>& models) override {
        models.clear();
        if (repository.findModel(modelId) == nullptr) {
            return RepositoryNotFound;
        }
        models = findModelCalls(repository, modelId, CallDepth::Recursive, CallRange::AllModels).models;
        return RepositoryOk;
    }

    int getSubModelAttributeOfClass(MeroId classId, MeroId& attributeId) override {
        attributeId = MeroNoId;
        const Library& library = repository.library();
        if (library.findClass(classId) == nullptr) {
            return RepositoryClassUnknown;
        }
        const MeroId reference = library.coreVariable(CoreReferencedModel);
        if (!library.hasAttribute(classId, reference)) {
            return RepositoryNotFound;
        }
        attributeId = reference;
        return RepositoryOk;
    }

    int getAllSubmodelReferencingClasses(MeroId libraryId, ISortedSet<MeroId>& classes) override {
        classes.clear();
        if (!isLibrary(libraryId)) {
            return RepositoryClassUnknown;
        }
        const Library& library = repository.library();
        for (const Library::Class& entry : library.classes()) {
            if (entry.libraryId == libraryId &&
                std::ranges::find(entry.attributes, library.coreVariable(CoreReferencedModel)) !=
                    entry.attributes.end()) {
                classes.insert(entry.id);
            }
        }
        return RepositoryOk;
    }

private:
    const Repository& repository;
};

class SimMappingService : public MeroSimMappingHandler {
public:
    bool isDefined() override { return true; }

    int getSimableBPClasses(ISortedSet<MeroId>& classes) override {
        return collect(ClassCodeProcessLibrary, classes);
    }

    int getSimableWEClasses(ISortedSet<MeroId>& classes) override {
        return collect(ClassCodeEnvironmentLibrary, classes);
    }

    int isSimableClass(MeroId classId, bool& simulatable) override {
        simulatable = false;
        const Library::Class* entry = Library::standard().findClass(classId);
        if (entry == nullptr) {
            return RepositoryClassUnknown;
        }
        simulatable = isSimulatable(*entry);
        return RepositoryOk;
    }

private:
    /// Of the process library the flow nodes; of the environment everything concrete.
    static bool isSimulatable(const Library::Class& entry) {
        const Library& library = Library::standard();
        return !entry.abstract && (entry.libraryId == ClassCodeEnvironmentLibrary ||
                                   library.isSubClassOf(library.coreVariable(CoreFlowNode), entry.id));
    }

    static int collect(MeroId libraryId, ISortedSet<MeroId>& classes) {
        classes.clear();
        for (const Library::Class& entry : Library::standard().classes()) {
            if (entry.libraryId == libraryId && isSimulatable(entry)) {
                classes.insert(entry.id);
            }
        }
        return RepositoryOk;
    }
};

class ModelTypeService : public MeroModelTypeAttrHandler {
public:
    explicit ModelTypeService(const Repository& servedRepository) : repository(servedRepository) {}

    int GetModelTypeIndex(const SV::String& name) override {
        const auto types = repository.library().modelTypes();
        for (std::size_t index = 0; index < types.size(); ++index) {
            if (name.view() == types[index].name) {
                return static_cast<int>(index);
            }
        }
        return -1;
    }

    int GetModelTypeIndexOfModel(MeroId modelId) override {
        const Model* model = repository.findModel(modelId);
        return model != nullptr ? static_cast<int>(model->type) : -1;
    }

    MeroId GetModelTypeLibraryClassID(int index) override {
        const Library::ModelType* type = findType(index);
        return type != nullptr ? repository.library().findClass(type->classId)->libraryId : MeroNoId;
    }

    bool IsSimulateableModelType(int index) override {
        const Library::ModelType* type = findType(index);
        return type != nullptr && type->simulatable;
    }

    SV::String GetModelTypeIconImg(int index, int size) override {
        static constexpr std::string_view names[] = {"business-process", "working-environment",
                                                     "company-map"};
        return findType(index) != nullptr
                   ? SV::String(fmt::format("{}-{}.png", names[static_cast<std::size_t>(index)], size))
                   : SV::String();
    }

private:
    [[nodiscard]] const Library::ModelType* findType(int index) const {
        const auto types = repository.library().modelTypes();
        return index >= 0 && static_cast<std::size_t>(index) < types.size()
                   ? &types[static_cast<std::size_t>(index)]
                   : nullptr;
    }

    const Repository& repository;
};

class Manager : public MeroCoreModelingManager {
public:
    explicit Manager(Repository& servedRepository)
        : basicPart(servedRepository),
          enhancedPart(servedRepository),
          loadSavePart(servedRepository),
          referencesPart(servedRepository) {}

    MeroCoreMM_Basic& basic() override { return basicPart; }
    MeroCoreMM_Enhanced& enhanced() override { return enhancedPart; }
    MeroCoreMM_LoadSave& loadSave() override { return loadSavePart; }
    MeroCoreMM_References& references() override { return referencesPart; }

private:
    BasicService basicPart;
    EnhancedService enhancedPart;
    LoadSaveService loadSavePart;
    ReferenceService referencesPart;
};

}  // namespace

struct RepositoryServices::Parts {
    explicit Parts(Repository& repository) : manager(repository), modelTypes(repository) {}

    Manager manager;
    SimMappingService simMapping;
    ModelTypeService modelTypes;
    MeroCoreModelingManager* managerBefore = nullptr;
    MeroSimMappingHandler* simMappingBefore = nullptr;
    MeroModelTypeAttrHandler* modelTypesBefore = nullptr;
};

RepositoryServices::RepositoryServices(Repository& servedRepository)
    : parts(std::make_unique<Parts>(servedRepository)) {
    parts->managerBefore = MeroCoreModelingManager::SetGlobal(&parts->manager);
    parts->simMappingBefore = MeroSimMappingHandler::SetGlobal(&parts->simMapping);
    parts->modelTypesBefore = MeroModelTypeAttrHandler::SetGlobal(&parts->modelTypes);
}

RepositoryServices::~RepositoryServices() {
    MeroCoreModelingManager::SetGlobal(parts->managerBefore);
    MeroSimMappingHandler::SetGlobal(parts->simMappingBefore);
    MeroModelTypeAttrHandler::SetGlobal(parts->modelTypesBefore);
}

MeroCoreModelingManager& RepositoryServices::manager() {
    return parts->manager;
}

MeroSimMappingHandler& RepositoryServices::simMapping() {
    return parts->simMapping;
}

MeroModelTypeAttrHandler& RepositoryServices::modelTypes() {
    return parts->modelTypes;
}

}  // namespace mero
