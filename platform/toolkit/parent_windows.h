#pragma once

#include <vector>

#include "component/host/sv_application.h"

namespace mero {

/// Windows that modal boxes stand on, the top one last. None is owned.
[[nodiscard]] std::vector<SV::Window*>& parentWindows();

}  // namespace mero
