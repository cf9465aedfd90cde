#include "fuzz/fuzz_input.h"
#include "platform/interchange/repository_document.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    mero::Repository repository;
    const auto outcome = readRepositoryDocument(asText(data, size), "fuzz.json", repository);
    requireReason(outcome);
    require(outcome.isGood() || repository.modelIds().empty(), "a refused document leaves nothing");
    if (outcome) {
        const std::string text = writeRepositoryDocument(repository);
        mero::Repository again;
        require(readRepositoryDocument(text, "again", again).isGood(), "a written document reads");
        require(writeRepositoryDocument(again) == text, "a written document reads back to the same");
    }
    return 0;
}
