#pragma once

#include <QPainter>
#include <string_view>

namespace mero::qt {

// Small signs of BPMN, drawn in the painter's pen within a square room.

/// Sign of an event: "timer", "message", "terminate" …; nothing for others.
void paintEventMarker(QPainter& painter, const QRectF& room, std::string_view kind, bool isFilled);
/// Sign of a task: "userTask", "sendTask" …; nothing for others.
void paintTaskMarker(QPainter& painter, const QRectF& room, std::string_view kind);
/// Sign of repetition: "standard", "parallel", "sequential".
void paintLoopMarker(QPainter& painter, const QRectF& room, std::string_view loop);
/// The boxed plus of a closed sub-process.
void paintClosedMarker(QPainter& painter, const QRectF& room);

}  // namespace mero::qt
