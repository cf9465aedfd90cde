#include <utility>

#include "component/host/model_references.h"
#include "component/host/model_types.h"
#include "component/host/repository.h"
#include "component/host/sim_mapping.h"

#include "platform/repository/model_calls.h"

// Installed services, and the helper classes of the contract that do nothing but ask them.

namespace {

MeroCoreModelingManager* modelingManager = nullptr;
MeroSimMappingHandler* simMappingHandler = nullptr;
MeroModelTypeAttrHandler* modelTypeHandler = nullptr;

/// Asks the installed repository for references; without one nothing is found.
template <class Question>
int askReferences(Question question) {
    return modelingManager != nullptr ? question(modelingManager->references()) : RepositoryNotFound;
}

}  // namespace

MeroCoreModelingManager* MeroCoreModelingManager::GetGlobal() {
    return modelingManager;
}

MeroCoreModelingManager* MeroCoreModelingManager::SetGlobal(MeroCoreModelingManager* manager) {
    return std::exchange(modelingManager, manager);
}

MeroSimMappingHandler* MeroSimMappingHandler::GetGlobal() {
    return simMappingHandler;
}

MeroSimMappingHandler* MeroSimMappingHandler::SetGlobal(MeroSimMappingHandler* handler) {
    return std::exchange(simMappingHandler, handler);
}

MeroModelTypeAttrHandler* MeroModelTypeAttrHandler::GetGlobal() {
    return modelTypeHandler;
}

MeroModelTypeAttrHandler* MeroModelTypeAttrHandler::SetGlobal(MeroModelTypeAttrHandler* handler) {
    return std::exchange(modelTypeHandler, handler);
}

int MeroSetInterRefDlg::getCalledSubProcesses(MeroModelTypeInterRefs& references) {
    references.attributes = {Mero_GetCoreVar(CoreReferencedModel)};
    return RepositoryOk;
}

int MeroReferencedModelsHandler::getAllReferencedModels(ISortedSet<MeroId>& models) const {
    models.clear();
    if (!references.attributes.contains(Mero_GetCoreVar(CoreReferencedModel))) {
        return RepositoryOk;
    }
    return askReferences(
        [&](MeroCoreMM_References& service) { return service.getAllReferencedModels(modelId, models); });
}

int MeroReferencedModelsHandler::getSubModelAttributeOfClass(MeroId classId, MeroId& attributeId) {
    return askReferences([&](MeroCoreMM_References& service) {
        return service.getSubModelAttributeOfClass(classId, attributeId);
    });
}

int MeroReferencedModelsHandler::getAllSubmodelReferencingClasses(MeroId libraryId,
                                                                  ISortedSet<MeroId>& classes) {
    return askReferences([&](MeroCoreMM_References& service) {
        return service.getAllSubmodelReferencingClasses(libraryId, classes);
    });
}

int MeroCoreInterModelReference::GetIDOfReferencedModel(MeroId& modelId) const {
    return MeroCoreInterReferenceHandler::getTargetModelID(text, ClassCodeModel, modelId);
}

int MeroCoreInterReferenceHandler::initHandler(const SV::String& text, int& code) {
    targets.clear();
    code = RepositoryNotFound;
    if (modelingManager == nullptr) {
        return code;
    }
    MeroId holder = MeroNoId;
    code = modelingManager->enhanced().getModelOfInstance(instanceId, holder);
    if (code == RepositoryOk && holder != modelId) {
        code = RepositoryNotFound;
    }
    MeroCoreAttributeType type = AttributeText;
    if (code == RepositoryOk) {
        code = modelingManager->enhanced().getUIAttributeType(attributeId, type);
    }
    if (code == RepositoryOk && type != AttributeModelReference) {
        code = RepositoryWrongType;
    }
    if (code == RepositoryOk) {
        for (const std::string_view name : mero::splitReferences(text.view())) {
            targets.append(name);
        }
    }
    return code;
}

int MeroCoreInterReferenceHandler::getTargetModelID(const SV::String& text, MeroId modelClassId,
                                                    MeroId& targetModelId) {
    return askReferences([&](MeroCoreMM_References& service) {
        return service.getTargetModelID(text, modelClassId, targetModelId);
    });
}
