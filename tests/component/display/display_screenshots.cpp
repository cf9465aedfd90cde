// Saves pictures of the windows with results of a measured run: mero-display-screenshots FOLDER light|dark
// LANGUAGE

#include <random>

#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/agent_result_windows.h"
#include "component/display/graph_result_window.h"
#include "tests/component/support/measured_world.h"
#include "tests/platform/toolkit/qt/picture_program.h"

namespace {

using namespace mero::test;

constexpr int Processes = 400;

/// Orders one after the other, of which some are shipped, with times that vary.
std::string linesOfRun() {
    std::mt19937 random(1);
    const auto between = [&](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    std::string lines = "3,0\n";
    int time = 0;
    for (int process = 1; process <= Processes; ++process) {
        const std::string key = std::to_string(process);
        const std::string place = key + ",Order," + key;
        lines += "11," + std::to_string(time) + "," + place + "\n";
        const auto pass = [&](const std::string& where, const char* object, const char* worker, int least,
                              int most) {
            const int end = time + between(least, most);
            lines += linesOf({time, end, where, object + key, object, worker});
            time = end;
        };
        pass(place, "Check", process % 3 == 0 ? "Ann" : "Bob", 600, 2400);
        pass(place, "Pack", "Bob", 1800, 5400);
        if (process % 4 != 0) {
            lines += "12," + std::to_string(time) + "," + place + ",,,,,Shipping,s" + key + ",Ship\n";
            pass(key + ",Shipping,s" + key, "Load", "Ann", 900, 14400);
            lines += "14," + std::to_string(time) + "," + key + ",Shipping,s" + key + "\n";
        }
        lines += "13," + std::to_string(time) + "," + place + "\n";
    }
    return lines + "6," + std::to_string(time) + "\n";
}

void saveResults(PictureFolder& folder) {
    MeasuredWorld world(
        {.sections = "FREQUENCY name:\"Executions\" path-analysis resultscope:allobjects relative\n"
                     "CYCLETIME name:\"Cycle time\" path-analysis resultscope:allobjects history-mem\n"
                     "AVGSUM name:\"Parts handled\" path-analysis resultscope:allobjects class:\"Task\" "
                     "attribute:\"Number\" attribute-type:numeric history-mem\n"});
    world.play(linesOfRun());
    MeroSuperAgent& agent = *world.subAgent().getOwnerSuperAgent();
    MeroResultOptions options;
    options.sumChecked = true;
    agent.setResultOptions(options);
    const SV::String title =
        SV::String(SV::ResId(0x2004F7D)) + SV::String(" ") + SV::String(SV::ResId(0x2004F14));
    for (const MeroDisplayKind kind : {DisplayDetail, DisplayTotal, DisplayHistory}) {
        agent.displayResults(nullptr, kind, title, "", false, 0, "");
    }
    MeroAgentResultWindows& windows = *agent.getResultWindows();
    MeroAgentBrowserWindow& detail = *windows.getBrowserWindows()[0];
    folder.save(detail, "results_shrunk");
    detail.getObjects().expandAll();
    folder.save(detail, "results_detail");
    MeroAgentBrowserWindow& total = *windows.getBrowserWindows()[1];
    folder.save(total, "results_total");
    total.SetOutputSizePixel(total.GetMinOutputSizePixel());
    folder.save(total, "results_narrow");
    folder.save(*windows.getGraphWindow(), "results_history_first");
    constexpr std::size_t CurveOfOrders = 0;
    windows.getGraphWindow()->getLegend().userSelect(CurveOfOrders + 4);
    folder.save(*windows.getGraphWindow(), "results_history");
    agent.closeResultWindows();
}

}  // namespace

int main(int count, char** arguments) {
    return savePictures(count, arguments, saveResults);
}
