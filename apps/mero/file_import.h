#pragma once

#include <string>
#include <vector>

#include "platform/interchange/import_report.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Adds what a file holds to the repository: processes of a BPMN 2.0 file, with the parameters of
/// `parameterFiles`, models of a repository document, or activities and workers of an event log. The kind is
/// told by the content, that of logs by the name. An error changes nothing.
Result<ImportReport> importFile(const std::string& name, const std::vector<std::string>& parameterFiles,
                                Repository& repository);

}  // namespace mero
