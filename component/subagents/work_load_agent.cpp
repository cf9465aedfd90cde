#include "component/subagents/work_load_agent.h"

#include <algorithm>
#include <bit>

#include "component/host/basic_services.h"

#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/management/run_globals.h"

namespace {

constexpr SV::ResId DefaultName{0x2004EC0};
constexpr SV::ResId NoCommonTime{0x2005175};

/// Start of a run that hasn't begun.
constexpr double NotStarted = -1.0;

}  // namespace

void MeroWorkLoadAgent::OpenPeriod::begin(const SV::String& passKey, const Pass& pass) {
    alive = true;
    key = passKey;
    object = pass.object;
    worker = pass.worker;
    value = pass.time;
    setFirstText(pass.mainKey);
    setSecondText(pass.instanceKey);
}

MeroWorkLoadAgent::MeroWorkLoadAgent() {
    agentType = AgentTypeWorkLoad;
}

// Definition

int MeroWorkLoadAgent::setDefaultValues() {
    setCommonDefaultValues(servedAnalyses(), SV::String(DefaultName));
    valueKind = 4;
    scopeObjects = true;
    scopeAllObjects = false;
    classOption.setDefaultValues();
    return StatusOk;
}

SV::String& MeroWorkLoadAgent::getDefinitionText(SV::String& text) {
    MeroEventProcessingAgent::getDefinitionText(text);
    classOption.appendClass(text);
    classOption.appendFlags(text);
    return text;
}

// Run

int MeroWorkLoadAgent::prepareMeasure() {
    runStartTime = NotStarted;
    currentTime = 0.0;
    return StatusOk;
}

void MeroWorkLoadAgent::clearRunData() {
    openPeriods.clear();
    accumulated.clear();
    availableCalendars.clear();
}

bool MeroWorkLoadAgent::needsRunningState(std::int32_t code) const {
    return code != EventProcessStart && code != EventSubProcessStart && code != EventProcessEnd &&
           code != EventSubProcessEnd;
}

int MeroWorkLoadAgent::processEvent(MeroSimEvent* event) {
    if (!isUsable()) {
        return EventHandled;
    }
    if (!readTime(*event, currentTime)) {
        return EventTimeOutOfRange;
    }
    if (event->code == EventRunStart) {
        runStartTime = currentTime;
    }
    return MeroWorkerAgent::processEvent(event);
}

std::optional<double> MeroWorkLoadAgent::workedBetween(double from, double to) const {
    std::int64_t sum = 0;
    if (calendar == nullptr ||
        calendar->getTimeIntervalsSumInBetween(static_cast<std::int64_t>(from), static_cast<std::int64_t>(to),
                                               sum) != 0) {
        displayErrorMessage("aeasubag", __LINE__);
        return std::nullopt;
    }
    return static_cast<double>(sum);
}

// Work periods

int MeroWorkLoadAgent::measure(const MeroSimEvent& event) {
    Pass pass;
    if (!readPass(event, pass)) {
        return EventTimeOutOfRange;
    }
    if (!isEventRelevant({.instance = !modelIsEnvironment, .object = true}, pass.mainKey, pass.instanceKey,
                         observedIdOf(pass), pass.time)) {
        return EventHandled;
    }
    MeroAgentProcessInstance* const process = findInstance(pass.mainKey);
    if (process == nullptr) {
        abortAgent();
    } else if (opensPeriod(event.code)) {
        openPeriod(*process, pass);
    } else {
        closePeriod(*process, pass);
    }
    return EventHandled;
}

void MeroWorkLoadAgent::openPeriod(MeroAgentProcessInstance& process, const Pass& pass) {
    if (targetOf(process, pass) == nullptr) {
        abortAgent();
    } else {
        openPeriods.add(pass.passKey, pass);
    }
}

