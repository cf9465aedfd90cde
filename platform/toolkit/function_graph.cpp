#include "component/host/function_graph.h"

#include <algorithm>
#include <cmath>

MeroFunctionGraph::MeroFunctionGraph(SV::Window* parent, SV::ResId id)
    : Control(parent, id, SV::ControlClass::FunctionGraph), labelColor(SV::ColorRole::Gray) {
    bind();
}

MeroFunctionGraph::Curve* MeroFunctionGraph::find(MeroId id) {
    // Points come in runs for the same curve.
    if (lastFound >= curves.size() || curves[lastFound].id != id) {
        lastFound = static_cast<std::size_t>(std::ranges::find(curves, id, &Curve::id) - curves.begin());
    }
    return lastFound < curves.size() ? &curves[lastFound] : nullptr;
}

const MeroFunctionGraph::Curve* MeroFunctionGraph::FindCurve(MeroId id) const {
    const auto place = std::ranges::find(curves, id, &Curve::id);
    return place != curves.end() ? &*place : nullptr;
}

bool MeroFunctionGraph::IDExists(MeroId id) const {
    return FindCurve(id) != nullptr;
}

bool MeroFunctionGraph::InsertGraph(MeroId id, int mode, const SV::String& name, const SV::Color& color) {
    if (IDExists(id)) {
        return false;
    }
    curves.push_back({id, mode, name, color, {}});
    tell({SV::Aspect::Curves, static_cast<int>(curves.size()) - 1, 1, id});
    return true;
}

bool MeroFunctionGraph::InsertValue(MeroId id, const MeroGraphPoint& point) {
    Curve* curve = find(id);
    if (curve == nullptr || !std::isfinite(point.x) || !std::isfinite(point.y)) {
        return false;
    }
    curve->isAscending = curve->isAscending && (curve->points.empty() || curve->points.back().x <= point.x);
    curve->points.push_back(point);
    if (id == shown) {
        tell({SV::Aspect::Points, static_cast<int>(lastFound), 1, id});
    }
    return true;
}

bool MeroFunctionGraph::ShowGraph(MeroId id, [[maybe_unused]] int fitAxes, [[maybe_unused]] int grid,
                                  [[maybe_unused]] int labels) {
    if (!IDExists(id)) {
        return false;
    }
    shown = id;
    tell({SV::Aspect::Selection, 0, 0, id});
    return true;
}

void MeroFunctionGraph::UpdateFunctionGraph() {
    tell(SV::Aspect::Drawing);
}

void MeroFunctionGraph::SetLabelColor(const SV::Color& color) {
    labelColor = color;
    tell(SV::Aspect::Text);
}

void MeroFunctionGraph::SetLabelingXMethod(Labeling method) {
    xLabeling = std::move(method);
    tell(SV::Aspect::Text);
}

void MeroFunctionGraph::SetLabelingYMethod(Labeling method) {
    yLabeling = std::move(method);
    tell(SV::Aspect::Text);
}

SV::String MeroFunctionGraph::GetXLabel(double value) const {
    return xLabeling ? xLabeling(value) : SV::String(value);
}

SV::String MeroFunctionGraph::GetYLabel(double value) const {
    return yLabeling ? yLabeling(value) : SV::String(value);
}

void MeroFunctionGraph::SetAxisTitles(const SV::String& titleX, const SV::String& titleY) {
    xTitle = titleX;
    yTitle = titleY;
    tell(SV::Aspect::Text);
}

MeroFunctionGraphLegend::MeroFunctionGraphLegend(SV::Window* parent, SV::ResId id)
    : ListBox(parent, id, SV::ControlClass::FunctionGraphLegend, false) {
    bind();
}

void MeroFunctionGraphLegend::AttachGraph(MeroFunctionGraph* newGraph) {
    graph = newGraph;
    UpdateEntries();
}

void MeroFunctionGraphLegend::UpdateEntries() {
    MeroId selected = 0;
    const bool hasSelection = GetSelectedId(selected);
    std::vector<MeroId> newIds;
    if (graph != nullptr) {
        std::ranges::transform(graph->GetCurves(), std::back_inserter(newIds), &MeroFunctionGraph::Curve::id);
    }
    const bool onlyGrows = newIds.size() >= ids.size() && std::equal(ids.begin(), ids.end(), newIds.begin());
    if (!onlyGrows) {
        Clear();
        ids.clear();
    }
    for (std::size_t each = ids.size(); each < newIds.size(); ++each) {
        InsertEntry(graph->GetCurves()[each].name);
    }
    ids = std::move(newIds);
    if (hasSelection && !onlyGrows) {
        SelectId(selected);
    }
}

bool MeroFunctionGraphLegend::GetSelectedId(MeroId& id) const {
    const std::size_t position = GetSelectEntryPos();
    if (position >= ids.size()) {
        return false;
    }
    id = ids[position];
    return true;
}

bool MeroFunctionGraphLegend::SelectId(MeroId id) {
    const auto place = std::ranges::find(ids, id);
    if (place == ids.end()) {
        return false;
    }
    SelectEntryPos(static_cast<std::size_t>(place - ids.begin()));
    return true;
}
