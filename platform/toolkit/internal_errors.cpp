#include "platform/toolkit/internal_errors.h"

namespace mero {

InternalErrorLog& InternalErrorLog::GetGlobal() {
    static InternalErrorLog log;
    return log;
}

void InternalErrorLog::add(InternalError error) {
    errors.push_back(std::move(error));
    if (sink) {
        sink(errors.back());
    }
}

}  // namespace mero
