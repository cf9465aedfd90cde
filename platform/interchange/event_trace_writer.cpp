#include <fmt/format.h>
#include <iterator>

#include "platform/interchange/csv_reader.h"
#include "platform/interchange/event_trace.h"
#include "platform/interchange/event_trace_names.h"

namespace mero {

class EventTraceWriter::Implementation {
public:
    Implementation(std::ostream& stream, const Repository& repository, MeroId environmentId)
        : output(stream), names(repository, environmentId) {
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            pending += column == 0 ? "" : ",";
            pending += TraceColumnNames[column];
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
