#pragma once

#include "tests/platform/toolkit/toolkit_cases.h"

namespace mero::test {

// Uses of the dialogs around the selection of results, for every way to drive them.

[[nodiscard]] std::vector<ToolkitCase> timeScopeCases();
[[nodiscard]] std::vector<ToolkitCase> diagramStartCases();
[[nodiscard]] std::vector<ToolkitCase> agentTreeCases();
[[nodiscard]] std::vector<ToolkitCase> agentTypeCases();
[[nodiscard]] std::vector<ToolkitCase> resultChoiceCases();
[[nodiscard]] std::vector<ToolkitCase> resultDialogCases();

}  // namespace mero::test