void MeroWorkLoadAgent::closePeriod(MeroAgentProcessInstance& process, const Pass& pass) {
    const OpenPeriod* const period = openPeriods.find(pass.passKey);
    const std::optional<double> seconds =
        workedBetween(period != nullptr ? period->value : runStartTime, pass.time);
    if (!seconds) {
        abortAgent();
        return;
    }
    if (period == nullptr) {
        return;
    }
    openPeriods.erase(pass.passKey);
    if (!addWork(process, pass, *seconds)) {
        abortAgent();
    }
}

bool MeroWorkLoadAgent::addWork(MeroAgentProcessInstance& process, const Pass& pass, double seconds) {
    const SV::String* const target = targetOf(process, pass);
    if (target == nullptr ||
        !process.addFirstValue(*target, pass.worker, seconds, MeroValueUse::Accumulate)) {
        displayErrorMessage("aeasubag", __LINE__);
        return false;
    }
    return true;
}

// End of an instance

int MeroWorkLoadAgent::endProcess(const MeroSimEvent& event) {
    SV::String mainKey;
    event.getMainInstanceKey(&mainKey);
    MeroAgentProcessInstance* const process = findInstance(mainKey);
    if (process == nullptr) {
        return EventHandled;
    }
    if (agentState == AgentRunning) {
        handOver(*process, {modelId, currentTime});
    }
    instances.erase(mainKey);
    return EventHandled;
}

void MeroWorkLoadAgent::emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) {
    // The history of a path that is known already repeats the last new value, and before there is one the
    // bits of the time, which is next to nothing.
    auto lastNewValue = std::bit_cast<double>(static_cast<std::int64_t>(end.abscissa));
    for (MeroAgentSubProcessInstance* const instance : instancesOf(process)) {
        for (const auto& [worker, value] : instance->getValues()) {
            const MeroPathView path = pathOfWork(*instance, worker);
            if (addWorkedTime(path, worker, value.value)) {
                lastNewValue = value.value;
            }
            if (!historyMem && !historyDisk) {
                continue;
            }
            const std::optional<double> available = getAvailableTime(worker, end.abscissa);
            if (!available) {
                abortAgent();
                return;
            }
            if (*available > 0.0 && lastNewValue > 0.0) {
                resultSet->addValue({.objectId = worker,
                                     .path = path,
                                     .itemKey = worker,
                                     .value = lastNewValue / *available,
                                     .time = end.abscissa,
                                     .sourceAgentType = 1});
            }
        }
    }
}

MeroPathView MeroWorkLoadAgent::pathOfWork(const MeroAgentSubProcessInstance& instance, MeroId worker) {
    if (!modelIsEnvironment) {
        return pathOfObject(instance, worker);
    }
    const MeroPathView callPath = instance.getCallPath();
    workPath.assign(callPath.begin(), callPath.end());
    workPath.insert(workPath.begin(), worker);
    return workPath;
}

bool MeroWorkLoadAgent::addWorkedTime(MeroPathView path, MeroId worker, double seconds) {
    if (WorkedTime* const known = accumulated.find({path})) {
        known->seconds += seconds;
        return false;
    }
    MeroPath kept(path.begin(), path.end());
    const MeroPathKey key{kept};
    accumulated.add(key, {std::move(kept), worker, seconds});
    return true;
}

// Report

bool MeroWorkLoadAgent::flushWorkLoad() {
    if (!countOpenPeriods()) {
        return false;
    }
    collectWorkedTimes();
    return reportWorkedTimes();
}

bool MeroWorkLoadAgent::countOpenPeriods() {
    for (OpenPeriod* const period : openPeriods.inOrderOfKeys()) {
        if (!bringUpToDate(*period)) {
            abortAgent();
            return false;
        }
    }
    return true;
}

