#pragma once

#include <string>

namespace mero::test {

/// JSON string of a text.
inline std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '\n') {
            result += "\\n";
            continue;
        }
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + "\"";
}

inline std::string agentDocument(const std::string& name, const std::string& agentClass,
                                 const std::string& definition, const std::string& objects,
                                 const std::string& calendar = "CALENDAR\nDAILY hours:\"00:00-24:00\"") {
    return "{\"name\":" + quoted(name) + ",\"class\":" + quoted(agentClass) +
           ",\"definition\":" + quoted(definition) + ",\"objects\":" + quoted(objects) +
           ",\"calendar\":" + quoted(calendar) + "}";
}

inline const std::string frequencySection =
    "FREQUENCY\n name:\"F\"\n path-analysis\n resultscope:mainobjects\n absolute";
inline const std::string canonicalDefinition =
    "AGENT\npath-analysis\nvolume-analysis\nwlstatic-analysis\nwlnonstatic-analysis\n" + frequencySection;
inline const std::string taskObjects = "{\"Check\":\"Task\" }";

/// "Order" (tasks Check and Idle, a call of "Shipping"), "Shipping" (task Pack), "Free" (nothing) and the
/// environment "Staff" (worker Ann). `orderAgents` and `staffAgents` are the agents of two of them, as JSON
/// separated by commas.
inline std::string sampleModels(const std::string& orderAgents, const std::string& staffAgents = "",
                                const std::string& shippingOptions = "") {
    return R"({"format":"mero-repository","version":1,"models":[
      {"name":"Order","type":"Business process",
       "objects":[{"name":"Check","class":"Task"},{"name":"Idle","class":"Task"},
                  {"name":"Ship","class":"Call activity","attributes":{"Referenced model":"Shipping"}}],
       "relations":[{"class":"Sequence flow","from":"Check","to":"Ship"}],
       "agents":[)" +
           orderAgents + R"(]},
      {"name":"Shipping","type":"Business process",)" +
           shippingOptions + R"("objects":[{"name":"Pack","class":"Task"}]},
      {"name":"Free","type":"Business process"},
      {"name":"Staff","type":"Working environment","objects":[{"name":"Ann","class":"Worker"}],
       "agents":[)" +
           staffAgents + "]}]}";
}

/// One valid agent "M" in "Order".
inline std::string modelsWithAgent(const std::string& definition, const std::string& objects = taskObjects) {
    return sampleModels(agentDocument("M", "Process agent", definition, objects));
}

}  // namespace mero::test
