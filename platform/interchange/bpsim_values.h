#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// BPSim 1.0 and 2.0 (WfMC, Business Process Simulation Specification).
bool isBpsimNamespace(std::string_view uri);

/// The values of a parameter such as `ProcessingTime`. Requests and results of earlier simulations aren't
/// among them.
struct BpsimValues {
    std::optional<XmlElement> always;   ///< the one that isn't bound to a calendar
    std::vector<XmlElement> scheduled;  ///< those that hold during a calendar, their attribute `validFor`
    bool requested = false;             ///< the simulation is asked for a result
};
BpsimValues bpsimValuesOf(const XmlElement& parameter);

/// Reads one parameter; what of it can't be read is left out and noted, and the others are used.
template <class Read>
void readOrNote(const XmlElement& parameter, SimulationParameters& parameters, const Read& read) {
    try {
        read();
    } catch (const DocumentRefused& refused) {
        parameters.note(refused.place(), std::string(parameter.kind()), "isn't used: " + refused.reason());
    }
}

/// Seconds of a unit such as "min". Throws `DocumentRefused` naming the element.
double bpsimUnit(const XmlElement& element, std::string_view unit);

/// Distribution text of a value that is a time: a constant or a distribution, counted in its own `timeUnit`,
/// else in the scenario's. Throws `DocumentRefused` for anything else, such as an expression.
std::string bpsimTime(const XmlElement& value, double secondsOfScenarioUnit);

/// Seconds of a distribution's mean, where one time is needed. Throws `DocumentRefused` naming the value that
/// it was made of if there is no mean, or one below 0.
double bpsimMean(const std::string& distribution, const XmlElement& value);

/// A constant number. Throws `DocumentRefused` for anything else.
double bpsimNumber(const XmlElement& value);

}  // namespace mero
