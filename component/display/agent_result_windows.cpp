#include "component/display/agent_result_windows.h"

#include <algorithm>
#include <utility>

#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/graph_result_window.h"
#include "component/management/general_services.h"
#include "component/management/message_text.h"

namespace {

constexpr SV::ResId TableCaption{0x2004F47};
constexpr SV::ResId GraphCaption{0x2005001};
constexpr SV::ResId MessageNoHistory{0x2005000};

}  // namespace

MeroAgentResultWindows::MeroAgentResultWindows(MeroSuperAgent& superAgent) : owner(superAgent) {
    setDefaultOptions();
}

MeroAgentResultWindows::~MeroAgentResultWindows() {
    closeAllWindows();
}

void MeroAgentResultWindows::setDefaultOptions() {
    options = {};
    options.extremeChecked = false;
}

int MeroAgentResultWindows::showResult(SV::Window* parent, const std::vector<MeroAgentResultSet*>& resultSets,
                                       const SV::String& title, MeroDisplayKind kind, double scale,
                                       const MeroResultOptions& newOptions) {
    const MeroWaitCursor wait;
    const MeroResultView view{title, kind, scale, newOptions};
    if (MeroAgentBasicResultInterface* const open = findWindow(view)) {
        open->bringToFront();
        return StatusOk;
    }
    options = newOptions;
    switch (kind) {
        case DisplayDetail:
        case DisplayTotal:
            return showTable(parent, resultSets, view) ? StatusOk : StatusRefused;
        case DisplayHistory:
            return showGraph(parent, resultSets) ? StatusOk : StatusRefused;
        default:
            return StatusOk;
    }
}

MeroAgentBasicResultInterface* MeroAgentResultWindows::findWindow(const MeroResultView& view) const {
    if (view.kind == DisplayHistory) {
        return graphWindow.get();
    }
    const auto found = std::ranges::find_if(
        browserWindows, [&](const auto& window) { return window->getView().isSameAs(view); });
    return found != browserWindows.end() ? found->get() : nullptr;
}

bool MeroAgentResultWindows::showTable(SV::Window* parent, const std::vector<MeroAgentResultSet*>& resultSets,
                                       const MeroResultView& view) {
    auto objects = std::make_unique<MeroAgentBrowserObjects>();
    bool isEmpty = true;
    if (!fillBrowser(*objects, view.kind, isEmpty, resultSets, view.scale) || isEmpty) {
        return false;
    }
    for (int column = 1; column <= objects->getNumberOfColumns(); ++column) {
        objects->setColumnToolTip(column, objects->getColumnToolTip(column) + SV::String("\n") + view.title);
    }
    const SV::String caption = fillMessage(TableCaption, {{"%a", nameOfOwner()}}) + ": " + view.title;
    browserWindows.push_back(
        std::make_unique<MeroAgentBrowserWindow>(parent, *this, view, caption, std::move(objects)));
    browserWindows.back()->Show();
    return true;
}

bool MeroAgentResultWindows::showGraph(SV::Window* parent,
                                       const std::vector<MeroAgentResultSet*>& resultSets) {
    const SV::String caption = SV::String(GraphCaption) + SV::String(" (") + nameOfOwner() + SV::String(")");
    graphWindow = buildGraphWindow(parent, caption, resultSets);
    if (graphWindow == nullptr) {
        showErrorBox(SV::String(MessageNoHistory), parent);
    }
    return graphWindow != nullptr;
}

SV::String MeroAgentResultWindows::nameOfOwner() const {
    SV::String name;
    owner.getName(name);
    return name;
}

void MeroAgentResultWindows::closeAllWindows() {
    const MeroWaitCursor wait;
    for (const auto& window : std::exchange(browserWindows, {})) {
        window->Hide();
    }
    if (const auto window = std::exchange(graphWindow, nullptr)) {
        window->Hide();
    }
    setDefaultOptions();
}

std::unique_ptr<MeroAgentBrowserWindow> MeroAgentResultWindows::forgetBrowserWindow(
    const MeroAgentBrowserWindow& window) {
    const auto found =
        std::ranges::find(browserWindows, &window, &std::unique_ptr<MeroAgentBrowserWindow>::get);
    if (found == browserWindows.end()) {
        return nullptr;
    }
    auto forgotten = std::move(*found);
    browserWindows.erase(found);
    return forgotten;
}

std::unique_ptr<MeroGraphResultWindow> MeroAgentResultWindows::forgetGraphWindow(
    const MeroGraphResultWindow& window) {
    return graphWindow.get() == &window ? std::exchange(graphWindow, nullptr) : nullptr;
}
