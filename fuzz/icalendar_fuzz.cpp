#include "component/host/calendar.h"

#include "fuzz/fuzz_input.h"
#include "platform/interchange/icalendar.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const mero::TranslatedCalendar translated = mero::translateICalendar(asText(data, size), "Fuzz \"it\"");
    MeroCalendar calendar(0, 0, 1, 365);
    require(translated.text.empty() || calendar.initializeCalendar(SV::String(translated.text)) == 0,
            "a calendar that was made can be read");
    return 0;
}
