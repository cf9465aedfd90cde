#include "platform/interchange/parameter_files.h"

#include <algorithm>
#include <fmt/format.h>
#include <memory>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/json_reader.h"
#include "platform/interchange/prosimos_document.h"
#include "platform/interchange/scylla_simulation.h"
#include "platform/interchange/scylla_values.h"
#include "platform/interchange/xml_text.h"

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

/// The text of a file and the document in it, which refers to the text.
struct XmlFile {
    explicit XmlFile(const ImportFile& file) : text(decoded(file)), document(text, file.name) {}

    static std::string decoded(const ImportFile& file) {
        Result<std::string> text = decodeXml(file.bytes, file.name);
        if (!text) {
            throw DocumentRefused(text.error().text);
        }
        return std::move(text.value());
    }

    std::string text;
    XmlDocument document;
};

SimulationParameters readScyllaFiles(const std::vector<ImportFile>& files) {
    SimulationParameters parameters;
    ScyllaGlobal global;
    std::vector<std::unique_ptr<XmlFile>> simulations;
    for (const ImportFile& file : files) {
        auto read = std::make_unique<XmlFile>(file);
        const XmlElement root = read->document.root();
        if (root.space() != ScyllaNamespace) {
            root.refuse("this is no file of simulation parameters");
        }
        if (root.kind() != "globalConfiguration") {
            simulations.push_back(std::move(read));
        } else if (global.given) {
            root.refuse("a second global configuration");
        } else {
            global = readScyllaGlobal(read->document, parameters);
        }
    }
    for (const auto& simulation : simulations) {
        readScyllaSimulation(simulation->document, global, parameters);
    }
    return parameters;
}

}  // namespace

SimulationParameters readParameterFiles(const std::vector<ImportFile>& files) {
    const auto json =
        std::find_if(files.begin(), files.end(), [](const ImportFile& file) { return isJson(file.bytes); });
    if (json == files.end()) {
        return readScyllaFiles(files);
    }
    if (files.size() > 1) {
        throw DocumentRefused(fmt::format(
            "{}: a document of simulation parameters in JSON doesn't go with other files", json->name));
    }
    return readJsonFile(*json);
}

}  // namespace mero
