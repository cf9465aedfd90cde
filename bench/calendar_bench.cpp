#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <random>
#include <string>
#include <vector>

#include "component/host/calendar.h"

namespace {

/// So many working intervals a day, each as long as the pause behind it.
MeroCalendar makeCalendar(int intervalsOfDay) {
    std::string hours;
    const int step = 24 * 60 / intervalsOfDay;
    const auto clock = [](int minute) { return fmt::format("{:02}:{:02}", minute / 60, minute % 60); };
    for (int number = 0; number < intervalsOfDay; ++number) {
        hours += (number == 0 ? "" : " ") + clock(number * step) + "-" + clock(number * step + step / 2);
    }
    MeroCalendar calendar(0, 0, 1, 365);
    if (calendar.initializeCalendar(SV::String("CALENDAR DAILY hours:\"" + hours + "\"")) != 0) {
        std::fputs("the calendar of the benchmark can't be read\n", stderr);
        std::abort();
    }
    return calendar;
}

/// Times all over ten years, so that no query finds what the last one left in a cache line.
std::vector<std::int64_t> makeTimes() {
    std::mt19937_64 random(1);
    std::uniform_int_distribution<std::int64_t> times(0, std::int64_t{10} * 365 * 86'400);
    std::vector<std::int64_t> made(1 << 16);
    for (std::int64_t& time : made) {
        time = times(random);
    }
    return made;
}

template <class Query>
void ask(benchmark::State& state, const Query& query) {
    const MeroCalendar calendar = makeCalendar(static_cast<int>(state.range(0)));
    const std::vector<std::int64_t> times = makeTimes();
    std::size_t index = 0;
    for (auto _ : state) {
        const std::int64_t time = times[index++ % times.size()];
        query(calendar, time);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["intervals_a_year"] = static_cast<double>(365 * state.range(0));
}

void CalendarWorkBetween(benchmark::State& state) {
    ask(state, [](const MeroCalendar& calendar, std::int64_t time) {
        std::int64_t sum = 0;
        benchmark::DoNotOptimize(calendar.getTimeIntervalsSumInBetween(time, time + 1'000'000, sum));
        benchmark::DoNotOptimize(sum);
    });
}
BENCHMARK(CalendarWorkBetween)->Arg(1)->Arg(28)->Arg(240);

void CalendarIsCovered(benchmark::State& state) {
    ask(state, [](const MeroCalendar& calendar, std::int64_t time) {
        int covered = 0;
        benchmark::DoNotOptimize(calendar.isCoveredWholly(time, time + 1'000, covered));
        benchmark::DoNotOptimize(covered);
    });
}
BENCHMARK(CalendarIsCovered)->Arg(1)->Arg(28)->Arg(240);

void CalendarCurrentInterval(benchmark::State& state) {
    ask(state, [](const MeroCalendar& calendar, std::int64_t time) {
        std::int64_t end = 0;
        int isInside = 0;
        benchmark::DoNotOptimize(calendar.isInCurrentInterval(time, end, isInside));
        benchmark::DoNotOptimize(end);
    });
}
BENCHMARK(CalendarCurrentInterval)->Arg(1)->Arg(28)->Arg(240);

}  // namespace
