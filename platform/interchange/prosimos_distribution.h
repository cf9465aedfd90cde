#pragma once

#include <string>

#include "platform/interchange/document_node.h"

namespace mero {

/// Distribution text of a distribution name and its parameters. All parameters are in seconds; those behind
/// the ones that shape the distribution are its least and greatest value:
/// `fix` value; `expon` mean, least, greatest, drawn as least + Exp(mean - least); `norm` mean, deviation, …;
/// `lognorm`, `gamma` mean, variance, …; `uniform` least, greatest; `triang` least, mode and greatest, in any
/// order. Values below 0 aren't drawn. Throws `DocumentRefused`.
std::string prosimosDistribution(const DocumentNode& name, const DocumentNode& parameters);

/// A number that stands as such or as a text.
double prosimosNumber(const DocumentNode& node);

}  // namespace mero
