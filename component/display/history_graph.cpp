#include <unordered_map>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"
#include "component/host/sv_boxes.h"

#include "component/agents/agent_types.h"
#include "component/display/agent_result_windows.h"
#include "component/display/graph_result_window.h"
#include "component/management/general_services.h"

namespace {

constexpr SV::ResId MessageReading{0x2005005};

/// A measured object and its curve.
struct MeroGraphIDMapping {
    MeroId objectId;
    MeroId graphId;
};

/// Name of the measure with that of the object, "?" if the repository doesn't tell it.
SV::String nameOfCurve(const MeroAgentResultSet& set, MeroId objectId) {
    SV::String name;
    set.getName(name);
    SV::String objectName;
    if (getAttributeText(objectId, objectName, ClassCodeInstanceName) != StatusOk) {
        objectName = "?";
    }
    return name + SV::String(" (") + objectName + SV::String(")");
}

/// Adds the curves of one history after the other.
class CurveReader {
public:
    explicit CurveReader(MeroGraphResultWindow& shownWindow) : window(shownWindow) {}

    /// Ends early where the window takes no more curves, and, with an internal error, at a refused point.
    void read(const MeroAgentResultSet& set, MeroSequenceResult& history) {
        history.rewind();
        curves.clear();
        MeroGraphIDMapping current{MeroNoId, MeroNoId};
        MeroSequenceEntry entry;
        while (history.getNext(entry)) {
            if (current.graphId == MeroNoId || current.objectId != entry.objectId) {
                current = {entry.objectId, curveOf(set, entry.objectId)};
                if (current.graphId == MeroNoId) {
                    return;
                }
            }
            if (!window.insertPoint(current.graphId, entry.time, entry.value)) {
                displayErrorMessage("aeadsply", __LINE__);
                return;
            }
        }
    }

private:
    /// The curve is made for the object's first reading; none if the window refuses it.
    MeroId curveOf(const MeroAgentResultSet& set, MeroId objectId) {
        const auto [place, isNew] = curves.try_emplace(objectId, MeroNoId);
        if (isNew) {
            const bool xIsTime = isWorkLoadAnalysis(set.getAnalysisType());
            const bool yIsTime = set.getResultKind() == ResultKindTime;
            if (window.addCurve(nextGraphId, nameOfCurve(set, objectId), xIsTime, yIsTime)) {
                place->second = nextGraphId;
            }
            ++nextGraphId;
        }
        return place->second;
    }

    MeroGraphResultWindow& window;
    std::unordered_map<MeroId, MeroId> curves;  ///< by object
    MeroId nextGraphId = 1;
};

}  // namespace

std::unique_ptr<MeroGraphResultWindow> MeroAgentResultWindows::buildGraphWindow(
    SV::Window* parent, const SV::String& caption, const std::vector<MeroAgentResultSet*>& resultSets) {
    auto window = std::make_unique<MeroGraphResultWindow>(parent, *this);
    MeroMessWin message(parent, SV::String(MessageReading));
    message.Show();
    CurveReader reader(*window);
    bool hasSource = false;
    for (MeroAgentResultSet* const set : resultSets) {
        if (MeroSequenceResult* const history = set != nullptr ? set->getHistory() : nullptr) {
            hasSource = true;
            reader.read(*set, *history);
        }
    }
    message.Hide();
    if (!hasSource) {
        return nullptr;
    }
    window->SetText(caption);
    window->Show();
    window->getGraph().UpdateFunctionGraph();
    return window;
}
