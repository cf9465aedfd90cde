#include "component/display/agent_diagram_start_dialog.h"

#include <charconv>

#include "component/host/basic_services.h"
#include "component/host/resource_ids.h"

#include "component/management/general_services.h"
#include "component/management/run_globals.h"

namespace {

constexpr char ModuleName[] = "aeadsply";
constexpr SV::ResId MessageDuplicates(0x2004F60);
constexpr SV::ResId MessageNothingSelected(0x2004F5D);
constexpr SV::ResId MessageCaption(0x2004F61);
constexpr int HelpSingleForm = 16294;
constexpr int HelpSeveralForm = 16292;
constexpr int DuplicatesInLine = 3;

SV::String withoutLeadingBlanks(const SV::String& text) {
    const std::size_t start = text.view().find_first_not_of(' ');
    return start == std::string_view::npos ? SV::String() : SV::String(text.view().substr(start));
}

bool isTimeField(const SV::String& field) {
    return field.Len() >= 3 && field[2] == ':';
}

/// 0 for what doesn't begin with a number.
double toNumber(const SV::String& field) {
    double number = 0.0;
    std::from_chars(field.GetStr(), field.GetStr() + field.Len(), number);
    return number;
}

// Items of all charts of the program have identifiers of their own.
MeroId lastLegendItem = 0;
MeroId lastMainItem = 0;

}  // namespace

namespace Form = MeroDiagramStartForm;

MeroAgentDiagramStartDialog::MeroAgentDiagramStartDialog(SV::Window* parent, MeroAgentBrowserObjects& table,
                                                         bool& ok)
    : MeroModalDialog(parent, Form::Form),
      objects(table),
      rowLabel(this, Form::RowLabel),
      rowList(this, Form::RowList, TreeStyleSeveralSelected),
      columnLabel(this, Form::ColumnLabel),
      columnList(this, Form::ColumnList, TreeStyleSeveralSelected),
      mainFrame(this, Form::MainFrame),
      rowsAsMainRadio(this, Form::RowsAsMainRadio),
      columnsAsMainRadio(this, Form::ColumnsAsMainRadio),
      formFrame(this, Form::KindFrame),
      singleRadio(this, Form::SingleRadio),
      severalRadio(this, Form::SeveralRadio),
      okButton(this, Form::OkButton),
      cancelButton(this, Form::CancelButton),
      helpButton(this, Form::HelpButton) {
    std::vector<SV::String> titles;
    titles.reserve(static_cast<std::size_t>(objects.getNumberOfColumns()));
    for (int column = 1; column <= objects.getNumberOfColumns(); ++column) {
        titles.push_back(withoutLeadingBlanks(objects.getColumnTitle(column)));
    }
    std::vector<SV::String> labels;
    labels.reserve(static_cast<std::size_t>(objects.getNumberOfRows()));
    for (int row = 0; row < objects.getNumberOfRows(); ++row) {
        labels.push_back(withoutLeadingBlanks(objects.getField(row, 0)));
    }
    ok = fillList(columnList, titles, 1) && fillList(rowList, labels, 0);
    for (SV::RadioButton* const radio : {&rowsAsMainRadio, &columnsAsMainRadio}) {
        radio->SetClickHdl([this] { offerForms(); });
    }
    for (MeroTreeListBox* const list : {&rowList, &columnList}) {
        list->SetSelectHdl([this] { offerForms(); });
    }
    okButton.SetClickHdl([this] { makeChart(); });
}

MeroAgentDiagramStartDialog::~MeroAgentDiagramStartDialog() = default;

bool MeroAgentDiagramStartDialog::fillList(MeroTreeListBox& list, const std::vector<SV::String>& texts,
                                           MeroId firstPosition) {
    ISortedSet<SV::String> duplicates;
    if (!findDuplicates(texts, duplicates)) {
        showDuplicates(duplicates);
        return false;
    }
    MeroId position = firstPosition;
    for (const SV::String& text : texts) {
        if (!text.IsEmpty()) {
            list.InsertEntry(position, text);
        }
        ++position;
    }
    return true;
}

void MeroAgentDiagramStartDialog::showDuplicates(const ISortedSet<SV::String>& duplicates) {
    SV::String text(MessageDuplicates);
    int count = 0;
    for (const SV::String& name : duplicates) {
        text += name + SV::String(", ");
        if (++count % DuplicatesInLine == 0) {
            text += SV::String("\n");
        }
    }
    showErrorBox(text + SV::String("\n\n"), GetParent());
}

void MeroAgentDiagramStartDialog::offerForms() {
    const bool isSingle = legendList().GetSelectionCount() < 2;
    singleRadio.Enable(isSingle);
    if (!isSingle) {
        singleRadio.Uncheck();
        severalRadio.Check();
    }
}

void MeroAgentDiagramStartDialog::makeChart() {
    if (rowList.GetSelectionCount() == 0 || columnList.GetSelectionCount() == 0) {
        showErrorBox(SV::String(MessageNothingSelected), this);
        return;
    }
    const bool isSingle = singleRadio.IsChecked();
    const bool isPlaced = graphWindow != nullptr;
    const SV::Point position = isPlaced ? graphWindow->GetPosPixel() : SV::Point();
    graphWindow.reset();
    graphWindow = std::make_unique<MeroGraphWindow>(this, isSingle);
    graphWindow->SetHelpId(isSingle ? HelpSingleForm : HelpSeveralForm);
    if (isPlaced) {
        graphWindow->SetPosPixel(position);
    }
    graphWindow->SetType(DiagramTimes, 1, 1, 1, gDaysPerYear, gHoursPerDay);
    if (!addLegend() || !addMainItems()) {
        displayErrorMessage(ModuleName, __LINE__);
        graphWindow.reset();
        return;
    }
    graphWindow->SetText(SV::String(MessageCaption));
    if (graphWindow->DoDiag() == 0) {
        graphWindow.reset();
    }
}

bool MeroAgentDiagramStartDialog::addLegend() {
    legend.clear();
    for (const MeroId entry : legendList().GetSelectedEntries()) {
        legend.push_back({entry, ++lastLegendItem});
        if (!graphWindow->AddLegendItem(lastLegendItem, legendList().GetEntryText(entry))) {
            return false;
        }
    }
    return true;
}

bool MeroAgentDiagramStartDialog::addMainItems() {
    for (const MeroId entry : mainList().GetSelectedEntries()) {
        const MeroId mainItem = ++lastMainItem;
        if (!graphWindow->AddMainItem(mainItem, mainList().GetEntryText(entry))) {
            return false;
        }
        for (const ChartItem& each : legend) {
            addValue(
                mainItem, each.item,
                areColumnsMain() ? objects.getField(each.entry, entry) : objects.getField(entry, each.entry));
        }
    }
    return true;
}

void MeroAgentDiagramStartDialog::addValue(MeroId mainItem, MeroId legendItem, const SV::String& field) {
    MeroDiagram& diagram = graphWindow->GetDiagram();
    if (isTimeField(field)) {
        diagram.SetValue(mainItem, legendItem, field);
        return;
    }
    diagram.SetType(DiagramNumbers, 1, 1, 1, gDaysPerYear, gHoursPerDay);
    diagram.SetValue(mainItem, legendItem, toNumber(field));
}

bool MeroAgentDiagramStartDialog::Close() {
    graphWindow.reset();
    return MeroModalDialog::Close();
}
