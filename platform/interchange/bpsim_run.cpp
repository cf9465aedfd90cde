#include "platform/interchange/bpsim_run.h"

#include <fmt/format.h>
#include <limits>

#include "platform/interchange/bpsim_values.h"
#include "platform/interchange/document_refused.h"
#include "platform/interchange/iso_time.h"
#include "platform/interchange/run_parameters.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

void readPart(const XmlElement& part, SimulationParameters& parameters, double unit) {
    const BpsimValues values = bpsimValuesOf(part);
    if (!values.always) {
        if (!values.requested) {
            parameters.note(part.place(), std::string(part.kind()), "isn't used");
        }
        return;
    }
    RunParameters& run = parameters.run;
    if (part.kind() == "Start") {
        const std::string text = requiredAttribute(*values.always, "value");
        const std::optional<IsoTime> start = parseIsoTime(text);
        if (!start) {
            values.always->refuse(fmt::format("\"{}\" is no date and time", text));
        }
        run.start = wallClockText(start->wallClock());
    } else if (part.kind() == "Duration") {
        run.seconds = bpsimMean(bpsimTime(*values.always, unit), *values.always);
    } else if (part.kind() == "Warmup") {
        run.warmUpSeconds = bpsimMean(bpsimTime(*values.always, unit), *values.always);
    } else {
        parameters.note(part.place(), std::string(part.kind()), "isn't used");
    }
}

}  // namespace

void readBpsimRun(const XmlElement& scenarioParameters, SimulationParameters& parameters, double& unit) {
    RunParameters& run = parameters.run;
    const auto readAttribute = [&](const auto& read) { readOrNote(scenarioParameters, parameters, read); };
    readAttribute([&] {
        if (scenarioParameters.hasAttribute("baseTimeUnit")) {
            unit = bpsimUnit(scenarioParameters, scenarioParameters.attribute("baseTimeUnit"));
        }
    });
    readAttribute([&] {
        const auto count = optionalNumber(scenarioParameters, "replication");
        if (count && *count > 1.0) {
            run.replications = countOf(scenarioParameters, *count, std::numeric_limits<int>::max());
        }
    });
    readAttribute([&] {
        if (const auto seed = optionalNumber(scenarioParameters, "seed")) {
            run.seed = seedOf(scenarioParameters, *seed);
        }
    });
    for (const XmlElement& part : scenarioParameters.children()) {
        readOrNote(part, parameters, [&] { readPart(part, parameters, unit); });
    }
}

}  // namespace mero
