#pragma once

#include "platform/interchange/import_report.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Gives the models that an import has just made (`report`) the simulation parameters of a JSON document in
/// the format of the open-source simulator Prosimos; elements are found by their BPMN identifier.
///
/// - branching probabilities: `Probability` of the sequence flows;
/// - durations of tasks: `Duration` of the activity, one distribution if all workers share it, else a mixture
///   of all; then each worker's own stand in its `Task durations`;
/// - durations of events: `Duration`;
/// - arrival distribution and calendar: the first start event of the model that the tasks belong to;
/// - resources: a working environment with a `Role` for a profile, `Worker`s with calendar and hourly wages,
///   and a role for each task whose workers are no whole profile; the task's `Performer` names its role.
///
/// What isn't used is noted in the report. An error names place and reason; the caller then discards the
/// models.
Result<void> applySimulationParameters(const ImportFile& document, Repository& repository,
                                       ImportReport& report);

}  // namespace mero
