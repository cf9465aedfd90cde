#pragma once

#include <memory>

#include "component/host/containers.h"
#include "component/host/tree_list_box.h"
#include "component/host/types.h"

/// List of repository objects by name; entry identifiers are those of the objects.
class MeroCoreObjectSelectBox : public MeroSearchTreeListBox {
public:
    using MeroSearchTreeListBox::MeroSearchTreeListBox;

    /// Classes or instances, sorted by name. Gives a `MeroRepositoryCode` of the first name that can't be
    /// read; that object is left out.
    int ShowObjects(const ISortedSet<MeroId>& objects);
    /// `MeroNoId` for none.
    [[nodiscard]] MeroId GetSelectedObject() const;
};

/// Tree of classes with their instances of one model below them, several of which can be selected.
class MeroHierarchyClassSelectBox : public MeroSearchTreeListBox {
public:
    MeroHierarchyClassSelectBox(SV::Window* parent, SV::ResId id, int style = TreeStyleSeveralSelected);

    void SetClasses(const ISortedSet<MeroId>& newClasses) { classes = newClasses; }
    /// Fills the tree with the classes that have instances in the model. A `MeroRepositoryCode`.
    int ShowInstances(MeroId modelId);
    /// `MeroNoId` when nothing is shown.
    [[nodiscard]] MeroId GetShownModel() const { return model; }
    void ClearInstances();
    /// Selects the instances that the expression gives, and no others. False, and no change, if it can't be
    /// evaluated.
    virtual bool setPreselection(const SV::String& expression);
    /// Selected instances; a selected class stands for nothing.
    [[nodiscard]] ISortedSet<MeroId> getSelectedInstances() const;
    /// The selected instances as an object expression; false if one of them can't be read.
    bool getSelectedInstancesOSE(SV::String& expression) const;
    [[nodiscard]] bool isInstanceEntry(MeroId id) const { return instances.contains(id); }

private:
    ISortedSet<MeroId> classes;
    ISortedSet<MeroId> instances;
    MeroId model = MeroNoId;
};
