#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <vector>

#include "platform/interchange/csv_reader.h"
#include "platform/interchange/event_trace.h"
#include "platform/interchange/event_trace_names.h"
#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

template <class Integer>
std::optional<Integer> parseInteger(std::string_view text) {
    Integer value{};
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
    return status == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

}  // namespace

class EventTraceReader::Implementation {
public:
    Implementation(std::istream& input, std::string source, const Repository& repository,
                   MeroId environmentId)
        : csv(input, std::move(source)), names(repository, environmentId) {
        places.fill(Missing);
    }

    Result<bool> next(SimEvent& event) {
        if (broken) {
            return Result<bool>(false);
        }
        Result<bool> result = read(event);
        broken = !result.isGood() || !result.value();
        return result;
    }

private:
    static constexpr std::size_t Missing = static_cast<std::size_t>(-1);

    Result<bool> read(SimEvent& event) {
        if (!headerRead) {
            headerRead = true;
            Result<void> header = readHeader();
            if (!header) {
                return header.error();
            }
        }
        Result<bool> row = csv.next(cells);
        if (!row || !row.value()) {
            return row;
        }
        if (cells.size() != columnCount) {
            return csv.errorAt(cells.front().line, 1,
                               fmt::format("{} cells where the header has {}", cells.size(), columnCount));
        }
        failure.reset();
        fillEvent(event);
        return failure ? Result<bool>(*failure) : Result<bool>(true);
    }

    Result<void> readHeader() {
        Result<bool> row = csv.next(cells);
        if (!row) {
            return row.error();
        }
        if (!row.value()) {
            return csv.errorAt(1, 1, "the header line is missing");
        }
        for (std::size_t index = 0; index < cells.size(); ++index) {
            const CsvReader::Cell& cell = cells[index];
            const auto* const name = std::find(TraceColumnNames.begin(), TraceColumnNames.end(), cell.text);
            if (name == TraceColumnNames.end()) {
                return csv.errorAt(cell.line, cell.column, "unknown column " + inQuotes(cell.text));
            }
            std::size_t& place = places[static_cast<std::size_t>(name - TraceColumnNames.begin())];
            if (place != Missing) {
                return csv.errorAt(cell.line, cell.column, "double column " + inQuotes(cell.text));
            }
            place = index;
        }
        if (places[ColumnCode] == Missing) {
            return csv.errorAt(1, 1, "the column \"code\" is missing");
        }
        columnCount = cells.size();
        return {};
    }

    void fillEvent(SimEvent& event) {
        if (text(ColumnCode).empty()) {
            refuse(ColumnCode, "the code is missing");
        }
        event.code = readInteger<std::int32_t>(ColumnCode);
        event.time = readInteger<std::int64_t>(ColumnTime);
        event.mainModelId = readModel(ColumnMainModel);
        event.modelId = readModel(ColumnModel);
        event.calledModelId = readModel(ColumnCalledModel);
        event.mainKey = readKey(ColumnMainKey);
        event.key = readKey(ColumnKey);
        event.calledKey = readKey(ColumnCalledKey);
        event.passKey = readKey(ColumnPass);
        event.callingObjectId = readObject(ColumnCallingObject, event.modelId);
        event.objectId = readObject(ColumnObject, event.modelId);
        event.executiveId = readStaff(ColumnExecutive, names.executiveNames(), "worker");
        event.assignedExecutiveId = readStaff(ColumnAssigned, names.executiveNames(), "worker");
        event.resourceId = readStaff(ColumnResource, names.resourceNames(), "resource");
    }

    [[nodiscard]] std::string_view text(TraceColumn column) const {
        return places[column] == Missing ? std::string_view() : cells[places[column]].text;
    }

    /// The first error of a row stands.
    void refuse(TraceColumn column, const std::string& reason) {
        if (!failure) {
            const CsvReader::Cell& cell = cells[places[column]];
            failure =
                csv.errorAt(cell.line, cell.column, fmt::format("{}: {}", TraceColumnNames[column], reason));
        }
    }

