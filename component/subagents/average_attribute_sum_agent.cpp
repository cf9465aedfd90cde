#include "component/subagents/average_attribute_sum_agent.h"

#include "component/host/basic_services.h"

#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/management/run_globals.h"

namespace {

constexpr SV::ResId DefaultName{0x2004F2E};
constexpr const char* NumericAttribute = "numeric";
constexpr const char* TimeAttribute = "time";

}  // namespace

MeroAvgAttributeSumAgent::MeroAvgAttributeSumAgent() {
    agentType = AgentTypeAverageSum;
    resultKind = ResultKindNumber;
    MeroAvgAttributeSumAgent::registerObservedClasses();
}

void MeroAvgAttributeSumAgent::registerObservedClasses() {
    observeClass(CoreActivity);
    observeClass(CoreCall);
}

// Definition

int MeroAvgAttributeSumAgent::setDefaultValues() {
    setCommonDefaultValues({.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true},
                           SV::String(DefaultName));
    valueKind = 3;
    scopeObjects = true;
    scopeAllObjects = false;
    classOption.setDefaultValues();
    attributeOption.setDefaultValues();
    return StatusOk;
}

int MeroAvgAttributeSumAgent::readDefinition(MeroKilnParser* parser) {
    const int status = MeroEventProcessingAgent::readDefinition(parser);
    if (parser == nullptr) {
        return status;
    }
    classOption.readFlags(*parser);
    const int classStatus = classOption.readClass(*parser, name, CoreProcessLibrary);
    attributeOption.readFlags(*parser);
    const int attributeStatus = readAttributeKeys(*parser);
    if (status != StatusOk) {
        return status;
    }
    return classStatus != StatusOk ? classStatus : attributeStatus;
}

int MeroAvgAttributeSumAgent::readAttributeKeys(const MeroKilnParser& parser) {
    attributeOption.clear();
    resultKind = ResultKindNone;
    if (classOption.getId() == MeroNoId || !attributeOption.isNamed(parser)) {
        return StatusOk;
    }
    const int status = attributeOption.readAttribute(parser, name, classOption.getId());
    if (status != StatusOk) {
        classOption.clear();
        return status;
    }
    const SV::String type = parser.GetModifier("attribute-type");
    if (type != NumericAttribute && type != TimeAttribute) {
        attributeOption.clear();
        return showStatusMessage(StatusBadDefinition);
    }
    resultKind = type == TimeAttribute ? ResultKindTime : ResultKindNumber;
    return StatusOk;
}

SV::String& MeroAvgAttributeSumAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    classOption.appendClass(text);
    classOption.appendFlags(text);
    if (attributeOption.getId() != MeroNoId) {
        attributeOption.appendAttribute(text);
        if (resultKind == ResultKindNone) {
            displayErrorMessage("aeasubag", __LINE__);
        } else {
            text += SV::String("\n attribute-type:") +
                    (resultKind == ResultKindTime ? TimeAttribute : NumericAttribute);
        }
        attributeOption.appendFlags(text);
    }
    return text;
}

bool MeroAvgAttributeSumAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    const SV::String type = parser.GetModifier("attribute-type");
    const MeroResultKind kind = type == TimeAttribute      ? ResultKindTime
                                : type == NumericAttribute ? ResultKindNumber
                                                           : ResultKindNone;
    return MeroEventProcessingAgent::isEqualToDefinition(parser) && classOption.isEqualClass(parser) &&
           attributeOption.isEqualAttribute(parser) && kind == resultKind;
}

bool MeroAvgAttributeSumAgent::getObjectClass(MeroId& id) const {
    id = classOption.getId();
    return id != MeroNoId;
}

bool MeroAvgAttributeSumAgent::getObjectAttribute(MeroId& id) const {
    id = attributeOption.getId();
    return id != MeroNoId;
}

// Preparation

int MeroAvgAttributeSumAgent::checkConfiguration() {
    return classOption.getId() != MeroNoId ? StatusOk : StatusNoClass;
}

int MeroAvgAttributeSumAgent::joinObjectsOf(const ISortedSet<MeroId>& calledModels) {
    objectValues.clear();
    ISortedSet<MeroId> ofClass;
    int status = findInstances(calledModels, classOption.getId(), ofClass);
    if (status == StatusOk) {
        status = readValues(observedObjects);
    }
    if (status == StatusOk) {
        status = readValues(ofClass);
    }
    if (status == StatusOk) {
        observedObjects.insertAll(ofClass);
    }
    return status;
}

int MeroAvgAttributeSumAgent::objectsExtended() {
    finishedProcesses = 0;
    return StatusOk;
}

