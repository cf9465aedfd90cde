#include "apps/workbench/example.h"

#include <filesystem>

#include "apps/mero/atomic_file.h"
#include "apps/workbench/example_sources.h"

namespace mero {

Result<ExampleFiles> writeExample(const std::string& folder) {
    std::error_code status;
    std::filesystem::create_directories(folder, status);
    if (status) {
        return Error{folder + ": " + status.message()};
    }
    ExampleFiles files{folder + "/PurchasingExample.bpmn", folder + "/PurchasingExample.json"};
    if (Result<void> written = writeFileAtomically(files.process, exampleProcess()); !written) {
        return written.error();
    }
    if (Result<void> written = writeFileAtomically(files.parameters, exampleParameters()); !written) {
        return written.error();
    }
    return files;
}

}  // namespace mero
