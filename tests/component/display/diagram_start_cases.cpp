#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"

#include "component/display/agent_diagram_start_dialog.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/dialog_run.h"

namespace mero::test {

namespace {

namespace Form = MeroDiagramStartForm;

/// Two rows with a count and a time, a row of no text, and a sum.
void fillTable(MeroAgentBrowserObjects& table) {
    table.addColumn("  Count", 80, 1, 2);
    table.addColumn("Time", 80, 1, 2);
    table.addRow(-1, 1, {"1. Order", "3", "00:000:00:02:00"});
    table.addRow(1, 2, {"  1.1. Check", "-", "00:000:00:01:00"});
    table.addRow(-1, 3, {"", "", ""});
    table.addRow(-1, 4, {"Sum", "3", "00:000:00:03:00"});
}

std::string listOf(const SV::Window& dialog, SV::ResId id) {
    const auto& list = control<MeroTreeListBox>(dialog, id);
    std::string text;
    for (const MeroId entry : list.GetEntriesInOrder()) {
        text += (text.empty() ? "" : ", ") + std::to_string(entry) + " " + list.GetEntryText(entry).GetStr();
    }
    return text;
}

std::string formsOf(const SV::Window& dialog) {
    const auto& single = control<SV::RadioButton>(dialog, Form::SingleRadio);
    return std::string(single.IsEnabled() ? "offered" : "refused") + (single.IsChecked() ? " single" : "") +
           (control<SV::RadioButton>(dialog, Form::SeveralRadio).IsChecked() ? " several" : "");
}

/// Main items with their values by legend, and the type.
std::string chartOf(const MeroAgentDiagramStartDialog& dialog) {
    MeroGraphWindow* const window = dialog.getGraphWindow();
    if (window == nullptr) {
        return "no chart";
    }
    const MeroDiagram& chart = window->GetDiagram();
    std::string text = chart.GetType() == DiagramTimes ? "times" : "numbers";
    text += chart.IsSingle() ? " single" : "";
    for (const auto& main : chart.GetMainItems()) {
        text += std::string("; ") + main.text.GetStr() + ":";
        for (const auto& legend : chart.GetLegendItems()) {
            text += std::string(" ") + legend.text.GetStr() + "=" +
                    SV::String(chart.GetValue(main.id, legend.id)).GetStr();
        }
    }
    return text;
}

std::string listsOfTheTable(UserDriver& user) {
    MeroAgentBrowserObjects table;
    fillTable(table);
    bool ok = false;
    MeroAgentDiagramStartDialog dialog(nullptr, table, ok);
    user.show(dialog);
    return std::to_string(ok) + " [" + listOf(dialog, Form::ColumnList) + "] [" +
           listOf(dialog, Form::RowList) + "] " + formsOf(dialog);
}

std::string doubleTexts(UserDriver&) {
    MeroAgentBrowserObjects table;
    table.addColumn("Count", 80, 1, 2);
    for (MeroId row = 1; row <= 8; ++row) {
        table.addRow(-1, row, {SV::String("Row ") + SV::String(std::int32_t{row % 4}), "1"});
    }
    const AnsweredBoxes boxes;
    bool ok = true;
    const MeroAgentDiagramStartDialog dialog(nullptr, table, ok);
    const SV::String message(SV::ResId(0x2004F60));
    const auto& records = SV::BoxDesk::GetGlobal().getRecords();
    return std::to_string(ok) + " " + AnsweredBoxes::messages() + " " +
           std::string(records.front().text.view().substr(message.Len()));
}

std::string formsFollowTheLegend(UserDriver& user) {
    MeroAgentBrowserObjects table;
    fillTable(table);
    bool ok = false;
    MeroAgentDiagramStartDialog dialog(nullptr, table, ok);
    auto& rows = control<MeroTreeListBox>(dialog, Form::RowList);
    auto& columns = control<MeroTreeListBox>(dialog, Form::ColumnList);
    std::string notes;
    user.show(dialog);
    user.click(*dialog.FindControl(Form::SingleRadio));
    user.select(rows, {0, 1});
    notes += formsOf(dialog) + ", ";
    user.select(columns, {1, 2});
    notes += formsOf(dialog) + ", ";
    user.select(columns, {2});
    notes += formsOf(dialog) + ", ";
    user.click(*dialog.FindControl(Form::SingleRadio));
    user.click(*dialog.FindControl(Form::ColumnsAsMainRadio));
    return notes + formsOf(dialog);
}

std::string chartsInARow(UserDriver& user) {
    MeroAgentBrowserObjects table;
    fillTable(table);
    bool ok = false;
    MeroAgentDiagramStartDialog dialog(nullptr, table, ok);
    const AnsweredBoxes boxes;
    std::string notes;
    const auto makeChart = [&](SV::ModalDialog& asked) {
        user.click(*asked.FindControl(Form::OkButton));
        notes += chartOf(dialog) + "\n";
    };
    const int result = runDialog(dialog, [&](SV::ModalDialog& asked) {
        user.select(control<MeroTreeListBox>(asked, Form::RowList), {0, 1});
        makeChart(asked);
        user.select(control<MeroTreeListBox>(asked, Form::ColumnList), {2});
        user.click(*asked.FindControl(Form::SingleRadio));
        makeChart(asked);
        dialog.getGraphWindow()->SetPosPixel({70, 90});
        user.click(*asked.FindControl(Form::ColumnsAsMainRadio));
        user.select(control<MeroTreeListBox>(asked, Form::ColumnList), {1, 2});
        makeChart(asked);
        const SV::Point place = dialog.getGraphWindow()->GetPosPixel();
        notes += std::to_string(place.x) + "," + std::to_string(place.y) +
                 (dialog.getGraphWindow()->IsVisible() ? " seen " : " hidden ");
        user.click(*asked.FindControl(Form::CancelButton));
    });
    return AnsweredBoxes::messages() + "\n" + notes + std::to_string(result) + " " + chartOf(dialog);
}

}  // namespace

std::vector<ToolkitCase> diagramStartCases() {
    return {
        {"ListsHoldWhatHasATextByItsPosition", listsOfTheTable,
         "1 [1 Count, 2 Time] [0 1. Order, 1 1.1. Check, 3 Sum] offered several"},
        {"TextsThatStandTwiceAreListedAndRefused", doubleTexts,
         "0 2004F60 Row 0, Row 1, Row 2, \nRow 3, \n\n"},
        {"FormForOneLegendEntryFollowsTheLegend", formsFollowTheLegend,
         "offered single, refused several, offered several, refused several"},
        {"ChartsAreMadeInARowAtOnePlace", chartsInARow,
         "2004F5D\nno chart\n"
         "times single; 1. Order: Time=120; 1.1. Check: Time=60\n"
         "numbers; Count: 1. Order=3 1.1. Check=0; Time: 1. Order=120 1.1. Check=60\n"
         "70,90 seen 0 no chart"},
    };
}

}  // namespace mero::test
