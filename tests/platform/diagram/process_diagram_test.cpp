#include "platform/diagram/process_diagram.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/interchange/bpmn_import.h"
#include "platform/interchange/repository_document.h"
#include "tests/platform/interchange/test_files.h"

namespace mero {

namespace {

std::vector<std::filesystem::path> processFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* folder : {"examples", "tests/data/prosimos", "tests/platform/interchange/data/bpsim",
                               "tests/platform/interchange/data/scylla"}) {
        for (const auto& path : test::contentOf(test::sourceFile(folder))) {
            if (path.extension() == ".bpmn" || path.extension() == ".bpmn2") {
                files.push_back(path);
            }
        }
    }
    return files;
}

std::string withoutDrawing(const std::string& text) {
    const std::size_t begin = text.find("BPMNDiagram");
    const std::size_t end = text.rfind("BPMNDiagram>");
    if (begin == std::string::npos) {
        return text;
    }
    const std::size_t open = text.rfind('<', begin);
    return text.substr(0, open) + text.substr(end + std::string_view("BPMNDiagram>").size());
}

void importText(const std::string& text, Repository& repository) {
    const auto report = importBpmn({text, "drawn.bpmn"}, repository);
    ASSERT_TRUE(report) << report.error().text;
}

double distanceToBorder(const DrawPoint& point, const DrawRect& shape) {
    const double dx = std::max({shape.x - point.x, point.x - shape.right(), 0.0});
    const double dy = std::max({shape.y - point.y, point.y - shape.bottom(), 0.0});
    const double inside =
        std::min({point.x - shape.x, shape.right() - point.x, point.y - shape.y, shape.bottom() - point.y});
    return dx > 0.0 || dy > 0.0 ? std::hypot(dx, dy) : inside;
}

/// Every object is drawn once, and lines begin and end at their shapes.
void expectWholeDrawing(const ProcessDiagram& diagram, const Repository& repository, MeroId model) {
    const MeroId flowNode = repository.library().coreVariable(9);
    for (const MeroId id : repository.findModel(model)->objects) {
        if (repository.library().isSubClassOf(flowNode, repository.findObject(id)->classId)) {
            const auto count = std::ranges::count(diagram.shapes, id, &DiagramShape::object);
            EXPECT_EQ(count, 1) << repository.findObject(id)->name.view();
        }
    }
    for (const DiagramShape& shape : diagram.shapes) {
        EXPECT_GT(shape.bounds.width, 0.0) << shape.label;
        EXPECT_TRUE(diagram.extent.contains(shape.bounds)) << shape.label;
    }
    for (const DiagramEdge& edge : diagram.edges) {
        ASSERT_GE(edge.points.size(), 2U);
        // Diamonds are narrower than their bounds, and authors aren't exact.
        constexpr double Tolerance = 30.0;
        EXPECT_LT(distanceToBorder(edge.points.front(), diagram.find(edge.from)->bounds), Tolerance);
        EXPECT_LT(distanceToBorder(edge.points.back(), diagram.find(edge.to)->bounds), Tolerance);
    }
}

TEST(ProcessDiagram, RealFilesAreDrawnAsTheirAuthorsDid) {
    ASSERT_GT(processFiles().size(), 10U);
    for (const auto& path : processFiles()) {
        SCOPED_TRACE(path.filename().string());
        Repository repository;
        importText(test::readFile(path), repository);
        Repository copy;
        ASSERT_TRUE(readRepositoryDocument(writeRepositoryDocument(repository), "copy", copy));
        for (const MeroId model : repository.modelIds()) {
            const ProcessDiagram diagram = drawProcess(repository, model);
            expectWholeDrawing(diagram, repository, model);
            const ProcessDiagram again =
                drawProcess(copy, copy.findModel(repository.findModel(model)->name.view())->id);
            ASSERT_EQ(again.shapes.size(), diagram.shapes.size());
            for (std::size_t each = 0; each < diagram.shapes.size(); ++each) {
                EXPECT_EQ(again.shapes[each].bounds, diagram.shapes[each].bounds);
                EXPECT_EQ(again.shapes[each].label, diagram.shapes[each].label);
            }
        }
    }
}

TEST(ProcessDiagram, RealFilesWithoutADrawingAreLaidOutWithoutOverlap) {
    for (const auto& path : processFiles()) {
        SCOPED_TRACE(path.filename().string());
        Repository repository;
        importText(withoutDrawing(test::readFile(path)), repository);
        for (const MeroId model : repository.modelIds()) {
            const ProcessDiagram diagram = drawProcess(repository, model);
            expectWholeDrawing(diagram, repository, model);
            for (const DiagramShape& left : diagram.shapes) {
                for (const DiagramShape& right : diagram.shapes) {
                    const bool mayTouch =
                        left.isBoundary() || right.isBoundary() || left.object == right.object;
                    EXPECT_TRUE(mayTouch || !left.bounds.overlaps(right.bounds))
                        << left.label << " and " << right.label;
                }
            }
        }
    }
}

