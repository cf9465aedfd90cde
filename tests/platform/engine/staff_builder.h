#pragma once

#include "tests/platform/engine/model_builder.h"

namespace mero {

/// Makes a working environment.
class StaffBuilder : public ModelBuilder {
public:
    StaffBuilder(Repository& filledRepository, std::string_view name)
        : ModelBuilder(filledRepository, name, 1, ClassCodeEnvironmentLibrary) {}

    /// So many workers "Name 1", "Name 2" … who have the role.
    void addWorkers(MeroId role, std::string_view name, int count, Attributes attributes = {}) {
        for (int number = 1; number <= count; ++number) {
            relate("Has role", add("Worker", std::string(name) + " " + std::to_string(number), attributes),
                   role);
        }
    }
};

}  // namespace mero
