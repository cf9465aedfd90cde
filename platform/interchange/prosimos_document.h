#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/interchange/document_node.h"

namespace mero {

struct ProsimosDuration {
    std::string resource;
    std::string resourcePath;
    std::string distribution;
};

struct ProsimosTask {
    std::string id;
    std::string path;
    std::vector<ProsimosDuration> durations;
};

struct ProsimosEvent {
    std::string id;
    std::string path;
    std::string distribution;
};

struct ProsimosBranch {
    std::string flow;
    std::string path;
    double probability = 0.0;
};

struct ProsimosResource {
    std::string id;
    std::string name;
    int amount = 1;
    double costPerHour = 0.0;
    std::string calendar;  ///< calendar text, empty where none is named
};

struct ProsimosProfile {
    std::string name;
    std::vector<ProsimosResource> resources;
};

struct ProsimosNote {
    std::string path;
    std::string text;
};

/// Simulation parameters, checked and with distributions and calendars as this system writes them.
struct ProsimosDocument {
    std::vector<ProsimosBranch> branches;
    std::vector<ProsimosTask> tasks;
    std::vector<ProsimosEvent> events;
    std::vector<ProsimosProfile> profiles;
    std::string arrival;          ///< distribution, may be empty
    std::string arrivalCalendar;  ///< calendar text, may be empty
    std::vector<ProsimosNote> notes;
};

/// Throws `DocumentRefused` with path and reason.
ProsimosDocument readProsimosDocument(const DocumentNode& root);

/// Distribution text of a distribution name and its parameters. All parameters are in seconds; those behind
/// the ones that shape the distribution are its least and greatest value:
/// `fix` value; `expon` mean, least, greatest, drawn as least + Exp(mean - least); `norm` mean, deviation, …;
/// `lognorm`, `gamma` mean, variance, …; `uniform` least, greatest; `triang` least, mode and greatest, in any
/// order. Throws `DocumentRefused`.
std::string prosimosDistribution(const DocumentNode& name, const DocumentNode& parameters);

}  // namespace mero
