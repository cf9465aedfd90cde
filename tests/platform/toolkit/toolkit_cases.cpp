#include "tests/platform/toolkit/toolkit_cases.h"

#include "component/host/calendar_dialog.h"
#include "component/host/function_graph.h"
#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"
#include "component/host/sv_dialog.h"

namespace mero::test {

namespace {

/// Notes what happens, in order.
class Notes {
public:
    void add(const std::string& text) { notes += (notes.empty() ? "" : " ") + text; }
    [[nodiscard]] SV::Handler handler(const std::string& text) {
        return [this, text] { add(text); };
    }
    [[nodiscard]] std::string text() const { return notes; }

private:
    std::string notes;
};

std::string joined(const std::vector<MeroId>& ids) {
    std::string text;
    for (const MeroId id : ids) {
        text += (text.empty() ? "" : ",") + std::to_string(id);
    }
    return text;
}

struct SelectPanel : SV::ModalDialog {
    SelectPanel() : SV::ModalDialog(nullptr, MeroSelectResultForm::Form) {
        tree.InsertEntry(1, "Order");
        tree.InsertEntry(2, "Speed", 1);
        tree.InsertEntry(3, "Cost", 1);
        tree.InsertEntry(4, "Staff");
        tree.ExpandAll();
    }

    MeroSearchTreeListBox tree{this, MeroSelectResultForm::Tree};
    SV::RadioButton values{this, MeroSelectResultForm::ValuesRadio};
    SV::RadioButton history{this, MeroSelectResultForm::HistoryRadio};
    SV::RadioButton total{this, MeroSelectResultForm::TotalRadio};
    SV::RadioButton detail{this, MeroSelectResultForm::DetailRadio};
    SV::RadioButton graph{this, MeroSelectResultForm::GraphRadio};
    SV::CheckBox sum{this, MeroSelectResultForm::SumBox};
    SV::FixedText frequencyLabel{this, MeroSelectResultForm::FrequencyLabel};
    SV::NumericField frequency{this, MeroSelectResultForm::FrequencyField};
    MeroRefreshSelectBox classes{this, MeroSelectResultForm::ClassList};
    SV::PushButton showButton{this, MeroSelectResultForm::ShowButton};
    MeroCloseButton closeButton{this, MeroSelectResultForm::CloseButton};
};

std::string initialState(UserDriver& user) {
    SelectPanel panel;
    user.show(panel);
    Notes notes;
    notes.add(panel.GetText().GetStr());
    notes.add(panel.sum.GetText().GetStr());
    notes.add(std::to_string(panel.values.IsChecked()) + std::to_string(panel.history.IsChecked()));
    notes.add(std::to_string(panel.total.IsChecked()) + std::to_string(panel.graph.IsChecked()));
    notes.add(std::to_string(panel.frequency.GetValue()) + " from " +
              std::to_string(panel.frequency.GetMin()));
    return notes.text();
}

std::string radioGroups(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    panel.detail.SetClickHdl(notes.handler("detail"));
    panel.total.SetClickHdl(notes.handler("total"));
    user.show(panel);
    user.click(panel.detail);
    panel.total.Check();
    panel.detail.Uncheck();
    user.click(panel.detail);
    panel.graph.Disable();
    user.click(panel.graph);
    notes.add(std::to_string(panel.total.IsChecked()) + std::to_string(panel.detail.IsChecked()) +
              std::to_string(panel.graph.IsChecked()) + " " + std::to_string(panel.values.IsChecked()));
    return notes.text();
}

std::string boxesAndButtons(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    panel.sum.SetClickHdl(notes.handler("sum"));
    panel.showButton.SetClickHdl(notes.handler("show"));
    user.show(panel);
    user.click(panel.sum);
    notes.add(std::to_string(panel.sum.IsChecked()));
    panel.sum.Uncheck();
    user.click(panel.showButton);
    panel.showButton.Disable();
    user.click(panel.showButton);
    panel.showButton.Enable();
    panel.showButton.Hide();
    user.click(panel.showButton);
    notes.add(std::to_string(panel.sum.IsChecked()));
    return notes.text();
}

std::string numbers(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    panel.frequency.SetModifyHdl(notes.handler("modified"));
    user.show(panel);
    user.enter(panel.frequency, 250);
    notes.add(std::to_string(panel.frequency.GetValue()));
    panel.frequency.SetMax(100);
    notes.add(std::to_string(panel.frequency.GetValue()));
    return notes.text();
}

std::string lists(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    panel.classes.SetSelectHdl(notes.handler("selected"));
    panel.classes.Refresh({"Person", "Machine", "Role"});
    user.show(panel);
    notes.add(panel.classes.GetSelectEntry().GetStr());
    user.select(panel.classes, 2);
    panel.classes.RemoveEntry(0);
    notes.add(panel.classes.GetSelectEntry().GetStr());
    panel.classes.Refresh({"Role", "Machine"});
    notes.add(panel.classes.GetSelectEntry().GetStr());
    panel.classes.Refresh({"Group"});
    notes.add(panel.classes.GetSelectEntry().GetStr());
    return notes.text();
}

std::string treeSelection(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    panel.tree.SetSelectHdl([&] { notes.add("[" + joined(panel.tree.GetSelectedEntries()) + "]"); });
    panel.tree.SetDoubleClickHdl(notes.handler("double"));
    user.show(panel);
    user.select(panel.tree, {3});
    panel.tree.SelectEntry(2);
    user.key(panel.tree, 's');
    user.key(panel.tree, 't');
    panel.tree.RemoveEntry(4);
    notes.add("left [" + joined(panel.tree.GetSelectedEntries()) + "]");
    user.collapse(panel.tree, 1);
    notes.add(std::to_string(panel.tree.IsExpanded(1)));
    panel.tree.Expand(1);
    panel.tree.InsertEntry(5, "Time", 1);
    user.select(panel.tree, {5});
    return notes.text();
}

std::string treeDoubleClick(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    panel.tree.SetSelectHdl(notes.handler("select"));
    panel.tree.SetDoubleClickHdl([&] { notes.add("double " + joined(panel.tree.GetSelectedEntries())); });
    user.show(panel);
    user.doubleClick(panel.tree, 2);
    const std::string all = notes.text();
    return all.substr(all.find("double"));
}

struct ChartPanel : SV::ModalDialog {
    ChartPanel() : SV::ModalDialog(nullptr, MeroDiagramStartForm::Form) {
        for (MeroId id = 0; id < 5; ++id) {
            rows.InsertEntry(id, SV::String("Row ") + SV::String(id));
        }
    }