constexpr auto Drawn = R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL"
    xmlns:di="http://www.omg.org/spec/BPMN/20100524/DI" xmlns:dc="http://www.omg.org/spec/DD/20100524/DC"
    xmlns:dd="http://www.omg.org/spec/DD/20100524/DI">
  <collaboration id="c"><participant id="pool" name="Shop" processRef="p"/></collaboration>
  <process id="p">
    <laneSet><lane id="lane" name="Desk"><flowNodeRef>a</flowNodeRef></lane></laneSet>
    <task id="a" name="Check"/><exclusiveGateway id="g" name="Good?"/>
    <subProcess id="s" name="Pack"><task id="i" name="Wrap"/></subProcess>
    <boundaryEvent id="e" attachedToRef="a"><timerEventDefinition/></boundaryEvent>
    <task id="n" name="Forgotten"/><exclusiveGateway id="h"/>
    <sequenceFlow id="f" name="yes" sourceRef="a" targetRef="g"/>
    <sequenceFlow id="k" sourceRef="g" targetRef="s"/>
    <sequenceFlow id="m" sourceRef="e" targetRef="n"/>
    <sequenceFlow id="o" sourceRef="n" targetRef="h"/>
  </process>
  <di:BPMNDiagram><di:BPMNPlane bpmnElement="c">
    <di:BPMNShape bpmnElement="pool"><dc:Bounds x="0" y="0" width="900" height="300"/></di:BPMNShape>
    <di:BPMNShape bpmnElement="lane"><dc:Bounds x="30" y="0" width="870" height="300"/></di:BPMNShape>
    <di:BPMNShape bpmnElement="a"><dc:Bounds x="60" y="50" width="100" height="80"/></di:BPMNShape>
    <di:BPMNShape bpmnElement="g"><dc:Bounds x="260" y="65" width="50" height="50"/></di:BPMNShape>
    <di:BPMNShape bpmnElement="s"><dc:Bounds x="400" y="40" width="300" height="200"/></di:BPMNShape>
    <di:BPMNShape bpmnElement="i"><dc:Bounds x="450" y="80" width="100" height="80"/></di:BPMNShape>
    <di:BPMNEdge bpmnElement="f"><dd:waypoint x="160" y="90"/><dd:waypoint x="260" y="90"/></di:BPMNEdge>
  </di:BPMNPlane></di:BPMNDiagram>
</definitions>)";

TEST(ProcessDiagram, ADrawingHasPoolsLanesOpenSubProcessesAndPlacesForWhatIsMissing) {
    Repository repository;
    importText(Drawn, repository);
    const ProcessDiagram diagram = drawProcess(repository, repository.findModel("Shop")->id);
    const auto shape = [&](std::string_view label) {
        const auto found = std::ranges::find(diagram.shapes, label, &DiagramShape::label);
        return found != diagram.shapes.end() ? *found : DiagramShape{};
    };
    ASSERT_EQ(diagram.shapes.size(), 9U);
    EXPECT_EQ(diagram.shapes[0].kind, ShapeKind::Pool);
    EXPECT_EQ(diagram.shapes[1].kind, ShapeKind::Lane);
    EXPECT_EQ(diagram.shapes[2].label, "Pack");
    EXPECT_EQ(shape("Shop").bounds, (DrawRect{0, 0, 900, 300}));
    EXPECT_EQ(shape("Check").bounds, (DrawRect{60, 50, 100, 80}));
    EXPECT_TRUE(shape("Pack").isExpanded);
    EXPECT_EQ(shape("Wrap").bounds, (DrawRect{450, 80, 100, 80}));
    EXPECT_GT(shape("Forgotten").bounds.y, 300.0);
    const DiagramShape& timer = diagram.shapes.back();
    EXPECT_TRUE(timer.isBoundary());
    EXPECT_EQ(timer.marker, "timer");
    EXPECT_EQ(timer.bounds.centre().y, shape("Check").bounds.bottom());
    EXPECT_EQ(diagram.edges[0].label, "yes");
    EXPECT_EQ(diagram.edges[0].points, (DrawLine{{160, 90}, {260, 90}}));
    // Straight from border to border.
    EXPECT_LT(diagram.edges[1].points.front().x, 310.0);
    EXPECT_GT(diagram.edges[1].points.front().x, 290.0);
    EXPECT_NEAR(diagram.edges[1].points.back().x, 400.0, 1e-3);
    expectWholeDrawing(diagram, repository, repository.findModel("Shop")->id);
    EXPECT_TRUE(drawProcess(repository, MeroNoId).shapes.empty());
}

TEST(ProcessDiagram, PositionsThatCantBeReadAreNone) {
    for (const char* text :
         {"", "1 2 3", "1 2 3 4 5", "1 2 0 4", "1 2 -3 4", "1,2,3,4", "a b c d", "1 2 3 nan"}) {
        EXPECT_EQ(readBounds(text), DrawRect{}) << text;
    }
    EXPECT_EQ(readBounds("1 -2.5 3 4"), (DrawRect{1, -2.5, 3, 4}));
    for (const char* text : {"", "1,2", "1,2 3", "1;2 3,4", "1,2 3,x"}) {
        EXPECT_TRUE(readWaypoints(text).empty()) << text;
    }
    EXPECT_EQ(readWaypoints("1,2 3.5,-4"), (DrawLine{{1, 2}, {3.5, -4}}));
}

}  // namespace

}  // namespace mero