int MeroAvgAttributeSumAgent::readValues(const ISortedSet<MeroId>& objects) {
    for (const MeroId object : objects) {
        bool isOfClass = false;
        const int code = callRepository([&](auto& repository) {
            return repository.enhanced().instanceOf(classOption.getId(), object, isOfClass);
        });
        if (code != RepositoryOk && code != RepositoryClassUnknown) {
            displayErrorMessage("aeasubag", __LINE__);
            return StatusRepositoryError;
        }
        if (code != RepositoryOk || !isOfClass || objectValues.contains(object)) {
            continue;
        }
        double value = 0.0;
        const int status = readValue(object, value);
        if (status != StatusOk) {
            return status;
        }
        objectValues.add(object, value);
    }
    return StatusOk;
}

int MeroAvgAttributeSumAgent::readValue(MeroId object, double& value) const {
    const MeroId attribute = attributeOption.getId();
    const auto read = [&](auto& target) {
        return callRepository([&](auto& repository) {
            return repository.enhanced().getAttributeValue(object, attribute, target, true);
        });
    };
    int code = RepositoryOk;
    if (resultKind == ResultKindNumber) {
        code = read(value);
        if (code == RepositoryWrongType) {
            MeroId whole = 0;
            code = read(whole);
            value = whole;
        }
    } else if (resultKind == ResultKindTime) {
        const char* text = nullptr;
        code = read(text);
        value = getTimeValue(text != nullptr ? text : "", gDaysPerYear, gHoursPerDay);
    } else {
        displayErrorMessage("aeasubag", __LINE__);
        return StatusRefused;
    }
    if (code != RepositoryOk) {
        displayErrorMessage("aeasubag", __LINE__);
        return StatusRepositoryError;
    }
    return StatusOk;
}

bool MeroAvgAttributeSumAgent::releaseCalendar() {
    instances.clear();
    objectValues.clear();
    return MeroMeasuringAgent::releaseCalendar();
}

// Measuring

void MeroAvgAttributeSumAgent::enterCall(MeroAgentProcessInstance& process, const Call& call) {
    const MeroPlacement placement = classifyObject(modelId, call.calledModel);
    if (!process.addSubProcess(call.calledKey, call.callerKey, call.calledModel,
                               collectingOf(call, placement, MeroPlacement::ProcessOnly, modelId))) {
        instances.erase(call.mainKey);
    }
}

int MeroAvgAttributeSumAgent::measure(const MeroSimEvent& event) {
    MeroId object = MeroNoId;
    event.getObjectId(&object);
    const double* const value = objectValues.find(object);
    if (value == nullptr) {
        return EventHandled;
    }
    SV::String mainKey;
    SV::String instanceKey;
    event.getMainInstanceKey(&mainKey);
    event.getInstanceKey(&instanceKey);
    double time = 0.0;
    if (!readTime(event, time)) {
        return EventTimeOutOfRange;
    }
    if (!isEventRelevant({.instance = true, .object = true, .calendar = true}, mainKey, instanceKey, object,
                         time)) {
        return EventHandled;
    }
    MeroId model = MeroNoId;
    event.getModelId(&model);
    if (!addValue(*findInstance(mainKey), instanceKey, model, object, *value)) {
        instances.erase(mainKey);
    }
    return EventHandled;
}

bool MeroAvgAttributeSumAgent::addValue(MeroAgentProcessInstance& process, const SV::String& instanceKey,
                                        MeroId model, MeroId object, double value) {
    std::optional<MeroId> target;
    switch (classifyObject(modelId, model)) {
        case MeroPlacement::UnderObject:
            target = object;
            break;
        case MeroPlacement::UnderCaller:
            target = process.getInstanceModelId(instanceKey);
            break;
        case MeroPlacement::ProcessOnly:
            target = modelId;
            break;
    }
    return target && process.addFirstValue(instanceKey, *target, value, MeroValueUse::Accumulate);
}

void MeroAvgAttributeSumAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        const MeroPathView callPath = instance->getCallPath();
        for (const auto& [object, value] : instance->getValues()) {
            gather(object, scopeObjects ? pathOfObject(*instance, object) : callPath, value.value, end, 1);
        }
        const MeroId id = instance->getModelId();
        if (scopeObjects && (scopeAllObjects || id == end.model)) {
            gather(id, callPath, instance->sumFirstValues(MeroNoId).value_or(0.0), end, 0);
        }
    }
}

// Results

MeroAgentResultSet* MeroAvgAttributeSumAgent::getResultSet(
    [[maybe_unused]] const MeroResultRequest& request) {
    if (resultSet != nullptr) {
        resultSet->setDivisor(finishedProcesses);
    }
    return resultSet.get();
}
