#include <cstdint>

#include "component/host/basic_services.h"
#include "component/host/calendar.h"
#include "component/host/core_time.h"

#include "component/agents/super_agent.h"
#include "component/agents/support_agent.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr char ModuleName[] = "aeagents";

constexpr SV::ResId MessageNoPeriod(0x20051A8);

}  // namespace

int MeroSuperAgent::computeScale(const SV::String& scopeTime, int frequency,
                                 const SV::String& frequencyPeriod, double& scale, SV::Window* parent) {
    scale = 1.0;
    if (!started) {
        return showStatusMessage(StatusNoRun, parent);
    }
    if (!runPrepared) {
        return showStatusMessage(StatusAgentNotRunning, parent);
    }
    double scopeSeconds = 0.0;
    if (!readScopeTime(scopeTime, scopeSeconds)) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    if (isWorkLoadAnalysis(analysisType)) {
        return computeWorkedScale(scopeSeconds, scale);
    }
    if (analysisType != AnalysisPath && analysisType != AnalysisVolume) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    return computeStartScale(scopeSeconds, frequency, frequencyPeriod, scale, parent);
}

bool MeroSuperAgent::readScopeTime(const SV::String& text, double& seconds) const {
    SV::String converted;
    if (!convertTimeToSimBase(text, converted)) {
        return false;
    }
    MeroCoreTime time;
    time.setBase(daysPerYear, hoursPerDay);
    seconds = time._s2d(converted);
    return true;
}

int MeroSuperAgent::computeStartScale(double scopeSeconds, int frequency, const SV::String& frequencyPeriod,
                                      double& scale, SV::Window* parent) const {
    double periodSeconds = 0.0;
    if (!readScopeTime(frequencyPeriod, periodSeconds)) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    if (periodSeconds <= 0.0) {
        showInfoBox(SV::String(MessageNoPeriod), parent);
        return StatusRefused;
    }
    scale = frequency / periodSeconds * scopeSeconds;
    return StatusOk;
}

int MeroSuperAgent::computeWorkedScale(double scopeSeconds, double& scale) const {
    if (supportAgent == nullptr) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRefused;
    }
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::int64_t finishedProcesses = 0;
    if (supportAgent->getAnalysisFlags().nonStaticWorkLoad) {
        start = static_cast<std::int64_t>(supportAgent->getRunStartTime());
        end = static_cast<std::int64_t>(supportAgent->getLastEventTime());
        finishedProcesses = supportAgent->getFinishedProcesses();
    }
    MeroCalendar calendar(0, gSimStartTime, 1, 365);
    std::int64_t workedSeconds = 0;
    if (calendar.initializeCalendar(calendarText) != 0 ||
        calendar.getTimeIntervalsSumInBetween(start, end, workedSeconds) != 0) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusBadCalendar;
    }
    if (workedSeconds > 0) {
        // Whole processes in a second: fewer processes than worked seconds give a scale of 0.
        const std::int64_t processesInASecond = finishedProcesses / workedSeconds;
        scale = static_cast<double>(processesInASecond) * scopeSeconds;
    }
    return StatusOk;
}
