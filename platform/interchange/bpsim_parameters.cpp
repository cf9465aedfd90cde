#include "platform/interchange/bpsim_parameters.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <map>

#include "platform/interchange/bpsim_run.h"
#include "platform/interchange/bpsim_staff.h"
#include "platform/interchange/bpsim_values.h"
#include "platform/interchange/document_refused.h"
#include "platform/interchange/icalendar.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

/// Scenarios of a file, and element parameters that stand outside of any.
struct Scenarios {
    std::vector<XmlElement> all;
    std::vector<XmlElement> strays;
};

Scenarios scenariosIn(const XmlDocument& document) {
    Scenarios found;
    std::size_t inner = 0;  // element parameters that scenarios hold
    document.root().forEachBelow([&](const XmlElement& element) {
        if (!isBpsimNamespace(element.space())) {
            return;
        }
        if (element.kind() == "Scenario") {
            found.all.push_back(element);
            for (const XmlElement& child : element.children()) {
                inner += child.kind() == "ElementParameters" ? 1 : 0;
            }
        } else if (element.kind() == "ElementParameters") {
            if (inner > 0) {
                --inner;
            } else {
                found.strays.push_back(element);
            }
        }
    });
    return found;
}

class ScenarioReader {
public:
    ScenarioReader(const XmlDocument& document, const XmlElement& readScenario, SimulationParameters& target)
        : scenario(readScenario), parameters(target), staff(document, calendars, target) {
        document.root().forEachBelow([this](const XmlElement& element) {
            if (element.hasAttribute("id") && !isBpsimNamespace(element.space())) {
                const std::string id = element.attribute("id");
                const std::string name = element.attribute("name");
                elements.emplace(id, Named{std::string(element.kind()), name.empty() ? id : name});
            }
        });
    }

    void read() {
        if (scenario.hasAttribute("inherits")) {
            note(scenario, "what it inherits of another scenario isn't used");
        }
        for (const XmlElement& part : scenario.children()) {
            if (part.kind() == "Calendar") {
                readCalendar(part);
            } else if (part.kind() == "ScenarioParameters") {
                readBpsimRun(part, parameters, unit);
            }
        }
        findScaleOfProbabilities();
        for (const XmlElement& part : scenario.children()) {
            if (part.kind() == "ElementParameters") {
                readElement(part);
            } else if (part.kind() == "VendorExtension") {
                ++vendorExtensions;
            } else if (part.kind() != "Calendar" && part.kind() != "ScenarioParameters") {
                note(part, "isn't used");
            }
        }
        applyUnitCosts();
        staff.finish();
        noteCounts();
    }

private:
    void note(const XmlElement& element, std::string said) {
        parameters.note(element.place(), std::string(element.kind()), std::move(said));
    }

    void readCalendar(const XmlElement& calendar) {
        const std::string id = calendar.attribute("id");
        const std::string name = calendar.attribute("name");
        const TranslatedCalendar translated = translateICalendar(calendar.text(), name.empty() ? id : name);
        for (const std::string& said : translated.notes) {
            parameters.note(calendar.place(), fmt::format("Calendar \"{}\"", id), said);
        }
        if (!calendars.emplace(id, translated.text).second) {
            note(calendar, fmt::format("isn't used: another calendar has the identifier \"{}\"", id));
        }
    }

    /// Some tools write per cent.
    void findScaleOfProbabilities() {
        scenario.forEachBelow([this](const XmlElement& element) {
            if (element.kind() == "Probability" && probabilityOfOne == 1.0 && isAboveOne(element)) {
                constexpr double PerCent = 100.0;
                probabilityOfOne = PerCent;
                note(element, "probabilities are read as per cent, since this one is above 1");
            }
        });
    }

    static bool isAboveOne(const XmlElement& probability) {
        const BpsimValues values = bpsimValuesOf(probability);
        try {
            return values.always && bpsimNumber(*values.always) > 1.0;
        } catch (const DocumentRefused&) {
            return false;  // it is noted where it is read
        }
    }

    void readElement(const XmlElement& element) {
        const std::string id = element.attribute("elementRef");
        const auto named = elements.find(id);
        if (named == elements.end()) {
            note(element, fmt::format("there is no element \"{}\"", id));
            return;
        }
        for (const XmlElement& group : element.children()) {
            if (group.kind() == "VendorExtension") {
                ++vendorExtensions;
                continue;
            }
            for (const XmlElement& part : group.children()) {
                readOrNote(part, parameters, [&] { readParameter(id, named->second.kind, group, part); });
            }
        }
    }

