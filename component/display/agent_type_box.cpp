#include "component/display/agent_type_box.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"
#include "component/host/model_types.h"

#include "component/agents/agent_types.h"
#include "component/display/agent_class_select_dialog.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/management/run_globals.h"

namespace {

constexpr char ModuleName[] = "aeadsply";
constexpr char AgentKeyword[] = "AGENT";
constexpr int NoConfiguration = 0;

constexpr SV::ResId MessageMeasures(0x2004EDF);
constexpr SV::ResId MessageDefaultInfoText(0x2004EFF);
constexpr SV::ResId MessageEmptyAgentInfo(0x200503B);
constexpr SV::ResId MessageEmptyAgent(0x2005040);
constexpr SV::ResId MessageTemplateWithoutName(0x2005049);
constexpr SV::ResId MessageDefaultCalendar(0x20051A6);

/// Keyword of the head, and the analysis that it names.
constexpr std::pair<const char*, int> AnalysisKeywords[] = {
    {"path-analysis", AnalysisPath},
    {"volume-analysis", AnalysisVolume},
    {"capacity-analysis", AnalysisVolume},
    {"wlstatic-analysis", AnalysisStaticWorkLoad},
    {"wlnonstatic-analysis", AnalysisNonStaticWorkLoad}};

SV::String libraryText() {
    const char* text = nullptr;
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().getAttributeValue(Mero_GetCoreVarConst(CoreProcessLibrary),
                                                           Mero_GetCoreVar(CorePredefinedAgents), text, true);
        })) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return text != nullptr ? SV::String(text) : SV::String();
}

SV::String libraryName() {
    const char* name = nullptr;
    const bool isKnown =
        repositoryDoes([&](auto& repository) { return repository.enhanced().getBPLibraryName(name); });
    return isKnown && name != nullptr ? SV::String(name) : SV::String("?");
}

SV::String attributeName() {
    SV::String name;
    return getAttributeNameText(Mero_GetCoreVar(CorePredefinedAgents), name) == StatusOk ? name
                                                                                         : SV::String("?");
}

/// Moves over the measures behind the parser's current element, up to the next agent, and back. Ends early
/// where `visit` gives false.
template <class Visit>
bool visitMeasures(MeroKilnParser& parser, Visit visit) {
    const int head = parser.GetCurElemIndex();
    bool goesOn = true;
    for (int element = head + 1; goesOn && parser.SetCurElemIndex(element); ++element) {
        const SV::String keyword = parser.GetKeyword();
        if (keyword == AgentKeyword) {
            break;
        }
        goesOn = keyword == MeroObservedKeyword || visit(keyword);
    }
    parser.SetCurElemIndex(head);
    return goesOn;
}

/// Told to the user where they arise.
bool isToldAlready(int status) {
    return status == StatusBadDefinition || status == StatusBadCalendar ||
           status == StatusInfoTextNotStored || status == StatusInvalidAgents || status == StatusDeclined;
}

}  // namespace

MeroAgentTypeBox::MeroAgentTypeBox(SV::Window* parent, SV::ResId id, int analysis)
    : MeroSearchTreeListBox(parent, id, TreeStyleOneSelected),
      templates(libraryText(), libraryName(), attributeName()) {
    loadTemplates(analysis);
}

// Templates

void MeroAgentTypeBox::loadTemplates(int analysis) {
    if (templates.Parse() != 0) {
        showParseError(templates);
        return;
    }
    emptyEntry = templates.GetElemCount();
    for (int element = 0; templates.SetCurElemIndex(element); ++element) {
        if (templates.GetKeyword() == AgentKeyword && isOfferedFor(analysis)) {
            indexTemplate();
        }
    }
}

