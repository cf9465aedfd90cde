#include "component/host/kiln_parser.h"
#include "component/host/sv_boxes.h"

#include "fuzz/fuzz_input.h"

namespace {

/// Values of the good text, written in their text form, read back.
void checkValues(MeroKilnParser& parser) {
    for (int index = 0; index < parser.GetElemCount(); ++index) {
        require(parser.SetCurElemIndex(index), "every index below the count is an element");
        const SV::String value = parser.GetStrValue();
        MeroKilnParser again(SV::String("ELEMENT ") + MeroKilnParser::GetKilnTextOfStrValue(value), "s", "n");
        require(again.Parse() == 0 && again.GetStrValue() == value, "a value's text form reads back");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MeroKilnParser parser(SV::String(asText(data, size)), "source", "name");
    if (parser.Parse() == 0) {
        checkValues(parser);
    } else {
        require(!parser.GetErrorText().IsEmpty(), "a refusal has a reason");
    }
    return 0;
}
