#include <sstream>

#include "fuzz/fuzz_input.h"
#include "platform/interchange/xes_import.h"
#include "platform/interchange/xes_trace.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input{std::string(asText(data, size))};
    mero::Repository repository;
    const auto report = mero::importXes(input, "fuzz.xes", repository);
    requireReason(report);
    if (!report) {
        require(repository.modelIds().empty(), "a refused log leaves nothing");
        return 0;
    }
    input.clear();
    input.seekg(0);
    mero::XesTrace trace(input, "fuzz.xes", repository, report.value().models.front(),
                         report.value().environment);
    require(trace.prepare().isGood(), "what was imported can be played");
    mero::SimEvent event;
    std::int64_t time = 0;
    for (auto more = trace.next(event); more.isGood() && more.value(); more = trace.next(event)) {
        require(event.time >= time, "time doesn't go backward");
        time = event.time;
    }
    return 0;
}
