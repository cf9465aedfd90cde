#pragma once

#include <functional>
#include <span>
#include <vector>

#include "component/host/sv_lists.h"
#include "component/host/sv_window.h"
#include "component/host/types.h"

struct MeroGraphPoint {
    double x = 0;
    double y = 0;
};

/// Curves by identifier, of which one is shown, with axes whose labels are made by functions. It owns the
/// points; the peer reads them, and draws at most 30 times a second however many come.
class MeroFunctionGraph : public SV::Control {
public:
    using Labeling = std::function<SV::String(double)>;
    struct Curve {
        MeroId id;
        int mode;  ///< 1: steps, 0: straight lines
        SV::String name;
        SV::Color color;
        std::vector<MeroGraphPoint> points;  ///< in the order of their coming
        bool isAscending = true;             ///< no point lies left of the one before
    };

    MeroFunctionGraph(SV::Window* parent, SV::ResId id);

    [[nodiscard]] bool IDExists(MeroId id) const;
    /// False for an identifier that is there.
    bool InsertGraph(MeroId id, int mode, const SV::String& name, const SV::Color& color);
    /// False for an unknown curve and for a number that isn't finite.
    bool InsertValue(MeroId id, const MeroGraphPoint& point);
    /// Makes this the curve that is shown. The last three are always 1, 3, 2: both axes fit to the data,
    /// grid and labels. False for an unknown curve.
    bool ShowGraph(MeroId id, int fitAxes, int grid, int labels);
    /// 0 for none.
    [[nodiscard]] MeroId GetShownGraph() const { return shown; }
    /// Draws what has changed; without this call it is drawn when time allows.
    void UpdateFunctionGraph();

    void SetLabelColor(const SV::Color& color);
    [[nodiscard]] const SV::Color& GetLabelColor() const { return labelColor; }
    void SetLabelingXMethod(Labeling method);
    void SetLabelingYMethod(Labeling method);
    /// Texts of the axes at a value; the number's own text without a method.
    [[nodiscard]] SV::String GetXLabel(double value) const;
    [[nodiscard]] SV::String GetYLabel(double value) const;
    void SetAxisTitles(const SV::String& titleX, const SV::String& titleY);
    [[nodiscard]] const SV::String& GetXTitle() const { return xTitle; }
    [[nodiscard]] const SV::String& GetYTitle() const { return yTitle; }

    [[nodiscard]] const std::vector<Curve>& GetCurves() const { return curves; }
    /// Null if unknown.
    [[nodiscard]] const Curve* FindCurve(MeroId id) const;

private:
    [[nodiscard]] Curve* find(MeroId id);

    std::vector<Curve> curves;
    std::size_t lastFound = 0;
    MeroId shown = 0;
    SV::Color labelColor;
    Labeling xLabeling;
    Labeling yLabeling;
    SV::String xTitle;
    SV::String yTitle;
};

/// List of the curves of a graph.
class MeroFunctionGraphLegend : public SV::ListBox {
public:
    MeroFunctionGraphLegend(SV::Window* parent, SV::ResId id);

    /// `newGraph` isn't owned.
    void AttachGraph(MeroFunctionGraph* newGraph);
    [[nodiscard]] MeroFunctionGraph* GetGraph() const { return graph; }
    /// Takes the curves of the graph; the selected one stays selected if it is still there.
    void UpdateEntries();
    /// False if none is selected.
    bool GetSelectedId(MeroId& id) const;
    bool SelectId(MeroId id);

private:
    MeroFunctionGraph* graph = nullptr;
    std::vector<MeroId> ids;
};
