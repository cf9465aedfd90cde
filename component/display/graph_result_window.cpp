#include "component/display/graph_result_window.h"

#include "component/host/resource_ids.h"

#include "component/display/agent_result_windows.h"

namespace {

constexpr int HelpId = 52080;
constexpr int CurveModeSteps = 1;

}  // namespace

MeroGraphResultWindow::MeroGraphResultWindow(SV::Window* parent, MeroAgentResultWindows& owner)
    : MeroAgentBasicGraphWindow(parent, MeroGraphResultForm::Form, CurveModeSteps),
      windows(owner),
      hint(this, MeroGraphResultForm::Hint) {
    SetHelpId(HelpId);
}

bool MeroGraphResultWindow::Close() {
    const auto self = windows.forgetGraphWindow(*this);
    Hide();
    return true;
}
