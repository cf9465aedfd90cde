#include <cstdint>
#include <optional>
#include <unordered_set>

#include "component/host/basic_services.h"
#include "component/host/model_references.h"
#include "component/host/sv_boxes.h"

#include "component/agents/super_agent.h"
#include "component/display/select_result_manager.h"
#include "component/management/agent_management.h"
#include "component/management/agent_queries.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr SV::ResId MessageStartingAgents(0x20051C2);
constexpr SV::ResId MessageEndingAgents(0x20051C3);
constexpr SV::ResId MessageGoOnWithoutInvalid(0x20051C6);
constexpr SV::ResId MessageNoResults(0x20051C7);

constexpr bool NotForWriting = false;
constexpr bool RefuseLoads = true;

constexpr std::uint32_t SecondsOfDay = 86400;

/// Seconds from the beginning of the year, in 32 bits, hundredths of a second dropped.
std::int64_t getSecondsOfYear(const SV::DateTime& dateTime) {
    const std::int32_t packed = dateTime.GetTime().GetTime();
    const std::uint32_t time =
        packed < 0 ? 0U - static_cast<std::uint32_t>(packed) : static_cast<std::uint32_t>(packed);
    const auto dayOfYear = static_cast<std::uint32_t>(dateTime.GetDate().GetDayOfYear());
    const std::uint32_t hours = time / 1000000 + 24 * dayOfYear;
    const std::uint32_t minutes = time / 10000 % 100 + 60 * hours;
    return std::uint32_t{time / 100 % 100 + 60 * minutes - SecondsOfDay};
}

bool endsAgentSilently(int status) {
    return status == StatusOk || status == StatusNoRun;
}

}  // namespace

/// Agents of the models of a run.
struct MeroAgentManagement::RunAgents {
    std::unordered_set<const MeroSuperAgent*> valid;
    bool someInvalid = false;
};

int MeroAgentManagement::simStart(const int& algorithm, MeroControlComponent* control,
                                  const ISequence<MeroId>& simAttributes, const ISortedSet<MeroId>& models,
                                  const MeroId& weModelId, const SV::DateTime* startDate,
                                  const double& newDaysPerYear, const double& newHoursPerDay) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    if (running) {
        return StatusRunInProgress;
    }
    if (simAttributes.size() != gSimAttributes.size()) {
        return StatusRefused;
    }
    running = true;
    currentAlgorithm = algorithm;
    daysPerYear = newDaysPerYear;
    hoursPerDay = newHoursPerDay;
    gDaysPerYear = newDaysPerYear;
    gHoursPerDay = newHoursPerDay;
    if (weModelId != MeroNoId) {
        applicationModels.insert(weModelId);
    }
    applicationModels.insertAll(models);
    std::copy(simAttributes.begin(), simAttributes.end(), gSimAttributes.begin());
    if (isWorkLoadAnalysis(algorithm)) {
        if (startDate == nullptr) {
            displayErrorMessage(MeroManagementModule, __LINE__);
            return StatusRefused;
        }
        gSimStartTime = getSecondsOfYear(*startDate);
    }

    ISortedSet<MeroId> weRunModels;
    ISortedSet<MeroId> bpRunModels;
    RunAgents found;
    int status = findEnvironmentModels(weModelId, weRunModels);
    if (status == StatusOk) {
        status = findProcessModels(models, bpRunModels);
    }
    if (status == StatusOk) {
        status = findRunAgents(weRunModels, CoreEnvironmentAgentBase, found);
    }
    if (status == StatusOk) {
        status = findRunAgents(bpRunModels, CoreProcessAgentBase, found);
    }
    if (status != StatusOk) {
        return status;
    }
    if (found.someInvalid) {
        const bool wasWaiting = SV::GetpApp()->IsWait();
        SV::GetpApp()->Wait(false);
        if (askQuestion(SV::String(MessageGoOnWithoutInvalid)) == SV::BoxNo) {
            return StatusDeclined;
        }
        SV::GetpApp()->Wait(wasWaiting);
        status = StatusInvalidAgents;
    }
    return startAgents(found, control, status);
}

