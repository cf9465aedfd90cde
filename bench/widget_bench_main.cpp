#include <QApplication>
#include <benchmark/benchmark.h>

#include "component/host/sv_peer.h"

#include "platform/toolkit/qt/qt_toolkit.h"

/// Runs benchmarks with widgets on Qt's offscreen platform.
int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    mero::qt::QtToolkit toolkit;
    SV::Toolkit::SetGlobal(&toolkit);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
