#pragma once

#include "platform/engine/random.h"

namespace mero {

// Variates that are made of simpler ones. Their cost grows with the logarithm of the counts at most, and none
// needs a table or a logarithm of the gamma function, whose last digits differ between machines.

/// Between 0 and 1; both shapes are positive.
double nextBeta(RandomStream& random, double a, double b);

/// Number of successes in `trials` (a whole number) trials. Source: L. Devroye, Non-Uniform Random Variate
/// Generation, Springer 1986, X.4.4: the median order statistic of the trials is a beta variate.
double nextBinomial(RandomStream& random, double trials, double probability);

/// Number of arrivals where `mean` are expected. Source: J. H. Ahrens, U. Dieter, Computer methods for
/// sampling from gamma, beta, Poisson and binomial distributions, Computing 12, 1974.
double nextPoisson(RandomStream& random, double mean);

}  // namespace mero
