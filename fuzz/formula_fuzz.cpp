#include "component/host/kiln_expression_parser.h"

#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MeroKilnExpressionParser parser;
    SV::String error;
    if (parser.SetExpression(SV::String(asText(data, size)), error) != 0) {
        require(!error.view().empty(), "a refusal has a text");
        return 0;
    }
    MeroKilnValueSet values;
    values.OldMoveValue("a", MeroKilnValue(2.5), true);
    values.OldMoveValue("b", MeroKilnValue(0.0), true);
    values.OldMoveValue("aaa", MeroKilnValue(-7.0), true);
    MeroKilnValue first;
    MeroKilnValue second;
    const int status = parser.Evaluate(values, first, error, true, true);
    require(status == 0 || !error.view().empty(), "a failure has a text");
    require(parser.Evaluate(values, second, error, true, true) == status, "a formula succeeds or fails");
    require(status != 0 || first.asDouble() == second.asDouble(), "a formula has one value");
    return 0;
}
