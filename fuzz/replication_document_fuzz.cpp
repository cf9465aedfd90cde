#include "fuzz/fuzz_input.h"
#include "platform/interchange/result_table.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto document = mero::readReplicationDocument(asText(data, size), "fuzz.json");
    requireReason(document);
    if (document) {
        const auto written = [](const mero::ShownTables& shown) {
            return mero::writeReplicationDocument(shown.tables, shown.run);
        };
        const std::string text = written(document.value());
        const auto again = mero::readReplicationDocument(text, "again");
        require(again.isGood() && written(again.value()) == text, "a written document reads back");
    }
    return 0;
}
