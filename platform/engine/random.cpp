#include "platform/engine/random.h"

#include <bit>
#include <cmath>

#include "platform/toolkit/mixing.h"

namespace mero {

RandomStream::RandomStream(std::uint64_t seed, std::string_view name) : state{} {
    constexpr std::uint64_t GoldenGamma = 0x9E3779B97F4A7C15ULL;
    std::uint64_t counter = mixBits(seed + GoldenGamma) ^ mixText(name);
    for (std::uint64_t& word : state) {
        counter += GoldenGamma;
        word = mixBits(counter);
    }
}

std::uint64_t RandomStream::nextBits() {
    const std::uint64_t result = std::rotl(state[1] * 5, 7) * 9;
    const std::uint64_t shifted = state[1] << 17;
    state[2] ^= state[0];
    state[3] ^= state[1];
    state[1] ^= state[2];
    state[0] ^= state[3];
    state[2] ^= shifted;
    state[3] = std::rotl(state[3], 45);
    return result;
}

double RandomStream::nextExponential(double mean) {
    return -mean * std::log(nextPositiveUnit());
}

double RandomStream::nextNormal() {
    while (true) {
        const double x = 2.0 * nextUnit() - 1.0;
        const double y = 2.0 * nextUnit() - 1.0;
        const double square = x * x + y * y;
        if (square > 0.0 && square < 1.0) {
            return x * std::sqrt(-2.0 * std::log(square) / square);
        }
    }
}

double RandomStream::nextGamma(double shape) {
    if (shape < 1.0) {
        return nextGamma(shape + 1.0) * std::pow(nextPositiveUnit(), 1.0 / shape);
    }
    const double d = shape - 1.0 / 3.0;
    const double c = 1.0 / std::sqrt(9.0 * d);
    while (true) {
        const double x = nextNormal();
        const double root = 1.0 + c * x;
        if (root <= 0.0) {
            continue;
        }
        const double v = root * root * root;
        if (std::log(nextPositiveUnit()) < 0.5 * x * x + d - d * v + d * std::log(v)) {
            return d * v;
        }
    }
}

}  // namespace mero
