#include "component/subagents/worker_agent.h"

#include "component/host/basic_services.h"

#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/management/run_globals.h"

namespace {

constexpr SV::ResId ClassMissing{0x2005172};
constexpr SV::ResId AnalysisNotServed{0x200517C};

/// Whether `id` is an instance of the class; a class unknown there counts as no. Nothing on a failure.
std::optional<bool> isInstance(MeroCoreVarType classNumber, MeroId id) {
    bool result = false;
    const int code = callRepository([&](auto& repository) {
        return repository.enhanced().instanceOf(Mero_GetCoreVar(classNumber), id, result);
    });
    if (code == RepositoryClassUnknown) {
        return false;
    }
    return code == RepositoryOk ? std::optional(result) : std::nullopt;
}

}  // namespace

MeroWorkerAgent::MeroWorkerAgent() {
    MeroWorkerAgent::registerObservedClasses();
}

void MeroWorkerAgent::registerObservedClasses() {
    for (const MeroCoreVarType number : {CoreActivity, CoreCall, CoreExecutive, CoreGroup, CoreResource}) {
        observeClass(number);
    }
}

// Definition

int MeroWorkerAgent::readDefinition(MeroKilnParser* parser) {
    const int status = MeroEventProcessingAgent::readDefinition(parser);
    if (parser == nullptr) {
        return status;
    }
    MeroAnalysisFlags served = analyses;
    served.restrictTo(servedAnalyses());
    if (served != analyses) {
        showInfoBox(SV::String(AnalysisNotServed));
        analyses = served;
    }
    classOption.readFlags(*parser);
    const int classStatus = classOption.readClass(*parser, name, CoreEnvironmentLibrary);
    const int ownStatus = readOwnKeys(*parser);
    if (status != StatusOk) {
        return status;
    }
    return classStatus != StatusOk ? classStatus : ownStatus;
}

bool MeroWorkerAgent::isEqualToDefinition(const MeroKilnParser& parser) {
    return MeroEventProcessingAgent::isEqualToDefinition(parser) && classOption.isEqualClass(parser);
}

bool MeroWorkerAgent::getObjectClass(MeroId& id) const {
    id = classOption.getId();
    return id != MeroNoId;
}

// Instances

int MeroWorkerAgent::startProcess(const MeroSimEvent& event) {
    MeroId mainModel = MeroNoId;
    event.getMainModelId(&mainModel);
    if (!modelIsEnvironment && mainModel != modelId) {
        return EventHandled;
    }
    double time = 0.0;
    if (!readTime(event, time)) {
        return EventTimeOutOfRange;
    }
    SV::String mainKey;
    event.getMainInstanceKey(&mainKey);
    addProcessInstance(mainModel, mainKey, mainKey, startTimeAt(time));
    return EventHandled;
}

int MeroWorkerAgent::startSubProcess(const MeroSimEvent& event) {
    Call call;
    if (!readCall(event, call)) {
        return EventTimeOutOfRange;
    }
    if (modelIsEnvironment) {
        openCall(call);
        return EventHandled;
    }
    bool isOwnModel = false;
    if (!isInObservedScope(call.calledModel, call.callingObject, call.mainKey, call.callerKey, isOwnModel)) {
        return EventHandled;
    }
    if (isOwnModel) {
        addProcessInstance(call.calledModel, call.calledKey, call.mainKey, startTimeAt(call.time));
    } else {
        openCall(call);
    }
    return EventHandled;
}

void MeroWorkerAgent::openCall(const Call& call) {
    if (MeroAgentProcessInstance* const process = findInstance(call.mainKey)) {
        enterCall(*process, call);
    } else {
        abortAgent();
    }
}

void MeroWorkerAgent::enterCall(MeroAgentProcessInstance& process, const Call& call) {
    const MeroId ownModel = modelIsEnvironment ? call.mainModel : modelId;
    const MeroPlacement placement = classifyObject(ownModel, call.calledModel);
    if (!process.addSubProcess(call.calledKey, call.callerKey, call.calledModel,
                               collectingOf(call, placement, MeroPlacement::ProcessOnly, ownModel))) {
        callFailed(call.mainKey);
    }
}

// Passes

bool MeroWorkerAgent::readPass(const MeroSimEvent& event, Pass& pass) const {
    event.getMainModelId(&pass.mainModel);
    event.getObjectId(&pass.object);
    event.getMainInstanceKey(&pass.mainKey);
    event.getModelId(&pass.model);
    event.getInstanceKey(&pass.instanceKey);
    event.getExecutionKey(&pass.passKey);
    if (observesExecutives) {
        event.getExecutiveId(&pass.worker);
    } else {
        event.getResourceId(&pass.worker);
    }
    return readTime(event, pass.time);
}

const SV::String* MeroWorkerAgent::targetOf(MeroAgentProcessInstance& process, const Pass& pass) {
    if (placementOf(pass) != MeroPlacement::UnderObject) {
        return &pass.instanceKey;
    }
    return process.addSubProcess(pass.passKey, pass.instanceKey, pass.object, MeroCollecting::ByItself)
               ? &pass.passKey
               : nullptr;
}

// Preparation

int MeroWorkerAgent::checkConfiguration() {
    if (classOption.getId() != MeroNoId) {
        return StatusOk;
    }
    showErrorBox(SV::String(ClassMissing) + "\"" + name + "\"\n\n");
    return StatusNoClass;
}

int MeroWorkerAgent::objectsExtended() {
    if (!modelIsEnvironment) {
        return StatusOk;
    }
    if (widenObservedObjects(classOption.getId(), Mero_GetCoreVar(CoreGroup)) != StatusOk) {
        displayErrorMessage("aeasubag", __LINE__);
        return StatusRefused;
    }
    return StatusOk;
}

// Execution times

std::optional<double> MeroExecutionTimes::read(MeroId activity) {
    const char* text = nullptr;
    const bool known = repositoryDoes([&](auto& repository) {
        return repository.enhanced().getAttributeValue(activity, gSimAttributes[0], text, true);
    });
    if (!known) {
        displayErrorMessage("aeasubag", __LINE__);
        return std::nullopt;
    }
    return MeroModelAgent::getTimeValue(text != nullptr ? text : "", gDaysPerYear, gHoursPerDay);
}

int MeroExecutionTimes::readAll(const ISortedSet<MeroId>& objects) {
    clear();
    for (const MeroId object : objects) {
        const std::optional<bool> isActivity = isInstance(CoreActivity, object);
        if (!isActivity) {
            displayErrorMessage("aeasubag", __LINE__);
            return StatusRepositoryError;
        }
        if (*isActivity) {
            const std::optional<double> time = read(object);
            if (!time) {
                return StatusRepositoryError;
            }
            times.add(object, *time);
        }
    }
    return StatusOk;
}

std::optional<double> MeroExecutionTimes::find(MeroId object) const {
    const double* const known = times.find(object);
    return known != nullptr ? std::optional(*known) : std::nullopt;
}

std::optional<double> MeroExecutionTimes::findOrRead(MeroId object) {
    if (const double* const known = times.find(object)) {
        return *known;
    }
    if (!isInstance(CoreActivity, object).value_or(false)) {
        displayErrorMessage("aeasubag", __LINE__);
        return std::nullopt;
    }
    const std::optional<double> time = read(object);
    if (time) {
        times.add(object, *time);
    }
    return time;
}
