#include "fuzz/fuzz_input.h"
#include "platform/engine/distribution.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto distribution = mero::Distribution::parse(asText(data, size));
    requireReason(distribution);
    if (distribution) {
        mero::RandomStream random(1, "fuzz");
        for (int draw = 0; draw < 3; ++draw) {
            const double value = distribution.value().sample(random);
            require(value == value, "a sample is a number");
        }
    }
    return 0;
}
