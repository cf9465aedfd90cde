#pragma once

#include <memory>

#include "component/host/containers.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

/// Kinds of reference between models, by the attribute that holds them.
struct MeroModelTypeInterRefs {
    ISortedSet<MeroId> attributes;
};

/// Description of the references that mean a call of a sub-process.
class MeroSetInterRefDlg {
public:
    /// A `MeroRepositoryCode`.
    static int getCalledSubProcesses(MeroModelTypeInterRefs& references);
};

/// Models that one model refers to.
class MeroReferencedModelsHandler {
public:
    MeroReferencedModelsHandler(MeroId startModelId, const MeroModelTypeInterRefs& followedReferences)
        : modelId(startModelId), references(followedReferences) {}

    /// Models reachable along the given references. A `MeroRepositoryCode`.
    int getAllReferencedModels(ISortedSet<MeroId>& models) const;
    /// Attribute of a class that holds a reference to a called model. A `MeroRepositoryCode`.
    static int getSubModelAttributeOfClass(MeroId classId, MeroId& attributeId);
    /// Classes that bring a reference to a called model to their instances and to those of the classes below
    /// them, which aren't told. A `MeroRepositoryCode`.
    static int getAllSubmodelReferencingClasses(MeroId libraryId, ISortedSet<MeroId>& classes);

private:
    MeroId modelId;
    MeroModelTypeInterRefs references;
};

/// One reference to a model.
class MeroCoreInterModelReference {
public:
    explicit MeroCoreInterModelReference(const SV::String& referenceText) : text(referenceText) {}
    /// A `MeroRepositoryCode`.
    int GetIDOfReferencedModel(MeroId& modelId) const;
    /// Name of the model as the reference has it.
    [[nodiscard]] const SV::String& GetModelText() const { return text; }

private:
    SV::String text;
};

/// References that one attribute of an instance holds.
class MeroCoreInterReferenceHandler {
public:
    MeroCoreInterReferenceHandler(MeroId model, MeroId instance, MeroId attribute)
        : modelId(model), instanceId(instance), attributeId(attribute) {}

    /// Splits the text of the attribute: one reference a line. `code` is a `MeroRepositoryCode`; gives the
    /// same. `RepositoryWrongType` if the attribute isn't a model reference, and then there are no
    /// references.
    int initHandler(const SV::String& text, int& code);
    [[nodiscard]] std::size_t getInterReferenceCount() const { return targets.size(); }
    /// `index` below the count.
    [[nodiscard]] MeroCoreInterModelReference getInterReference(std::size_t index) const {
        return MeroCoreInterModelReference(targets[index]);
    }
    /// Model that the text names; fails for an empty text and for a model that isn't there. A
    /// `MeroRepositoryCode`.
    static int getTargetModelID(const SV::String& text, MeroId modelClassId, MeroId& targetModelId);

private:
    MeroId modelId;
    MeroId instanceId;
    MeroId attributeId;
    ISequence<SV::String> targets;
};
