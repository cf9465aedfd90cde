#include "platform/interchange/result_document.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <tuple>

#include "platform/interchange/document_node.h"
#include "platform/interchange/json_reader.h"
#include "platform/interchange/result_json.h"

namespace mero {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view ResultFormatName = "mero-results";
constexpr std::int32_t ResultFormatVersion = 1;

bool pathBefore(const ResultItem& left, const ResultItem& right) {
    const auto byText = [](const ResultName& a, const ResultName& b) { return a.text < b.text; };
    const auto byId = [](const ResultName& a, const ResultName& b) { return a.id < b.id; };
    const auto before = [&](const ResultItem& a, const ResultItem& b, const auto& less) {
        return std::lexicographical_compare(a.path.begin(), a.path.end(), b.path.begin(), b.path.end(), less);
    };
    if (before(left, right, byText) || before(right, left, byText)) {
        return before(left, right, byText);
    }
    return before(left, right, byId);
}

Json jsonOf(const ResultSetDocument& set) {
    Json results = Json::array();
    for (const ResultOfObject& result : set.results) {
        Json items = Json::array();
        for (const ResultItem& item : result.items) {
            Json path = Json::array();
            for (const ResultName& name : item.path) {
                path.push_back(name.text);
            }
            items.push_back({{"path", std::move(path)}, {"value", item.value}, {"divisor", item.divisor}});
        }
        results.push_back({{"object", result.object.text},
                           {"objectModel", result.objectModel},
                           {"items", std::move(items)}});
    }
    Json node{{"resultKind", set.resultKind},
              {"valueType", set.valueType},
              {"mode", set.mode},
              {"results", std::move(results)}};
    if (set.history) {
        Json history = Json::array();
        for (const ResultReading& reading : *set.history) {
            history.push_back({{"object", reading.object}, {"time", reading.time}, {"value", reading.value}});
        }
        node["history"] = std::move(history);
    }
    return node;
}

Json jsonOf(const ResultOfAgent& agent) {
    Json subAgents = Json::array();
    for (const ResultOfSubAgent& subAgent : agent.subAgents) {
        Json node{{"name", subAgent.name},
                  {"type", subAgent.type},
                  {"state", subAgent.state},
                  {"finishedProcesses", subAgent.finishedProcesses}};
        node["resultSet"] = subAgent.resultSet ? jsonOf(*subAgent.resultSet) : Json(nullptr);
        subAgents.push_back(std::move(node));
    }
    return {{"name", agent.name.text},
            {"model", agent.model},
            {"started", agent.started},
            {"scale", agent.scale},
            {"subAgents", std::move(subAgents)}};
}

std::vector<std::string> textsAt(const DocumentNode& node, std::string_view key) {
    std::vector<std::string> texts;
    for (const DocumentNode& text : node.listAt(key)) {
        texts.push_back(text.text());
    }
    return texts;
}

ResultItem readItem(const DocumentNode& node) {
    node.checkKeys({"path", "value", "divisor"});
    ResultItem item;
    for (std::string& name : textsAt(node, "path")) {
        item.path.push_back({std::move(name), MeroNoId});
    }
    item.value = node.at("value").numberOrNone();
    item.divisor = node.at("divisor").integer();
    return item;
}

ResultSetDocument readSet(const DocumentNode& node) {
    node.checkKeys({"resultKind", "valueType", "mode", "results", "history"});
    ResultSetDocument set;
    set.resultKind = node.at("resultKind").integer();
    set.valueType = node.at("valueType").integer();
    set.mode = node.at("mode").integer();
    for (const DocumentNode& entry : node.listAt("results")) {
        entry.checkKeys({"object", "objectModel", "items"});
        ResultOfObject result;
        result.object.text = entry.at("object").text();
        result.objectModel = entry.at("objectModel").text();
        for (const DocumentNode& item : entry.listAt("items")) {
            result.items.push_back(readItem(item));
        }
        set.results.push_back(std::move(result));
    }
    if (node.find("history")) {
        set.history.emplace();
        for (const DocumentNode& reading : node.listAt("history")) {
            reading.checkKeys({"object", "time", "value"});
            set.history->push_back({reading.at("object").text(), reading.at("time").numberOrNone(),
                                    reading.at("value").numberOrNone()});
        }
    }
    return set;
}

ResultOfAgent readAgent(const DocumentNode& node) {
    node.checkKeys({"name", "model", "started", "scale", "subAgents"});
    ResultOfAgent agent;
    agent.name.text = node.at("name").text();
    agent.model = node.at("model").text();
    agent.started = node.at("started").integer();
    agent.scale = node.at("scale").numberOrNone();
    for (const DocumentNode& entry : node.listAt("subAgents")) {
        entry.checkKeys({"name", "type", "state", "finishedProcesses", "resultSet"});
        ResultOfSubAgent subAgent;
        subAgent.name = entry.at("name").text();
        subAgent.type = entry.at("type").text();
        subAgent.state = entry.at("state").integer();
        subAgent.finishedProcesses = entry.at("finishedProcesses").integer();
        if (const DocumentNode set = entry.at("resultSet"); !set.json().is_null()) {
            subAgent.resultSet = readSet(set);
        }
        agent.subAgents.push_back(std::move(subAgent));
    }
    return agent;
}

ResultDocument readDocument(const DocumentNode& node) {
    node.checkKeys({"format", "version", "analysis", "simStart", "simEnd", "messages", "internalErrors",
                    "agents", "run", "tables"});
    const DocumentNode format = node.at("format");
    if (format.text() != ResultFormatName) {
        format.refuse(
            fmt::format("the format is {}, not {}", inQuotes(format.text()), inQuotes(ResultFormatName)));
    }
    const DocumentNode version = node.at("version");
    if (version.integer() != ResultFormatVersion) {
        version.refuse(
            fmt::format("version {} isn't known, only {}", version.integer(), ResultFormatVersion));
    }
    ResultDocument document;
    document.analysis = node.at("analysis").integer();
    document.simStart = node.at("simStart").integer();
    document.simEnd = node.at("simEnd").integer();
    document.messages = textsAt(node, "messages");
    document.internalErrors = textsAt(node, "internalErrors");
    for (const DocumentNode& agent : node.listAt("agents")) {
        document.agents.push_back(readAgent(agent));
    }
    return document;
}

}  // namespace

