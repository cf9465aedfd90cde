#include <algorithm>

#include "component/host/calendar.h"

#include "fuzz/fuzz_input.h"

namespace {

constexpr std::int64_t Span = 40 * 86400;

void checkQueries(const MeroCalendar& calendar) {
    std::int64_t time = 0;
    std::int64_t worked = 0;
    for (int step = 0; step < 50 && time < Span; ++step) {
        std::int64_t end = 0;
        int inInterval = 0;
        require(calendar.isInCurrentInterval(time, end, inInterval) == 0 && end > time,
                "an interval has an end");
        end = std::min(end, Span);
        worked += inInterval != 0 ? end - time : 0;
        time = end;
    }
    std::int64_t sum = 0;
    require(calendar.getTimeIntervalsSumInBetween(0, time, sum) == 0 && sum == worked,
            "intervals add up to the sum");
    int covered = 0;
    require(calendar.isCoveredWholly(0, time, covered) == 0 && (covered != 0) == (sum == time),
            "a span is covered if all of it is worked");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MeroCalendar calendar(0, 3600, 1, 365);
    if (calendar.initializeCalendar(SV::String(asText(data, size))) == 0) {
        checkQueries(calendar);
        MeroCalendar common(0, 0, 1, 365);
        const int code = calendar.intersection(calendar, common);
        require(code == 0 || code == CalendarNothingInCommon, "a calendar meets itself or is empty");
        if (code == 0) {
            checkQueries(common);
        }
    } else {
        require(!calendar.getErrorText().IsEmpty(), "a refusal has a reason");
    }
    return 0;
}
