#include "fuzz/fuzz_input.h"
#include "platform/interchange/bpmn_import.h"
#include "platform/interchange/repository_document.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    mero::Repository repository;
    const auto report = mero::importBpmn({.bytes = asText(data, size), .name = "fuzz.bpmn"}, repository);
    requireReason(report);
    require(report.isGood() || repository.modelIds().empty(), "a refused file leaves nothing");
    mero::Repository again;
    require(readRepositoryDocument(writeRepositoryDocument(repository), "again", again).isGood(),
            "what was imported can be exported and read");
    return 0;
}
