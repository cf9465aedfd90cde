#include "platform/interchange/embedded_parameters.h"

namespace mero {

bool isParameterNamespace(std::string_view) {
    return false;
}

SimulationParameters readEmbeddedParameters(const XmlDocument&) {
    return {};
}

}  // namespace mero
