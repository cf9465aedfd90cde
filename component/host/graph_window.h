#pragma once

#include <map>
#include <utility>
#include <vector>

#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_window.h"
#include "component/host/types.h"

/// What the values of a chart are.
enum MeroDiagramType : int { DiagramNumbers = 0, DiagramTimes = 2 };

/// Values of a bar chart: one for each pair of a main item, which has a place on the axis, and a legend item,
/// which has a colour.
class MeroDiagram : public SV::Control {
public:
    struct Item {
        MeroId id;
        SV::String text;
    };

    MeroDiagram(SV::Window* parent, SV::ResId id);

    /// The three numbers are always 1. `daysPerYear` and `hoursPerDay`: base of the times.
    void SetType(int newType, int, int, int, double daysPerYear, double hoursPerDay);
    [[nodiscard]] int GetType() const { return type; }
    [[nodiscard]] double GetDaysPerYear() const { return baseDays; }
    [[nodiscard]] double GetHoursPerDay() const { return baseHours; }
    /// False for an identifier that is there or an empty text.
    bool AddLegendItem(MeroId id, const SV::String& text);
    bool AddMainItem(MeroId id, const SV::String& text);
    /// A time text; kept as seconds in the base. False for an item that isn't there or what isn't a time.
    bool SetValue(MeroId mainId, MeroId legendId, const SV::String& timeText);
    bool SetValue(MeroId mainId, MeroId legendId, double value);
    /// 0 for a pair without value.
    [[nodiscard]] double GetValue(MeroId mainId, MeroId legendId) const;
    [[nodiscard]] const std::vector<Item>& GetMainItems() const { return mainItems; }
    [[nodiscard]] const std::vector<Item>& GetLegendItems() const { return legendItems; }
    /// Text of a value by the type: a number or YY:DDD:HH:MM:SS.
    [[nodiscard]] SV::String GetValueText(double value) const;
    /// One legend item, each main item a slice or bar of its own colour.
    void SetSingle(bool on) { single = on; }
    [[nodiscard]] bool IsSingle() const { return single; }
    void Redraw() { tell(SV::Aspect::Drawing); }

private:
    int type = DiagramNumbers;
    double baseDays = 365;
    double baseHours = 24;
    bool single = false;
    std::vector<Item> mainItems;
    std::vector<Item> legendItems;
    std::map<std::pair<MeroId, MeroId>, double> values;
};

/// Window with a bar chart. A user's close hides it.
class MeroGraphWindow : public MeroModelessDialog {
public:
    /// `single`: the chart form for one legend item.
    MeroGraphWindow(SV::Window* parent, bool single);

    [[nodiscard]] MeroDiagram& GetDiagram() { return diagram; }
    void SetType(int type, int, int, int, double daysPerYear, double hoursPerDay) {
        diagram.SetType(type, 1, 1, 1, daysPerYear, hoursPerDay);
    }
    bool AddLegendItem(MeroId id, const SV::String& text) { return diagram.AddLegendItem(id, text); }
    bool AddMainItem(MeroId id, const SV::String& text) { return diagram.AddMainItem(id, text); }
    /// Shows the chart. 0, and nothing shown, without a main item or without a legend item.
    int DoDiag();

private:
    MeroDiagram diagram;
    MeroCloseButton closeButton;
    SV::HelpButton helpButton;
};
