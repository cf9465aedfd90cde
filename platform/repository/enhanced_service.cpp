#include "platform/repository/enhanced_service.h"

#include "platform/repository/attribute_values.h"
#include "platform/repository/model_calls.h"

namespace mero {

namespace {

constexpr std::size_t AgentTextLimit = 3600;  // code points

bool isModelClass(MeroId classId) {
    return classId == ClassCodeModel || classId == ClassCodeProcessModel ||
           classId == ClassCodeEnvironmentModel;
}

/// Classes that objects of a model can have, and their bases.
bool isObjectClass(const Library::Class& entry) {
    return !isLibrary(entry.id) && !isModelClass(entry.id);
}

}  // namespace

bool isLibrary(MeroId id) {
    return id == ClassCodeProcessLibrary || id == ClassCodeEnvironmentLibrary;
}

MeroId EnhancedService::classOfModel(const Model& model) const {
    return repository.library().modelTypes()[model.type].classId;
}

MeroId EnhancedService::libraryOfModel(const Model& model) const {
    return repository.library().findClass(classOfModel(model))->libraryId;
}

// Meta model

int EnhancedService::classOf(MeroId instanceId, MeroId& classId) {
    if (const Object* object = repository.findObject(instanceId)) {
        classId = object->classId;
        return RepositoryOk;
    }
    if (const Model* model = repository.findModel(instanceId)) {
        classId = classOfModel(*model);
        return RepositoryOk;
    }
    return RepositoryNotFound;
}

int EnhancedService::instanceOf(MeroId classId, MeroId instanceId, bool& isInstance) {
    isInstance = false;
    const Library& library = repository.library();
    if (const Object* object = repository.findObject(instanceId)) {
        if (isModelClass(classId)) {
            return RepositoryOk;
        }
        const Library::Class* entry = library.findClass(classId);
        if (entry == nullptr || entry->libraryId != library.findClass(object->classId)->libraryId) {
            return RepositoryClassUnknown;
        }
        isInstance = library.isSubClassOf(classId, object->classId);
        return RepositoryOk;
    }
    if (const Model* model = repository.findModel(instanceId)) {
        if (!isModelClass(classId)) {
            return RepositoryClassUnknown;
        }
        isInstance = library.isSubClassOf(classId, classOfModel(*model));
        return RepositoryOk;
    }
    return RepositoryNotFound;
}

int EnhancedService::isSubClassOf(MeroId superClassId, MeroId classId, bool& isSubClass) {
    isSubClass = false;
    const Library& library = repository.library();
    if (library.findClass(superClassId) == nullptr || library.findClass(classId) == nullptr) {
        return RepositoryClassUnknown;
    }
    isSubClass = library.isSubClassOf(superClassId, classId);
    return RepositoryOk;
}

int EnhancedService::getAllSubClasses(MeroId classId, ISortedSet<MeroId>& classes) {
    classes.clear();
    if (repository.library().findClass(classId) == nullptr) {
        return RepositoryClassUnknown;
    }
    for (const MeroId subClassId : repository.library().subClassesOf(classId)) {
        classes.insert(subClassId);
    }
    return RepositoryOk;
}

int EnhancedService::getAllClasses(MeroId libraryId, ISortedSet<MeroId>& classes) {
    classes.clear();
    if (!isLibrary(libraryId)) {
        return RepositoryClassUnknown;
    }
    for (const Library::Class& entry : repository.library().classes()) {
        if (entry.libraryId == libraryId && isObjectClass(entry)) {
            classes.insert(entry.id);
        }
    }
    return RepositoryOk;
}

int EnhancedService::getAllInstantiableClasses(MeroId libraryId, ISortedSet<MeroId>& classes,
                                               bool withAgents) {
    classes.clear();
    if (!isLibrary(libraryId)) {
        return RepositoryClassUnknown;
    }
    for (const Library::Class& entry : repository.library().classes()) {
        if (entry.libraryId == libraryId && !entry.abstract && (withAgents || !entry.agent)) {
            classes.insert(entry.id);
        }
    }
    return RepositoryOk;
}

int EnhancedService::getClassIDFromClassName(MeroId libraryId, const SV::String& name, MeroId& classId) {
    classId = MeroNoId;
    const Library::Class* entry = repository.library().findClass(libraryId, name.view());
    if (entry == nullptr || !isObjectClass(*entry)) {
        return RepositoryNotFound;
    }
    classId = entry->id;
    return RepositoryOk;
}

int EnhancedService::getAttributeIDFromAttributeName(MeroId classId, const SV::String& name,
                                                     MeroId& attributeId) {
    attributeId = MeroNoId;
    const Library& library = repository.library();
    if (library.findClass(classId) == nullptr) {
        return RepositoryClassUnknown;
    }
    const Library::Attribute* attribute = library.findAttribute(classId, name.view());
    if (attribute == nullptr) {
        return RepositoryNotFound;
    }
    attributeId = attribute->id;
    return RepositoryOk;
}

int EnhancedService::getRelationIDFromRelationName(MeroId libraryId, const SV::String& name,
                                                   MeroId& relationId) {
    relationId = MeroNoId;
    const Library::RelationClass* entry = repository.library().findRelationClass(libraryId, name.view());
    if (entry == nullptr) {
        return RepositoryNotFound;
    }
    relationId = entry->id;
    return RepositoryOk;
}

int EnhancedService::getUIAttributeType(MeroId attributeId, MeroCoreAttributeType& type) {
    const Library::Attribute* attribute = repository.library().findAttribute(attributeId);
    if (attribute == nullptr) {
        return RepositoryNotFound;
    }
    type = attribute->type;
    return RepositoryOk;
}

int EnhancedService::getNotebookAttributeIDsFromClassID(MeroId classId, ISortedSet<MeroId>& attributes,
                                                        bool inherited, bool withAgentTexts) {
    attributes.clear();
    const Library& library = repository.library();
    const Library::Class* entry = library.findClass(classId);
    if (entry == nullptr) {
        return RepositoryClassUnknown;
    }
    const auto add = [&](const Library::Attribute& attribute) {
        if (withAgentTexts || !attribute.holdsAgentText) {
            attributes.insert(attribute.id);
        }
    };
    if (inherited) {
        for (const Library::Attribute* attribute : library.attributesOf(classId)) {
            add(*attribute);
        }
    } else {
        for (const MeroId attributeId : entry->attributes) {
            add(*library.findAttribute(attributeId));
        }
    }
    return RepositoryOk;
}

int EnhancedService::getBPLibraryName(const char*& name) {
    name = repository.library().findClass(ClassCodeProcessLibrary)->name.c_str();
    return RepositoryOk;
}

// Reading instances

int EnhancedService::findText(MeroId ownerId, MeroId attributeId, const char*& value) const {
    const Library& library = repository.library();
    const Object* object = repository.findObject(ownerId);
    if (object != nullptr && attributeId == ClassCodeInstanceName) {
        value = object->name.GetStr();
        return RepositoryOk;
    }
    const MeroId ownerClassId = object != nullptr ? object->classId : ownerId;
    const Library::Attribute* attribute = library.findAttribute(attributeId);
    if (attribute == nullptr || !library.hasAttribute(ownerClassId, attributeId)) {
        return RepositoryNotFound;
    }
    if (isNumber(*attribute)) {
        return RepositoryWrongType;
    }
    const AttributeValue* stored = object != nullptr ? findValue(object->values, attributeId) : nullptr;
    value = stored != nullptr ? std::get<SV::String>(*stored).GetStr() : attribute->defaultText.c_str();
    return RepositoryOk;
}

int EnhancedService::getAttributeValue(MeroId instanceId, MeroId attributeId, const char*& value,
                                       bool /*resolved*/) {
    value = nullptr;
    const Library& library = repository.library();
    if (attributeId == ClassCodeName) {
        if (const Library::Class* entry = library.findClass(instanceId)) {
            value = entry->name.c_str();
            return RepositoryOk;
        }
    }
    if (attributeId == ClassCodeName || attributeId == ClassCodeRelationName) {
        const Library::RelationClass* entry = library.findRelationClass(instanceId);
        value = entry != nullptr ? entry->name.c_str() : nullptr;
        return entry != nullptr ? RepositoryOk : RepositoryNotFound;
    }
    if (const Model* model = repository.findModel(instanceId)) {
        if (attributeId == ClassCodeInstanceName) {
            value = model->name.GetStr();
            return RepositoryOk;
        }
        if (attributeId == ClassCodeModelType) {
            value = library.modelTypes()[model->type].name.c_str();
            return RepositoryOk;
        }
    }
    // The library has attributes of its own, under its identifier; other classes have values in objects only.
    return repository.findObject(instanceId) != nullptr || isLibrary(instanceId)
               ? findText(instanceId, attributeId, value)
               : RepositoryNotFound;
}

template <class Number>
int EnhancedService::findNumber(MeroId instanceId, MeroId attributeId, MeroCoreAttributeType type,
                                Number& value) const {
    value = Number();
    const Library& library = repository.library();
    const Object* object = repository.findObject(instanceId);
    if (object == nullptr || !library.hasAttribute(object->classId, attributeId)) {
        return RepositoryNotFound;
    }
    const Library::Attribute& attribute = *library.findAttribute(attributeId);
    if (attribute.type != type) {
        return RepositoryWrongType;
    }
    const AttributeValue* stored = findValue(object->values, attributeId);
    value = stored != nullptr ? std::get<Number>(*stored) : static_cast<Number>(attribute.defaultNumber);
    return RepositoryOk;
}

int EnhancedService::getAttributeValue(MeroId instanceId, MeroId attributeId, double& value,
                                       bool /*resolved*/) {
    return findNumber(instanceId, attributeId, AttributeDouble, value);
}

int EnhancedService::getAttributeValue(MeroId instanceId, MeroId attributeId, MeroId& value,
                                       bool /*resolved*/) {
    if (attributeId == ClassCodeAbstract) {
        const Library::Class* entry = repository.library().findClass(instanceId);
        value = entry != nullptr && entry->abstract ? 1 : 0;
        return entry != nullptr ? RepositoryOk : RepositoryNotFound;
    }
    return findNumber(instanceId, attributeId, AttributeInteger, value);
}

int EnhancedService::getInstanceIDFromInstanceName(MeroId modelId, MeroId classId, const SV::String& name,
                                                   MeroId& instanceId) {
    instanceId = MeroNoId;
    const Library& library = repository.library();
    if (library.findClass(classId) == nullptr) {
        return RepositoryClassUnknown;
    }
    const Object* object = repository.findObject(modelId, classId, name.view());
    for (const MeroId subClassId : library.subClassesOf(classId)) {
        object = object != nullptr ? object : repository.findObject(modelId, subClassId, name.view());
    }
    if (object == nullptr) {
        return RepositoryNotFound;
    }
    instanceId = object->id;
    return RepositoryOk;
}

int EnhancedService::getFromInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) {
    instances.clear();
    if (repository.library().findRelationClass(relationId) == nullptr) {
        return RepositoryClassUnknown;
    }
    if (repository.findObject(instanceId) == nullptr) {
        return RepositoryNotFound;
    }
    for (const MeroId id : repository.relationsTo(instanceId)) {
        const Relation& relation = *repository.findRelation(id);
        if (relation.classId == relationId) {
            instances.insert(relation.from);
        }
    }
    return RepositoryOk;
}

