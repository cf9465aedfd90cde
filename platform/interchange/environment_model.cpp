#include "platform/interchange/environment_model.h"

#include "platform/interchange/name_rules.h"
#include "platform/interchange/object_writer.h"

namespace mero {

MeroId takeEnvironment(Repository& repository, ImportReport& report) {
    if (report.environment == MeroNoId) {
        const std::string first(repository.findModel(report.models.front())->name.view());
        const std::string name = freeName(first + " staff", [&repository](const std::string& candidate) {
            return repository.findModel(candidate) != nullptr;
        });
        report.environment = ObjectWriter(repository).addModel(name, "Working environment");
    }
    return report.environment;
}

}  // namespace mero
