#include "fuzz/fuzz_input.h"
#include "platform/interchange/result_table.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto document = mero::readResultDocument(asText(data, size), "fuzz.json");
    requireReason(document);
    if (document) {
        const std::string text = writeResultDocument(document.value());
        const auto again = mero::readResultDocument(text, "again");
        require(again.isGood() && writeResultDocument(again.value()) == text,
                "a written document reads back");
        requireReason(mero::readTablesOfDocument(asText(data, size), "fuzz.json"));
    }
    return 0;
}