int EnhancedService::getToInstances(MeroId instanceId, MeroId relationId, ISortedSet<MeroId>& instances) {
    instances.clear();
    if (repository.library().findRelationClass(relationId) == nullptr) {
        return RepositoryClassUnknown;
    }
    if (repository.findObject(instanceId) == nullptr) {
        return RepositoryNotFound;
    }
    for (const MeroId id : repository.relationsFrom(instanceId)) {
        const Relation& relation = *repository.findRelation(id);
        if (relation.classId == relationId) {
            instances.insert(relation.to);
        }
    }
    return RepositoryOk;
}

int EnhancedService::getAllFromRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) {
    relations.clear();
    const Library& library = repository.library();
    if (library.findClass(classId) == nullptr) {
        return RepositoryClassUnknown;
    }
    for (const Library::RelationClass& entry : library.relationClasses()) {
        if (library.isSubClassOf(entry.fromClassId, classId)) {
            relations.insert(entry.id);
        }
    }
    return RepositoryOk;
}

int EnhancedService::getAllToRelationsRecursive(MeroId classId, ISortedSet<MeroId>& relations) {
    relations.clear();
    const Library& library = repository.library();
    if (library.findClass(classId) == nullptr) {
        return RepositoryClassUnknown;
    }
    for (const Library::RelationClass& entry : library.relationClasses()) {
        if (library.isSubClassOf(entry.toClassId, classId)) {
            relations.insert(entry.id);
        }
    }
    return RepositoryOk;
}

