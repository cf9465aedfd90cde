#include "component/management/run_globals.h"

MeroAgentManagement* gAgentManagement = nullptr;
double gDaysPerYear = 365.0;
double gHoursPerDay = 24.0;
std::array<MeroId, 4> gSimAttributes{};
std::int64_t gSimStartTime = 0;
