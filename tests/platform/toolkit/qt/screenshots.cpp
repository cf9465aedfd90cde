// Saves a picture of each window with some content: mero-screenshots FOLDER light|dark LANGUAGE

#include <QTest>
#include <cmath>
#include <functional>
#include <map>

#include "component/host/browser.h"
#include "component/host/extension_controls.h"
#include "component/host/function_graph.h"
#include "component/host/graph_window.h"
#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"
#include "component/host/tree_list_box.h"

#include "platform/toolkit/forms.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "tests/platform/toolkit/qt/picture_program.h"
#include "tests/platform/toolkit/qt/widget_driver.h"

namespace {

using namespace mero;

/// A window with controls that are filled for the picture.
class Picture {
public:
    explicit Picture(const Form& form) : window(nullptr, form.id) {
        for (const FormControl& control : form.controls) {
            bind(control);
        }
        fill();
        if (const QWidget* root = test::widgetFor(window)) {
            window.Show();
            static_cast<void>(QTest::qWaitForWindowExposed(test::widgetFor(window)));
            window.SetOutputSizePixel({root->width(), root->height()});
        }
    }

    [[nodiscard]] const SV::Window& getWindow() const { return window; }

private:
    void bind(const FormControl& control) {
        const std::string& shown = control.widgetClass;
        if (shown == "QTreeView") {
            fillTree(make<MeroSearchTreeListBox>(control.id, TreeStyleOneSelected));
        } else if (shown == "QComboBox" || shown == "QListWidget") {
            SV::ListBox& list = make<SV::ListBox>(control.id);
            for (const char* entry :
                 {"Cycle time (Check the order)", "Cycle time (Pack)", "Cycle time (Send)"}) {
                list.InsertEntry(entry);
            }
            list.SelectEntryPos(1);
        } else if (shown == "QPlainTextEdit") {
            make<SV::MultiLineEdit>(control.id)
                .SetText(
                    "Measures how long an order takes from its entry to its dispatch.\n\n"
                    "* Cycle time\n* Frequency\n* Weighted cost");
        } else if (shown == "QLineEdit") {
            make<SV::Edit>(control.id).SetText("00:007:00:00:00");
        } else if (control.name == "browser") {
            fillTable();
            make<MeroBrowser>(control.id).SetObjects(&table);
            for (int column = 0; column <= table.getNumberOfColumns(); ++column) {
                table.adjustColumn(column);
            }
        } else if (control.name == "graph") {
            fillGraph(make<MeroFunctionGraph>(control.id));
        } else if (control.name == "diagram") {
            fillChart(make<MeroDiagram>(control.id));
        } else if (control.name == "sizingGrip") {
            make<MeroSizingGrip>(control.id);
        } else if (control.name.ends_with("ToolBox")) {
            make<MeroToolBox>(control.id)
                .InsertItem(1, SV::Image(MeroTimeScopeForm::TimeButtonImage), "Edit");
        } else if (shown == "QLabel") {
            SV::FixedText& label = make<SV::FixedText>(control.id);
            if (label.GetText().IsEmpty()) {
                label.SetText("Reading the histories...");
            }
        }
    }

    template <class Shown, class... Arguments>
    Shown& make(SV::ResId id, const Arguments&... arguments) {
        auto control = std::make_unique<Shown>(&window, id, arguments...);
        Shown& made = *control;
        controls.push_back(std::move(control));
        return made;
    }

    static void fillTree(MeroTreeListBox& tree) {
        const SV::Image process("business-process-16.png");
        const SV::Image active(SV::ResId(0x2005043));
        tree.InsertEntry(1, "Order processing 1.0", MeroNoTreeEntry, process);
        tree.InsertEntry(2, "Delivery performance", 1, active);
        tree.InsertEntry(3, "Cost of an order", 1, SV::Image(SV::ResId(0x2005044)));
        tree.InsertEntry(4, "Strain of the staff", 1, SV::Image(SV::ResId(0x2005045)));
        tree.InsertEntry(5, "Warehouse staff 1.0", MeroNoTreeEntry, SV::Image("working-environment-16.png"));
        tree.InsertEntry(6, "Work load", 5, active);
        tree.ExpandAll();
        tree.SelectEntry(2);
    }

    void fillTable() {
        table.addHeader("Results of Delivery performance: values for year (2026-01-05, 08:00:00)");
        table.addColumn("Frequency", 80, 1, 2);
        table.addColumn("Cycle time", 80, 1, 2);
        table.addColumn("Weighted cost", 80, 1, 2);
        table.addRow(-1, 1, {"1. Order processing (Order processing)", "250", "00:002:03:20:00", "18250.5"});
        table.addRow(1, 2, {"1.1. Check the order (Order processing)", "250", "00:000:00:12:30", "1250.25"});
        table.addRow(1, 3, {"1.2. Pack (Order processing)", "231", "00:000:01:05:00", "9320"});
        table.addRow(1, 4, {"1.3. Send (Order processing)", "229", "00:001:20:00:00", "7680.25"});
        table.addRow(-1, 5, {"2. Complaint (Complaint)", "19", "-", "431.75"});
        table.addRow(5, 6, {"2.1. Answer (Complaint)", "19", "-", "431.75"});
        table.addRow(-1, 7, {"", "", "", ""});
        table.addRow(-1, 8, {"Sum", "269", "00:002:03:20:00", "18682.25"});
        table.addRow(-1, 9, {"Minimum", "19", "00:002:03:20:00", "431.75"});
        table.addRow(-1, 10, {"Maximum", "250", "00:002:03:20:00", "18250.5"});
        table.setSummaryRows(4);
        table.expandRow(0, true);
    }

    static void fillGraph(MeroFunctionGraph& graph) {
        graph.InsertGraph(1, 1, "Cycle time (Pack)", SV::Color());
        constexpr int Points = 400;
        for (int each = 0; each < Points; ++each) {
            graph.InsertValue(1, {each * 1.0, 3600 + 900 * std::sin(each / 30.0) + 15 * (each % 11)});
        }
        graph.SetLabelingYMethod([](double value) { return MeroCoreTime(value, 365, 24).asText(); });
        graph.SetAxisTitles("Step", "Cycle time (YY:DDD:HH:MM:SS)");
        graph.ShowGraph(1, 1, 3, 2);
    }

    static void fillChart(MeroDiagram& chart) {
        chart.AddLegendItem(1, "Frequency");
        chart.AddLegendItem(2, "Executions a year");
        const char* names[] = {"Check the order", "Pack", "Send", "Answer a complaint with a long name"};
        for (MeroId each = 0; each < 4; ++each) {
            chart.AddMainItem(each, names[each]);
            chart.SetValue(each, 1, 250.0 - 70 * each);
            chart.SetValue(each, 2, 40.5 + 60 * each);
        }
        chart.Redraw();
    }

    void fill() {
        if (window.GetForm() == MeroBrowserForm::Form) {
            window.SetText("Results of Delivery performance");
        }
    }

    SV::Window window;
    MeroShrinkExpandBrowserObjects table;
    std::vector<std::unique_ptr<SV::Control>> controls;
};

}  // namespace

int main(int count, char** arguments) {
    return mero::test::savePictures(count, arguments, [](mero::test::PictureFolder& folder) {
        for (const mero::FormSource& source : mero::formSources()) {
            const mero::Result<mero::Form> form = mero::readForm(source.name, source.document);
            const Picture picture(form.value());
            folder.save(picture.getWindow(), std::string(source.name));
        }
    });
}