    MeroTreeListBox rows{this, MeroDiagramStartForm::RowList, TreeStyleSeveralSelected};
    SV::RadioButton single{this, MeroDiagramStartForm::SingleRadio};
    SV::RadioButton several{this, MeroDiagramStartForm::SeveralRadio};
};

std::string severalSelected(UserDriver& user) {
    ChartPanel panel;
    Notes notes;
    panel.rows.SetSelectHdl([&] {
        const bool isSingle = panel.rows.GetSelectionCount() < 2;
        panel.single.Enable(isSingle);
        if (!isSingle) {
            panel.single.Uncheck();
            panel.several.Check();
        }
    });
    user.show(panel);
    user.select(panel.rows, {1});
    user.click(panel.single);
    notes.add(std::to_string(panel.single.IsChecked()));
    user.select(panel.rows, {0, 3});
    user.click(panel.single);
    notes.add(joined(panel.rows.GetSelectedEntries()));
    notes.add(std::to_string(panel.single.IsChecked()) + std::to_string(panel.several.IsChecked()));
    return notes.text();
}

std::string edits(UserDriver& user) {
    MeroInputDialog dialog(nullptr, "Title", "Prompt");
    user.show(dialog);
    auto& edit = dynamic_cast<SV::Edit&>(*dialog.FindControl(MeroInputForm::Edit));
    Notes notes;
    edit.SetModifyHdl([&] { notes.add(edit.GetText().GetStr()); });
    edit.SetText("by program");
    user.type(edit, "x\xC3\xBC");
    edit.SetSelection({1, 3});
    edit.ReplaceSelected("yz");
    edit.SetReadOnly();
    user.type(edit, "refused");
    return notes.text() + " | " + edit.GetText().GetStr();
}

std::string modalDialogs(UserDriver& user) {
    Notes notes;
    for (const bool accepts : {true, false}) {
        MeroEditTimeDlg dialog(nullptr, "01:002:03:04:05", 365, 24);
        SV::DialogDesk::GetGlobal().setResponder([&](SV::ModalDialog& asked) {
            user.enter(dynamic_cast<SV::NumericField&>(*asked.FindControl(MeroEditTimeForm::Hours)), 7);
            if (accepts) {
                user.click(*asked.FindControl(MeroEditTimeForm::OkButton));
            } else {
                user.close(asked);
            }
        });
        const int result = dialog.Execute();
        notes.add(std::to_string(result) + " " + dialog.GetTimeText().GetStr());
        notes.add(std::to_string(dialog.IsVisible()));
    }
    SV::DialogDesk::GetGlobal().setResponder({});
    return notes.text();
}

std::string modelessBesideModal(UserDriver& user) {
    Notes notes;
    SelectPanel panel;
    SV::DialogDesk::GetGlobal().setResponder([&](SV::ModalDialog& asked) {
        MeroInputDialog beside(&asked, "Beside", "Prompt");
        user.show(beside);
        user.type(dynamic_cast<SV::Edit&>(*beside.FindControl(MeroInputForm::Edit)), "typed");
        notes.add(beside.GetInput().GetStr());
        user.click(panel.sum);
        notes.add(std::to_string(panel.sum.IsChecked()));
    });
    notes.add(std::to_string(panel.Execute()));
    SV::DialogDesk::GetGlobal().setResponder({});
    return notes.text();
}

struct TablePanel : SV::ModelessDialog {
    TablePanel() : SV::ModelessDialog(nullptr, MeroBrowserForm::Form) {
        objects.addColumn("Frequency", 80, 1, 2);
        objects.addRow(-1, 1, {"1. Order", "10"});
        objects.addRow(1, 2, {"1.1. Check", "4"});
        objects.addRow(1, 3, {"1.2. Pack", "6"});
        objects.addRow(-1, 4, {"2. Staff", "-"});
        browser.SetObjects(&objects);
        objects.shrinkAll();
    }

