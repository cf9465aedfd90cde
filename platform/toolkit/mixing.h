#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace mero {

/// Finaliser of splitmix64 (G. L. Steele, D. Lea, C. H. Flood: Fast splittable pseudorandom number
/// generators, OOPSLA 2014): a bijection in which each bit of the input changes half of the output.
[[nodiscard]] constexpr std::uint64_t mixBits(std::uint64_t value) {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31);
}

/// Hash of a text that is the same in every run and on every little-endian machine.
[[nodiscard]] inline std::uint64_t mixText(std::string_view text) {
    std::uint64_t state = 0x9E3779B97F4A7C15ULL * (text.size() + 1);
    const char* bytes = text.data();
    std::size_t left = text.size();
    for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t), bytes += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        state = mixBits(state ^ word);
    }
    if (left != 0) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, left);
        state = mixBits(state ^ word);
    }
    return state;
}

}  // namespace mero
