#pragma once

#include <string_view>

namespace mero {

/// Bytes of the files in `examples/`, compiled in.
[[nodiscard]] std::string_view exampleProcess();
[[nodiscard]] std::string_view exampleParameters();

}  // namespace mero
