#include "tests/component/display/result_window_cases.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"

#include "component/display/busy_owner.h"
#include "tests/component/display/measured_results.h"
#include "tests/component/support/dialog_run.h"

namespace mero::test {

namespace {

/// A window that other windows are opened from, which counts what keeps it busy.
class BusyWindow : public MeroModelessDialog, public MeroBusyOwner {
public:
    BusyWindow() : MeroModelessDialog(nullptr, MeroViewForm::Form) {}
    void enterBusy() override { ++busyCount; }
    void leaveBusy() override { --busyCount; }

    int busyCount = 0;
};

/// Saves the table to a file with this ending; gives the file's text but for date and time.
std::string save(UserDriver& user, const char* ending) {
    MeasuredResults results;
    results.display(DisplayTotal);
    const auto path = std::filesystem::temp_directory_path() / ("mero_result_window" + std::string(ending));
    auto& desk = SV::DialogDesk::GetGlobal();
    desk.setFileResponder([&](const SV::String&, bool) { return SV::String(path.string()); });
    user.click(*results.table().FindControl(MeroBrowserForm::SaveButton));
    desk.setFileResponder({});
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    file.close();
    std::filesystem::remove(path);
    return text.str();
}

std::string saveText(UserDriver& user) {
    const std::string text = save(user, ".txt");
    return text.substr(text.find("Object"));
}

std::string saveCsv(UserDriver& user) {
    const std::string text = save(user, ".csv");
    return text.substr(text.find("\",F,T") + 2);
}

std::string saveHtml(UserDriver& user) {
    const std::string text = save(user, ".html");
    return std::string(text.find("Results of M: values (") != std::string::npos ? "headed " : "") +
           (text.find("3. Pack (Order)</td><td align=\"right\">0.5</td>") != std::string::npos ? "filled"
                                                                                               : "empty");
}

std::string search(UserDriver& user) {
    MeasuredResults results;
    results.display(DisplayDetail);
    MeroAgentBrowserWindow& window = results.table();
    user.show(window);
    std::string state = window.getObjects().isInSight(2) ? "open" : "shrunk";
    runNextDialog(
        [&](SV::ModalDialog& dialog) {
            user.type(control<SV::Edit>(dialog, MeroInputForm::Edit), "pack");
            user.click(*dialog.FindControl(MeroInputForm::OkButton));
        },
        [&] { user.click(*window.FindControl(MeroBrowserForm::SearchButton)); });
    return state + (window.getObjects().isInSight(2) ? " found" : " hidden");
}

std::string openAndShrinkRows(UserDriver& user) {
    MeasuredResults results;
    results.display(DisplayDetail);
    MeroAgentBrowserWindow& window = results.table();
    user.show(window);
    std::string state;
    for (int click = 0; click < 2; ++click) {
        user.clickRow(window.getBrowser(), 0);
        state += window.getObjects().isExpanded(0) ? "open " : "shrunk ";
    }
    window.getBrowser().userChoosePopup(BrowserItemExpandAll);
    return state + (window.getObjects().isInSight(2) ? "open" : "shrunk");
}

std::string closeWhileSearching(UserDriver& user) {
    BusyWindow owner;
    MeasuredResults results;
    results.display(DisplayDetail, "values", &owner);
    MeroAgentBrowserWindow& window = results.table();
    user.show(window);
    std::string state;
    runNextDialog(
        [&](SV::ModalDialog& dialog) {
            state = "busy " + std::to_string(owner.busyCount) + " ";
            user.close(window);
            state += window.FindControl(MeroBrowserForm::CloseButton)->IsEnabled() ? "enabled" : "disabled";
            state += " open " + std::to_string(results.tableCount());
            user.click(*dialog.FindControl(MeroInputForm::CancelButton));
        },
        [&] { user.click(*window.FindControl(MeroBrowserForm::SearchButton)); });
    state += ", busy " + std::to_string(owner.busyCount);
    user.click(*window.FindControl(MeroBrowserForm::CloseButton));
    return state + " open " + std::to_string(results.tableCount());
}

std::string chart(UserDriver& user) {
    MeasuredResults results;
    results.display(DisplayDetail);
    MeroAgentBrowserWindow& window = results.table();
    user.show(window);
    std::string state;
    runNextDialog(
        [&](SV::ModalDialog& dialog) {
            state = dialog.GetForm() == MeroDiagramStartForm::Form ? "asked" : "other";
            user.close(dialog);
        },
        [&] { user.click(*window.FindControl(MeroBrowserForm::DiagramButton)); });
    return state + " open " + std::to_string(results.tableCount());
}

std::string pickCurve(UserDriver& user) {
    MeasuredResults results;
    results.display(DisplayHistory);
    MeroGraphResultWindow& window = *results.graph();
    user.show(window);
    MeroFunctionGraph& graph = window.getGraph();
    const auto shown = [&] {
        return std::string(graph.FindCurve(graph.GetShownGraph())->name.GetStr()) + "|" +
               graph.GetXLabel(12.7).GetStr() + "|" + graph.GetYLabel(90).GetStr() + "|" +
               graph.GetYTitle().GetStr();
    };
    std::string state = shown();
    constexpr std::size_t CurveOfATime = 4;
    user.select(window.getLegend(), CurveOfATime);
    state += "\n" + shown();
    user.click(*window.FindControl(MeroGraphResultForm::CloseButton));
    return state + (results.graph() == nullptr ? "\nclosed" : "\nopen");
}

std::string closeSeveral(UserDriver& user) {
    MeasuredResults results;
    results.display(DisplayDetail);
    results.display(DisplayTotal);
    results.display(DisplayHistory);
    user.close(results.table(0));
    const bool isTotalLeft = results.table(0).getDisplayKind() == DisplayTotal;
    results.agent().closeResultWindows();
    return std::string(isTotalLeft ? "total left" : "other left") +
           (results.agent().getResultWindows() == nullptr ? ", all closed" : "");
}

}  // namespace

std::vector<ToolkitCase> resultWindowCases() {
    return {
        {"SaveWritesText", saveText,
         "Object              F                T\n--------------------------------------\n"
         "1. Order            1  00:000:00:00:40\n2. Check (Order)    1  00:000:00:00:20\n"
         "3. Pack (Order)   0.5  00:000:00:00:40\n\nMinimum           0.5  00:000:00:00:20\n"
         "Maximum             1  00:000:00:00:40\n"},
        {"SaveWritesCsv", saveCsv,
         "F,T\r\n1. Order,1,00:000:00:00:40\r\n2. Check (Order),1,00:000:00:00:20\r\n"
         "3. Pack (Order),0.5,00:000:00:00:40\r\n,,\r\nMinimum,0.5,00:000:00:00:20\r\n"
         "Maximum,1,00:000:00:00:40\r\n"},
        {"SaveWritesAPage", saveHtml, "headed filled"},
        {"SearchOpensWhatHidesARow", search, "shrunk found"},
        {"AClickOpensAndShrinksARow", openAndShrinkRows, "open shrunk open"},
        {"NothingClosesWhileAWorkRuns", closeWhileSearching, "busy 1 disabled open 1, busy 0 open 0"},
        {"ChartsAreAskedFor", chart, "asked open 1"},
        {"TheLegendPicksTheCurve", pickCurve,
         "F (Order)|12|90|F (Order)\nT (Check)|12|00:000:00:01:30|T (Check)\nclosed"},
        {"WindowsCloseOneByOneOrTogether", closeSeveral, "total left, all closed"},
    };
}

}  // namespace mero::test
