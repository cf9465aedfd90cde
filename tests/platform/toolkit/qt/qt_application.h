#pragma once

#include <gtest/gtest.h>

namespace mero::test {

/// One offscreen application with the toolkit of widgets for all tests of the program. Call it at the start:
///
///     const testing::Environment* const Environment = addQtApplication();
testing::Environment* addQtApplication();

}  // namespace mero::test
