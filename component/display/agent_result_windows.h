#pragma once

#include <memory>
#include <span>
#include <vector>

#include "component/display/agent_browser_objects.h"
#include "component/results/agent_result_set.h"
#include "component/results/result_options.h"

class MeroAgentBasicResultInterface;
class MeroAgentBrowserWindow;
class MeroGraphResultWindow;
class MeroSuperAgent;
struct MeroResultView;

/// The result windows of one super agent: tables, one for each view, and one window with curves. It turns
/// result sets into them, and keeps them until the user closes them or this object goes.
class MeroAgentResultWindows {
public:
    /// `superAgent` isn't owned and has to outlive this object.
    explicit MeroAgentResultWindows(MeroSuperAgent& superAgent);
    MeroAgentResultWindows(const MeroAgentResultWindows&) = delete;
    MeroAgentResultWindows& operator=(const MeroAgentResultWindows&) = delete;
    /// Closes all windows.
    ~MeroAgentResultWindows();

    /// Shows the results in a window of `kind`; `title` identifies the view. A table of the same view, or
    /// open curves of whatever view, come to the front as they are. 0 if there is nothing to show; a box
    /// tells of missing histories only. `parent` isn't owned and has to outlive the windows: one that is a
    /// `MeroBusyOwner` is kept from closing while works of the windows run.
    int showResult(SV::Window* parent, const std::vector<MeroAgentResultSet*>& resultSets,
                   const SV::String& title, MeroDisplayKind kind, double scale,
                   const MeroResultOptions& newOptions);
    /// No work of a window may be running.
    void closeAllWindows();
    /// A window calls it as it closes, and gets itself; null for a window that isn't here.
    std::unique_ptr<MeroAgentBrowserWindow> forgetBrowserWindow(const MeroAgentBrowserWindow& window);
    std::unique_ptr<MeroGraphResultWindow> forgetGraphWindow(const MeroGraphResultWindow& window);

    /// Extremes, sum and grouping off, all shown and enabled.
    void setDefaultOptions();
    void setOptions(const MeroResultOptions& newOptions) { options = newOptions; }
    /// Of the last display.
    [[nodiscard]] const MeroResultOptions& getOptions() const { return options; }
    [[nodiscard]] MeroSuperAgent& getOwner() const { return owner; }
    /// In the order of their opening.
    [[nodiscard]] std::span<const std::unique_ptr<MeroAgentBrowserWindow>> getBrowserWindows() const {
        return browserWindows;
    }
    /// Null if none is open.
    [[nodiscard]] MeroGraphResultWindow* getGraphWindow() const { return graphWindow.get(); }

    /// Fills an empty table: a column for each set with values, a row for each object or path, and, by the
    /// options, rows for the sum and the extremes over the same cells. `scale` multiplies the values of sets
    /// that scale. `isEmpty` stays true if there was nothing to show. False, and an internal error, for a
    /// kind without a table or a failing cell.
    bool fillBrowser(MeroAgentBrowserObjects& objects, MeroDisplayKind kind, bool& isEmpty,
                     const std::vector<MeroAgentResultSet*>& resultSets, double scale) const;

private:
    /// Null if no window shows the view.
    [[nodiscard]] MeroAgentBasicResultInterface* findWindow(const MeroResultView& view) const;
    bool showTable(SV::Window* parent, const std::vector<MeroAgentResultSet*>& resultSets,
                   const MeroResultView& view);
    bool showGraph(SV::Window* parent, const std::vector<MeroAgentResultSet*>& resultSets);
    /// Null, and nothing is shown, if no set has a history.
    [[nodiscard]] std::unique_ptr<MeroGraphResultWindow> buildGraphWindow(
        SV::Window* parent, const SV::String& caption, const std::vector<MeroAgentResultSet*>& resultSets);
    [[nodiscard]] SV::String nameOfOwner() const;

    MeroSuperAgent& owner;
    MeroResultOptions options;
    std::vector<std::unique_ptr<MeroAgentBrowserWindow>> browserWindows;
    std::unique_ptr<MeroGraphResultWindow> graphWindow;
};
