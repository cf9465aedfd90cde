#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_result_windows.h"
#include "component/management/general_services.h"

namespace {

constexpr SV::ResId MessageNoResults(0x20051A7);
constexpr SV::ResId MessageNoGroup(0x20051AC);

}  // namespace

int MeroSuperAgent::displayResults(SV::Window* parent, MeroDisplayKind kind, const SV::String& title,
                                   const SV::String& scopeTime, bool scaled, int frequency,
                                   const SV::String& frequencyPeriod) {
    if (!started) {
        return showStatusMessage(StatusNoRun, parent);
    }
    if (!runPrepared) {
        return showStatusMessage(StatusAgentNotRunning, parent);
    }
    MeroResultRequest request{scaled, frequency, frequencyPeriod, 1.0};
    if (scaled) {
        const int status = computeScale(scopeTime, frequency, frequencyPeriod, request.scale, parent);
        if (status != StatusOk) {
            return status;
        }
    }
    std::vector<MeroAgentResultSet*> results;
    const bool isGroupMissing = !gatherResults(request, results);
    if (results.empty()) {
        showInfoBox(SV::String(MessageNoResults), parent);
        return StatusOk;
    }
    if (isGroupMissing) {
        showInfoBox(SV::String(MessageNoGroup), parent);
    }
    if (resultWindows == nullptr) {
        resultWindows = std::make_unique<MeroAgentResultWindows>(*this);
    }
    if (!resultWindows->showResult(parent, results, title, kind, request.scale, settings)) {
        closeResultWindows();
        return StatusRefused;
    }
    return StatusOk;
}

bool MeroSuperAgent::gatherResults(const MeroResultRequest& request,
                                   std::vector<MeroAgentResultSet*>& results) {
    const MeroResultOptions& options = settings;
    bool isGrouped = !options.groupChecked;
    for (const auto& agent : subAgents) {
        MeroAgentResultSet* set = nullptr;
        if (options.groupChecked) {
            int status = StatusRefused;
            set = agent->getLimitedResultSet(options.groupClass, options.groupRelation, status, request);
            isGrouped = isGrouped || status == StatusOk;
        } else {
            set = agent->getResultSet(request);
        }
        if (set != nullptr && set->isShown(request.scaled)) {
            results.push_back(set);
        }
    }
    return isGrouped;
}

void MeroSuperAgent::closeResultWindows() {
    resultWindows.reset();
}
