#include "component/host/select_boxes.h"

#include <algorithm>
#include <string>
#include <vector>

#include "component/host/basic_services.h"
#include "component/host/class_icons.h"
#include "component/host/core_variables.h"
#include "component/host/repository.h"
#include "component/host/simulation.h"

namespace {

struct NamedObject {
    SV::String name;
    MeroId id;
};

/// Name of a class, or of an instance.
int readName(MeroId id, MeroId attribute, SV::String& name) {
    const char* text = nullptr;
    const int code =
        MeroCoreModelingManager::GetGlobal()->enhanced().getAttributeValue(id, attribute, text, true);
    name = SV::String(text != nullptr ? text : "");
    return code;
}

int readNames(const ISortedSet<MeroId>& ids, MeroId attribute, std::vector<NamedObject>& objects) {
    int firstFailure = RepositoryOk;
    for (const MeroId id : ids) {
        SV::String name;
        const int code = readName(id, attribute, name);
        if (code == RepositoryOk) {
            objects.push_back({name, id});
        } else if (firstFailure == RepositoryOk) {
            firstFailure = code;
        }
    }
    std::ranges::stable_sort(objects, {}, [](const NamedObject& each) { return each.name.view(); });
    return firstFailure;
}

SV::Image iconOfClass(const SV::String& className, bool isProcess) {
    MeroGrObjAttrHandler* looks = MeroGrObjAttrHandler::GetGlobal();
    const MeroGrPattern* pattern =
        looks != nullptr ? looks->FindPattern(isProcess, true, className) : nullptr;
    return pattern != nullptr ? pattern->GetIconImage() : SV::Image();
}

}  // namespace

int MeroCoreObjectSelectBox::ShowObjects(const ISortedSet<MeroId>& objects) {
    Clear();
    std::vector<NamedObject> named;
    MeroId model = MeroNoId;
    const bool areInstances = objects.begin() != objects.end() &&
                              MeroCoreModelingManager::GetGlobal()->enhanced().getModelOfInstance(
                                  *objects.begin(), model) == RepositoryOk;
    const int code = readNames(objects, areInstances ? ClassCodeInstanceName : ClassCodeName, named);
    for (const NamedObject& each : named) {
        InsertEntry(each.id, each.name);
    }
    return code;
}

MeroId MeroCoreObjectSelectBox::GetSelectedObject() const {
    const MeroId selected = GetSelectedEntry();
    return selected == MeroNoTreeEntry ? MeroNoId : selected;
}

MeroHierarchyClassSelectBox::MeroHierarchyClassSelectBox(SV::Window* parent, SV::ResId id, int style)
    : MeroSearchTreeListBox(parent, id, style) {}

int MeroHierarchyClassSelectBox::ShowInstances(MeroId modelId) {
    ClearInstances();
    MeroCoreModelingManager& repository = *MeroCoreModelingManager::GetGlobal();
    bool isProcess = false;
    int code = repository.enhanced().getModelClass(modelId, isProcess);
    std::vector<NamedObject> named;
    code = code == RepositoryOk ? readNames(classes, ClassCodeName, named) : code;
    for (const NamedObject& each : named) {
        ISortedSet<MeroId> members;
        std::vector<NamedObject> namedMembers;
        int read =
            repository.basic().getAllInstancesOfClassAndSubClassInModel(modelId, each.id, members, true);
        // An instance stands below its own class only.
        std::vector<MeroId> own;
        for (const MeroId member : members) {
            MeroId ownClass = MeroNoId;
            if (repository.enhanced().classOf(member, ownClass) == RepositoryOk && ownClass == each.id) {
                own.push_back(member);
            }
        }
        ISortedSet<MeroId> ownMembers;
        ownMembers.insertRange(own.begin(), own.end());
        read = read == RepositoryOk ? readNames(ownMembers, ClassCodeInstanceName, namedMembers) : read;
        code = code == RepositoryOk ? read : code;
        if (namedMembers.empty()) {
            continue;
        }
        InsertEntry(each.id, each.name, MeroNoTreeEntry, iconOfClass(each.name, isProcess));
        for (const NamedObject& member : namedMembers) {
            InsertEntry(member.id, member.name, each.id);
            instances.insert(member.id);
        }
    }
    model = modelId;
    return code;
}

void MeroHierarchyClassSelectBox::ClearInstances() {
    Clear();
    instances = {};
    model = MeroNoId;
}

bool MeroHierarchyClassSelectBox::setPreselection(const SV::String& expression) {
    ISortedSet<MeroId> objects;
    if (aEvaluateExpression(model, expression, objects, OseScopeModel, true, true) != 0) {
        return false;
    }
    SetNoSelection();
    for (const MeroId object : objects) {
        if (instances.contains(object)) {
            SelectEntry(object);
        }
    }
    return true;
}

ISortedSet<MeroId> MeroHierarchyClassSelectBox::getSelectedInstances() const {
    ISortedSet<MeroId> selected;
    for (const MeroId entry : GetSelectedEntries()) {
        if (instances.contains(entry)) {
            selected.insert(entry);
        }
    }
    return selected;
}

bool MeroHierarchyClassSelectBox::getSelectedInstancesOSE(SV::String& expression) const {
    std::string text;
    for (const MeroId object : getSelectedInstances()) {
        const SV::String& className = GetEntryText(GetParentEntry(object));
        text += (text.empty() ? "{\"" : ", \"") +
                std::string(Mero_Mask(GetEntryText(object), '"', '\\').GetStr()) + "\":\"" +
                Mero_Mask(className, '"', '\\').GetStr() + "\"";
    }
    expression = text.empty() ? SV::String() : SV::String(text + " }");
    return true;
}