// Writing instances

int EnhancedService::checkWrite(MeroId modelId, MeroId instanceId) const {
    const Object* object = repository.findObject(instanceId);
    if (object == nullptr || object->modelId != modelId) {
        return RepositoryNotFound;
    }
    return repository.findModel(modelId)->access == ModelAccess::Write ? RepositoryOk : RepositoryNotWritable;
}

int EnhancedService::createInstance(MeroId modelId, MeroId classId, const SV::String& name,
                                    MeroId& instanceId, bool /*checked*/) {
    instanceId = MeroNoId;
    const Model* model = repository.findModel(modelId);
    if (model == nullptr) {
        return RepositoryNotFound;
    }
    const Library::Class* entry = repository.library().findClass(classId);
    if (entry == nullptr || entry->abstract || entry->libraryId != libraryOfModel(*model)) {
        return RepositoryClassUnknown;
    }
    if (model->access != ModelAccess::Write) {
        return RepositoryNotWritable;
    }
    if (!name.IsEmpty() && repository.findObject(modelId, classId, name.view()) != nullptr) {
        return RepositoryNameInUse;
    }
    const auto made = repository.addObject(modelId, classId, name);
    if (!made) {
        return RepositoryBadValue;
    }
    instanceId = made.value();
    return RepositoryOk;
}

