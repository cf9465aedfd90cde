#include <cmath>

#include "component/host/core_time.h"

#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const SV::String text(asText(data, size));
    MeroCoreTime time;
    const double seconds = time._s2d(text);
    require(std::isfinite(seconds), "seconds are finite");
    if (MeroCoreTime::isTime(text) && seconds < 1e15) {
        MeroCoreTime again;
        require(again._s2d(time._d2s(seconds)) == seconds, "a written time reads back");
    }
    return 0;
}
