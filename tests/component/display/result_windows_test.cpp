#include <functional>
#include <gtest/gtest.h>
#include <limits>

#include "component/host/basic_services.h"
#include "component/host/resource_ids.h"

#include "platform/toolkit/headless_toolkit.h"
#include "tests/component/display/measured_results.h"
#include "tests/component/support/failing_repository.h"

namespace mero::test {

namespace {

MeroResultOptions optionsWith(const std::function<void(MeroResultOptions&)>& change) {
    MeroResultOptions options;
    change(options);
    return options;
}

TEST(DisplayedResults, AreATableOfAllMeasuresWithTheirCaptionAndHeaders) {
    MeasuredResults results;
    EXPECT_EQ(results.display(DisplayDetail, "values for a year"), StatusOk);
    MeroAgentBrowserWindow& window = results.table();
    EXPECT_TRUE(window.IsVisible());
    EXPECT_EQ(window.GetText().view(), "Results of M: values for a year");
    EXPECT_EQ(textOfTable(window.getObjects()),
              "1. Order|1|00:000:00:00:40\n1.1. Check (Order)|1|00:000:00:00:20\n"
              "1.2. Pack (Order)|0.5|00:000:00:00:40\n||\nMinimum|0.5|00:000:00:00:20\n"
              "Maximum|1|00:000:00:00:40\n");
    EXPECT_EQ(window.getObjects().getSummaryRows(), 3);
    EXPECT_FALSE(window.getObjects().isInSight(1)) << "rows open shrunk";
    const SV::String header = window.getObjects().getHeaders().front();
    EXPECT_EQ(header.Search("Results of M: values for a year ("), 0U);
    EXPECT_EQ(header.Search("%"), SV::String::NotFound);
    EXPECT_EQ(window.getObjects().getSecondHeader().Search("%"), SV::String::NotFound);
    const SV::String tip = window.getObjects().getColumnToolTip(2);
    EXPECT_NE(tip.Search("path analysis"), SV::String::NotFound);
    EXPECT_NE(tip.Search("values for a year"), SV::String::NotFound);
}

TEST(DisplayedResults, OfTheSameViewComeToTheFrontAndOfAnotherOpenAWindow) {
    struct View {
        const char* what;
        MeroDisplayKind kind = DisplayDetail;
        const char* title = "values";
        MeroResultOptions options = {};
        std::size_t windows = 2;
    };
    const View views[] = {
        {.what = "same", .windows = 1},
        {.what = "kind", .kind = DisplayTotal},
        {.what = "title", .title = "valuez"},
        {.what = "sum", .options = optionsWith([](auto& options) { options.sumChecked = true; })},
        {.what = "extremes", .options = optionsWith([](auto& options) { options.extremeChecked = false; })},
        {.what = "class without grouping",
         .options = optionsWith([](auto& options) { options.groupClass = "Role"; }),
         .windows = 1},
    };
    for (const View& view : views) {
        SCOPED_TRACE(view.what);
        MeasuredResults results;
        results.display(DisplayDetail);
        MeroAgentBrowserWindow& first = results.table();
        first.Minimize();
        results.setOptions(view.options);
        EXPECT_EQ(results.display(view.kind, view.title), StatusOk);
        EXPECT_EQ(results.tableCount(), view.windows);
        EXPECT_EQ(&results.table(), &first);
        EXPECT_EQ(first.IsMinimized(), view.windows == 2);
        EXPECT_EQ(first.HasFocus(), view.windows == 1);
    }
}

TEST(DisplayedResults, WithAScaleThatIsNoNumberAreLikeNoOthers) {
    MeasuredResults results({.sections = numbers});
    MeroAgentResultWindows windows(results.agent());
    MeroAgentResultSet* const set = results.agent().getSubAgents()[0]->getResultSet({});
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const double scale : {none, none, 2.0, 2.0}) {
        EXPECT_EQ(windows.showResult(nullptr, {set}, "values", DisplayDetail, scale, {}), StatusOk);
    }
    EXPECT_EQ(windows.getBrowserWindows().size(), 3U);
    EXPECT_EQ(windows.getBrowserWindows().back()->getScale(), 2.0);
    EXPECT_EQ(windows.getBrowserWindows().back()->getObjects().getField(1, 1).view(), "6");
}

TEST(DisplayedResults, GroupedByOptionsDifferByClassAndRelation) {
    MeroResultView grouped{"values", DisplayDetail, 1.0, {}};
    grouped.options.groupChecked = true;
    grouped.options.groupClass = "Role";
    MeroResultView other = grouped;
    EXPECT_TRUE(grouped.isSameAs(other));
    other.options.groupRelation = "has role";
    EXPECT_FALSE(grouped.isSameAs(other));
    other.options.groupChecked = false;
    EXPECT_FALSE(grouped.isSameAs(other));
}

TEST(DisplayedResults, OfCurvesReuseTheOneWindowWithItsOldData) {
    MeasuredResults results;
    EXPECT_EQ(results.display(DisplayHistory, "first"), StatusOk);
    MeroGraphResultWindow* const window = results.graph();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->GetText().view(), "History (M)");
    const std::size_t curves = window->getGraph().GetCurves().size();
    MeroResultOptions options;
    options.sumChecked = true;
    results.setOptions(options);
    EXPECT_EQ(results.display(DisplayHistory, "second"), StatusOk);
    EXPECT_EQ(results.graph(), window);
    EXPECT_EQ(window->getGraph().GetCurves().size(), curves);
    EXPECT_TRUE(window->HasFocus());
    window->userClose();
    EXPECT_EQ(results.graph(), nullptr);
    EXPECT_EQ(results.display(DisplayHistory), StatusOk);
    EXPECT_NE(results.graph(), nullptr);
}