    void readParameter(const std::string& id, const std::string& kind, const XmlElement& group,
                       const XmlElement& part) {
        const BpsimValues values = bpsimValuesOf(part);
        resultRequests += values.requested ? 1 : 0;
        if (!values.always && values.scheduled.empty()) {
            return;
        }
        const bool used = group.kind() == "TimeParameters"       ? readTime(id, part, values)
                          : group.kind() == "ControlParameters"  ? readControl(id, kind, part, values)
                          : group.kind() == "ResourceParameters" ? readResource(id, part, values)
                          : group.kind() == "CostParameters"     ? readCost(id, part, values)
                          : group.kind() == "PriorityParameters" ? readPriority(id, part, values)
                                                                 : false;
        if (!used) {
            note(part, fmt::format("of \"{}\" isn't used", elements.at(id).name));
        }
    }

    /// The value that always holds; those of calendars are noted.
    std::optional<XmlElement> onlyValue(const XmlElement& part, const BpsimValues& values) {
        for (const XmlElement& value : values.scheduled) {
            note(value,
                 fmt::format("the {} during \"{}\" isn't used", part.kind(), value.attribute("validFor")));
        }
        return values.always;
    }

    NodeParameters& nodeOf(const std::string& id, const XmlElement& part) {
        const auto [place, fresh] = nodeIndex.try_emplace(id, parameters.nodes.size());
        if (fresh) {
            NodeParameters node;
            node.element = id;
            node.place = part.place();
            parameters.nodes.push_back(std::move(node));
        }
        return parameters.nodes[place->second];
    }

    bool readTime(const std::string& id, const XmlElement& part, const BpsimValues& values) {
        const bool known =
            part.kind() == "ProcessingTime" || part.kind() == "WaitTime" || part.kind() == "TransferTime";
        const std::optional<XmlElement> value = known ? onlyValue(part, values) : std::nullopt;
        if (!value) {
            return known;
        }
        const std::string distribution = bpsimTime(*value, unit);
        NodeParameters& node = nodeOf(id, part);
        if (part.kind() == "ProcessingTime") {
            node.duration = distribution;
            return true;
        }
        const double mean = bpsimMean(distribution, *value);
        if (!distribution.starts_with("fixed")) {
            note(part, fmt::format("of \"{}\" is always its mean", elements.at(id).name));
        }
        (part.kind() == "WaitTime" ? node.waitingSeconds : node.transportSeconds) = mean;
        return true;
    }

    bool readControl(const std::string& id, const std::string& kind, const XmlElement& part,
                     const BpsimValues& values) {
        if (part.kind() == "InterTriggerTimer") {
            readTrigger(id, kind, part, values);
            return true;
        }
        const bool known =
            part.kind() == "Probability" || (part.kind() == "TriggerCount" && kind == "startEvent");
        const std::optional<XmlElement> value = known ? onlyValue(part, values) : std::nullopt;
        if (!value) {
            return known;
        }
        const double number = bpsimNumber(*value);
        if (part.kind() == "TriggerCount") {
            const int count = countOf(*value, number, std::numeric_limits<int>::max());
            parameters.run.instances = std::max(count, parameters.run.instances.value_or(0));
            return true;
        }
        if (number < 0.0 || number > probabilityOfOne) {
            value->refuse(fmt::format("a probability lies between 0 and {}", probabilityOfOne));
        }
        parameters.probabilities.push_back({id, part.place(), number / probabilityOfOne});
        return true;
    }

    /// The time between the cases of a start event, or until another event. A start event whose time holds
    /// during a calendar is triggered in that calendar only.
    void readTrigger(const std::string& id, const std::string& kind, const XmlElement& part,
                     const BpsimValues& values) {
        const bool isTime = values.always && values.always->kind() != "StringParameter" &&
                            values.always->kind() != "ExpressionParameter";
        if (kind != "startEvent" || values.scheduled.empty() || isTime) {
            if (const auto value = onlyValue(part, values)) {
                const std::string distribution = bpsimTime(*value, unit);
                if (kind == "startEvent") {
                    parameters.arrivals.push_back({id, part.place(), distribution, {}});
                } else {
                    nodeOf(id, part).duration = distribution;
                }
            }
            return;
        }
        if (values.always) {
            note(*values.always, "isn't used: another time holds during a calendar");
        }
        const XmlElement& value = values.scheduled.front();
        for (std::size_t index = 1; index < values.scheduled.size(); ++index) {
            note(values.scheduled[index], "isn't used: a start event has one time");
        }
        const std::string calendarId = value.attribute("validFor");
        const auto calendar = calendars.find(calendarId);
        if (calendar == calendars.end() || calendar->second.empty()) {
            note(value, fmt::format("there is no calendar \"{}\"", calendarId));
        }
        parameters.arrivals.push_back({id, part.place(), bpsimTime(value, unit),
                                       calendar == calendars.end() ? std::string() : calendar->second});
    }