bool MeroAgentTypeBox::isOfferedFor(int analysis) const {
    bool namesAny = false;
    bool namesThis = false;
    for (const auto& [keyword, named] : AnalysisKeywords) {
        const bool isNamed = templates.IsContained(keyword);
        namesAny = namesAny || isNamed;
        namesThis = namesThis || (isNamed && named == analysis);
    }
    return !namesAny || namesThis;
}

void MeroAgentTypeBox::indexTemplate() {
    const int element = templates.GetCurElemIndex();
    const auto keyOf = [](int number) {
        return SV::String("allowed-modeltype-") + SV::String(std::int32_t{number});
    };
    if (templates.IsContained(keyOf(1))) {
        for (int number = 1; templates.IsContained(keyOf(number)); ++number) {
            const SV::String typeName = templates.GetStrValue(keyOf(number));
            if (isTemplateAllowedFor(typeName, MeroNoId)) {
                modelTypeIndex[typeName].elements.insert(element);
            }
        }
        return;
    }
    if (isTemplateAllowedFor({}, ClassCodeProcessLibrary)) {
        businessProcessIndices.insert(element);
    }
    if (isTemplateAllowedFor({}, ClassCodeEnvironmentLibrary)) {
        workEnvironmentIndices.insert(element);
    }
}

bool MeroAgentTypeBox::isTemplateAllowedFor(const SV::String& typeName, MeroId libraryClassId) {
    auto* const types = MeroModelTypeAttrHandler::GetGlobal();
    if (!typeName.IsEmpty() && types != nullptr) {
        libraryClassId = types->GetModelTypeLibraryClassID(types->GetModelTypeIndex(typeName));
    }
    return libraryClassId != MeroNoId && visitMeasures(templates, [&](const SV::String& keyword) {
               return isTypeAllowedInLibrary(getTypeOfKeyword(keyword), libraryClassId);
           });
}

// Entries

void MeroAgentTypeBox::updateForModel(MeroId modelId) {
    auto* const types = MeroModelTypeAttrHandler::GetGlobal();
    const int type = types != nullptr ? types->GetModelTypeIndexOfModel(modelId) : -1;
    MeroId modelClass = MeroNoId;
    const bool isKnown =
        repositoryDoes([&](auto& repository) { return repository.enhanced().classOf(modelId, modelClass); });
    if (!isKnown) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    if (!isKnown || types == nullptr || !types->IsSimulateableModelType(type)) {
        Clear();
        Disable();
        return;
    }
    const MeroId before = GetSelectionCount() > 0 ? GetSelectedEntry() : emptyEntry;
    Clear();
    InsertEntry(emptyEntry, SV::String(MessageEmptyAgent));
    insertTemplates(modelClass == ClassCodeProcessModel ? businessProcessIndices : workEnvironmentIndices);
    for (const auto& [typeName, index] : modelTypeIndex) {
        if (types->GetModelTypeIndex(typeName) == type) {
            insertTemplates(index.elements);
        }
    }
    SelectEntry(HasEntry(before) ? before : emptyEntry);
    Enable();
}

void MeroAgentTypeBox::insertTemplates(const ISortedSet<int>& elements) {
    for (const int element : elements) {
        templates.SetCurElemIndex(element);
        const SV::String name = templates.GetStrValue();
        if (name.IsEmpty()) {
            showErrorBox(SV::String(MessageTemplateWithoutName));
        } else {
            InsertEntry(element, name);
        }
    }
}

bool MeroAgentTypeBox::hasSelection() const {
    return IsEnabled() && GetSelectionCount() > 0;
}

void MeroAgentTypeBox::showTemplateInfo() {
    if (infoWindow == nullptr || GetSelectionCount() == 0) {
        return;
    }
    const MeroId entry = GetSelectedEntry();
    infoWindow->SetText(entry == emptyEntry ? SV::String(MessageEmptyAgentInfo) : infoOfTemplate(entry));
}