TEST(DisplayedResults, NeedAPreparedRun) {
    EmbeddedPlatform::clearRecords();
    MeroSuperAgent idle;
    EXPECT_EQ(idle.displayResults(nullptr, DisplayDetail, "", "", false, 0, ""), StatusNoRun);
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(DisplayedResults, ThatCannotBeShownLeaveNoWindow) {
    MeasuredResults results(
        {.sections = "FREQUENCY name:\"F\" path-analysis resultscope:mainobjects relative"});
    EXPECT_EQ(results.display(DisplayDetail), StatusOk);
    EXPECT_EQ(results.display(DisplayHistory), StatusRefused);
    EXPECT_EQ(results.agent().getResultWindows(), nullptr) << "the table went too";
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x2005000}));
    EXPECT_FALSE(SV::GetpApp()->IsWait());
}

TEST(DisplayedResults, ThatMayNotBeShownAreNone) {
    MeasuredResults results(
        {.sections = "FREQUENCY name:\"F\" path-analysis resultscope:mainobjects relative dont-show-result"});
    EXPECT_EQ(results.display(DisplayDetail), StatusOk);
    EXPECT_EQ(results.agent().getResultWindows(), nullptr);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051A7}));
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
}

TEST(DisplayedResults, OfScaledMeasuresAreShownScaledOnly) {
    MeasuredResults results(
        {.sections = "STRAIN name:\"S\" volume-analysis resultscope:mainobjects class:\"Worker\"",
         .analysis = AnalysisVolume});
    EXPECT_EQ(results.display(DisplayTotal), StatusOk);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051A7}));
    EXPECT_EQ(results.agent().displayResults(nullptr, DisplayTotal, "scaled", "01:000:00:00:00", true, 3,
                                             "00:001:00:00:00"),
              StatusOk);
    EXPECT_EQ(results.tableCount(), 1U);
}

