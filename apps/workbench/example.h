#pragma once

#include <string>

#include "platform/support/result.h"

namespace mero {

/// Files of the shipped example, a purchasing process.
struct ExampleFiles {
    std::string process;
    std::string parameters;
};

/// Writes the example to a folder, which is made if it isn't there.
[[nodiscard]] Result<ExampleFiles> writeExample(const std::string& folder);

}  // namespace mero
