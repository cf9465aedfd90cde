#include <sstream>

#include "fuzz/fuzz_input.h"
#include "platform/interchange/event_trace.h"
#include "platform/interchange/repository_document.h"

namespace {

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process", "objects": [ { "name": "Check", "class": "Task" } ] },
  { "name": "Staff", "type": "Working environment", "objects": [ { "name": "Ann", "class": "Worker" } ] } ] })";

const mero::Repository& models() {
    static const mero::Repository repository = [] {
        mero::Repository made;
        (void)readRepositoryDocument(Models, "models", made);
        return made;
    }();
    return repository;
}

std::string write(const mero::EventTrace& trace, MeroId environment) {
    std::ostringstream output;
    mero::EventTraceWriter writer(output, models(), environment);
    mero::SimEvent event;
    for (std::size_t index = 0; index < trace.size(); ++index) {
        trace.read(index, event);
        writer.record(event);
    }
    require(writer.finish().isGood(), "writing to memory succeeds");
    return output.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MeroId environment = models().findModel("Staff")->id;
    std::istringstream input{std::string(asText(data, size))};
    const auto trace = mero::readEventTrace(input, "fuzz.csv", models(), environment);
    requireReason(trace);
    if (trace) {
        const std::string text = write(trace.value(), environment);
        std::istringstream again(text);
        const auto reread = mero::readEventTrace(again, "again", models(), environment);
        require(reread.isGood() && write(reread.value(), environment) == text, "a written trace reads back");
    }
    return 0;
}
