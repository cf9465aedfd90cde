#include "platform/interchange/embedded_parameters.h"

#include "platform/interchange/bpsim_parameters.h"
#include "platform/interchange/bpsim_values.h"
#include "platform/interchange/qbp_parameters.h"

namespace mero {

bool isParameterNamespace(std::string_view uri) {
    return isBpsimNamespace(uri) || uri == QbpNamespace;
}

SimulationParameters readEmbeddedParameters(const XmlDocument& document) {
    bool hasBpsim = false;
    std::string qbpPlace;
    document.root().forEachBelow([&](const XmlElement& element) {
        hasBpsim = hasBpsim || isBpsimNamespace(element.space());
        if (qbpPlace.empty() && element.space() == QbpNamespace) {
            qbpPlace = element.place();
        }
    });
    if (!hasBpsim) {
        return qbpPlace.empty() ? SimulationParameters{} : readQbpParameters(document);
    }
    SimulationParameters parameters = readBpsimParameters(document);
    if (!qbpPlace.empty()) {
        parameters.note(qbpPlace, "QBP parameters", "aren't used: the file has BPSim parameters as well");
    }
    return parameters;
}

}  // namespace mero
