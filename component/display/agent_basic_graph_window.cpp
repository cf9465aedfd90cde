#include "component/display/agent_basic_graph_window.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/resource_ids.h"

#include "component/agents/agent_types.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr SV::ResId MessageTooManyCurves{0x2004EA4};
constexpr SV::ResId TitleOfProcesses{0x2012004};
constexpr SV::ResId TitleOfSteps{0x2012005};
constexpr SV::Size MinimumSize{336, 200};

bool isWorkLoadRun() {
    return gAgentManagement != nullptr && isWorkLoadAnalysis(gAgentManagement->getCurrentAlgorithm());
}

SV::String formatTimeLabel(double value) {
    return formatTime(value, gDaysPerYear, gHoursPerDay);
}

SV::String formatStepLabel(double value) {
    SV::String text(value);
    const std::size_t point = text.Search(".");
    const std::size_t end = point != SV::String::NotFound ? point : text.Search(",");
    return end != SV::String::NotFound ? text.Erase(end) : text;
}

SV::String formatNumberLabel(double value) {
    return SV::String(value);
}

}  // namespace

int MeroAgentBasicGraphWindow::totalCurves = 0;
bool MeroAgentBasicGraphWindow::limitWasTold = false;

MeroAgentBasicGraphWindow::MeroAgentBasicGraphWindow(SV::Window* parent, SV::ResId form, int mode)
    : MeroAgentBasicResultInterface(parent, form, {SV::String(form), DisplayHistory, 1.0, {}}),
      curveMode(mode),
      graph(this, MeroGraphResultForm::Graph),
      legendLabel(this, MeroGraphResultForm::LegendLabel),
      legend(this, MeroGraphResultForm::Legend),
      closeButton(this, MeroGraphResultForm::CloseButton),
      helpButton(this, MeroGraphResultForm::HelpButton),
      sizingGrip(this, MeroGraphResultForm::SizingGrip) {
    graph.SetBackground(SV::Color(SV::ColorRole::White));
    graph.SetLabelColor(SV::Color(SV::ColorRole::Gray));
    legend.AttachGraph(&graph);
    legend.SetSelectHdl([this] { showSelectedCurve(); });
    SetMinOutputSizePixel(MinimumSize);
}

MeroAgentBasicGraphWindow::~MeroAgentBasicGraphWindow() {
    totalCurves -= curveCount;
}

bool MeroAgentBasicGraphWindow::takeShareOfLimit() {
    if (totalCurves < MaximumCurves) {
        ++totalCurves;
        ++curveCount;
        return true;
    }
    if (!limitWasTold) {
        limitWasTold = true;
        showErrorBox(SV::String(MessageTooManyCurves), GetParent());
    }
    return false;
}

bool MeroAgentBasicGraphWindow::addCurve(MeroId id, const SV::String& name, bool xIsTime, bool yIsTime) {
    if (!takeShareOfLimit() || graph.IDExists(id) || !graph.InsertGraph(id, curveMode, name, {})) {
        return false;
    }
    curves.push_back({id, name, xIsTime, yIsTime});
    legend.UpdateEntries();
    if (curves.size() == 1) {
        legend.SelectEntryPos(0);
        showSelectedCurve();
    }
    lastTime = 0.0;
    lastStep = 0.0;
    return true;
}

bool MeroAgentBasicGraphWindow::insertPoint(MeroId id, double x, double y) {
    if (!isWorkLoadRun()) {
        return graph.InsertValue(id, {x, y});
    }
    if (x < lastTime) {
        return false;
    }
    if (x > lastTime) {
        lastTime = x;
        ++lastStep;
    }
    return graph.InsertValue(id, {lastStep, y});
}

const MeroGraphCurveInfo* MeroAgentBasicGraphWindow::findCurve(MeroId id) const {
    const auto found = std::ranges::find(curves, id, &MeroGraphCurveInfo::id);
    return found != curves.end() ? &*found : nullptr;
}

bool MeroAgentBasicGraphWindow::getCurveInfo(MeroId id, MeroGraphCurveInfo& info) const {
    const MeroGraphCurveInfo* const found = findCurve(id);
    if (found != nullptr) {
        info = *found;
    }
    return found != nullptr;
}

void MeroAgentBasicGraphWindow::setLegendVisible(bool visible) {
    legendLabel.Show(visible);
    legend.Show(visible);
}

void MeroAgentBasicGraphWindow::showSelectedCurve() {
    MeroId id = MeroNoId;
    if (!getSelectedCurveId(id)) {
        return;
    }
    const MeroGraphCurveInfo* const curve = findCurve(id);
    if (curve == nullptr) {
        displayErrorMessage("aeadsply", __LINE__);
        return;
    }
    graph.SetLabelingXMethod(curve->xIsTime && !isWorkLoadRun() ? formatTimeLabel : formatStepLabel);
    graph.SetLabelingYMethod(curve->yIsTime ? formatTimeLabel : formatNumberLabel);
    graph.SetAxisTitles(SV::String(isWorkLoadRun() ? TitleOfSteps : TitleOfProcesses), curve->name);
    graph.ShowGraph(id, 1, 3, 2);
    graph.UpdateFunctionGraph();
}
