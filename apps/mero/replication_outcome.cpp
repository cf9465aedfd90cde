#include "apps/mero/replication_outcome.h"

#include "apps/mero/byte_stream.h"

namespace mero {

namespace {

void write(ByteWriter& writer, const ResultName& name) {
    writer.text(name.text);
    writer.number(static_cast<std::uint32_t>(name.id));
}

ResultName readName(ByteReader& reader) {
    ResultName name;
    name.text = reader.text();
    name.id = static_cast<MeroId>(static_cast<std::uint32_t>(reader.number()));
    return name;
}

void write(ByteWriter& writer, const RunRecord& record) {
    for (const std::uint64_t value : {record.replication, record.seed, record.started, record.finished,
                                      record.dropped, record.unfinished, record.events, record.fingerprint}) {
        writer.number(value);
    }
}

RunRecord readRecord(ByteReader& reader) {
    RunRecord record;
    for (std::uint64_t* const value :
         {&record.replication, &record.seed, &record.started, &record.finished, &record.dropped,
          &record.unfinished, &record.events, &record.fingerprint}) {
        *value = reader.number();
    }
    return record;
}

void write(ByteWriter& writer, const ResultTable& table) {
    write(writer, table.agent);
    writer.text(table.model);
    writer.real(table.scale);
    writer.number(table.isGrouped ? 1 : 0);
    writer.number(table.columns.size());
    for (const ResultTable::Column& column : table.columns) {
        writer.text(column.measure);
        writer.text(column.type);
        writer.number(column.position);
        writer.number(static_cast<std::uint64_t>(column.unit));
        writer.real(column.scale);
    }
    writer.number(table.rows.size());
    for (const ResultTable::Row& row : table.rows) {
        writer.number(static_cast<std::uint64_t>(row.kind));
        writer.number(row.depth);
        write(writer, row.object);
        writer.text(row.objectModel);
        writer.text(row.objectClass);
        writer.text(row.label);
        for (const double cell : row.cells) {
            writer.real(cell);
        }
    }
}

ResultTable readTable(ByteReader& reader) {
    ResultTable table;
    table.agent = readName(reader);
    table.model = reader.text();
    table.scale = reader.real();
    table.isGrouped = reader.number() != 0;
    table.columns.resize(reader.length());
    for (ResultTable::Column& column : table.columns) {
        column.measure = reader.text();
        column.type = reader.text();
        column.position = static_cast<std::size_t>(reader.number());
        column.unit = static_cast<ResultUnit>(reader.number());
        column.scale = reader.real();
    }
    table.rows.resize(reader.length());
    for (ResultTable::Row& row : table.rows) {
        row.kind = static_cast<ResultTable::RowKind>(reader.number());
        row.depth = static_cast<std::size_t>(reader.number());
        row.object = readName(reader);
        row.objectModel = reader.text();
        row.objectClass = reader.text();
        row.label = reader.text();
        row.cells.resize(table.columns.size());
        for (double& cell : row.cells) {
            cell = reader.real();
        }
    }
    return table;
}

}  // namespace

std::string bytesOf(const ReplicationOutcome& outcome) {
    ByteWriter writer;
    write(writer, outcome.record);
    writer.number(outcome.reports.size());
    for (const auto& [report, count] : outcome.reports) {
        writer.text(report);
        writer.number(count);
    }
    writer.number(outcome.messages.size());
    for (const std::string& message : outcome.messages) {
        writer.text(message);
    }
    writer.number(outcome.hasAgents ? 1 : 0);
    writer.number(outcome.tables.size());
    for (const ResultTable& table : outcome.tables) {
        write(writer, table);
    }
    return std::move(writer.bytes());
}

Result<ReplicationOutcome> readOutcome(std::string_view bytes) {
    ByteReader reader(bytes);
    ReplicationOutcome outcome;
    outcome.record = readRecord(reader);
    for (std::size_t left = reader.length(); left > 0; --left) {
        std::string report = reader.text();
        outcome.reports[std::move(report)] = reader.number();
    }
    outcome.messages.resize(reader.length());
    for (std::string& message : outcome.messages) {
        message = reader.text();
    }
    outcome.hasAgents = reader.number() != 0;
    outcome.tables.resize(reader.length());
    for (ResultTable& table : outcome.tables) {
        table = readTable(reader);
    }
    if (!reader.isDone()) {
        return Error{"its results arrived incomplete"};
    }
    return outcome;
}

}  // namespace mero
