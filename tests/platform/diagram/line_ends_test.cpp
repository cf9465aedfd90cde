#include "platform/diagram/line_ends.h"

#include <gtest/gtest.h>

namespace mero {

namespace {

DiagramShape shapeAt(ShapeKind kind, DrawRect bounds) {
    DiagramShape shape;
    shape.kind = kind;
    shape.bounds = bounds;
    return shape;
}

void expectNear(const DrawPoint& point, double x, double y) {
    EXPECT_NEAR(point.x, x, 1e-3);
    EXPECT_NEAR(point.y, y, 1e-3);
}

const DiagramShape activity = shapeAt(ShapeKind::Activity, {0, 0, 100, 80});
const DiagramShape gateway = shapeAt(ShapeKind::ExclusiveGateway, {200, 20, 40, 40});

TEST(LineEnds, LieOnTheBordersOfShapes) {
    DrawLine inside{{50, 40}, {220, 40}};
    endAtBorders(inside, activity, gateway);
    expectNear(inside.front(), 100, 40);
    expectNear(inside.back(), 200, 40);

    DrawLine straightOn{{100, 50}, {200, 50}};
    endAtBorders(straightOn, activity, gateway);
    expectNear(straightOn.back(), 210, 50);

    DrawLine pastTheCorner{{80, -100}, {201, 21}};
    endAtBorders(pastTheCorner, activity, gateway);
    expectNear(pastTheCorner.back(), 210, 30);
}

TEST(LineEnds, StayWhereTheAuthorMeantThem) {
    const DrawLine atTheTip{{100, 40}, {200.0, 40}};
    DrawLine line = atTheTip;
    endAtBorders(line, activity, gateway);
    EXPECT_EQ(line, atTheTip);

    const DrawLine farAway{{100, 40}, {170, 40}};
    line = farAway;
    endAtBorders(line, activity, gateway);
    EXPECT_EQ(line, farAway);

    const DrawLine ofOnePlace{{300, 300}, {300, 300}};
    line = ofOnePlace;
    endAtBorders(line, activity, gateway);
    EXPECT_EQ(line, ofOnePlace);
}

}  // namespace

}  // namespace mero
