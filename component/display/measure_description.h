#pragma once

#include "component/host/sv_string.h"

#include "component/results/agent_result_set.h"

class MeroSuperAgent;

/// What the header of a measure's column tells of it, a line each: what is measured, the analysis, and the
/// factor that its values were multiplied by.
[[nodiscard]] SV::String describeMeasure(const MeroSuperAgent& owner, const MeroAgentResultSet& set,
                                         double factor);
