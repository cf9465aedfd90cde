#include "component/display/time_scope.h"

#include "component/host/core_time.h"

#include "component/management/general_services.h"
#include "component/management/run_globals.h"

bool convertScopeToCalendarBase(const SV::String& text, SV::String& result) {
    if (!MeroCoreTime::isTime(text)) {
        return false;
    }
    MeroCoreTime time;
    const double calendarYear = time._s2d(gTimeScopeYear);
    time.setBase(gDaysPerYear, gHoursPerDay);
    const double year = time._s2d(gTimeScopeYear);
    const double shareOfYear = time._s2d(text) / year;
    result = MeroCoreTime()._d2s(shareOfYear * calendarYear);
    return true;
}

bool convertScopeToSimulationBase(const SV::String& text, SV::String& result) {
    return convertTimeToSimBase(text, result);
}

SV::String normalizeScope(const SV::String& text) {
    return MeroCoreTime::isTime(text) ? MeroCoreTime(text).asText() : text;
}
