#pragma once

#include "component/host/containers.h"
#include "component/host/core_variables.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

enum MeroCoreAccessMode : int { AccessNone = 0, AccessWrite = 1, AccessRead = 2 };

enum MeroCoreAttributeType : int {
    AttributeText = 1,
    AttributeInteger = 2,
    AttributeDouble = 3,
    AttributeTime = 4,  ///< time text YY:DDD:HH:MM:SS
    AttributeEnumeration = 5,
    AttributeModelReference = 6,
    AttributeAssignmentRule = 7,
    AttributeCalendar = 8,
};

/// Meta model, instances and attributes by value. Every operation gives a `MeroRepositoryCode`.
class MeroCoreMM_Basic {
public:
    virtual ~MeroCoreMM_Basic() = default;

    /// `name` stays the repository's; valid until the library changes.
    virtual int getAttributeName(MeroId attributeId, const char*& name) = 0;
    /// Instances of `classId` and all classes below it in `modelId`; replaces the content of `instances`. The
    /// last argument is always true.
    virtual int getAllInstancesOfClassAndSubClassInModel(MeroId modelId, MeroId classId,
                                                         ISortedSet<MeroId>& instances,
                                                         bool withSubClasses) = 0;
};

/// Classes, instances, relations and models. Every operation gives a `MeroRepositoryCode`.
class MeroCoreMM_Enhanced {
public:
    virtual ~MeroCoreMM_Enhanced() = default;

    // Meta model

    /// Class of an instance or of a model.
    virtual int classOf(MeroId instanceId, MeroId& classId) = 0;
    /// True also for sub-classes. `RepositoryClassUnknown` if the identifier is a model, or the class isn't
    /// one of the library of its model; `RepositoryNotFound` for an identifier that nothing has.
    virtual int instanceOf(MeroId classId, MeroId instanceId, bool& isInstance) = 0;
    /// A class counts as a sub-class of itself.
    virtual int isSubClassOf(MeroId superClassId, MeroId classId, bool& isSubClass) = 0;
    /// All classes below `classId`, over all levels, without itself.
    virtual int getAllSubClasses(MeroId classId, ISortedSet<MeroId>& classes) = 0;
    virtual int getAllClasses(MeroId libraryId, ISortedSet<MeroId>& classes) = 0;
    virtual int getAllInstantiableClasses(MeroId libraryId, ISortedSet<MeroId>& classes, bool withAgents) = 0;
    virtual int getClassIDFromClassName(MeroId libraryId, const SV::String& name, MeroId& classId) = 0;
    /// Own and inherited attributes.
    virtual int getAttributeIDFromAttributeName(MeroId classId, const SV::String& name,
                                                MeroId& attributeId) = 0;
    virtual int getRelationIDFromRelationName(MeroId libraryId, const SV::String& name,
                                              MeroId& relationId) = 0;
    virtual int getUIAttributeType(MeroId attributeId, MeroCoreAttributeType& type) = 0;
    /// Attributes that a class shows in its notebook, inherited ones with `inherited`.
    virtual int getNotebookAttributeIDsFromClassID(MeroId classId, ISortedSet<MeroId>& attributes,
                                                   bool inherited, bool withAgentTexts) = 0;
    /// `name` stays the repository's.
    virtual int getBPLibraryName(const char*& name) = 0;

    // Reading instances

