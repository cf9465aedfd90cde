#include "platform/interchange/event_trace.h"

#include <array>
#include <charconv>
#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "component/host/core_variables.h"

#include "platform/interchange/csv_reader.h"
#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

enum Column : std::size_t {
    ColumnCode,
    ColumnTime,
    ColumnMainModel,
    ColumnMainKey,
    ColumnModel,
    ColumnKey,
    ColumnCalledModel,
    ColumnCalledKey,
    ColumnCallingObject,
    ColumnObject,
    ColumnPass,
    ColumnExecutive,
    ColumnAssigned,
    ColumnResource,
    ColumnCount
};

constexpr std::array<std::string_view, ColumnCount> ColumnNames = {
    "code",       "time",           "main_model", "main_key", "model",     "key",      "called_model",
    "called_key", "calling_object", "object",     "pass",     "executive", "assigned", "resource"};

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
using NameTable = std::unordered_map<std::string, MeroId, TextHash, std::equal_to<>>;

bool isIdentifierCell(std::string_view cell) {
    return cell.size() > 1 && cell.front() == '#' &&
           cell.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

/// Names of models, objects, workers and resources as a trace uses them, in both directions.
class TraceNames {
public:
    TraceNames(const Repository& namedRepository, MeroId environment)
        : repository(namedRepository),
          environmentId(environment),
          executives(tableOf(environment, CoreExecutive)),
          resources(tableOf(environment, CoreResource)) {}

    [[nodiscard]] const NameTable& executiveNames() const { return executives; }
    [[nodiscard]] const NameTable& resourceNames() const { return resources; }

    MeroId findModel(std::string_view name) {
        const auto place = modelIds.find(name);
        if (place != modelIds.end()) {
            return place->second;
        }
        const Model* model = repository.findModel(name);
        const MeroId id = model != nullptr ? model->id : MeroNoId;
        modelIds.emplace(name, id);
        return id;
    }

    const NameTable& objectNames(MeroId modelId) {
        if (modelId != lastModelId) {
            const auto [place, added] = objects.try_emplace(modelId);
            if (added) {
                place->second = tableOf(modelId, MeroNoId);
            }
            lastModelId = modelId;
            lastTable = &place->second;
        }
        return *lastTable;
    }

    [[nodiscard]] std::string describeModel(MeroId modelId) const {
        const Model* model = repository.findModel(modelId);
        return model != nullptr ? "model " + inQuotes(model->name.view()) : fmt::format("model #{}", modelId);
    }
    [[nodiscard]] bool hasEnvironment() const { return environmentId != MeroNoId; }

    [[nodiscard]] std::string modelCell(MeroId id) {
        const Model* model = repository.findModel(id);
        return model != nullptr ? cellOf(model->name.view(), id, findModel(model->name.view()))
                                : identifierCell(id);
    }
    [[nodiscard]] std::string objectCell(MeroId id, const NameTable& table) const {
        const Object* object = repository.findObject(id);
        if (object == nullptr) {
            return identifierCell(id);
        }
        const auto place = table.find(object->name.view());
        return cellOf(object->name.view(), id, place != table.end() ? place->second : MeroNoId);
    }

private:
    /// Objects of a model by name, the first of each name; those of a core class and its sub-classes, or with
    /// `coreClass` 0 all but agents.
    [[nodiscard]] NameTable tableOf(MeroId modelId, int coreClass) const {
        NameTable table;
        const Model* model = repository.findModel(modelId);
        if (model == nullptr) {
            return table;
        }
        const Library& library = repository.library();
        for (const MeroId id : model->objects) {
            const Object* object = repository.findObject(id);
            const Library::Class* objectClass = library.findClass(object->classId);
            const bool wanted = coreClass == MeroNoId
                                    ? objectClass != nullptr && !objectClass->agent
                                    : library.isSubClassOf(library.coreVariable(coreClass), object->classId);
            if (wanted) {
                table.try_emplace(std::string(object->name.view()), id);
            }
        }
        return table;
    }

    static std::string identifierCell(MeroId id) { return fmt::format("#{}", id); }
    static std::string cellOf(std::string_view name, MeroId id, MeroId foundByName) {
        return foundByName == id && !name.empty() && !isIdentifierCell(name) ? std::string(name)
                                                                             : identifierCell(id);
    }

    const Repository& repository;
    MeroId environmentId;
    NameTable executives;
    NameTable resources;
    NameTable modelIds;
    std::unordered_map<MeroId, NameTable> objects;
    MeroId lastModelId = MeroNoId;
    const NameTable* lastTable = &executives;
};

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
            const auto* const name = std::find(ColumnNames.begin(), ColumnNames.end(), cell.text);
            if (name == ColumnNames.end()) {
                return csv.errorAt(cell.line, cell.column, "unknown column " + inQuotes(cell.text));
            }
            std::size_t& place = places[static_cast<std::size_t>(name - ColumnNames.begin())];
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

    [[nodiscard]] std::string_view text(Column column) const {
        return places[column] == Missing ? std::string_view() : cells[places[column]].text;
    }

    /// The first error of a row stands.
    void refuse(Column column, const std::string& reason) {
        if (!failure) {
            const CsvReader::Cell& cell = cells[places[column]];
            failure = csv.errorAt(cell.line, cell.column, fmt::format("{}: {}", ColumnNames[column], reason));
        }
    }

    template <class Integer>
    Integer readInteger(Column column) {
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

    const SV::String* readKey(Column column) {
        const std::string_view cell = text(column);
        SV::String& key = keys[column];
        if (key.view() != cell) {
            key = SV::String(cell);
        }
        return &key;
    }

    /// The identifier of an empty or "#" cell; nothing where the cell is a name.
    std::optional<MeroId> readIdentifier(Column column) {
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

    MeroId readModel(Column column) {
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

    MeroId readObject(Column column, MeroId modelId) {
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

    MeroId readStaff(Column column, const NameTable& table, std::string_view kind) {
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

class EventTraceWriter::Implementation {
public:
    Implementation(std::ostream& stream, const Repository& repository, MeroId environmentId)
        : output(stream), names(repository, environmentId) {
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            pending += column == 0 ? "" : ",";
            pending += ColumnNames[column];
        }
        pending += '\n';
    }

    void record(const SimEvent& event) {
        fmt::format_to(std::back_inserter(pending), "{},{},", event.code, event.time);
        addModel(event.mainModelId);
        addKey(*event.mainKey);
        addModel(event.modelId);
        addKey(*event.key);
        addModel(event.calledModelId);
        addKey(*event.calledKey);
        addObject(event.callingObjectId, event.modelId);
        addObject(event.objectId, event.modelId);
        addKey(*event.passKey);
        addStaff(event.executiveId, names.executiveNames());
        addStaff(event.assignedExecutiveId, names.executiveNames());
        addStaff(event.resourceId, names.resourceNames());
        pending.back() = '\n';
        if (pending.size() >= WriteAtOnce) {
            write();
        }
    }

    void write() {
        output.write(pending.data(), static_cast<std::streamsize>(pending.size()));
        pending.clear();
    }

    Result<void> finish() {
        write();
        output.flush();
        return output ? Result<void>() : Result<void>(Error{"the recorded events couldn't all be written"});
    }

private:
    static constexpr std::size_t WriteAtOnce = std::size_t{1} << 16;
    /// An identifier in the model or table that its name is looked up in.
    struct CellKey {
        MeroId id;
        const void* table;
        friend bool operator==(const CellKey&, const CellKey&) = default;
    };
    struct CellKeyHash {
        std::size_t operator()(const CellKey& key) const {
            return std::hash<const void*>()(key.table) * 31 + static_cast<std::size_t>(key.id);
        }
    };

    void addKey(const SV::String& key) {
        appendCsvCell(pending, key.view());
        pending += ',';
    }

    template <class MakeCell>
    void addCell(MeroId id, const void* table, MakeCell makeCell) {
        if (id != MeroNoId) {
            const auto [place, added] = cells.try_emplace(CellKey{id, table});
            if (added) {
                appendCsvCell(place->second, makeCell());
            }
            pending += place->second;
        }
        pending += ',';
    }

    void addModel(MeroId id) {
        addCell(id, nullptr, [&] { return names.modelCell(id); });
    }
    void addObject(MeroId id, MeroId modelId) { addStaff(id, names.objectNames(modelId)); }
    void addStaff(MeroId id, const NameTable& table) {
        addCell(id, &table, [&] { return names.objectCell(id, table); });
    }

    std::ostream& output;
    TraceNames names;
    std::string pending;
    std::unordered_map<CellKey, std::string, CellKeyHash> cells;
};

EventTraceWriter::EventTraceWriter(std::ostream& output, const Repository& repository, MeroId environmentId)
    : implementation(std::make_unique<Implementation>(output, repository, environmentId)) {}

EventTraceWriter::~EventTraceWriter() = default;

void EventTraceWriter::record(const SimEvent& event) {
    implementation->record(event);
}

Result<void> EventTraceWriter::finish() {
    return implementation->finish();
}

}  // namespace mero
