#pragma once

#include <vector>

#include "component/host/sv_string.h"

/// Names of the classes whose objects results can be grouped over, alphabetically: those of groups that can
/// have instances and take part in simulation. Empty, after an internal error, if the repository fails.
[[nodiscard]] std::vector<SV::String> findGroupingClasses();

/// Names of the relation classes that lead from people or resources to objects of the class, or back, each
/// once. Empty, after an internal error, if the repository fails or doesn't know the class.
[[nodiscard]] std::vector<SV::String> findGroupingRelations(const SV::String& className);
