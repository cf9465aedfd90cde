#include "fuzz/parameter_check.h"

namespace {

constexpr const char* Global = R"(<globalConfiguration xmlns="http://bsim.hpi.uni-potsdam.de/scylla/simModel">
<resourceData><dynamicResource id="r" defaultQuantity="2"/></resourceData></globalConfiguration>)";
constexpr const char* Simulation = R"(<definitions xmlns="http://bsim.hpi.uni-potsdam.de/scylla/simModel">
<simulationConfiguration><task id="t"><resources><resource id="r"/></resources></task></simulationConfiguration>
</definitions>)";

}  // namespace

/// The input stands for either of the two files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const mero::ImportFile input{.bytes = asText(data, size), .name = "fuzz.xml"};
    checkParameters(FuzzProcess, {input, {.bytes = Global, .name = "global.xml"}});
    checkParameters(FuzzProcess, {{.bytes = Simulation, .name = "simulation.xml"}, input});
    return 0;
}
