#include "apps/mero/run_settings.h"

#include "component/host/core_variables.h"

#include "platform/repository/library.h"

namespace mero {

ISequence<MeroId> simulationAttributes() {
    const Library& library = Library::standard();
    const MeroId activity = library.coreVariable(CoreActivity);
    ISequence<MeroId> attributes;
    for (const char* const name : {"Execution time", "Waiting time", "Resting time", "Transport time"}) {
        const Library::Attribute* const attribute = library.findAttribute(activity, name);
        attributes.append(attribute != nullptr ? attribute->id : MeroNoId);
    }
    return attributes;
}

std::int64_t secondsOfYear(const SV::DateTime& start) {
    const std::int64_t time = start.GetTime().GetTime();  // HHMMSShh
    const std::int64_t hours = (start.GetDate().GetDayOfYear() - 1) * std::int64_t{24} + time / 1'000'000;
    return (hours * 60 + time / 10'000 % 100) * 60 + time / 100 % 100;
}

}  // namespace mero