TEST(DisplayedResults, AreScaledOrTellWhyNot) {
    MeasuredResults results({.sections = numbers + frequencyAndCycleTime});
    MeroSuperAgent& agent = results.agent();
    EXPECT_EQ(
        agent.displayResults(nullptr, DisplayTotal, "scaled", "01:000:00:00:00", true, 3, "00:000:00:00:00"),
        StatusRefused);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051A8}));
    EXPECT_EQ(agent.getResultWindows(), nullptr);
    results.setOptions(optionsWith([](auto& options) { options.extremeChecked = false; }));
    EXPECT_EQ(
        agent.displayResults(nullptr, DisplayTotal, "scaled", "00:000:10:00:00", true, 4, "00:000:02:00:00"),
        StatusOk);
    EXPECT_EQ(results.table().getScale(), 20.0);
    EXPECT_EQ(textOfTable(results.table().getObjects()),
              "1. Order|110|1|00:000:00:00:40\n2. Check (Order)|60|1|00:000:00:00:20\n"
              "3. Pack (Order)|50|0.5|00:000:00:00:40\n")
        << "counts and times stay as they are";
    EXPECT_NE(results.table().getObjects().getColumnToolTip(1).Search("20"), SV::String::NotFound);
}

TEST(DisplayedResults, WithoutAGroupAreShownUngroupedAfterABox) {
    MeasuredResults results;
    results.setOptions(optionsWith([](auto& options) {
        options.groupChecked = true;
        options.groupClass = "Role";
        options.groupRelation = "Has role";
    }));
    EXPECT_EQ(results.display(DisplayTotal), StatusOk);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051AC}));
    EXPECT_EQ(results.tableCount(), 1U);
    EXPECT_EQ(results.table().getObjects().getNumberOfRows(), 6);
}

TEST(DisplayedResults, SurviveAFailureOfEachRepositoryCall) {
    MeasuredResults results;
    for (const bool isGrouped : {false, true}) {
        results.setOptions(optionsWith([&](auto& options) {
            options.groupChecked = isGrouped;
            options.groupClass = "Worker";
            options.groupRelation = "Has role";
        }));
        for (const MeroDisplayKind kind : {DisplayDetail, DisplayHistory}) {
            bool hasFailed = true;
            for (int call = 1; hasFailed; ++call) {
                const FailingRepository failing(call);
                SCOPED_TRACE(testing::Message() << "kind " << kind << ", call " << call);
                const int status = results.display(kind);
                EXPECT_TRUE(status == StatusOk || status == StatusRefused);
                if (kind == DisplayDetail && !isGrouped) {
                    EXPECT_EQ(results.table().getObjects().getNumberOfRows(), 6) << "with ? for a name";
                }
                EXPECT_FALSE(SV::GetpApp()->IsWait());
                results.agent().closeResultWindows();
                hasFailed = failing.callCount() >= call;
            }
        }
    }
}

/// Headless, with or without a printer, while it lives.
class PrintingToolkit : public HeadlessToolkit {
public:
    explicit PrintingToolkit(bool hasOne) : hasPrinterHere(hasOne), before(SV::Toolkit::SetGlobal(this)) {}
    PrintingToolkit(const PrintingToolkit&) = delete;
    PrintingToolkit& operator=(const PrintingToolkit&) = delete;
    ~PrintingToolkit() override { SV::Toolkit::SetGlobal(before); }
    [[nodiscard]] bool hasPrinter() override { return hasPrinterHere; }

private:
    bool hasPrinterHere;
    SV::Toolkit* before;
};

TEST(ResultTableWindow, PrintsTheRowsInSight) {
    PrintingToolkit toolkit(true);
    MeasuredResults results;
    results.display(DisplayDetail);
    auto* const button =
        dynamic_cast<SV::PushButton*>(results.table().FindControl(MeroBrowserForm::PrintButton));
    EXPECT_TRUE(button->userClick());
    EXPECT_NE(toolkit.getPrinted().Search("1. Order"), SV::String::NotFound);
    EXPECT_EQ(toolkit.getPrinted().Search("1.1. Check"), SV::String::NotFound);
    results.table().getObjects().expandAll();
    button->userClick();
    EXPECT_NE(toolkit.getPrinted().Search("1.1. Check"), SV::String::NotFound);
    results.agent().closeResultWindows();
}

