#pragma once

#include <vector>

#include "platform/interchange/import_report.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Adds the processes of a BPMN 2.0 file to the repository, with the simulation parameters of
/// `parameterFiles`
/// (`parameter_files.h`) or, where there are none, those that the file itself holds.
///
/// Every process that has flow nodes becomes a model `Business process`, named after the process, else its
/// participant, else the file; every embedded sub-process becomes a model "Parent / Sub" that an object
/// `Sub-process` calls. A call activity whose target is in the file (by identifier) or in the repository (by
/// name) calls it; any other becomes a `Task`. Lanes become roles of a working environment and performers
/// of their activities. Names are made unique within their model, over all classes. Whatever isn't executed
/// as the file has it is noted in the report.
///
/// A fault refuses the file with its place and takes back what was made.
Result<ImportReport> importBpmn(const ImportFile& file, Repository& repository,
                                const std::vector<ImportFile>& parameterFiles = {});

}  // namespace mero
