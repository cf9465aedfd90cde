#include "tests/system/golden_examples.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "apps/mero/agent_definitions.h"
#include "component/agents/atomar_agent.h"
#include "component/management/general_services.h"
#include "platform/interchange/repository_document.h"
#include "platform/repository/repository_services.h"
#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

/// Splits as a shell does, as far as the examples need it: blanks separate, single quotes keep them.
std::vector<std::string> splitWords(const std::string& line) {
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    bool inWord = false;
    for (const char character : line) {
        if (character == '\'') {
            quoted = !quoted;
            inWord = true;
        } else if (!quoted && (character == ' ' || character == '\n')) {
            if (inWord) {
                words.push_back(std::move(word));
            }
            word.clear();
            inWord = false;
        } else {
            word += character;
            inWord = true;
        }
    }
    if (inWord) {
        words.push_back(std::move(word));
    }
    return words;
}

/// Keywords of all sub-agents in the document's definitions. A section that no version makes is repaired by
/// all alike, so it isn't among them.
std::set<std::string> usedMeasures(const std::string& repositoryFile) {
    std::set<std::string> used;
    const auto document = nlohmann::json::parse(readFile(repositoryFile));
    for (const auto& model : document["models"]) {
        for (const auto& agent : model.value("agents", nlohmann::json::array())) {
            for (const SubAgentSection& section : sectionsOf(agent.value("definition", ""))) {
                used.insert(section.keyword);
            }
        }
    }
    return used;
}

}  // namespace

std::vector<std::string> GoldenExample::arguments() const {
    std::vector<std::string> words{
        "replay", folder + "/repo.json", "--events", folder + "/trace.csv", "--results", "json"};
    const std::vector<std::string> further = splitWords(readFile(folder + "/arguments.txt"));
    words.insert(words.end(), further.begin(), further.end());
    return words;
}

std::set<std::string> madeMeasures() {
    Repository repository;
    if (!readRepositoryDocument(orderDocument(), "order", repository)) {
        throw std::runtime_error("the example repository can't be read");
    }
    const RepositoryServices services(repository);
    const MeroId process = repository.findModel("Order")->id;
    std::vector<int> types;
    getAllSubAgentTypes(types);
    std::set<std::string> made;
    for (const int type : types) {
        int status = 0;
        if (createSubAgent(type, process, nullptr, status) != nullptr) {
            made.emplace(getKeywordOfType(type).view());
        }
    }
    return made;
}

std::vector<GoldenExample> goldenExamples(bool everyExample) {
    const std::set<std::string> made = madeMeasures();
    std::vector<GoldenExample> examples;
    for (const auto& entry : std::filesystem::directory_iterator(sourceFile("tests/system/golden"))) {
        const GoldenExample example{entry.path().filename().string(), entry.path().string()};
        if (!entry.is_directory()) {
            continue;
        }
        const std::set<std::string> used = usedMeasures(example.folder + "/repo.json");
        if (everyExample || std::includes(made.begin(), made.end(), used.begin(), used.end())) {
            examples.push_back(example);
        }
    }
    std::sort(examples.begin(), examples.end(),
              [](const auto& left, const auto& right) { return left.name < right.name; });
    return examples;
}

}  // namespace mero::test