    /// Text of any attribute that holds text. `value` stays the repository's until the next change, and may
    /// come back null, which counts as empty. `RepositoryWrongType` for a number, `RepositoryNotFound` for an
    /// attribute that the instance's class lacks. Attribute 9 is the name of an instance or model, 94 the
    /// name of a model's type; 4 the name of a class and 10 that of a relation class, asked with the class's
    /// identifier. The last argument is always true.
    virtual int getAttributeValue(MeroId instanceId, MeroId attributeId, const char*& value,
                                  bool resolved) = 0;
    virtual int getAttributeValue(MeroId instanceId, MeroId attributeId, double& value, bool resolved) = 0;
    /// Also for attribute 5 of a class: 1 if it is abstract, else 0.
    virtual int getAttributeValue(MeroId instanceId, MeroId attributeId, MeroId& value, bool resolved) = 0;
    virtual int getInstanceIDFromInstanceName(MeroId modelId, MeroId classId, const SV::String& name,
                                              MeroId& instanceId) = 0;
    /// Objects from which a relation of class `relationId` leads to `instanceId`.
    virtual int getFromInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) = 0;
    /// Objects to which a relation of class `relationId` leads from `instanceId`.
    virtual int getToInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) = 0;
    /// Relation classes that may begin at objects of `classId`, own and inherited.
    virtual int getAllFromRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) = 0;
    /// Relation classes that may end at objects of `classId`, own and inherited.
    virtual int getAllToRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) = 0;

    // Writing instances

    /// With an empty name the repository makes one. The last argument is always true.
    virtual int createInstance(MeroId modelId, MeroId classId, const SV::String& name, MeroId& instanceId,
                               bool checked) = 0;
    /// Takes the relations of the instance along. The last argument is always false.
    virtual int deleteInstance(MeroId modelId, MeroId instanceId, bool keepRelations) = 0;
    /// `RepositoryNameInUse` if another instance of the model and class has the name; `conflictingId` then
    /// names it. The last argument is always true.
    virtual int RenameInstance(MeroId modelId, MeroId instanceId, const SV::String& name,
                               MeroId& conflictingId, bool checked) = 0;
    /// `RepositoryValueTooLong` for a text of more than 3600 code points in an agent's attribute. The last
    /// argument is always false.
    virtual int setAttributeValue(MeroId modelId, MeroId instanceId, MeroId attributeId,
                                  const SV::String& text, bool force) = 0;

    // Models

    /// `RepositoryClassUnknown` for a model, another failure for an identifier without an instance.
    virtual int getModelOfInstance(MeroId instanceId, MeroId& modelId) = 0;
    virtual int getAccessMode(MeroId modelId, MeroCoreAccessMode& mode) = 0;
    virtual int getModelNameAndVersion(MeroId modelId, SV::String& name) = 0;
    /// True for a process model.
    virtual int getModelClass(MeroId modelId, bool& isProcessModel) = 0;
    virtual int getLibraryOfModel(MeroId modelId, MeroId& libraryId) = 0;
    /// Those of `models` that are loaded; `allLoaded` if none is missing.
    virtual int modelsLoaded(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& loaded, MeroId libraryId,
                             bool& allLoaded) = 0;
    /// Models that `modelId` calls, directly and over other models; a model that reaches itself stands in its
    /// own result. Models that had to be loaded for that are named in `loaded`. `problem` is the first
    /// object whose call names no process model, else 0; a call without a name calls nothing. `flag` goes in
    /// with the caller's expectation and comes out unchanged unless a model had to be opened for writing.
    virtual int computeSubprocesses(MeroId modelId, ISortedSet<MeroId>& subModels, ISortedSet<MeroId>& loaded,
                                    MeroId& problem, ISortedSet<MeroId>& other, bool& flag) = 0;
    /// Adds the sub-process models of `modelId` that are loaded, without loading any. The last argument is
    /// false.
    virtual int getSubprocessInformationLoadedModels(MeroId modelId, ISortedSet<MeroId>& subModels,
                                                     bool direct) = 0;
    virtual int discardModel(MeroId modelId) = 0;
};

class MeroCoreMM_LoadSave {
public:
    virtual ~MeroCoreMM_LoadSave() = default;

    /// True if the model is in memory.
    [[nodiscard]] virtual bool IsModelLoaded(MeroId modelId) = 0;
};

/// Resolves references from one model to another. `MeroReferencedModelsHandler` and
/// `MeroCoreInterReferenceHandler` ask it.
class MeroCoreMM_References {
public:
    virtual ~MeroCoreMM_References() = default;

    /// Model that the text of a reference attribute names, if its class is `modelClassId` (69 for any model)
    /// or below; 0 allows any as well.
    virtual int getTargetModelID(const SV::String& reference, MeroId modelClassId, MeroId& modelId) = 0;
    /// Models reachable from `modelId` along its model references, without itself unless it is reached again.
    /// A working environment has none.
    virtual int getAllReferencedModels(MeroId modelId, ISortedSet<MeroId>& models) = 0;
    virtual int getSubModelAttributeOfClass(MeroId classId, MeroId& attributeId) = 0;
    virtual int getAllSubmodelReferencingClasses(MeroId libraryId, ISortedSet<MeroId>& classes) = 0;
};

/// The model repository. The host installs one; a decorator can stand in front of it.
class MeroCoreModelingManager {
public:
    virtual ~MeroCoreModelingManager() = default;

    /// Null while none is installed.
    [[nodiscard]] static MeroCoreModelingManager* GetGlobal();
    /// `manager` isn't owned and has to outlive its use; null uninstalls. Gives the one before.
    static MeroCoreModelingManager* SetGlobal(MeroCoreModelingManager* manager);

    [[nodiscard]] virtual MeroCoreMM_Basic& basic() = 0;
    [[nodiscard]] virtual MeroCoreMM_Enhanced& enhanced() = 0;
    [[nodiscard]] virtual MeroCoreMM_LoadSave& loadSave() = 0;
    [[nodiscard]] virtual MeroCoreMM_References& references() = 0;
};
