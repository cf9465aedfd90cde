#pragma once

#include "component/host/repository.h"

#include "platform/repository/repository.h"

namespace mero {

[[nodiscard]] bool isLibrary(MeroId id);

/// Classes, instances, relations and models of the host contract.
class EnhancedService : public MeroCoreMM_Enhanced {
public:
    explicit EnhancedService(Repository& servedRepository) : repository(servedRepository) {}

    int classOf(MeroId instanceId, MeroId& classId) override;
    int instanceOf(MeroId classId, MeroId instanceId, bool& isInstance) override;
    int isSubClassOf(MeroId superClassId, MeroId classId, bool& isSubClass) override;
    int getAllSubClasses(MeroId classId, ISortedSet<MeroId>& classes) override;
    int getAllClasses(MeroId libraryId, ISortedSet<MeroId>& classes) override;
    int getAllInstantiableClasses(MeroId libraryId, ISortedSet<MeroId>& classes, bool withAgents) override;
    int getClassIDFromClassName(MeroId libraryId, const SV::String& name, MeroId& classId) override;
    int getAttributeIDFromAttributeName(MeroId classId, const SV::String& name, MeroId& attributeId) override;
    int getRelationIDFromRelationName(MeroId libraryId, const SV::String& name, MeroId& relationId) override;
    int getUIAttributeType(MeroId attributeId, MeroCoreAttributeType& type) override;
    int getNotebookAttributeIDsFromClassID(MeroId classId, ISortedSet<MeroId>& attributes, bool inherited,
                                           bool withAgentTexts) override;
    int getBPLibraryName(const char*& name) override;

    int getAttributeValue(MeroId instanceId, MeroId attributeId, const char*& value, bool resolved) override;
    int getAttributeValue(MeroId instanceId, MeroId attributeId, double& value, bool resolved) override;
    int getAttributeValue(MeroId instanceId, MeroId attributeId, MeroId& value, bool resolved) override;
    int getInstanceIDFromInstanceName(MeroId modelId, MeroId classId, const SV::String& name,
                                      MeroId& instanceId) override;
    int getFromInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) override;
    int getToInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) override;
    int getAllFromRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) override;
    int getAllToRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) override;

    int createInstance(MeroId modelId, MeroId classId, const SV::String& name, MeroId& instanceId,
                       bool checked) override;
    int deleteInstance(MeroId modelId, MeroId instanceId, bool keepRelations) override;
    int RenameInstance(MeroId modelId, MeroId instanceId, const SV::String& name, MeroId& conflictingId,
                       bool checked) override;
    int setAttributeValue(MeroId modelId, MeroId instanceId, MeroId attributeId, const SV::String& text,
                          bool force) override;

    int getModelOfInstance(MeroId instanceId, MeroId& modelId) override;
    int getAccessMode(MeroId modelId, MeroCoreAccessMode& mode) override;
    int getModelNameAndVersion(MeroId modelId, SV::String& name) override;
    int getModelClass(MeroId modelId, bool& isProcessModel) override;
    int getLibraryOfModel(MeroId modelId, MeroId& libraryId) override;
    int modelsLoaded(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& loaded, MeroId libraryId,
                     bool& allLoaded) override;
    int computeSubprocesses(MeroId modelId, ISortedSet<MeroId>& subModels, ISortedSet<MeroId>& loaded,
                            MeroId& problem, ISortedSet<MeroId>& other, bool& flag) override;
    int getSubprocessInformationLoadedModels(MeroId modelId, ISortedSet<MeroId>& subModels,
                                             bool direct) override;
    int discardModel(MeroId modelId) override;

private:
    [[nodiscard]] MeroId classOfModel(const Model& model) const;
    [[nodiscard]] MeroId libraryOfModel(const Model& model) const;
    /// Null unless the attribute holds a text; `value` is the stored text or the default.
    [[nodiscard]] int findText(MeroId ownerId, MeroId attributeId, const char*& value) const;
    template <class Number>
    [[nodiscard]] int findNumber(MeroId instanceId, MeroId attributeId, MeroCoreAttributeType type,
                                 Number& value) const;
    /// Whether `instanceId` may be changed as one of `modelId`.
    [[nodiscard]] int checkWrite(MeroId modelId, MeroId instanceId) const;

    Repository& repository;
};

}  // namespace mero
