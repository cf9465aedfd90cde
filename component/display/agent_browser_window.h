#pragma once

#include <memory>

#include "component/host/browser.h"
#include "component/host/extension_controls.h"
#include "component/host/sv_buttons.h"

#include "component/display/agent_basic_result_interface.h"
#include "component/display/agent_browser_objects.h"
#include "component/display/busy_owner.h"

class MeroAgentResultWindows;

/// Window with a table of results: save, print, search, and charts of it. While one of its works runs,
/// neither the window nor the dialog that it was opened from can be closed.
class MeroAgentBrowserWindow : public MeroAgentBasicResultInterface, private MeroBusyOwner {
public:
    /// `owner` keeps this window, and it is told of the close; not owned. A `parent` that is a
    /// `MeroBusyOwner` is kept busy by the window's works. `caption` heads the window and all that is written
    /// of the table.
    MeroAgentBrowserWindow(SV::Window* parent, MeroAgentResultWindows& owner, MeroResultView shownView,
                           const SV::String& caption, std::unique_ptr<MeroAgentBrowserObjects> shownObjects);
    ~MeroAgentBrowserWindow() override;

    [[nodiscard]] MeroBrowser& getBrowser() { return browser; }
    [[nodiscard]] MeroAgentBrowserObjects& getObjects() { return *objects; }

    /// Ends and deletes the window. Refused while one of its works runs.
    bool Close() override;

private:
    void enterBusy() override;
    void leaveBusy() override;

    void setHeaders(const SV::String& caption);
    void setHandlers();
    void openDiagramDialog();

    MeroAgentResultWindows& windows;
    MeroBusyOwner* busyOwner;  ///< may be null
    int busyCount = 0;
    std::unique_ptr<MeroAgentBrowserObjects> objects;
    MeroBrowser browser;
    SV::PushButton saveButton;
    SV::PushButton printButton;
    SV::PushButton searchButton;
    SV::PushButton diagramButton;
    MeroCloseButton closeButton;
    SV::HelpButton helpButton;
    MeroSizingGrip sizingGrip;
};