    bool readResource(const std::string& id, const XmlElement& part, const BpsimValues& values) {
        if (part.kind() == "Quantity" && staff.isResource(id)) {
            staff.setQuantity(id, part);
            return true;
        }
        if (part.kind() != "Selection" || staff.isResource(id)) {
            return false;
        }
        if (const auto value = onlyValue(part, values)) {
            std::vector<std::string> performers = staff.selected(*value);
            nodeOf(id, part).performers = std::move(performers);
        }
        return true;
    }

    bool readCost(const std::string& id, const XmlElement& part, const BpsimValues& values) {
        const bool unitCost = part.kind() == "UnitCost";
        if (!unitCost && (part.kind() != "FixedCost" || staff.isResource(id))) {
            return false;
        }
        const std::optional<XmlElement> value = onlyValue(part, values);
        if (!value) {
            return true;
        }
        constexpr double SecondsOfHour = 3600.0;
        const double cost = bpsimNumber(*value);
        if (staff.isResource(id)) {
            staff.setHourlyWages(id, cost * (SecondsOfHour / unit));
        } else if (unitCost) {
            unitCosts.push_back({id, part, cost});
        } else {
            NodeParameters& node = nodeOf(id, part);
            node.costs = node.costs.value_or(0.0) + cost;
        }
        return true;
    }

    bool readPriority(const std::string& id, const XmlElement& part, const BpsimValues& values) {
        const std::optional<XmlElement> value =
            part.kind() == "Priority" ? onlyValue(part, values) : std::nullopt;
        if (!value) {
            return false;
        }
        constexpr double Greatest = 1e9;
        nodeOf(id, part).priority =
            static_cast<int>(std::clamp(std::round(bpsimNumber(*value)), -Greatest, Greatest));
        return true;
    }

    /// The cost of a unit of time becomes that of an execution of mean length.
    void applyUnitCosts() {
        for (const auto& [id, part, cost] : unitCosts) {
            readOrNote(part, parameters, [&, element = id, price = cost, place = part] {
                NodeParameters& node = nodeOf(element, place);
                if (node.duration.empty()) {
                    place.refuse("the element has no processing time");
                }
                node.costs = node.costs.value_or(0.0) + price * (bpsimMean(node.duration, place) / unit);
            });
        }
    }

    void noteCounts() {
        if (resultRequests > 0) {
            note(scenario, fmt::format("{} result requests: agents measure instead", resultRequests));
        }
        if (vendorExtensions > 0) {
            note(scenario, fmt::format("{} vendor extensions aren't used", vendorExtensions));
        }
    }

    struct Named {
        std::string kind;
        std::string name;  ///< the identifier where there is none
    };
    struct UnitCost {
        std::string id;
        XmlElement part;
        double cost;
    };

    const XmlElement& scenario;
    SimulationParameters& parameters;
    BpsimStaff::Calendars calendars;
    BpsimStaff staff;
    std::map<std::string, Named> elements;  ///< of the process file, by identifier
    std::map<std::string, std::size_t> nodeIndex;
    std::vector<UnitCost> unitCosts;
    double unit = 60.0;  ///< seconds; minutes unless the scenario says otherwise
    double probabilityOfOne = 1.0;
    int resultRequests = 0;
    int vendorExtensions = 0;
};

}  // namespace

SimulationParameters readBpsimParameters(const XmlDocument& document) {
    SimulationParameters parameters;
    const Scenarios scenarios = scenariosIn(document);
    for (const XmlElement& stray : scenarios.strays) {
        parameters.note(stray.place(), "ElementParameters", "stands outside of a scenario, isn't used");
    }
    for (std::size_t index = 1; index < scenarios.all.size(); ++index) {
        parameters.note(scenarios.all[index].place(),
                        fmt::format("Scenario \"{}\"", scenarios.all[index].attribute("name")),
                        "isn't used: the first scenario counts");
    }
    if (!scenarios.all.empty()) {
        ScenarioReader(document, scenarios.all.front(), parameters).read();
    }
    return parameters;
}

}  // namespace mero
