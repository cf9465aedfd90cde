#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/host/types.h"

#include "platform/diagram/geometry.h"
#include "platform/repository/repository.h"

namespace mero {

enum class ShapeKind {
    Pool,
    Lane,
    Activity,
    Call,
    StartEvent,
    IntermediateEvent,
    EndEvent,
    ExclusiveGateway,
    InclusiveGateway,
    ParallelGateway,
    EventBasedGateway,
};

[[nodiscard]] constexpr bool isSwimlane(ShapeKind kind) {
    return kind == ShapeKind::Pool || kind == ShapeKind::Lane;
}
[[nodiscard]] constexpr bool isEvent(ShapeKind kind) {
    return kind >= ShapeKind::StartEvent && kind <= ShapeKind::EndEvent;
}
[[nodiscard]] constexpr bool isGateway(ShapeKind kind) {
    return kind >= ShapeKind::ExclusiveGateway;
}

/// One object of a model, drawn.
struct DiagramShape {
    MeroId object = MeroNoId;
    ShapeKind kind = ShapeKind::Activity;
    DrawRect bounds;
    std::string label;       ///< empty for gateways and events without a name of their own
    std::string marker;      ///< BPMN word of what is special: "userTask", "timer", "terminate"; may be empty
    std::string loop;        ///< "standard", "parallel", "sequential"; empty for none
    MeroId host = MeroNoId;  ///< object on whose border a boundary event lies
    bool isInterrupting = true;
    bool isThrowing = false;  ///< an event that sends rather than waits
    bool isExpanded = false;  ///< shapes of the called model lie inside

    [[nodiscard]] bool isBoundary() const { return host != MeroNoId; }
};

/// One sequence flow, drawn from the border of a shape to that of another.
struct DiagramEdge {
    MeroId relation = MeroNoId;
    MeroId from = MeroNoId;  ///< objects
    MeroId to = MeroNoId;
    DrawLine points;  ///< two at least
    std::string label;
    bool isDefault = false;
    std::optional<double> taken = {};  ///< how often, as far as it is known
};

/// The drawing of a process model: what lies behind comes first.
struct ProcessDiagram {
    std::string name;
    std::vector<DiagramShape> shapes;
    std::vector<DiagramEdge> edges;
    DrawRect extent;  ///< of shapes and lines, labels below shapes not included

    [[nodiscard]] const DiagramShape* find(MeroId object) const;
};

/// Draws a process model with the positions that it was imported with (attributes `Bounds` and `Waypoints`).
/// A model without positions gets a layered layout; single shapes without one stand below the others, and
/// lines without way points go straight. Sub-processes show the shapes of the model that they call where
/// these lie inside of them. An unknown model gives an empty drawing; a working environment has nothing to
/// draw.
[[nodiscard]] ProcessDiagram drawProcess(const Repository& repository, MeroId model);

/// "x y width height"; a rectangle without width where the text is something else.
[[nodiscard]] DrawRect readBounds(std::string_view text);
/// "x,y x,y …"; empty where the text is something else or has fewer than two points.
[[nodiscard]] DrawLine readWaypoints(std::string_view text);

}  // namespace mero
