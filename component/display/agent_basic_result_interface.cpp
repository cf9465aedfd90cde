#include "component/display/agent_basic_result_interface.h"

#include <utility>

namespace {

bool isSameGrouping(const MeroResultOptions& one, const MeroResultOptions& other) {
    return one.groupChecked == other.groupChecked &&
           (!one.groupChecked ||
            (one.groupClass == other.groupClass && one.groupRelation == other.groupRelation));
}

}  // namespace

bool MeroResultView::isSameAs(const MeroResultView& other) const {
    return title == other.title && kind == other.kind && scale == other.scale &&
           options.sumChecked == other.options.sumChecked &&
           options.extremeChecked == other.options.extremeChecked && isSameGrouping(options, other.options);
}

MeroAgentBasicResultInterface::MeroAgentBasicResultInterface(SV::Window* parent, SV::ResId form,
                                                             MeroResultView shownView)
    : MeroModelessDialog(parent, form), view(std::move(shownView)) {
    SetBackground(SV::Color(SV::ColorRole::Dialog));
}

void MeroAgentBasicResultInterface::bringToFront() {
    Show();
    if (IsMinimized()) {
        Restore();
    }
    ToTop();
}
