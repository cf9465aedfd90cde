#pragma once

#include "platform/interchange/import_report.h"
#include "platform/repository/repository.h"

namespace mero {

/// The working environment of an import; it is made, "*first model* staff", where there is none yet. Throws
/// `DocumentRefused`.
MeroId takeEnvironment(Repository& repository, ImportReport& report);

}  // namespace mero
