#pragma once

#include "component/display/agent_basic_graph_window.h"

class MeroAgentResultWindows;

/// Window with the curves of finished histories.
class MeroGraphResultWindow : public MeroAgentBasicGraphWindow {
public:
    /// `owner` keeps this window, and it is told of the close; not owned.
    MeroGraphResultWindow(SV::Window* parent, MeroAgentResultWindows& owner);

    /// Ends and deletes the window.
    bool Close() override;

private:
    MeroAgentResultWindows& windows;
    SV::FixedText hint;
};
