#include "platform/diagram/flow_counts.h"

#include <gtest/gtest.h>

namespace mero {

namespace {

ProcessDiagram diagramOf(const std::vector<ShapeKind>& kinds,
                         const std::vector<std::pair<MeroId, MeroId>>& flows) {
    ProcessDiagram diagram;
    for (const ShapeKind kind : kinds) {
        DiagramShape shape;
        shape.object = static_cast<MeroId>(diagram.shapes.size()) + 1;
        shape.kind = kind;
        shape.bounds = {200.0 * shape.object, 0, 100, 80};
        diagram.shapes.push_back(shape);
    }
    for (const auto& [from, to] : flows) {
        diagram.edges.push_back(
            {static_cast<MeroId>(diagram.edges.size()) + 1, from, to, {{0, 0}, {1, 0}}, {}, false, {}});
    }
    return diagram;
}

std::vector<double> countsOf(ProcessDiagram diagram, const std::map<MeroId, double>& executions) {
    constexpr double Unknown = -1.0;
    countFlows(diagram, executions);
    std::vector<double> counts;
    for (const DiagramEdge& edge : diagram.edges) {
        counts.push_back(edge.taken.value_or(Unknown));
    }
    return counts;
}

constexpr auto Start = ShapeKind::StartEvent;
constexpr auto End = ShapeKind::EndEvent;
constexpr auto Task = ShapeKind::Activity;
constexpr auto Either = ShapeKind::ExclusiveGateway;
constexpr auto Both = ShapeKind::ParallelGateway;
constexpr auto Some = ShapeKind::InclusiveGateway;

TEST(FlowCounts, FollowFromActivitiesThroughGatewaysAndLoops) {
    // start 1 -> merge 2 -> task 3 -> choice 4 -> back to 2, or -> end 5
    const ProcessDiagram loop =
        diagramOf({Start, Either, Task, Either, End}, {{1, 2}, {2, 3}, {3, 4}, {4, 2}, {4, 5}});
    EXPECT_EQ(countsOf(loop, {{3, 25.0}}), (std::vector<double>{-1, 25, 25, -1, -1}))
        << "one count tells nothing of the loop";
    EXPECT_EQ(countsOf(loop, {{1, 10.0}, {3, 25.0}}), (std::vector<double>{10, 25, 25, 15, 10}));

    // choice 1 -> task 2, task 3, straight -> merge 4 -> end 5, behind task 6
    const ProcessDiagram choice = diagramOf({Either, Task, Task, Either, End, Task},
                                            {{6, 1}, {1, 2}, {1, 3}, {1, 4}, {2, 4}, {3, 4}, {4, 5}});
    EXPECT_EQ(countsOf(choice, {{2, 3.0}, {3, 2.5}, {6, 10.0}}),
              (std::vector<double>{10, 3, 2.5, 4.5, 3, 2.5, 10}));
}

TEST(FlowCounts, ParallelFlowsAreEqualAndInclusiveOnesUnknown) {
    const std::vector<std::pair<MeroId, MeroId>> flows{{1, 2}, {2, 3}, {2, 4}, {3, 5}, {4, 5}, {5, 6}};
    EXPECT_EQ(countsOf(diagramOf({Start, Both, Task, Task, Both, End}, flows), {{3, 7.0}}),
              std::vector<double>(6, 7.0));
    EXPECT_EQ(countsOf(diagramOf({Start, Some, Task, Task, Some, End}, flows), {{3, 7.0}, {4, 2.0}}),
              (std::vector<double>{-1, 7, 2, 7, 2, -1}));
}

TEST(FlowCounts, NothingFollowsForRepeatedAndInterruptedActivities) {
    ProcessDiagram diagram = diagramOf({Start, Task, End}, {{1, 2}, {2, 3}});
    diagram.shapes[1].loop = "parallel";
    EXPECT_EQ(countsOf(diagram, {{2, 30.0}}), (std::vector<double>{-1, -1}));
    diagram.shapes[1].loop.clear();
    DiagramShape timer;
    timer.object = 9;
    timer.kind = ShapeKind::IntermediateEvent;
    timer.host = 2;
    timer.bounds = {diagram.shapes[1].bounds.x + 50, 64, 32, 32};
    diagram.shapes.push_back(timer);
    EXPECT_EQ(countsOf(diagram, {{2, 30.0}}), (std::vector<double>{30, -1}));
    EXPECT_EQ(largestFlow(diagram), 0.0);
}

TEST(FlowCounts, ACountThatIsLostAgainIsForgotten) {
    ProcessDiagram diagram = diagramOf({Start, Task, End}, {{1, 2}, {2, 3}});
    countFlows(diagram, {{2, 4.0}});
    EXPECT_EQ(largestFlow(diagram), 4.0);
    countFlows(diagram, {});
    EXPECT_EQ(largestFlow(diagram), 0.0);
}

}  // namespace

}  // namespace mero