SV::String MeroAgentTypeBox::infoOfTemplate(int element) {
    templates.SetCurElemIndex(element);
    SV::String info = templates.GetStrValue("infotext");
    if (!info.IsEmpty()) {
        info += SV::String("\n\n");
    }
    SV::String measures;
    visitMeasures(templates, [&](const SV::String&) {
        if (!templates.IsContained("dont-show-result")) {
            measures += SV::String("* ") + templates.GetStrValue("name") + SV::String("\n");
        }
        return true;
    });
    return measures.IsEmpty() ? info : info + SV::String(MessageMeasures) + SV::String("\n") + measures;
}

// New agents

int MeroAgentTypeBox::createSuperAgentFromSelection(MeroId modelId, MeroId& newAgentId) {
    if (!hasSelection() || gAgentManagement == nullptr) {
        return StatusRefused;
    }
    const Kind kind = GetSelectedEntry() == emptyEntry ? Kind::Empty : Kind::Template;
    MeroId modelClass = MeroNoId;
    ISortedSet<MeroId> classes;
    const bool isKnown = repositoryDoes([&](auto& repository) {
        const int code = repository.enhanced().classOf(modelId, modelClass);
        const auto base =
            modelClass == ClassCodeProcessModel ? CoreProcessAgentBase : CoreEnvironmentAgentBase;
        return code != RepositoryOk ? code
                                    : repository.enhanced().getAllSubClasses(Mero_GetCoreVar(base), classes);
    });
    if (!isKnown || classes.empty() ||
        (kind == Kind::Template &&
         !(templates.SetCurElemIndex(GetSelectedEntry()) && templates.GetKeyword() == AgentKeyword))) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    const std::optional<MeroId> classId = chooseClass(classes, modelClass, kind);
    if (!classId) {
        return StatusRefused;
    }
    const int status = kind == Kind::Empty
                           ? gAgentManagement->createSuperAgent(modelId, *classId, newAgentId, SV::String(),
                                                                this, NoConfiguration)
                           : createFromTemplate(modelId, *classId, newAgentId);
    if (status != StatusOk && !isToldAlready(status)) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return status == StatusOk ? StatusOk : StatusRefused;
}

std::optional<MeroId> MeroAgentTypeBox::chooseClass(const ISortedSet<MeroId>& classes, MeroId modelClass,
                                                    Kind kind) {
    if (classes.size() == 1) {
        return classes[0];
    }
    if (const MeroId named = kind == Kind::Template ? classOfTemplate(modelClass) : MeroNoId;
        named != MeroNoId) {
        return named;
    }
    MeroAgentClassSelectDialog dialog(this, classes);
    if (dialog.Execute() != SV::DialogOk) {
        return std::nullopt;
    }
    return dialog.getSelectedClass();
}

MeroId MeroAgentTypeBox::classOfTemplate(MeroId modelClass) const {
    const SV::String name = templates.GetStrValue("agent-class");
    if (name.IsEmpty()) {
        return MeroNoId;
    }
    const auto library = modelClass == ClassCodeProcessModel ? CoreProcessLibrary : CoreEnvironmentLibrary;
    MeroId classId = MeroNoId;
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().getClassIDFromClassName(Mero_GetCoreVarConst(library), name,
                                                                 classId);
        })) {
        displayErrorMessage(ModuleName, __LINE__);
        return MeroNoId;
    }
    return classId;
}

int MeroAgentTypeBox::createFromTemplate(MeroId modelId, MeroId classId, MeroId& newAgentId) {
    const auto textOr = [this](const char* key, SV::ResId byDefault) {
        const SV::String text = templates.GetStrValue(key);
        return text.IsEmpty() ? SV::String(byDefault) : text;
    };
    return gAgentManagement->createSuperAgent(modelId, classId, newAgentId, templates.GetStrValue("objects"),
                                              &templates, textOr("calendar", MessageDefaultCalendar),
                                              textOr("infotext", MessageDefaultInfoText), this,
                                              NoConfiguration, templates.GetStrValue());
}
