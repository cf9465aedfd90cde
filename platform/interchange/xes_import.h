#pragma once

#include <filesystem>
#include <istream>
#include <string>

#include "platform/interchange/import_report.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// True for the names of event logs: `.xes` and `.xes.gz`, in any case of letters.
bool isXesFile(const std::filesystem::path& file);

/// Adds the models of an event log (`xes_reader.h`): a `Business process`, named after the log, else the
/// file, with a `Task` for each activity; and, where the log names any, a `Working environment` with a
/// `Worker` for each resource, its `Role`s and `Organisational unit`s. All in the order of the log. The
/// report counts what the log lacks. The rules stand in docs/event-logs.md.
///
/// A fault refuses the log with its place and takes back what was made.
Result<ImportReport> importXes(std::istream& input, const std::string& source, Repository& repository);
Result<ImportReport> importXesFile(const std::filesystem::path& file, Repository& repository);

}  // namespace mero
