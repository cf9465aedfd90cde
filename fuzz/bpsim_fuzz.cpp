#include <string>

#include "fuzz/parameter_check.h"

/// The input stands inside of a process file, as its extension elements.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::string_view Namespaces =
        R"(<extensionElements xmlns:b="http://www.bpsim.org/schemas/2.0"
xmlns:q="http://www.qbp-simulator.com/Schema201212">)";
    std::string process = FuzzProcess;
    std::string inserted(Namespaces);
    inserted += asText(data, size);
    inserted += "</extensionElements><resource id=\"r\" name=\"Clerk\"/>";
    process.insert(process.find("<process"), inserted);
    checkParameters(process, {});
    return 0;
}
