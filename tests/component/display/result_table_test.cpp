#include <gtest/gtest.h>

#include "component/agents/super_agent.h"
#include "component/display/agent_result_windows.h"
#include "tests/component/support/embedded_platform.h"

namespace {

using mero::test::EmbeddedPlatform;

constexpr const char* Document = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process",
    "objects": [ { "name": "Check", "class": "Task" }, { "name": "Ship", "class": "Task" } ] } ] })";

class ResultTable : public testing::Test {
protected:
    void add(MeroAgentResultSet& set, MeroPath path, double value, int sourceType) {
        set.addValue({.objectId = path.back(),
                      .path = path,
                      .itemKey = path.back(),
                      .value = value,
                      .sourceAgentType = sourceType});
    }
    /// Rows as "label|cell|cell…", indented by their depth.
    std::vector<std::string> fill(MeroDisplayKind kind, const std::vector<MeroAgentResultSet*>& sets,
                                  double scale, const MeroResultOptions& options) {
        MeroAgentResultWindows windows(owner);
        windows.setOptions(options);
        MeroAgentBrowserObjects objects;
        EXPECT_TRUE(windows.fillBrowser(objects, kind, isEmpty, sets, scale));
        std::vector<std::string> rows;
        for (int row = 0; row < objects.getNumberOfRows(); ++row) {
            std::string text(static_cast<std::size_t>(objects.getRowDepth(row)), ' ');
            for (int column = 0; column <= objects.getNumberOfColumns(); ++column) {
                text += (column > 0 ? "|" : "") + std::string(objects.getField(row, column).view());
            }
            rows.push_back(text);
        }
        return rows;
    }

    EmbeddedPlatform platform{Document};
    MeroSuperAgent owner;
    MeroId order = platform.model("Order");
    MeroId check = platform.object("Order", "Check");
    MeroId ship = platform.object("Order", "Ship");
    bool isEmpty = false;
};

MeroResultOptions plain() {
    MeroResultOptions options;
    options.extremeChecked = false;
    return options;
}

TEST_F(ResultTable, RowsAreTheTreeOfThePathsWithAColumnForEachMeasure) {
    MeroAgentResultSet count(ResultKindNumber, "Count", ValueTypeAbsolute, true, 1, ResultModeSum);
    MeroAgentResultSet time(ResultKindTime, "Time", ValueTypeSingle, true, 1, ResultModeSum);
    MeroAgentResultSet hidden(ResultKindNumber, "Hidden", ValueTypeSingle, false, 1, ResultModeSum);
    add(count, {order, ship, check}, 2.0, 1);
    add(count, {check}, 0.5, 1);
    add(time, {order, ship}, 90.0, 1);
    add(hidden, {order}, 1.0, 1);
    EXPECT_EQ(
        fill(DisplayDetail, {&count, nullptr, &time, &hidden}, 2.0, plain()),
        (std::vector<std::string>{"1. Check (Order)|0.5|-", "2. Order|-|-",
                                  " 2.1. Ship (Order)|-|00:000:00:03:00", "  2.1.1. Check (Order)|2|-"}));
    EXPECT_EQ(fill(DisplayTotal, {&count, &time}, 1.0, plain()),
              (std::vector<std::string>{"1. Check (Order)|2.5|-", "2. Ship (Order)|-|00:000:00:01:30"}));
}

TEST_F(ResultTable, SumsLeaveOutWhatIsNotSummableExtremesDoNot) {
    MeroAgentResultSet set(ResultKindNumber, "Count", ValueTypeSingle, true, 1, ResultModeSum);
    MeroAgentResultSet unsummable(ResultKindNumber, "Other", ValueTypeAbsolute, true, 1, ResultModeSum);
    add(set, {check}, 3.0, 1);
    add(set, {ship}, -5.0, 0);
    add(set, {order}, 4.0, 1);
    add(unsummable, {check}, 1.0, 0);
    MeroResultOptions options;
    options.sumChecked = true;
    const auto rows = fill(DisplayDetail, {&set, &unsummable}, 10.0, options);
    EXPECT_EQ(std::vector<std::string>(rows.begin() + 3, rows.end()),
              (std::vector<std::string>{"||", std::string(SV::String(SV::ResId(0x2004F44)).view()) + "|70|-",
                                        std::string(SV::String(SV::ResId(0x2004F45)).view()) + "|-50|1",
                                        std::string(SV::String(SV::ResId(0x2004F46)).view()) + "|40|1"}));
}

TEST_F(ResultTable, NumbersAndObjectsBehindTheTextsAreKept) {
    MeroAgentResultSet count(ResultKindNumber, "Count", ValueTypeAbsolute, true, 1, ResultModeSum);
    MeroAgentResultSet time(ResultKindTime, "Time", ValueTypeSingle, true, 1, ResultModeSum);
    add(count, {order, ship}, 2.0, 1);
    add(time, {order, ship}, 90.25, 0);
    MeroAgentResultWindows windows(owner);
    MeroResultOptions options;
    options.sumChecked = true;
    windows.setOptions(options);
    MeroAgentBrowserObjects objects;
    ASSERT_TRUE(windows.fillBrowser(objects, DisplayDetail, isEmpty, {&count, &time}, 2.0));
    // Rows: order, ship, separator, sum, minimum, maximum.
    ASSERT_EQ(objects.getNumberOfRows(), 6);
    EXPECT_EQ(objects.getObjectOfRow(0), order);
    EXPECT_EQ(objects.getObjectOfRow(1), ship);
    EXPECT_EQ(objects.getObjectOfRow(3), MeroNoId);
    EXPECT_FALSE(objects.getNumber(0, 1).has_value());
    EXPECT_EQ(objects.getNumber(1, 1), 2.0);
    EXPECT_EQ(objects.getNumber(1, 2), 180.5);
    EXPECT_FALSE(objects.getNumber(2, 1).has_value());
    EXPECT_EQ(objects.getNumber(3, 1), 2.0);
    EXPECT_FALSE(objects.getNumber(3, 2).has_value());
    EXPECT_EQ(objects.getNumber(5, 2), 180.5);
}

TEST_F(ResultTable, ATrueSumOfMinusOneIsTakenForNone) {
    MeroAgentResultSet set(ResultKindNumber, "Count", ValueTypeSingle, true, 1, ResultModeSum);
    add(set, {order}, -3.0, 1);
    add(set, {check}, 2.0, 1);
    add(set, {ship}, 7.0, 1);
    MeroResultOptions options = plain();
    options.sumChecked = true;
    EXPECT_TRUE(fill(DisplayDetail, {&set}, 1.0, options).back().ends_with("|7"));
}

TEST_F(ResultTable, NothingToShowIsEmptyAndAnUnknownKindIsRefused) {
    MeroAgentResultSet empty(ResultKindNumber, "Count", ValueTypeSingle, true, 1, ResultModeSum);
    EXPECT_TRUE(fill(DisplayDetail, {&empty, nullptr}, 1.0, {}).empty());
    EXPECT_TRUE(isEmpty);
    MeroAgentBrowserObjects objects;
    EXPECT_FALSE(MeroAgentResultWindows(owner).fillBrowser(objects, DisplayHistory, isEmpty, {}, 1.0));
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeadsply"}));
}

TEST_F(ResultTable, AnObjectThatIsGoneIsAQuestionMark) {
    MeroAgentResultSet set(ResultKindNumber, "Count", ValueTypeSingle, true, 1, ResultModeSum);
    add(set, {77}, 1.0, 1);
    EXPECT_EQ(fill(DisplayDetail, {&set}, 1.0, plain()), (std::vector<std::string>{"1. ?|1"}));
}

}  // namespace
