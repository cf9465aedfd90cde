#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace mero {

/// Random numbers that are the same on every machine for a seed. Each use of chance in a run (the branches of
/// a gateway, the durations of a task) has a stream of its own, named after what it is for, so that a change
/// in one place of a model leaves the chances of all others as they were.
///
/// Generator: xoshiro256** (D. Blackman, S. Vigna: Scrambled linear pseudorandom number generators, ACM
/// Transactions on Mathematical Software 47, 2021), its state filled by splitmix64 as its authors advise.
class RandomStream {
public:
    RandomStream(std::uint64_t seed, std::string_view name);

    std::uint64_t nextBits();
    /// At least 0, less than 1, in steps of 2^-53.
    double nextUnit() { return static_cast<double>(nextBits() >> 11) * 0x1.0p-53; }
    /// More than 0, at most 1: its logarithm is finite.
    double nextPositiveUnit() { return static_cast<double>((nextBits() >> 11) + 1) * 0x1.0p-53; }
    bool nextChance(double probability) { return nextUnit() < probability; }

    // Variates. Normal: polar method (G. Marsaglia, T. A. Bray: A convenient method for generating normal
    // variables, SIAM Review 6, 1964), of whose pair one is used. Gamma: G. Marsaglia, W. W. Tsang: A simple
    // method for generating gamma variables, ACM Transactions on Mathematical Software 26, 2000.

    double nextExponential(double mean);
    /// Mean 0, variance 1.
    double nextNormal();
    /// Mean `shape`, variance `shape`; `shape` is positive.
    double nextGamma(double shape);

private:
    std::array<std::uint64_t, 4> state;
};

}  // namespace mero
