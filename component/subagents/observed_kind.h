#pragma once

#include "component/host/types.h"

/// Finds out whether a class is one of executives or of resources. 1, 0 after an internal error for neither,
/// 15 after one of the repository.
int findObservedKind(MeroId classId, bool& observesExecutives);
