#include "apps/workbench/diagram_view.h"

#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include "tests/platform/toolkit/qt/qt_application.h"

namespace mero::test {

namespace {

const testing::Environment* const Application = addQtApplication();

/// Tasks 1, 3 and 2, far from each other.
ProcessDiagram wideDiagram() {
    ProcessDiagram diagram;
    diagram.extent = {0, 0, 6000, 400};
    for (const auto& [id, x] : {std::pair{1, 0.0}, {2, 5880.0}, {3, 2940.0}}) {
        DiagramShape shape;
        shape.object = id;
        shape.bounds = {x, 100, 120, 80};
        diagram.shapes.push_back(shape);
    }
    diagram.edges.push_back({3, 1, 2, {{120, 140}, {5880, 140}}, "", false});
    return diagram;
}

class DiagramViewTest : public testing::Test {
protected:
    DiagramViewTest() {
        view.resize(800, 500);
        view.show();
        view.setSelectHandler([this](MeroId object) { chosen.push_back(object); });
        view.setOpenHandler([this](MeroId object) { opened.push_back(object); });
        view.setDiagram(wideDiagram());
    }

    DiagramView view;
    std::vector<MeroId> chosen;
    std::vector<MeroId> opened;
};

TEST_F(DiagramViewTest, SelectsWhatIsClickedAndOpensWhatIsDoubleClicked) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.positionOf(1));
    EXPECT_EQ(chosen, std::vector<MeroId>{1});
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, view.positionOf(1));
    EXPECT_EQ(opened, std::vector<MeroId>{1});
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.positionOf(1) + QPoint(0, 150));
    EXPECT_EQ(view.getSelected(), MeroNoId);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_EQ(view.getSelected(), 2);
    EXPECT_TRUE(view.viewport()->rect().contains(view.positionOf(2))) << "brought into sight";
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(opened.back(), 2);
}

TEST_F(DiagramViewTest, ZoomKeepsTheMiddleAndDraggingMovesWithoutSelecting) {
    view.zoomBy(4);
    EXPECT_GT(view.getZoom(), 1.0);
    view.select(3);
    const QPoint before = view.positionOf(3);
    view.zoomBy(0.5);
    view.zoomBy(2.0);
    EXPECT_NEAR(view.positionOf(3).x(), before.x(), 4);
    view.select(2);
    const int scroll = view.horizontalScrollBar()->value();
    const QPoint start(400, 250);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(100, 0), view.mapToGlobal(start + QPoint(100, 0)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(view.viewport(), &move);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, start + QPoint(100, 0));
    EXPECT_EQ(view.horizontalScrollBar()->value(), scroll - 100);
    EXPECT_TRUE(chosen.empty());
    view.fit();
    EXPECT_LT(view.getZoom(), 0.2) << "all of it in sight";
    EXPECT_TRUE(view.viewport()->rect().contains(view.positionOf(1)));
    EXPECT_TRUE(view.viewport()->rect().contains(view.positionOf(2)));
}

TEST_F(DiagramViewTest, SavesTheWholeDrawingWhateverIsInSight) {
    const QTemporaryDir folder;
    MeasureOverlay overlay;
    overlay.measure = "Frequency";
    overlay.values = {{2, 7.0}};
    view.setOverlay(overlay);
    ASSERT_TRUE(view.savePicture(folder.filePath("whole.png")));
    ASSERT_TRUE(view.savePicture(folder.filePath("whole.svg")));
    EXPECT_GT(QImage(folder.filePath("whole.png")).width(), 12000);
    EXPECT_FALSE(view.savePicture("/dev/null/whole.png"));
}

}  // namespace

}  // namespace mero::test
