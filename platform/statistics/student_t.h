#pragma once

namespace mero {

/// Student's t distribution with `freedom` degrees of freedom, which has to be positive: P(T <= t). By the
/// regularised incomplete beta function, whose continued fraction is evaluated by the method of Lentz (NIST
/// Digital Library of Mathematical Functions, 8.17.22 and 3.10); accurate to about 1e-14.
[[nodiscard]] double studentTProbability(double t, double freedom);

/// The t with P(T <= t) = `probability`, which has to be above 0 and below 1. Newton's method on the
/// distribution function, kept inside a bracket by bisection; accurate to about 1e-12 of the value.
[[nodiscard]] double studentTQuantile(double probability, double freedom);

}  // namespace mero
