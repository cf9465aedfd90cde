#include "apps/mero/file_import.h"

#include "apps/mero/atomic_file.h"
#include "platform/interchange/bpmn_import.h"
#include "platform/interchange/repository_document.h"
#include "platform/interchange/xes_import.h"

namespace mero {

namespace {

/// A document is told by its first character, whatever the file is called.
bool isDocument(const std::string& bytes) {
    const std::size_t first = bytes.find_first_not_of(" \t\r\n\xef\xbb\xbf");
    return first != std::string::npos && bytes[first] == '{';
}

Result<ImportReport> importDocument(const std::string& bytes, const std::string& name,
                                    Repository& repository) {
    const std::size_t before = repository.modelIds().size();
    if (const Result<void> read = readRepositoryDocument(bytes, name, repository); !read) {
        return read.error();
    }
    const std::vector<MeroId> models = repository.modelIds();
    ImportReport report;
    report.models.assign(models.begin() + static_cast<std::ptrdiff_t>(before), models.end());
    return report;
}

Result<ImportReport> importProcesses(const std::string& bytes, const std::string& name,
                                     const std::vector<std::string>& parameterFiles, Repository& repository) {
    std::vector<std::string> parameterBytes;
    std::vector<ImportFile> parameters;
    parameterBytes.reserve(parameterFiles.size());
    for (const std::string& file : parameterFiles) {
        Result<std::string> read = readWholeFile(file);
        if (!read) {
            return read.error();
        }
        parameterBytes.push_back(std::move(read.value()));
        parameters.push_back({parameterBytes.back(), file});
    }
    return importBpmn({bytes, name}, repository, parameters);
}

}  // namespace

Result<ImportReport> importFile(const std::string& name, const std::vector<std::string>& parameterFiles,
                                Repository& repository) {
    if (isXesFile(name)) {
        return parameterFiles.empty() ? importXesFile(name, repository)
                                      : Error{"--parameters belongs to a BPMN file, not to an event log"};
    }
    const Result<std::string> bytes = readWholeFile(name);
    if (!bytes) {
        return bytes.error();
    }
    return isDocument(bytes.value()) ? importDocument(bytes.value(), name, repository)
                                     : importProcesses(bytes.value(), name, parameterFiles, repository);
}

}  // namespace mero
