#include <QCoreApplication>
#include <QEvent>
#include <QRegion>
#include <set>

#include "component/host/function_graph.h"
#include "component/host/resource_ids.h"

#include "platform/toolkit/internal_errors.h"
#include "tests/component/display/measured_results.h"
#include "tests/component/display/result_window_cases.h"
#include "tests/platform/toolkit/qt/qt_application.h"
#include "tests/platform/toolkit/qt/widget_driver.h"

namespace mero::test {

namespace {

const testing::Environment* const Environment = addQtApplication();

class ResultWindowWidgets : public testing::TestWithParam<ToolkitCase> {};

TEST_P(ResultWindowWidgets, MouseAndKeysGiveTheSameState) {
    WidgetDriver user;
    InternalErrorLog::GetGlobal().clear();
    EXPECT_EQ(GetParam().run(user), GetParam().expected);
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

INSTANTIATE_TEST_SUITE_P(Windows, ResultWindowWidgets, testing::ValuesIn(resultWindowCases()),
                         [](const auto& each) { return each.param.name; });

TEST(GraphWidget, DrawsAShownCurveThatOthersMovedInMemory) {
    SV::Window window(nullptr, MeroGraphResultForm::Form);
    MeroFunctionGraph graph(&window, MeroGraphResultForm::Graph);
    graph.InsertGraph(1, 1, "First", {});
    graph.ShowGraph(1, 1, 3, 2);
    graph.UpdateFunctionGraph();
    constexpr MeroId Curves = 40;
    for (MeroId id = 2; id <= Curves; ++id) {
        graph.InsertGraph(id, 1, "Other", {});
    }
    for (int point = 0; point < Curves; ++point) {
        graph.InsertValue(1, {point * 1.0, point % 7 * 1.0});
    }
    const auto picture = [&] { return widgetFor(graph)->grab().toImage(); };
    window.Show();
    const QImage before = picture();
    graph.UpdateFunctionGraph();
    EXPECT_NE(picture(), before) << "the points are drawn";
}

TEST(ResultTableWidget, ButtonsWrapWhereTheWindowIsNarrowAndNothingOverlaps) {
    MeasuredResults results;
    results.display(DisplayDetail);
    MeroAgentBrowserWindow& window = results.table();
    const auto rowsOfButtons = [&](const SV::Size& size) {
        window.SetOutputSizePixel(size);
        QCoreApplication::processEvents();
        std::set<int> rows;
        QRegion taken(widgetFor(window.getBrowser())->geometry());
        for (const SV::ResId id :
             {MeroBrowserForm::HelpButton, MeroBrowserForm::SaveButton, MeroBrowserForm::PrintButton,
              MeroBrowserForm::SearchButton, MeroBrowserForm::DiagramButton, MeroBrowserForm::CloseButton}) {
            const QWidget& button = *widgetFor(*window.FindControl(id));
            QWidget& root = *widgetFor(window);
            const QRect place(button.mapTo(&root, QPoint()), button.size());
            EXPECT_TRUE(root.rect().contains(place));
            EXPECT_FALSE(taken.intersects(place));
            taken += place;
            rows.insert(place.y());
        }
        return rows.size();
    };
    EXPECT_EQ(rowsOfButtons({900, 500}), 1U);
    EXPECT_GT(rowsOfButtons(window.GetMinOutputSizePixel()), 1U);
    EXPECT_EQ(rowsOfButtons({900, 500}), 1U);
    results.agent().closeResultWindows();
}

}  // namespace

}  // namespace mero::test
