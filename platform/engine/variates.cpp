#include "platform/engine/variates.h"

#include <cmath>

namespace mero {

double nextBeta(RandomStream& random, double a, double b) {
    const double first = random.nextGamma(a);
    const double second = random.nextGamma(b);
    const double sum = first + second;
    if (sum > 0.0) {
        return first / sum;
    }
    // Both are too small for a double: such a variate lies at one of its ends.
    return random.nextChance(a / (a + b)) ? 1.0 : 0.0;
}

double nextBinomial(RandomStream& random, double trials, double probability) {
    constexpr double FewTrials = 16.0;
    double successes = 0.0;
    while (trials > FewTrials) {
        const double middle = std::floor((trials + 1.0) / 2.0);
        const double split = nextBeta(random, middle, trials + 1.0 - middle);
        if (split <= probability) {
            successes += middle;
            trials -= middle;
            probability = (probability - split) / (1.0 - split);
        } else {
            trials = middle - 1.0;
            probability /= split;
        }
    }
    for (int trial = static_cast<int>(trials); trial > 0; --trial) {
        successes += random.nextChance(probability) ? 1.0 : 0.0;
    }
    return successes;
}

double nextPoisson(RandomStream& random, double mean) {
    constexpr double FewArrivals = 16.0;
    double arrivals = 0.0;
    while (mean > FewArrivals) {
        const double some = std::floor(mean * 7.0 / 8.0);
        const double timeOfSome = random.nextGamma(some);
        if (timeOfSome >= mean) {
            return arrivals + nextBinomial(random, some - 1.0, mean / timeOfSome);
        }
        arrivals += some;
        mean -= timeOfSome;
    }
    const double end = std::exp(-mean);
    double product = random.nextPositiveUnit();
    while (product > end) {
        arrivals += 1.0;
        product *= random.nextPositiveUnit();
    }
    return arrivals;
}

}  // namespace mero