    template <class Integer>
    Integer readInteger(TraceColumn column) {
        const std::string_view cell = text(column);
        if (cell.empty()) {
            return 0;
        }
        const auto value = parseInteger<Integer>(cell);
        if (!value) {
            refuse(column,
                   fmt::format("{} isn't an integer of {} bits", inQuotes(cell), sizeof(Integer) * 8));
        }
        return value.value_or(0);
    }

    const SV::String* readKey(TraceColumn column) {
        const std::string_view cell = text(column);
        SV::String& key = keys[column];
        if (key.view() != cell) {
            key = SV::String(cell);
        }
        return &key;
    }

    /// The identifier of an empty or "#" cell; nothing where the cell is a name.
    std::optional<MeroId> readIdentifier(TraceColumn column) {
        const std::string_view cell = text(column);
        if (cell.empty()) {
            return MeroNoId;
        }
        if (!isIdentifierCell(cell)) {
            return std::nullopt;
        }
        const auto id = parseInteger<MeroId>(cell.substr(1));
        if (!id) {
            refuse(column, fmt::format("the identifier {} is out of range", inQuotes(cell)));
        }
        return id.value_or(MeroNoId);
    }

    MeroId readModel(TraceColumn column) {
        const std::optional<MeroId> given = readIdentifier(column);
        if (given) {
            return *given;
        }
        const MeroId id = names.findModel(text(column));
        if (id == MeroNoId) {
            refuse(column, "unknown model " + inQuotes(text(column)));
        }
        return id;
    }

    MeroId readObject(TraceColumn column, MeroId modelId) {
        const std::optional<MeroId> given = readIdentifier(column);
        if (given) {
            return *given;
        }
        if (modelId == MeroNoId) {
            refuse(column, fmt::format("{} is given without a model", inQuotes(text(column))));
            return MeroNoId;
        }
        const NameTable& table = names.objectNames(modelId);
        const auto place = table.find(text(column));
        if (place == table.end()) {
            refuse(column, fmt::format("unknown object {} in {}", inQuotes(text(column)),
                                       names.describeModel(modelId)));
            return MeroNoId;
        }
        return place->second;
    }

    MeroId readStaff(TraceColumn column, const NameTable& table, std::string_view kind) {
        const std::optional<MeroId> given = readIdentifier(column);
        if (given) {
            return *given;
        }
        const auto place = table.find(text(column));
        if (place == table.end()) {
            refuse(column, fmt::format("unknown {} {}{}", kind, inQuotes(text(column)),
                                       names.hasEnvironment() ? "" : ": the run has no working environment"));
            return MeroNoId;
        }
        return place->second;
    }

    CsvReader csv;
    TraceNames names;
    std::array<std::size_t, ColumnCount> places{};
    std::array<SV::String, ColumnCount> keys;
    std::vector<CsvReader::Cell> cells;
    std::size_t columnCount = 0;
    std::optional<Error> failure;
    bool headerRead = false;
    bool broken = false;
};

EventTraceReader::EventTraceReader(std::istream& input, std::string source, const Repository& repository,
                                   MeroId environmentId)
    : implementation(std::make_unique<Implementation>(input, std::move(source), repository, environmentId)) {}

EventTraceReader::~EventTraceReader() = default;

Result<bool> EventTraceReader::next(SimEvent& event) {
    return implementation->next(event);
}

Result<EventTrace> readEventTrace(std::istream& input, const std::string& source,
                                  const Repository& repository, MeroId environmentId) {
    EventTraceReader reader(input, source, repository, environmentId);
    EventTrace trace;
    SimEvent event;
    while (true) {
        const Result<bool> row = reader.next(event);
        if (!row) {
            return row.error();
        }
        if (!row.value()) {
            return trace;
        }
        trace.append(event);
    }
}

Result<EventTrace> readEventTraceFile(const std::filesystem::path& file, const Repository& repository,
                                      MeroId environmentId) {
    std::ifstream input(file, std::ios::binary);
    std::error_code status;
    if (!input || std::filesystem::is_directory(file, status)) {
        return Error{fmt::format("{}: the file can't be opened", file.string())};
    }
    return readEventTrace(input, file.string(), repository, environmentId);
}

}  // namespace mero
