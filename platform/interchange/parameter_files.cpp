#include "platform/interchange/parameter_files.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/json_reader.h"
#include "platform/interchange/prosimos_document.h"

namespace mero {

namespace {

bool isJson(std::string_view bytes) {
    const std::size_t first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    return first == std::string_view::npos || bytes[first] != '<';
}

SimulationParameters readJsonFile(const ImportFile& file) {
    const Result<nlohmann::json> json = readJson(file.bytes, file.name);
    if (!json) {
        throw DocumentRefused(json.error().text);
    }
    try {
        return readProsimosDocument(DocumentNode(json.value(), ""), file.name);
    } catch (const DocumentRefused& refused) {
        throw DocumentRefused(fmt::format("{}: {}", file.name, refused.what()));
    }
}

}  // namespace

SimulationParameters readParameterFiles(const std::vector<ImportFile>& files) {
    const auto json =
        std::find_if(files.begin(), files.end(), [](const ImportFile& file) { return isJson(file.bytes); });
    if (json != files.end()) {
        if (files.size() > 1) {
            throw DocumentRefused(fmt::format(
                "{}: a document of simulation parameters in JSON doesn't go with other files", json->name));
        }
        return readJsonFile(*json);
    }
    throw DocumentRefused(
        fmt::format("{}: this is no document of simulation parameters", files.front().name));
}

}  // namespace mero