int EnhancedService::deleteInstance(MeroId modelId, MeroId instanceId, bool /*keepRelations*/) {
    if (const int code = checkWrite(modelId, instanceId); code != RepositoryOk) {
        return code;
    }
    return repository.removeObject(instanceId) ? RepositoryOk : RepositoryNotFound;
}

int EnhancedService::RenameInstance(MeroId modelId, MeroId instanceId, const SV::String& name,
                                    MeroId& conflictingId, bool /*checked*/) {
    conflictingId = MeroNoId;
    if (const int code = checkWrite(modelId, instanceId); code != RepositoryOk) {
        return code;
    }
    const MeroId classId = repository.findObject(instanceId)->classId;
    const Object* holder = repository.findObject(modelId, classId, name.view());
    if (holder != nullptr && holder->id != instanceId) {
        conflictingId = holder->id;
        return RepositoryNameInUse;
    }
    return repository.renameObject(instanceId, name) ? RepositoryOk : RepositoryBadValue;
}

int EnhancedService::setAttributeValue(MeroId modelId, MeroId instanceId, MeroId attributeId,
                                       const SV::String& text, bool /*force*/) {
    if (const int code = checkWrite(modelId, instanceId); code != RepositoryOk) {
        return code;
    }
    if (attributeId == ClassCodeInstanceName) {
        MeroId conflictingId = MeroNoId;
        return RenameInstance(modelId, instanceId, text, conflictingId, true);
    }
    const char* present = nullptr;
    if (const int code = findText(instanceId, attributeId, present); code != RepositoryOk) {
        return code;
    }
    if (repository.library().findAttribute(attributeId)->holdsAgentText &&
        text.CountCodePoints() > AgentTextLimit) {
        return RepositoryValueTooLong;
    }
    return repository.setValue(instanceId, attributeId, text) ? RepositoryOk : RepositoryBadValue;
}

