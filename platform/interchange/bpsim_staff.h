#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/interchange/bpsim_values.h"
#include "platform/interchange/simulation_parameters.h"

namespace mero {

/// Gathers what a BPSim scenario says of resources, which stand in several of its elements.
class BpsimStaff {
public:
    /// Calendar texts by identifier.
    using Calendars = std::map<std::string, std::string>;

    BpsimStaff(const XmlDocument& document, const Calendars& knownCalendars, SimulationParameters& target);

    [[nodiscard]] bool isResource(const std::string& id) const { return resources.contains(id); }
    /// `Quantity` of a resource: workers that are always there, and more during calendars. Throws
    /// `DocumentRefused`.
    void setQuantity(const std::string& id, const XmlElement& quantity);
    void setHourlyWages(const std::string& id, double wages) { resources.at(id).hourlyWages = wages; }

    /// The resources that an expression of a selection names, `bpsim:getResource('clerk',1)`; any of them can
    /// do the task. Throws `DocumentRefused`.
    std::vector<std::string> selected(const XmlElement& value);

    /// Makes crews and roles of the resources.
    void finish();

private:
    struct Group {
        int amount;
        std::string calendar;
    };
    struct Resource {
        std::string name;
        std::vector<Group> groups;
        double hourlyWages = 0.0;
        bool told = false;  ///< the scenario says how many there are, or a task needs it
    };

    [[nodiscard]] std::string resourceNamed(const std::string& word, const XmlElement& value) const;

    const Calendars& calendars;
    SimulationParameters& parameters;
    std::map<std::string, Resource> resources;  ///< by identifier
};

}  // namespace mero
