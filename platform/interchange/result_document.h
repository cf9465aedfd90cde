#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/host/types.h"

#include "platform/support/result.h"

namespace mero {

/// A name as a document shows it, with the identifier behind it: lists are sorted by name, then by
/// identifier.
struct ResultName {
    std::string text;
    MeroId id = MeroNoId;
};

struct ResultItem {
    std::vector<ResultName> path;
    double value = 0.0;
    std::int32_t divisor = 0;
};

struct ResultOfObject {
    ResultName object;
    std::string objectModel;  ///< empty for models and for what has no model
    std::vector<ResultItem> items;
};

struct ResultReading {
    std::string object;
    double time = 0.0;
    double value = 0.0;
};

struct ResultSetDocument {
    int resultKind = 0;  ///< 1 a number, 2 seconds, 0 neither
    int valueType = 0;
    int mode = 0;
    std::vector<ResultOfObject> results;
    std::optional<std::vector<ResultReading>> history;  ///< in reading order; none where none is kept
};

struct ResultOfSubAgent {
    std::string name;
    std::string type;
    int state = 0;
    int finishedProcesses = 0;
    std::optional<ResultSetDocument> resultSet;
};

struct ResultOfAgent {
    ResultName name;
    std::string model;
    int started = 0;
    double scale = 1.0;
    std::vector<ResultOfSubAgent> subAgents;  ///< in the order of the definition
};

/// What the agents of one run measured, with names in place of identifiers. Whoever fills it needs no order
/// but that of sub-agents, histories, messages and internal errors: `sortResults` makes the rest canonical.
struct ResultDocument {
    int analysis = 0;
    int simStart = 0;
    int simEnd = 0;
    std::vector<std::string> messages;
    std::vector<std::string> internalErrors;
    std::vector<ResultOfAgent> agents;
};

/// Agents by model name and name, results by the object's model and name, items by path, name by name: all by
/// bytes of UTF-8, then by identifier.
void sortResults(ResultDocument& document);

/// The sorted document as JSON text, `"format": "mero-results"`. Numbers read back to the same double; one
/// that isn't finite is null.
std::string writeResultDocument(ResultDocument document);

/// Reads what `writeResultDocument` writes; identifiers are 0, and a null value is read as not-a-number. The
/// keys `run` and `tables` are passed over: `readTablesOfDocument` reads them.
Result<ResultDocument> readResultDocument(std::string_view text, std::string_view source);

}  // namespace mero
