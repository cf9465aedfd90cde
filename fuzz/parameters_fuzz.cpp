#include "fuzz/parameter_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkParameters(FuzzProcess, {{.bytes = asText(data, size), .name = "fuzz.json"}});
    return 0;
}
