#include <benchmark/benchmark.h>
#include <sstream>

#include "platform/interchange/xes_reader.h"

namespace {

/// A log like those of the field: about 330 bytes an event, start and complete of each activity.
std::string logOfCases(int cases) {
    std::string log = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<log xes.version=\"1.0\">\n";
    for (int number = 0; number < cases; ++number) {
        log +=
            "\t<trace>\n\t\t<string key=\"concept:name\" value=\"Case " + std::to_string(number) + "\"/>\n";
        for (int event = 0; event < 20; ++event) {
            const std::string minute = std::to_string(10 + event);
            const std::string day = std::to_string(10 + number % 20);
            log += "\t\t<event>\n\t\t\t<string key=\"org:resource\" value=\"Worker " +
                   std::to_string(event % 7) + "\"/>\n\t\t\t<date key=\"time:timestamp\" value=\"2026-01-" +
                   day + "T08:" + minute +
                   ":00.000+01:00\"/>\n\t\t\t<string key=\"concept:name\" value=\"Check the application " +
                   std::to_string(event / 2) + "\"/>\n\t\t\t<string key=\"lifecycle:transition\" value=\"" +
                   (event % 2 == 0 ? "start" : "complete") +
                   "\"/>\n\t\t\t<float key=\"amount\" value=\"1250.5\"/>\n\t\t</event>\n";
        }
        log += "\t</trace>\n";
    }
    return log + "</log>\n";
}

void XesReading(benchmark::State& state) {
    const std::string log = logOfCases(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::istringstream input(log);
        mero::XesReader reader(input, "bench.xes");
        mero::XesEvent event;
        for (auto step = reader.next(event); step && step.value() != mero::XesStep::LogEnd;
             step = reader.next(event)) {
            benchmark::DoNotOptimize(event);
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(log.size()) * state.iterations());
}
BENCHMARK(XesReading)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