// Models

int EnhancedService::getModelOfInstance(MeroId instanceId, MeroId& modelId) {
    modelId = MeroNoId;
    if (const Object* object = repository.findObject(instanceId)) {
        modelId = object->modelId;
        return RepositoryOk;
    }
    return repository.findModel(instanceId) != nullptr ? RepositoryClassUnknown : RepositoryNotFound;
}

int EnhancedService::getAccessMode(MeroId modelId, MeroCoreAccessMode& mode) {
    mode = AccessNone;
    const Model* model = repository.findModel(modelId);
    if (model == nullptr) {
        return RepositoryNotFound;
    }
    mode = model->access == ModelAccess::Write ? AccessWrite : AccessRead;
    return RepositoryOk;
}

int EnhancedService::getModelNameAndVersion(MeroId modelId, SV::String& name) {
    const Model* model = repository.findModel(modelId);
    if (model == nullptr) {
        name = SV::String();
        return RepositoryNotFound;
    }
    name = model->name;
    return RepositoryOk;
}

int EnhancedService::getModelClass(MeroId modelId, bool& isProcessModel) {
    const Model* model = repository.findModel(modelId);
    isProcessModel = model != nullptr && classOfModel(*model) == ClassCodeProcessModel;
    return model != nullptr ? RepositoryOk : RepositoryNotFound;
}

int EnhancedService::getLibraryOfModel(MeroId modelId, MeroId& libraryId) {
    const Model* model = repository.findModel(modelId);
    libraryId = model != nullptr ? libraryOfModel(*model) : MeroNoId;
    return model != nullptr ? RepositoryOk : RepositoryNotFound;
}

int EnhancedService::modelsLoaded(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& loaded,
                                  MeroId /*libraryId*/, bool& allLoaded) {
    loaded.clear();
    for (const MeroId modelId : models) {
        const Model* model = repository.findModel(modelId);
        if (model != nullptr && model->loaded) {
            loaded.insert(modelId);
        }
    }
    allLoaded = loaded.size() == models.size();
    return RepositoryOk;
}

int EnhancedService::computeSubprocesses(MeroId modelId, ISortedSet<MeroId>& subModels,
                                         ISortedSet<MeroId>& loaded, MeroId& problem,
                                         ISortedSet<MeroId>& other, bool& /*flag*/) {
    subModels.clear();
    loaded.clear();
    other.clear();
    problem = MeroNoId;
    if (repository.findModel(modelId) == nullptr) {
        return RepositoryNotFound;
    }
    ModelCalls calls = findModelCalls(repository, modelId, CallDepth::Recursive, CallRange::AllModels);
    for (const MeroId calledId : calls.models) {
        if (!repository.findModel(calledId)->loaded && repository.setLoaded(calledId, true)) {
            loaded.insert(calledId);
        }
    }
    subModels = std::move(calls.models);
    problem = calls.problem;
    return RepositoryOk;
}

int EnhancedService::getSubprocessInformationLoadedModels(MeroId modelId, ISortedSet<MeroId>& subModels,
                                                          bool direct) {
    if (repository.findModel(modelId) == nullptr) {
        return RepositoryNotFound;
    }
    subModels.insertAll(findModelCalls(repository, modelId, direct ? CallDepth::Direct : CallDepth::Recursive,
                                       CallRange::LoadedModels)
                            .models);
    return RepositoryOk;
}

int EnhancedService::discardModel(MeroId modelId) {
    return repository.setLoaded(modelId, false) ? RepositoryOk : RepositoryNotFound;
}

}  // namespace mero
