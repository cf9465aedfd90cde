#include "component/display/result_scale.h"

#include <optional>

#include "component/display/time_scope.h"
#include "component/management/general_services.h"

namespace {

std::optional<MeroResultScale>& memory() {
    static std::optional<MeroResultScale> remembered;
    return remembered;
}

}  // namespace

MeroResultScale recallResultScale() {
    if (!memory()) {
        const SV::String year(MeroTimeScopeLabel::Year);
        memory() = {year, gTimeScopeYear, 1, year, gTimeScopeYear};
    }
    return *memory();
}

void rememberResultScale(const MeroResultScale& scale) {
    memory() = scale;
}
