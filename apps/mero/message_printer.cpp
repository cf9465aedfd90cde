#include "apps/mero/message_printer.h"

#include "component/host/sv_boxes.h"

#include "platform/toolkit/internal_errors.h"

namespace mero {

MessagePrinter::MessagePrinter(const Console& console) : target(console) {
    auto& desk = SV::BoxDesk::GetGlobal();
    desk.clearRecords();
    InternalErrorLog::GetGlobal().clear();
    desk.setResponder([this](SV::BoxKind kind, SV::Window*, int, const SV::String& text) -> int {
        std::string line = context + std::string(text.view());
        if (kind == SV::BoxKind::Error) {
            ++errors;
        }
        if (kind == SV::BoxKind::Query) {
            line += " (answered with yes)";
        }
        target.tell(line);
        return kind == SV::BoxKind::Query ? SV::BoxYes : SV::BoxOk;
    });
}

MessagePrinter::~MessagePrinter() {
    SV::BoxDesk::GetGlobal().setResponder({});
}

}  // namespace mero
