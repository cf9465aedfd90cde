#include "apps/mero/event_recorder.h"

namespace mero {

Result<std::unique_ptr<EventRecorder>> EventRecorder::open(const std::string& name,
                                                           const Repository& repository, MeroId environment,
                                                           ControlComponent& control) {
    auto recorder = std::make_unique<EventRecorder>(name);
    if (!name.empty()) {
        if (Result<void> opened = recorder->file.open(); !opened) {
            return opened.error();
        }
        recorder->writer =
            std::make_unique<EventTraceWriter>(recorder->file.stream(), repository, environment);
        control.setSink(recorder->writer.get());
    }
    return recorder;
}

Result<void> EventRecorder::finish() {
    if (writer == nullptr) {
        return {};
    }
    if (Result<void> written = writer->finish(); !written) {
        return written;
    }
    return file.commit();
}

}  // namespace mero
