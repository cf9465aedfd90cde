#include "fuzz/fuzz_input.h"
#include "platform/interchange/bpmn_import.h"

namespace {

constexpr const char* Process = R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL">
<process id="p"><startEvent id="s"/><task id="t" name="Check"/><exclusiveGateway id="g"/><endEvent id="e"/>
<sequenceFlow id="f1" sourceRef="s" targetRef="t"/><sequenceFlow id="f2" sourceRef="t" targetRef="g"/>
<sequenceFlow id="f3" sourceRef="g" targetRef="e"/><sequenceFlow id="f4" sourceRef="g" targetRef="t"/>
</process></definitions>)";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    mero::Repository repository;
    const auto report = mero::importBpmn({.bytes = Process, .name = "process.bpmn"}, repository,
                                         {{.bytes = asText(data, size), .name = "fuzz.json"}});
    requireReason(report);
    require(report.isGood() || repository.modelIds().empty(), "refused parameters leave nothing");
    return 0;
}