TEST(ResultTableWindow, TellsWhyItCannotPrint) {
    const PrintingToolkit toolkit(false);
    MeasuredResults results;
    results.display(DisplayDetail);
    const SV::Control* const button = results.table().FindControl(MeroBrowserForm::PrintButton);
    EXPECT_FALSE(button->IsEnabled());
    EXPECT_FALSE(button->GetToolTip().IsEmpty());
    results.agent().closeResultWindows();
}

TEST(GraphWindow, CountsStepsInsteadOfTimesInAWorkLoadAnalysis) {
    MeasuredResults results({.sections = frequencyAndCycleTime, .analysis = AnalysisStaticWorkLoad});
    MeroAgentResultWindows windows(results.agent());
    MeroGraphResultWindow window(nullptr, windows);
    ASSERT_TRUE(window.addCurve(7, "C", true, true));
    EXPECT_TRUE(window.insertPoint(7, 100, 1));
    EXPECT_TRUE(window.insertPoint(7, 100, 2));
    EXPECT_TRUE(window.insertPoint(7, 250, 3));
    EXPECT_FALSE(window.insertPoint(7, 249, 4)) << "an earlier time";
    EXPECT_FALSE(window.insertPoint(8, 300, 5)) << "no such curve";
    const auto& points = window.getGraph().FindCurve(7)->points;
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(points[0].x, 1.0);
    EXPECT_EQ(points[1].x, 1.0);
    EXPECT_EQ(points[2].x, 2.0);
    EXPECT_EQ(window.getGraph().GetXLabel(2.5).view(), "2") << "steps have no time labels";
    EXPECT_EQ(window.getGraph().GetYLabel(90).view(), "00:000:00:01:30");
}

TEST(GraphWindow, TakesFiftyCurvesWithAllOthersAndTellsOnceWhatItRefuses) {
    MeasuredResults results;
    MeroAgentResultWindows windows(results.agent());
    MeroGraphResultWindow first(nullptr, windows);
    {
        MeroGraphResultWindow second(nullptr, windows);
        for (MeroId id = 1; id <= 25; ++id) {
            EXPECT_TRUE(first.addCurve(id, "C", false, false));
            EXPECT_TRUE(second.addCurve(id, "C", false, false));
        }
        EXPECT_FALSE(first.addCurve(26, "C", false, false));
        EXPECT_FALSE(second.addCurve(26, "C", false, false));
        EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x2004EA4}));
    }
    EXPECT_TRUE(first.addCurve(26, "C", false, false)) << "a window gives its share back";
    EXPECT_FALSE(first.addCurve(26, "C", false, false)) << "an identifier that is there";
    MeroGraphCurveInfo info;
    EXPECT_TRUE(first.getCurveInfo(26, info));
    EXPECT_FALSE(first.getCurveInfo(27, info));
    first.setLegendVisible(false);
    EXPECT_FALSE(first.getLegend().IsVisible());
}

TEST(GraphWindow, DrawsACurveForEachObjectOfEachHistory) {
    MeasuredResults results;
    results.display(DisplayHistory);
    std::string curves;
    for (const auto& curve : results.graph()->getGraph().GetCurves()) {
        curves += curve.name.GetStr();
        for (const MeroGraphPoint& point : curve.points) {
            curves += " " + std::string(SV::String(point.x).GetStr()) + ":" + SV::String(point.y).GetStr();
        }
        curves += "\n";
    }
    EXPECT_EQ(curves,
              "F (Order) 1:1 2:1\nF (Check) 1:1 2:1\nF (Pack) 2:1\n"
              "T (Order) 1:10 2:40\nT (Check) 1:10 2:20\nT (Pack) 2:40\n");
}

TEST(ResultTableRows, CannotBeExpandedWithoutABrowser) {
    EmbeddedPlatform::clearRecords();
    MeroAgentBrowserObjects objects;
    EXPECT_FALSE(objects.expandAll());
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeadsply"}));
}

}  // namespace

}  // namespace mero::test