    [[nodiscard]] std::string inSight(int sortColumn = -1) const {
        std::string text;
        for (const auto row : objects.getRowsInSight(sortColumn)) {
            text += std::string(text.empty() ? "" : ",") +
                    std::to_string(objects.getRowId(objects.getRowOf(row)));
        }
        return text;
    }

    MeroShrinkExpandBrowserObjects objects;
    MeroBrowser browser{this, MeroBrowserForm::Browser};
};

std::string tables(UserDriver& user) {
    TablePanel panel;
    Notes notes;
    user.show(panel);
    notes.add(panel.inSight());
    user.clickRow(panel.browser, 0);
    notes.add(panel.inSight());
    panel.objects.addRow(1, 5, {"1.3. Send", "5"});
    notes.add(panel.inSight(1));
    user.clickRow(panel.browser, 0);
    notes.add(panel.inSight());
    panel.objects.expandAll();
    notes.add(panel.inSight());
    return notes.text();
}

std::string closing(UserDriver& user) {
    struct Refusing : SV::ModelessDialog {
        Refusing() : SV::ModelessDialog(nullptr, MeroBrowserForm::Form) {}
        bool Close() override {
            ++asked;
            return asked > 1 && SV::ModelessDialog::Close();
        }
        int asked = 0;
    };
    Refusing window;
    Notes notes;
    user.show(window);
    user.close(window);
    notes.add(std::to_string(window.IsVisible()));
    user.close(window);
    notes.add(std::to_string(window.IsVisible()) + " " + std::to_string(window.asked));
    return notes.text();
}

std::string calendars(UserDriver& user) {
    Notes notes;
    MeroCalendarDialog dialog(nullptr, "Hours",
                              "CALENDAR \"Day shift\" WEEKLY days:\"sat sun\" hours:\"\"\n"
                              "DAILY hours:\"08:00-16:00\" DATE date:\"12-25\" hours:\"\"");
    const auto monday = [](SV::ModalDialog& asked) -> SV::Edit& {
        return dynamic_cast<SV::Edit&>(*asked.FindControl(MeroCalendarForm::FirstDayEdit));
    };
    SV::BoxDesk::GetGlobal().clearRecords();
    SV::BoxDesk::GetGlobal().setResponder(
        [](SV::BoxKind, SV::Window*, int, const SV::String&) { return SV::BoxOk; });
    SV::DialogDesk::GetGlobal().setResponder([&](SV::ModalDialog& asked) {
        user.type(monday(asked), "8 to 12");
        user.click(*asked.FindControl(MeroCalendarForm::OkButton));
        notes.add(std::to_string(asked.IsInExecute()));
        user.type(monday(asked), "09:00-12:00");
        user.click(*asked.FindControl(MeroCalendarForm::OkButton));
    });
    notes.add(std::to_string(dialog.Execute()));
    notes.add(std::to_string(SV::BoxDesk::GetGlobal().getRecords().size()));
    SV::DialogDesk::GetGlobal().setResponder({});
    SV::BoxDesk::GetGlobal().setResponder({});
    return notes.text() + " " + dialog.getNewCalendarAsString().GetStr();
}

std::string closeButtons(UserDriver& user) {
    SelectPanel panel;
    Notes notes;
    SV::DialogDesk::GetGlobal().setResponder([&](SV::ModalDialog&) { user.click(panel.closeButton); });
    notes.add(std::to_string(panel.Execute()));
    panel.closeButton.SetClickHdl([&] { panel.EndDialog(7); });
    notes.add(std::to_string(panel.Execute()));
    SV::DialogDesk::GetGlobal().setResponder({});
    return notes.text();
}

}  // namespace

std::vector<ToolkitCase> toolkitCases() {
    return {
        {"FormGivesTheInitialState", initialState, "Results of the simulation Show s~um 10 10 1 from 1"},
        {"RadioButtonsExcludeEachOtherInTheirFrame", radioGroups, "detail detail 010 1"},
        {"DisabledAndHiddenButtonsCantBePressed", boxesAndButtons, "sum 1 show 0"},
        {"NumbersStayInTheirRange", numbers, "modified 250 100"},
        {"ListsKeepTheSelectedName", lists, "Person selected Role Role Group"},
        {"TreeTellsTheUsersSelectionAndNotThePrograms", treeSelection, "[3] [2] [4] left [] 0 [5]"},
        {"DoubleClickSelectsFirst", treeDoubleClick, "double 2"},
        {"SeveralEntriesCanBeSelected", severalSelected, "1 0,3 01"},
        {"EditTellsWhatTheUserTypes", edits, "x\xC3\xBC | xyz"},
        {"ModalDialogsGiveTheirAnswer", modalDialogs, "1 01:002:07:04:05 0 0 01:002:07:04:05 0"},
        {"WindowsMadeByAModalDialogCanBeUsedBesideIt", modelessBesideModal, "typed 1 0"},
        {"TableRowsExpandAndSort", tables, "1,4 1,2,3,4 1,2,5,3,4 1,4 1,2,3,5,4"},
        {"AWindowCanRefuseToClose", closing, "1 0 2"},
        {"CalendarsAreCheckedBeforeTheyAreTaken", calendars,
         "1 1 1 CALENDAR \"Day shift\"\nWEEKLY days:\"mon\" hours:\"09:00-12:00\"\n"
         "WEEKLY days:\"tue wed thu fri\" hours:\"08:00-16:00\"\nDATE date:\"12-25\" hours:\"\""},
        {"CloseButtonEndsADialogUnlessAHandlerDoes", closeButtons, "0 7"},
    };
}

}  // namespace mero::test
