#pragma once

#include <vector>

#include "component/host/extension_controls.h"
#include "component/host/function_graph.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_edits.h"

#include "component/display/agent_basic_result_interface.h"

/// What a graph window knows of a curve.
struct MeroGraphCurveInfo {
    MeroId id = MeroNoId;
    SV::String name;
    bool xIsTime = false;
    bool yIsTime = false;
};

/// Window with curves over time, of which the legend picks the one that is shown.
///
/// All graph windows of the process together hold at most `MaximumCurves`; a window gives its share back when
/// it goes.
class MeroAgentBasicGraphWindow : public MeroAgentBasicResultInterface {
public:
    static constexpr int MaximumCurves = 50;

    ~MeroAgentBasicGraphWindow() override;

    /// False for a curve beyond the limit, which a box tells once in the process, and for an identifier that
    /// is there. The first curve is shown at once.
    bool addCurve(MeroId id, const SV::String& name, bool xIsTime, bool yIsTime);
    [[nodiscard]] bool curveExists(MeroId id) const { return graph.IDExists(id); }
    /// In a work load analysis times repeat, and `x` counts the steps between different ones instead: each
    /// later time is one step further, an earlier one is refused. False also for an unknown curve.
    virtual bool insertPoint(MeroId id, double x, double y);
    /// False if no entry of the legend is selected.
    bool getSelectedCurveId(MeroId& id) const { return legend.GetSelectedId(id); }
    /// False if there is no such curve.
    bool getCurveInfo(MeroId id, MeroGraphCurveInfo& info) const;
    /// The legend with its label.
    void setLegendVisible(bool visible);
    /// In pixels.
    [[nodiscard]] int getGraphHeight() const { return graph.GetOutputSizePixel().height; }

    [[nodiscard]] MeroFunctionGraph& getGraph() { return graph; }
    [[nodiscard]] MeroFunctionGraphLegend& getLegend() { return legend; }

protected:
    /// `mode` goes to the graph with each curve.
    MeroAgentBasicGraphWindow(SV::Window* parent, SV::ResId form, int mode);

private:
    [[nodiscard]] const MeroGraphCurveInfo* findCurve(MeroId id) const;
    bool takeShareOfLimit();
    void showSelectedCurve();

    static int totalCurves;  ///< of all windows
    static bool limitWasTold;

    int curveCount = 0;
    int curveMode;
    std::vector<MeroGraphCurveInfo> curves;
    double lastTime = 0.0;
    double lastStep = 0.0;

    MeroFunctionGraph graph;
    SV::FixedText legendLabel;
    MeroFunctionGraphLegend legend;
    MeroCloseButton closeButton;
    SV::HelpButton helpButton;
    MeroSizingGrip sizingGrip;
};
