#pragma once

#include "platform/interchange/simulation_parameters.h"
#include "platform/repository/repository.h"

namespace mero {

/// Stores parameters in the models that an import has just made (`report`) and in a working environment:
///
/// - durations: `Duration` of the activity or event; where crews differ, a mixture of theirs, and each
/// worker's
///   own in its `Task durations`;
/// - performers: the role whose crews they are, or one of the task's own, as `Performer`;
/// - probabilities: of a sequence flow or of a boundary event;
/// - arrivals: at the start event; costs, priority, waiting and transport times: at the activity;
/// - what a run needs: `runOptions` of the report.
///
/// What isn't used is noted. Throws `DocumentRefused` where none of the nodes is in the models, which then
/// are those of another process; the caller discards them.
void applyParameters(const SimulationParameters& parameters, Repository& repository, ImportReport& report);

}  // namespace mero
