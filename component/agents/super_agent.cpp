#include "component/agents/super_agent.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"
#include "component/host/simulation.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/support_agent.h"
#include "component/display/agent_result_windows.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"

namespace {

constexpr char ModuleName[] = "aeagents";

constexpr SV::ResId MessageDefaultCalendar(0x20051A6);

struct TextAttributes {
    MeroCoreVarType definition;
    MeroCoreVarType calendar;
    MeroCoreVarType objects;
    MeroCoreVarType infoText;
};

constexpr TextAttributes ProcessTexts{CoreProcessAgentDefinition, CoreProcessAgentCalendar,
                                      CoreProcessAgentObjects, CoreProcessAgentInfoText};
constexpr TextAttributes EnvironmentTexts{CoreEnvironmentAgentDefinition, CoreEnvironmentAgentCalendar,
                                          CoreEnvironmentAgentObjects, CoreEnvironmentAgentInfoText};

bool isInstanceOf(MeroCoreVarType agentClass, MeroId instanceId) {
    bool isInstance = false;
    const int code = callRepository([&](auto& repository) {
        return repository.enhanced().instanceOf(Mero_GetCoreVar(agentClass), instanceId, isInstance);
    });
    if (code != RepositoryOk && code != RepositoryClassUnknown) {
        displayErrorMessage(ModuleName, __LINE__);
    }
    return code == RepositoryOk && isInstance;
}

}  // namespace

MeroSuperAgent::MeroSuperAgent() {
    agentType = AgentTypeSuper;
}

MeroSuperAgent::~MeroSuperAgent() {
    const MeroWaitCursor wait;
    resultWindows.reset();
    runParser.reset();
    supportAgent.reset();
    subAgents.clear();
}

