#include <QScrollBar>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <cmath>

#include "component/host/browser.h"
#include "component/host/function_graph.h"
#include "component/host/resource_ids.h"

#include "platform/toolkit/qt/window_peer.h"

namespace {

constexpr int Million = 1'000'000;

/// A table with one row in ten at the top level.
void fillTable(MeroShrinkExpandBrowserObjects& table, int rows) {
    table.addColumn("Frequency", 80, 1, 2);
    table.addColumn("Cycle time", 80, 1, 2);
    const std::vector<SV::String> cells{"1. Object (Model)", "12.5", "00:000:00:12:30"};
    constexpr int RowsOfAFamily = 10;
    for (MeroId row = 1; row <= rows; ++row) {
        const MeroId first = (row - 1) / RowsOfAFamily * RowsOfAFamily + 1;
        table.addRow(row == first ? MeroShrinkExpandBrowserObjects::NoParent : first, row, cells);
    }
}

/// From the window's making to its first picture, all rows expanded.
void openTable(benchmark::State& state) {
    MeroShrinkExpandBrowserObjects table;
    fillTable(table, Million);
    for (auto _ : state) {
        SV::Window window(nullptr, MeroBrowserForm::Form);
        MeroBrowser browser(&window, MeroBrowserForm::Browser);
        browser.SetObjects(&table);
        table.expandAll();
        for (int column = 0; column <= table.getNumberOfColumns(); ++column) {
            table.adjustColumn(column);
        }
        window.Show();
        benchmark::DoNotOptimize(mero::qt::widgetOf(&window)->grab());
    }
}
BENCHMARK(openTable)->Unit(benchmark::kMillisecond);

void scrollTable(benchmark::State& state) {
    MeroShrinkExpandBrowserObjects table;
    fillTable(table, Million);
    SV::Window window(nullptr, MeroBrowserForm::Form);
    MeroBrowser browser(&window, MeroBrowserForm::Browser);
    browser.SetObjects(&table);
    table.expandAll();
    window.Show();
    QWidget* shown = mero::qt::widgetOf(&window);
    auto views = shown->findChildren<QTableView*>();
    QScrollBar* bar = views.at(1)->verticalScrollBar();
    int place = 0;
    for (auto _ : state) {
        place = (place + bar->maximum() / 7) % bar->maximum();
        bar->setValue(place);
        benchmark::DoNotOptimize(shown->grab());
    }
}
BENCHMARK(scrollTable)->Unit(benchmark::kMillisecond);

void sortTable(benchmark::State& state) {
    MeroShrinkExpandBrowserObjects table;
    fillTable(table, Million);
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.getRowsInSight(1, true));
    }
}
BENCHMARK(sortTable)->Unit(benchmark::kMillisecond);

/// Measuring and drawing of a curve that is there.
void drawCurve(benchmark::State& state) {
    SV::Window window(nullptr, MeroGraphResultForm::Form);
    MeroFunctionGraph graph(&window, MeroGraphResultForm::Graph);
    graph.InsertGraph(1, 1, "Curve", SV::Color());
    for (int point = 0; point < static_cast<int>(state.range(0)); ++point) {
        graph.InsertValue(1, {static_cast<double>(point), std::sin(point / 1000.0) + (point % 17) / 17.0});
    }
    window.Show();
    QWidget* shown = mero::qt::widgetOf(&graph);
    for (auto _ : state) {
        graph.ShowGraph(1, 1, 3, 2);
        graph.UpdateFunctionGraph();
        benchmark::DoNotOptimize(shown->grab());
    }
}
BENCHMARK(drawCurve)->Arg(Million)->Arg(10 * Million)->Unit(benchmark::kMillisecond);

}  // namespace