void sortResults(ResultDocument& document) {
    std::stable_sort(document.agents.begin(), document.agents.end(), [](const auto& left, const auto& right) {
        return std::tie(left.model, left.name.text, left.name.id) <
               std::tie(right.model, right.name.text, right.name.id);
    });
    for (ResultOfAgent& agent : document.agents) {
        for (ResultOfSubAgent& subAgent : agent.subAgents) {
            if (!subAgent.resultSet) {
                continue;
            }
            std::vector<ResultOfObject>& results = subAgent.resultSet->results;
            std::stable_sort(results.begin(), results.end(), [](const auto& left, const auto& right) {
                return std::tie(left.objectModel, left.object.text, left.object.id) <
                       std::tie(right.objectModel, right.object.text, right.object.id);
            });
            for (ResultOfObject& result : results) {
                std::stable_sort(result.items.begin(), result.items.end(), pathBefore);
            }
        }
    }
}

nlohmann::ordered_json jsonOf(ResultDocument document) {
    sortResults(document);
    Json agents = Json::array();
    for (const ResultOfAgent& agent : document.agents) {
        agents.push_back(jsonOf(agent));
    }
    return {{"format", ResultFormatName},
            {"version", ResultFormatVersion},
            {"analysis", document.analysis},
            {"simStart", document.simStart},
            {"simEnd", document.simEnd},
            {"messages", document.messages},
            {"internalErrors", document.internalErrors},
            {"agents", std::move(agents)}};
}

std::string textOf(const nlohmann::ordered_json& node) {
    return node.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

std::string writeResultDocument(ResultDocument document) {
    return textOf(jsonOf(std::move(document)));
}

Result<ResultDocument> readResultDocument(std::string_view text, std::string_view source) {
    const Result<nlohmann::json> json = readJson(text, source);
    if (!json) {
        return json.error();
    }
    try {
        return readDocument(DocumentNode(json.value(), ""));
    } catch (const DocumentRefused& refused) {
        return Error{fmt::format("{}: {}", source, refused.what())};
    }
}

}  // namespace mero