int MeroSuperAgent::attachToInstance(MeroId newInstanceId, MeroId newModelId) {
    modelId = newModelId;
    if (isInstanceOf(CoreProcessAgentBase, newInstanceId)) {
        modelKind = ModelKind::Process;
    } else if (isInstanceOf(CoreEnvironmentAgentBase, newInstanceId)) {
        modelKind = ModelKind::Environment;
    } else {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    instanceId = newInstanceId;

    SV::String definition;
    SV::String calendar;
    SV::String objects;
    const Default definitionDefault = readForAttaching(TextRole::Definition, definition);
    const Default calendarDefault = readForAttaching(TextRole::Calendar, calendar);
    const Default objectsDefault = readForAttaching(TextRole::Objects, objects);
    definitionUnread = definitionDefault == Default::InObject;
    otherTextUnread = calendarDefault == Default::InObject || objectsDefault == Default::InObject;
    applyDefaults(definitionDefault, calendarDefault, objectsDefault);
    if (definitionDefault == Default::Unused) {
        readDefinitionText(definition);
    }
    if (calendarDefault == Default::Unused) {
        setCalendarText(calendar);
    }
    if (objectsDefault == Default::Unused) {
        setObjectsText(objects);
    }
    return StatusOk;
}

MeroId MeroSuperAgent::attributeOf(TextRole role) const {
    const TextAttributes& attributes = modelKind == ModelKind::Process ? ProcessTexts : EnvironmentTexts;
    switch (role) {
        case TextRole::Calendar:
            return Mero_GetCoreVar(attributes.calendar);
        case TextRole::Objects:
            return Mero_GetCoreVar(attributes.objects);
        case TextRole::InfoText:
            return Mero_GetCoreVar(attributes.infoText);
        case TextRole::Definition:
            break;
    }
    return Mero_GetCoreVar(attributes.definition);
}

int MeroSuperAgent::readText(TextRole role, SV::String& text) const {
    return getAttributeText(instanceId, text, attributeOf(role));
}

int MeroSuperAgent::storeText(TextRole role, const SV::String& text) const {
    return callRepository([&](auto& repository) {
        return repository.enhanced().setAttributeValue(modelId, instanceId, attributeOf(role), text, false);
    });
}

MeroSuperAgent::Default MeroSuperAgent::readForAttaching(TextRole role, SV::String& text) const {
    if (readText(role, text) != StatusOk) {
        return Default::InObject;
    }
    return text.IsEmpty() ? Default::Stored : Default::Unused;
}

int MeroSuperAgent::setDefaultValues() {
    return applyDefaults(Default::Stored, Default::Stored, Default::Stored);
}

int MeroSuperAgent::applyDefaults(Default definition, Default calendar, Default objects) {
    if (objects == Default::Stored) {
        setObjectsText({});
    } else if (objects == Default::InObject) {
        keepObjectsText({});
    }
    if (calendar == Default::Stored) {
        setCalendarText(SV::String(MessageDefaultCalendar));
    } else if (calendar == Default::InObject) {
        keepCalendarText(SV::String(MessageDefaultCalendar));
    }
    if (definition == Default::Unused) {
        return StatusOk;
    }
    definitionValid = true;
    definitionChanged = false;
    analyses = {.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true};
    settings = {};
    settings.extremeChecked = false;
    if (instanceId == MeroNoId || definition == Default::InObject) {
        return StatusOk;
    }
    SV::String text;
    return storeDefinition(getOwnDefinitionText(text));
}

int MeroSuperAgent::storeDefinition(const SV::String& text) const {
    if (storeText(TextRole::Definition, text) != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    return StatusOk;
}

int MeroSuperAgent::getName(SV::String& nameOut) {
    if (instanceId == MeroNoId) {
        return StatusNoInstance;
    }
    const char* name = nullptr;
    if (!repositoryDoes([&](auto& repository) {
            return repository.enhanced().getAttributeValue(instanceId, ClassCodeInstanceName, name, true);
        })) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    nameOut = name != nullptr ? SV::String(name) : SV::String();
    return StatusOk;
}

int MeroSuperAgent::setName(const SV::String& newName) {
    if (instanceId == MeroNoId) {
        return StatusNoInstance;
    }
    MeroId conflictingId = MeroNoId;
    const int code = callRepository([&](auto& repository) {
        return repository.enhanced().RenameInstance(modelId, instanceId, newName, conflictingId, true);
    });
    if (code == RepositoryNameInUse) {
        return StatusNameInUse;
    }
    if (code != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    return StatusOk;
}

void MeroSuperAgent::keepCalendarText(const SV::String& text) {
    calendarChanged = true;
    calendarText = text;
}

int MeroSuperAgent::setCalendarText(const SV::String& text) {
    keepCalendarText(text);
    if (instanceId != MeroNoId && storeText(TextRole::Calendar, text) != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    return StatusOk;
}

SV::String& MeroSuperAgent::getCalendarText(SV::String& text) const {
    return text = calendarText;
}

void MeroSuperAgent::keepObjectsText(const SV::String& text) {
    objectsChanged = true;
    objectsText = text;
}

int MeroSuperAgent::setObjectsText(const SV::String& text) {
    keepObjectsText(text);
    const int code = instanceId != MeroNoId ? storeText(TextRole::Objects, text) : RepositoryOk;
    if (code == RepositoryValueTooLong) {
        return StatusTextTooLong;
    }
    if (code != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    return StatusOk;
}

SV::String& MeroSuperAgent::getObjectsText(SV::String& text) const {
    return text = objectsText;
}

int MeroSuperAgent::replaceInObjectsText(const SV::String& oldText, const SV::String& newText) {
    const std::size_t position =
        oldText.IsEmpty() ? SV::String::NotFound : objectsText.Search(oldText.view());
    if (position == SV::String::NotFound) {
        return StatusRefused;
    }
    SV::String text = objectsText;
    text.Erase(position, oldText.Len());
    if (!newText.IsEmpty()) {
        text.Insert(newText, position);
    } else if (position > 1) {
        for (std::size_t index = position - 1; index >= 1 && text[index] != '"'; --index) {
            if (text[index] == ',') {
                text.Erase(index, 1);
                break;
            }
        }
    }
    return setObjectsText(text) == StatusOk ? StatusOk : StatusRefused;
}

int MeroSuperAgent::evaluateObjects(ISortedSet<MeroId>& objects) {
    if (objectsText.IsEmpty()) {
        objects.clear();
        return StatusOk;
    }
    return aEvaluateExpression(modelId, objectsText, objects, OseScopeModel, true, true) == 0 ? StatusOk
                                                                                              : StatusRefused;
}

int MeroSuperAgent::setInfoText(const SV::String& text) {
    if (instanceId == MeroNoId) {
        return StatusRefused;
    }
    if (storeText(TextRole::InfoText, text) != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    return StatusOk;
}

SV::String& MeroSuperAgent::getInfoText(SV::String& text) {
    if (instanceId == MeroNoId || readText(TextRole::InfoText, text) != StatusOk) {
        text = {};
    }
    return text;
}

bool MeroSuperAgent::setActivation(int activation) {
    settings.active = activation != 0;
    return true;
}

int MeroSuperAgent::setResultOptions(const MeroResultOptions& options) {
    static_cast<MeroResultOptions&>(settings) = options;
    return StatusOk;
}

int MeroSuperAgent::getResultOptions(MeroResultOptions& options) const {
    options = settings;
    return StatusOk;
}

MeroAtomarAgent* MeroSuperAgent::findSubAgentByName(const SV::String& subAgentName) const {
    const auto place = std::find_if(subAgents.begin(), subAgents.end(), [&](const auto& agent) {
        SV::String name;
        agent->getName(name);
        return name == subAgentName;
    });
    return place != subAgents.end() ? place->get() : nullptr;
}

bool MeroSuperAgent::canLimitByRelation() {
    return std::any_of(subAgents.begin(), subAgents.end(),
                       [](const auto& agent) { return agent->canLimitByRelation(); });
}

bool MeroSuperAgent::hasObjectResults(bool ignoreShowFlag) {
    return std::any_of(subAgents.begin(), subAgents.end(),
                       [&](const auto& agent) { return agent->hasObjectResults(ignoreShowFlag); });
}

bool MeroSuperAgent::hasHistory(bool ignoreShowFlag) {
    return std::any_of(subAgents.begin(), subAgents.end(),
                       [&](const auto& agent) { return agent->hasHistory(ignoreShowFlag); });
}
