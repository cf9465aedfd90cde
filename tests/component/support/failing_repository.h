#pragma once

#include "component/host/repository.h"

namespace mero::test {

/// Stands in front of the installed repository, counts the calls and lets one of them fail: it answers with a
/// code and does nothing. Installed from its construction to its destruction.
class FailingRepository : public MeroCoreModelingManager,
                          public MeroCoreMM_Basic,
                          public MeroCoreMM_Enhanced,
                          public MeroCoreMM_LoadSave,
                          public MeroCoreMM_References {
public:
    static constexpr int NoCall = 0;

    /// `failingCall` counts from 1.
    explicit FailingRepository(int failingCall, int code = RepositoryStorageFailed)
        : inner(*MeroCoreModelingManager::GetGlobal()), callToFail(failingCall), failureCode(code) {
        MeroCoreModelingManager::SetGlobal(this);
    }
    FailingRepository(const FailingRepository&) = delete;
    FailingRepository& operator=(const FailingRepository&) = delete;
    ~FailingRepository() override { MeroCoreModelingManager::SetGlobal(&inner); }

    [[nodiscard]] int callCount() const { return calls; }
    /// Name of the operation that failed; empty if none has.
    [[nodiscard]] const char* failedOperation() const { return failed; }

    MeroCoreMM_Basic& basic() override { return *this; }
    MeroCoreMM_Enhanced& enhanced() override { return *this; }
    MeroCoreMM_LoadSave& loadSave() override { return *this; }
    MeroCoreMM_References& references() override { return *this; }

    int getAttributeName(MeroId attributeId, const char*& name) override {
        return answer(__func__, [&] { return inner.basic().getAttributeName(attributeId, name); });
    }
    int getAllInstancesOfClassAndSubClassInModel(MeroId modelId, MeroId classId,
                                                 ISortedSet<MeroId>& instances,
                                                 bool withSubClasses) override {
        return answer(__func__, [&] {
            return inner.basic().getAllInstancesOfClassAndSubClassInModel(modelId, classId, instances,
                                                                          withSubClasses);
        });
    }

    int classOf(MeroId instanceId, MeroId& classId) override {
        return answer(__func__, [&] { return inner.enhanced().classOf(instanceId, classId); });
    }
    int instanceOf(MeroId classId, MeroId instanceId, bool& isInstance) override {
        return answer(__func__, [&] { return inner.enhanced().instanceOf(classId, instanceId, isInstance); });
    }
    int isSubClassOf(MeroId superClassId, MeroId classId, bool& isSubClass) override {
        return answer(__func__,
                      [&] { return inner.enhanced().isSubClassOf(superClassId, classId, isSubClass); });
    }
    int getAllSubClasses(MeroId classId, ISortedSet<MeroId>& classes) override {
        return answer(__func__, [&] { return inner.enhanced().getAllSubClasses(classId, classes); });
    }
    int getAllClasses(MeroId libraryId, ISortedSet<MeroId>& classes) override {
        return answer(__func__, [&] { return inner.enhanced().getAllClasses(libraryId, classes); });
    }
    int getAllInstantiableClasses(MeroId libraryId, ISortedSet<MeroId>& classes, bool withAgents) override {
        return answer(__func__, [&] {
            return inner.enhanced().getAllInstantiableClasses(libraryId, classes, withAgents);
        });
    }
    int getClassIDFromClassName(MeroId libraryId, const SV::String& name, MeroId& classId) override {
        return answer(__func__,
                      [&] { return inner.enhanced().getClassIDFromClassName(libraryId, name, classId); });
    }
    int getAttributeIDFromAttributeName(MeroId classId, const SV::String& name,
                                        MeroId& attributeId) override {
        return answer(__func__, [&] {
            return inner.enhanced().getAttributeIDFromAttributeName(classId, name, attributeId);
        });
    }
    int getRelationIDFromRelationName(MeroId libraryId, const SV::String& name, MeroId& relationId) override {
        return answer(__func__, [&] {
            return inner.enhanced().getRelationIDFromRelationName(libraryId, name, relationId);
        });
    }
    int getUIAttributeType(MeroId attributeId, MeroCoreAttributeType& type) override {
        return answer(__func__, [&] { return inner.enhanced().getUIAttributeType(attributeId, type); });
    }
    int getNotebookAttributeIDsFromClassID(MeroId classId, ISortedSet<MeroId>& attributes, bool inherited,
                                           bool withAgentTexts) override {
        return answer(__func__, [&] {
            return inner.enhanced().getNotebookAttributeIDsFromClassID(classId, attributes, inherited,
                                                                       withAgentTexts);
        });
    }
    int getBPLibraryName(const char*& name) override {
        return answer(__func__, [&] { return inner.enhanced().getBPLibraryName(name); });
    }
    int getAttributeValue(MeroId instanceId, MeroId attributeId, const char*& value, bool resolved) override {
        return readAttribute(instanceId, attributeId, value, resolved);
    }
    int getAttributeValue(MeroId instanceId, MeroId attributeId, double& value, bool resolved) override {
        return readAttribute(instanceId, attributeId, value, resolved);
    }
    int getAttributeValue(MeroId instanceId, MeroId attributeId, MeroId& value, bool resolved) override {
        return readAttribute(instanceId, attributeId, value, resolved);
    }
    int getInstanceIDFromInstanceName(MeroId modelId, MeroId classId, const SV::String& name,
                                      MeroId& instanceId) override {
        return answer(__func__, [&] {
            return inner.enhanced().getInstanceIDFromInstanceName(modelId, classId, name, instanceId);
        });
    }
    int getFromInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) override {
        return answer(__func__,
                      [&] { return inner.enhanced().getFromInstances(instanceId, relationId, instances); });
    }
    int getToInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) override {
        return answer(__func__,
                      [&] { return inner.enhanced().getToInstances(instanceId, relationId, instances); });
    }
    int getAllFromRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) override {
        return answer(__func__,
                      [&] { return inner.enhanced().getAllFromRelationsRecursive(classId, relations); });
    }
    int getAllToRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) override {
        return answer(__func__,
                      [&] { return inner.enhanced().getAllToRelationsRecursive(classId, relations); });
    }
    int createInstance(MeroId modelId, MeroId classId, const SV::String& name, MeroId& instanceId,
                       bool checked) override {
        return answer(__func__, [&] {
            return inner.enhanced().createInstance(modelId, classId, name, instanceId, checked);
        });
    }
    int deleteInstance(MeroId modelId, MeroId instanceId, bool keepRelations) override {
        return answer(__func__,
                      [&] { return inner.enhanced().deleteInstance(modelId, instanceId, keepRelations); });
    }
    int RenameInstance(MeroId modelId, MeroId instanceId, const SV::String& name, MeroId& conflictingId,
                       bool checked) override {
        return answer(__func__, [&] {
            return inner.enhanced().RenameInstance(modelId, instanceId, name, conflictingId, checked);
        });
    }
    int setAttributeValue(MeroId modelId, MeroId instanceId, MeroId attributeId, const SV::String& text,
                          bool force) override {
        return answer(__func__, [&] {
            return inner.enhanced().setAttributeValue(modelId, instanceId, attributeId, text, force);
        });
    }
    int getModelOfInstance(MeroId instanceId, MeroId& modelId) override {
        return answer(__func__, [&] { return inner.enhanced().getModelOfInstance(instanceId, modelId); });
    }
    int getAccessMode(MeroId modelId, MeroCoreAccessMode& mode) override {
        return answer(__func__, [&] { return inner.enhanced().getAccessMode(modelId, mode); });
    }
    int getModelNameAndVersion(MeroId modelId, SV::String& name) override {
        return answer(__func__, [&] { return inner.enhanced().getModelNameAndVersion(modelId, name); });
    }
    int getModelClass(MeroId modelId, bool& isProcessModel) override {
        return answer(__func__, [&] { return inner.enhanced().getModelClass(modelId, isProcessModel); });
    }
    int getLibraryOfModel(MeroId modelId, MeroId& libraryId) override {
        return answer(__func__, [&] { return inner.enhanced().getLibraryOfModel(modelId, libraryId); });
    }
    int modelsLoaded(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& loaded, MeroId libraryId,
                     bool& allLoaded) override {
        return answer(__func__,
                      [&] { return inner.enhanced().modelsLoaded(models, loaded, libraryId, allLoaded); });
    }
    int computeSubprocesses(MeroId modelId, ISortedSet<MeroId>& subModels, ISortedSet<MeroId>& loaded,
                            MeroId& problem, ISortedSet<MeroId>& other, bool& flag) override {
        return answer(__func__, [&] {
            return inner.enhanced().computeSubprocesses(modelId, subModels, loaded, problem, other, flag);
        });
    }
    int getSubprocessInformationLoadedModels(MeroId modelId, ISortedSet<MeroId>& subModels,
                                             bool direct) override {
        return answer(__func__, [&] {
            return inner.enhanced().getSubprocessInformationLoadedModels(modelId, subModels, direct);
        });
    }
    int discardModel(MeroId modelId) override {
        return answer(__func__, [&] { return inner.enhanced().discardModel(modelId); });
    }

    bool IsModelLoaded(MeroId modelId) override {
        return !isFailing(__func__) && inner.loadSave().IsModelLoaded(modelId);
    }

    int getTargetModelID(const SV::String& reference, MeroId modelClassId, MeroId& modelId) override {
        return answer(__func__,
                      [&] { return inner.references().getTargetModelID(reference, modelClassId, modelId); });
    }
    int getAllReferencedModels(MeroId modelId, ISortedSet<MeroId>& models) override {
        return answer(__func__, [&] { return inner.references().getAllReferencedModels(modelId, models); });
    }
    int getSubModelAttributeOfClass(MeroId classId, MeroId& attributeId) override {
        return answer(__func__,
                      [&] { return inner.references().getSubModelAttributeOfClass(classId, attributeId); });
    }
    int getAllSubmodelReferencingClasses(MeroId libraryId, ISortedSet<MeroId>& classes) override {
        return answer(__func__, [&] {
            return inner.references().getAllSubmodelReferencingClasses(libraryId, classes);
        });
    }

private:
    bool isFailing(const char* operation) {
        if (++calls != callToFail) {
            return false;
        }
        failed = operation;
        return true;
    }

    template <class Call>
    int answer(const char* operation, Call call) {
        return isFailing(operation) ? failureCode : call();
    }

    template <class Value>
    int readAttribute(MeroId instanceId, MeroId attributeId, Value& value, bool resolved) {
        return answer("getAttributeValue", [&] {
            return inner.enhanced().getAttributeValue(instanceId, attributeId, value, resolved);
        });
    }

    MeroCoreModelingManager& inner;
    int callToFail;
    int failureCode;
    int calls = 0;
    const char* failed = "";
};

}  // namespace mero::test
