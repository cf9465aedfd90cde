#pragma once

#include "component/agents/super_agent.h"
#include "component/display/agent_browser_window.h"
#include "component/display/agent_result_windows.h"
#include "component/display/graph_result_window.h"
#include "tests/component/support/measured_world.h"

namespace mero::test {

inline const std::string frequencyAndCycleTime =
    "FREQUENCY name:\"F\" path-analysis wlstatic-analysis resultscope:mainobjects relative history-mem\n"
    "CYCLETIME name:\"T\" path-analysis wlstatic-analysis resultscope:mainobjects history-mem\n";

inline const std::string numbers =
    "AVGSUM name:\"N\" path-analysis resultscope:mainobjects class:\"Task\" attribute:\"Number\" "
    "attribute-type:numeric\n";

/// Two processes have been measured: "Check" in both, for 10 and 30 seconds, "Pack" in the second, for 40.
class MeasuredResults {
public:
    explicit MeasuredResults(const MeasuredWorld::Setup& setup = {.sections = frequencyAndCycleTime})
        : world(setup) {
        world.play("3,0\n11,0,1,Order,1\n" + linesOf({0, 10, "1,Order,1", "a", "Check", "Bob"}) +
                   "13,10,1,Order,1\n11,10,2,Order,2\n" +
                   linesOf({10, 40, "2,Order,2", "b", "Check", "Bob"}) +
                   linesOf({40, 80, "2,Order,2", "c", "Pack", "Bob"}) + "13,80,2,Order,2\n6,80\n");
        setOptions({});
    }

    [[nodiscard]] MeroSuperAgent& agent() const { return *world.subAgent().getOwnerSuperAgent(); }
    void setOptions(const MeroResultOptions& options) { agent().setResultOptions(options); }
    /// Unscaled.
    int display(MeroDisplayKind kind, const SV::String& title = "values", SV::Window* parent = nullptr) {
        return agent().displayResults(parent, kind, title, "01:000:00:00:00", false, 0, "");
    }
    [[nodiscard]] std::size_t tableCount() const {
        const MeroAgentResultWindows* const windows = agent().getResultWindows();
        return windows != nullptr ? windows->getBrowserWindows().size() : 0;
    }
    [[nodiscard]] MeroAgentBrowserWindow& table(std::size_t number = 0) const {
        return *agent().getResultWindows()->getBrowserWindows()[number];
    }
    /// Null if none is open.
    [[nodiscard]] MeroGraphResultWindow* graph() const {
        return agent().getResultWindows() != nullptr ? agent().getResultWindows()->getGraphWindow() : nullptr;
    }

private:
    MeasuredWorld world;
};

/// All fields as "label|cell|cell", one row a line.
[[nodiscard]] inline std::string textOfTable(const MeroAgentBrowserObjects& objects) {
    std::string text;
    for (int row = 0; row < objects.getNumberOfRows(); ++row) {
        for (int column = 0; column <= objects.getNumberOfColumns(); ++column) {
            text += (column > 0 ? "|" : "") + std::string(objects.getField(row, column).view());
        }
        text += '\n';
    }
    return text;
}

}  // namespace mero::test
