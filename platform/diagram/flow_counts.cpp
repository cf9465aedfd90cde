#include "platform/diagram/flow_counts.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace mero {

namespace {

/// Draws conclusions about flows until there are no new ones.
class FlowCounter {
public:
    FlowCounter(ProcessDiagram& countedDiagram, const std::map<MeroId, double>& knownExecutions)
        : diagram(countedDiagram), executions(knownExecutions) {
        for (DiagramEdge& edge : diagram.edges) {
            edge.taken.reset();
            leaving[edge.from].push_back(&edge);
            entering[edge.to].push_back(&edge);
        }
        for (const DiagramShape& shape : diagram.shapes) {
            if (shape.isBoundary()) {
                interruptible.insert(shape.host);
            }
        }
    }

    void count() {
        do {
            hasChanged = false;
            for (const DiagramShape& shape : diagram.shapes) {
                conclude(shape);
            }
        } while (hasChanged);
    }

private:
    using Edges = std::vector<DiagramEdge*>;

    void conclude(const DiagramShape& shape) {
        Edges& in = entering[shape.object];
        Edges& out = leaving[shape.object];
        if (shape.kind == ShapeKind::ParallelGateway) {
            concludeParallel(in, out);
        } else if (shape.kind == ShapeKind::ExclusiveGateway || shape.kind == ShapeKind::EventBasedGateway) {
            balance(in, sumOf(out));
            balance(out, sumOf(in));
        } else if (!isGateway(shape.kind) && !isSwimlane(shape.kind) && shape.loop.empty()) {
            concludePass(shape, in, out);
        }
    }

    /// All flows of a split or a join are taken equally often.
    void concludeParallel(const Edges& in, const Edges& out) {
        std::optional<double> known;
        for (const Edges* const edges : {&in, &out}) {
            for (const DiagramEdge* const edge : *edges) {
                known = edge->taken ? edge->taken : known;
            }
        }
        if (known) {
            setAll(in, *known);
            setAll(out, *known);
        }
    }

    /// An activity or event is executed for each flow that comes in, and all that leave it are taken.
    void concludePass(const DiagramShape& shape, const Edges& in, const Edges& out) {
        std::optional<double> passes = sumOf(in);
        const bool isInterruptible = interruptible.contains(shape.object);
        if (const auto known = executions.find(shape.object); known != executions.end()) {
            passes = known->second;
        } else if (!isInterruptible && !out.empty() && out.front()->taken) {
            passes = out.front()->taken;
        }
        if (!passes) {
            return;
        }
        balance(in, passes);
        if (!isInterruptible && !(shape.isBoundary() && !executions.contains(shape.object))) {
            setAll(out, *passes);
        }
    }

    /// Nothing if one of them isn't known, or there are none.
    static std::optional<double> sumOf(const Edges& edges) {
        double sum = 0.0;
        for (const DiagramEdge* const edge : edges) {
            if (!edge->taken) {
                return std::nullopt;
            }
            sum += *edge->taken;
        }
        return edges.empty() ? std::nullopt : std::optional(sum);
    }

    /// The one unknown flow among edges takes what the others leave of the sum.
    void balance(const Edges& edges, std::optional<double> sum) {
        DiagramEdge* unknown = nullptr;
        for (DiagramEdge* const edge : edges) {
            if (!edge->taken && unknown != nullptr) {
                return;
            }
            unknown = edge->taken ? unknown : edge;
        }
        if (!sum || unknown == nullptr) {
            return;
        }
        for (const DiagramEdge* const edge : edges) {
            *sum -= edge->taken.value_or(0.0);
        }
        set(*unknown, *sum);
    }

    void setAll(const Edges& edges, double taken) {
        for (DiagramEdge* const edge : edges) {
            if (!edge->taken) {
                set(*edge, taken);
            }
        }
    }

    /// Measures are means, so that a difference may lie a little below 0.
    void set(DiagramEdge& edge, double taken) {
        edge.taken = std::max(taken, 0.0);
        hasChanged = true;
    }

    ProcessDiagram& diagram;
    const std::map<MeroId, double>& executions;
    std::unordered_map<MeroId, Edges> leaving;
    std::unordered_map<MeroId, Edges> entering;
    std::unordered_set<MeroId> interruptible;  ///< a boundary event may lead tokens away
    bool hasChanged = false;
};

}  // namespace

void countFlows(ProcessDiagram& diagram, const std::map<MeroId, double>& executions) {
    FlowCounter(diagram, executions).count();
}

double largestFlow(const ProcessDiagram& diagram) {
    double largest = 0.0;
    for (const DiagramEdge& edge : diagram.edges) {
        largest = std::max(largest, edge.taken.value_or(0.0));
    }
    return largest;
}

}  // namespace mero
