#include "component/host/graph_window.h"

#include <algorithm>
#include <cmath>

#include "component/host/core_time.h"
#include "component/host/resource_ids.h"

namespace {

bool addItem(std::vector<MeroDiagram::Item>& items, MeroId id, const SV::String& text) {
    if (text.IsEmpty() || std::ranges::find(items, id, &MeroDiagram::Item::id) != items.end()) {
        return false;
    }
    items.push_back({id, text});
    return true;
}

bool hasItem(const std::vector<MeroDiagram::Item>& items, MeroId id) {
    return std::ranges::find(items, id, &MeroDiagram::Item::id) != items.end();
}

}  // namespace

MeroDiagram::MeroDiagram(SV::Window* parent, SV::ResId id) : Control(parent, id, SV::ControlClass::Diagram) {
    bind();
}

void MeroDiagram::SetType(int newType, int, int, int, double daysPerYear, double hoursPerDay) {
    type = newType;
    baseDays = daysPerYear;
    baseHours = hoursPerDay;
}

bool MeroDiagram::AddLegendItem(MeroId id, const SV::String& text) {
    return addItem(legendItems, id, text);
}

bool MeroDiagram::AddMainItem(MeroId id, const SV::String& text) {
    return addItem(mainItems, id, text);
}

bool MeroDiagram::SetValue(MeroId mainId, MeroId legendId, const SV::String& timeText) {
    if (!MeroCoreTime::isTime(timeText)) {
        return false;
    }
    MeroCoreTime time;
    time.setBase(baseDays, baseHours);
    return SetValue(mainId, legendId, time._s2d(timeText));
}

bool MeroDiagram::SetValue(MeroId mainId, MeroId legendId, double value) {
    if (!hasItem(mainItems, mainId) || !hasItem(legendItems, legendId)) {
        return false;
    }
    values[{mainId, legendId}] = std::isfinite(value) ? value : 0.0;
    return true;
}

double MeroDiagram::GetValue(MeroId mainId, MeroId legendId) const {
    const auto place = values.find({mainId, legendId});
    return place != values.end() ? place->second : 0.0;
}

SV::String MeroDiagram::GetValueText(double value) const {
    return type == DiagramTimes ? MeroCoreTime(value, baseDays, baseHours).asText() : SV::String(value);
}

MeroGraphWindow::MeroGraphWindow(SV::Window* parent, bool single)
    : MeroModelessDialog(parent, MeroGraphForm::Form),
      diagram(this, MeroGraphForm::Diagram),
      closeButton(this, MeroGraphForm::CloseButton),
      helpButton(this, MeroGraphForm::HelpButton) {
    diagram.SetSingle(single);
}

int MeroGraphWindow::DoDiag() {
    if (diagram.GetMainItems().empty() || diagram.GetLegendItems().empty()) {
        return 0;
    }
    diagram.Redraw();
    Show();
    return 1;
}