int MeroAgentManagement::findEnvironmentModels(MeroId weModelId, ISortedSet<MeroId>& weModels) {
    if (weModelId < 1) {
        return StatusOk;
    }
    MeroModelTypeInterRefs references;
    if (MeroSetInterRefDlg::getCalledSubProcesses(references) != RepositoryOk ||
        MeroReferencedModelsHandler(weModelId, references).getAllReferencedModels(weModels) != RepositoryOk) {
        displayErrorMessage(MeroManagementModule, __LINE__);
        return StatusRepositoryError;
    }
    weModels.insert(weModelId);
    return StatusOk;
}

int MeroAgentManagement::findProcessModels(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& bpModels) {
    bpModels.insertAll(models);
    ISortedSet<MeroId> allLoaded;
    for (const MeroId modelId : models) {
        ISortedSet<MeroId> subProcessModels;
        ISortedSet<MeroId> loaded;
        if (computeSubProcesses(modelId, subProcessModels, NotForWriting, RefuseLoads, loaded) != StatusOk) {
            discardSubProcesses(allLoaded);
            return StatusRepositoryError;
        }
        allLoaded.insertAll(loaded);
        bpModels.insertAll(subProcessModels);
    }
    return StatusOk;
}

int MeroAgentManagement::findRunAgents(const ISortedSet<MeroId>& models, MeroCoreVarType agentClass,
                                       RunAgents& found) {
    // An agent of an environment concerns every process, so that an invalid one counts though it is inactive.
    const bool inactiveCounts = agentClass == CoreEnvironmentAgentBase;
    for (const MeroId modelId : models) {
        ISortedSet<MeroId> agentIds;
        if (!findAgentsInModel(modelId, agentClass, agentIds)) {
            displayErrorMessage(MeroManagementModule, __LINE__);
            return StatusRepositoryError;
        }
        for (const MeroId agentId : agentIds) {
            MeroSuperAgent& agent = ensureSuperAgent(agentId, modelId);
            const bool valid = isAgentValid(agent, MeroEmptyObjects::Refused);
            const bool active = agent.getActivation() != 0;
            if (valid && active) {
                found.valid.insert(&agent);
            } else if (!valid && (active || inactiveCounts)) {
                found.someInvalid = true;
            }
        }
    }
    return StatusOk;
}

int MeroAgentManagement::startAgents(const RunAgents& found, MeroControlComponent* control, int result) {
    if (found.valid.empty()) {
        return result;
    }
    MeroMessWin message(SV::GetpApp()->GetAppWindow(), SV::String(MessageStartingAgents));
    message.Show();
    for (const auto& agent : superAgents->agents()) {
        if (!found.valid.contains(agent.get())) {
            continue;
        }
        const int status = agent->startRun(currentAlgorithm, control);
        if (status == StatusOk) {
            ++instantiatedAgents;
        } else if (status != StatusNothingToDo) {
            result = status;
        }
    }
    return result;
}

int MeroAgentManagement::simEnd() {
    if (!initialised) {
        return StatusNotInitialised;
    }
    if (!running) {
        return StatusNoRun;
    }
    std::optional<MeroMessWin> message;
    if (instantiatedAgents > 0 && isWorkLoadAnalysis(currentAlgorithm)) {
        message.emplace(SV::GetpApp()->GetAppWindow(), SV::String(MessageEndingAgents));
        message->Show();
    }
    const MeroWaitCursor wait;
    running = false;
    currentAlgorithm = AnalysisNone;
    int result = StatusOk;
    for (const auto& agent : superAgents->agents()) {
        const int status = agent->clearResults();
        result = endsAgentSilently(status) ? result : status;
    }
    instantiatedAgents = 0;
    return result;
}

int MeroAgentManagement::showResults(SV::Window* parent) {
    if (!initialised) {
        return StatusNotInitialised;
    }
    if (!running) {
        return StatusNoRun;
    }
    if (superAgents->agents().empty()) {
        return StatusOk;
    }
    ISortedSet<MeroId> agentIds;
    for (const auto& agent : superAgents->agents()) {
        if (agent->hasObjectResults(false) || agent->hasHistory(false)) {
            agentIds.insert(agent->getInstanceId());
        }
    }
    if (agentIds.empty()) {
        showInfoBox(SV::String(MessageNoResults), parent);
        return StatusOk;
    }
    const MeroWaitPause noWait;
    MeroSelectResultManager(parent, agentIds, currentAlgorithm, *this).Execute();
    return StatusOk;
}