bool MeroWorkLoadAgent::bringUpToDate(OpenPeriod& period) {
    const std::optional<double> seconds = workedBetween(period.value, currentTime);
    MeroAgentProcessInstance* const process = seconds ? findInstance(period.getMainKey()) : nullptr;
    const MeroAgentSubProcessInstance* const instance =
        process != nullptr ? process->getInstance(period.getInstanceKey()) : nullptr;
    if (instance == nullptr) {
        return false;
    }
    Pass pass;
    pass.object = period.getObject();
    pass.worker = period.getWorker();
    pass.mainModel = process->getModelId();
    pass.model = instance->getModelId();
    pass.instanceKey = period.getInstanceKey();
    pass.passKey = period.getKey();
    if (!addWork(*process, pass, *seconds)) {
        return false;
    }
    period.value = currentTime;
    return true;
}

void MeroWorkLoadAgent::collectWorkedTimes() {
    for (MeroAgentProcessInstance* const process : instances.inOrderOfKeys()) {
        for (MeroAgentSubProcessInstance* const instance : instancesOf(*process)) {
            for (const auto& [worker, value] : instance->getValues()) {
                addWorkedTime(pathOfWork(*instance, worker), worker, value.value);
                instance->getValue(worker)->value = 0.0;
            }
        }
    }
}

bool MeroWorkLoadAgent::reportWorkedTimes() {
    std::vector<const WorkedTime*> ordered;
    ordered.reserve(accumulated.size());
    for (const auto& entry : accumulated) {
        ordered.push_back(&entry.item);
    }
    std::ranges::sort(ordered, isBeforeAsPathKey, &WorkedTime::path);
    for (const WorkedTime* const worked : ordered) {
        const auto& [path, worker, seconds] = *worked;
        const std::optional<double> available = getAvailableTime(worker, currentTime);
        if (!available) {
            abortAgent();
            return false;
        }
        if (seconds > 0.0 && *available > 0.0) {
            resultSet->addValue({.objectId = worker,
                                 .path = path,
                                 .itemKey = worker,
                                 .value = seconds / *available,
                                 .time = currentTime,
                                 .sourceAgentType = 1});
        }
    }
    return true;
}

MeroAgentResultSet* MeroWorkLoadAgent::getResultSet([[maybe_unused]] const MeroResultRequest& request) {
    if (resultSet != nullptr) {
        const MeroWaitCursor wait;
        flushWorkLoad();
    }
    return resultSet.get();
}

// Available time

std::optional<double> MeroWorkLoadAgent::getAvailableTime(MeroId workerId, double now) {
    if (runStartTime == NotStarted || runStartTime > now) {
        return 0.0;
    }
    const MeroCalendar* const available = availableCalendarOf(workerId);
    std::int64_t seconds = 0;
    if (available == nullptr) {
        return std::nullopt;
    }
    if (available->getTimeIntervalsSumInBetween(static_cast<std::int64_t>(runStartTime),
                                                static_cast<std::int64_t>(now), seconds) != 0) {
        displayErrorMessage("aeasubag", __LINE__);
        return std::nullopt;
    }
    return static_cast<double>(seconds);
}

const MeroCalendar* MeroWorkLoadAgent::availableCalendarOf(MeroId workerId) {
    if (const MeroCalendar* const known = availableCalendars.find(workerId)) {
        return known;
    }
    const char* text = nullptr;
    const bool known = repositoryDoes([&](auto& repository) {
        return repository.enhanced().getAttributeValue(workerId, Mero_GetCoreVar(CoreExecutiveCalendar), text,
                                                       true);
    });
    MeroCalendar ofWorker(0, gSimStartTime, 1, 365);
    if (!known || calendar == nullptr || ofWorker.initializeCalendar(text != nullptr ? text : "") != 0) {
        displayErrorMessage("aeasubag", __LINE__);
        return nullptr;
    }
    MeroCalendar common(0, gSimStartTime, 1, 365);
    const int code = ofWorker.intersection(*calendar, common);
    if (code == CalendarNothingInCommon) {
        showErrorBox(SV::String(NoCommonTime) + "\"" + name + "\"");
        return nullptr;
    }
    if (code != 0) {
        displayErrorMessage("aeasubag", __LINE__);
        return nullptr;
    }
    return &availableCalendars.add(workerId, std::move(common));
}
