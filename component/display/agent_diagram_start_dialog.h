#pragma once

#include <memory>
#include <vector>

#include "component/host/containers.h"
#include "component/host/graph_window.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_dialog.h"
#include "component/host/sv_edits.h"
#include "component/host/tree_list_box.h"

#include "component/display/agent_browser_objects.h"

/// Makes bar charts of chosen rows and columns of a table of results. One of the two stands along the axis,
/// the main items; the other gives the bars of each main item, the legend. The dialog stays open, so that
/// several charts can be made in a row; the last one is shown and goes with the dialog.
class MeroAgentDiagramStartDialog : public MeroModalDialog {
public:
    /// `table` isn't owned and has to outlive the dialog. `ok` becomes false, after a box, for a table in
    /// which rows or columns can't be told apart by their texts: the dialog must not be run then.
    MeroAgentDiagramStartDialog(SV::Window* parent, MeroAgentBrowserObjects& table, bool& ok);
    ~MeroAgentDiagramStartDialog() override;

    bool Close() override;
    /// Null while no chart has been made.
    [[nodiscard]] MeroGraphWindow* getGraphWindow() const { return graphWindow.get(); }

private:
    /// Fills a list; entry identifiers are positions in the table. False, after a box, if a text stands
    /// twice.
    bool fillList(MeroTreeListBox& list, const std::vector<SV::String>& texts, MeroId firstPosition);
    void showDuplicates(const ISortedSet<SV::String>& duplicates);
    [[nodiscard]] bool areColumnsMain() const { return columnsAsMainRadio.IsChecked(); }
    [[nodiscard]] const MeroTreeListBox& mainList() const { return areColumnsMain() ? columnList : rowList; }
    [[nodiscard]] const MeroTreeListBox& legendList() const {
        return areColumnsMain() ? rowList : columnList;
    }
    /// One legend item alone can have the form for one kind of bar.
    void offerForms();

    void makeChart();
    bool addLegend();
    bool addMainItems();
    void addValue(MeroId mainItem, MeroId legendItem, const SV::String& field);

    struct ChartItem {
        MeroId entry;
        MeroId item;
    };

    MeroAgentBrowserObjects& objects;
    std::unique_ptr<MeroGraphWindow> graphWindow;
    std::vector<ChartItem> legend;  ///< of the chart that is being made
    SV::FixedText rowLabel;
    MeroTreeListBox rowList;
    SV::FixedText columnLabel;
    MeroTreeListBox columnList;
    SV::GroupBox mainFrame;
    SV::RadioButton rowsAsMainRadio;
    SV::RadioButton columnsAsMainRadio;
    SV::GroupBox formFrame;
    SV::RadioButton singleRadio;
    SV::RadioButton severalRadio;
    SV::OKButton okButton;
    SV::CancelButton cancelButton;
    SV::HelpButton helpButton;
};
