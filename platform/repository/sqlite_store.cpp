#include "platform/repository/sqlite_store.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <sqlite3.h>
#include <stdexcept>
#include <system_error>

#include "platform/repository/repository_data.h"
#include "platform/repository/sqlite_connection.h"

namespace mero {

namespace {

constexpr std::int64_t ApplicationId = 0x4D65726F;  // "Mero"
constexpr std::int64_t SchemaVersion = 1;

constexpr auto Schema = R"(
CREATE TABLE counter (name TEXT PRIMARY KEY, value INTEGER NOT NULL) STRICT, WITHOUT ROWID;
CREATE TABLE model (id INTEGER PRIMARY KEY, name TEXT NOT NULL, type TEXT NOT NULL, writable INTEGER NOT NULL,
                    loaded INTEGER NOT NULL) STRICT;
CREATE TABLE object (id INTEGER PRIMARY KEY, model INTEGER NOT NULL, class INTEGER NOT NULL,
                     name TEXT NOT NULL) STRICT;
CREATE TABLE object_value (object INTEGER, attribute INTEGER, value ANY NOT NULL,
                           PRIMARY KEY (object, attribute)) STRICT, WITHOUT ROWID;
CREATE TABLE relation (id INTEGER PRIMARY KEY, class INTEGER NOT NULL, source INTEGER NOT NULL,
                       target INTEGER NOT NULL) STRICT;
CREATE TABLE relation_value (relation INTEGER, attribute INTEGER, value ANY NOT NULL,
                             PRIMARY KEY (relation, attribute)) STRICT, WITHOUT ROWID;
)";

/// Content that SQLite reads well but that is no repository, or not the one that was read.
class RefusedContent : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string describe(const SqliteFailure& failure) {
    switch (failure.code) {
        case SQLITE_NOTADB:
            return "the file is not a Mero repository";
        case SQLITE_CORRUPT:
            return fmt::format("the file is damaged ({})", failure.what());
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return "another program is using the file";
        case SQLITE_FULL:
            return "the disk is full";
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return "no write access to the file or its folder";
        default:
            return fmt::format("the file can't be read or written ({})", failure.what());
    }
}

MeroId toId(std::int64_t number) {
    if (number < 0 || number > std::numeric_limits<MeroId>::max()) {
        throw RefusedContent(fmt::format("the identifier {} is out of range", number));
    }
    return static_cast<MeroId>(number);
}

template <class T>
void require(const Result<T>& result) {
    if (!result) {
        throw RefusedContent(result.error().text);
    }
}

// Reading

AttributeValue readValue(const SqliteStatement& row, int column) {
    switch (row.typeOf(column)) {
        case SQLITE_INTEGER: {
            const std::int64_t number = row.number(column);
            if (number < std::numeric_limits<std::int32_t>::min() ||
                number > std::numeric_limits<std::int32_t>::max()) {
                throw RefusedContent(fmt::format("the number {} is out of range", number));
            }
            return static_cast<std::int32_t>(number);
        }
        case SQLITE_FLOAT:
            return row.real(column);
        default:
            return SV::String(row.text(column));
    }
}

void readModels(SqliteConnection& connection, RepositoryAccess& access) {
    const auto types = Library::standard().modelTypes();
    SqliteStatement rows(connection, "SELECT id, name, type, writable, loaded FROM model ORDER BY id");
    while (rows.step()) {
        Model model;
        model.id = toId(rows.number(0));
        model.name = rows.text(1);
        while (model.type < types.size() && types[model.type].name != rows.text(2)) {
            ++model.type;
        }
        model.access = rows.number(3) != 0 ? ModelAccess::Write : ModelAccess::Read;
        model.loaded = rows.number(4) != 0;
        require(access.restoreModel(model));
    }
}

void readObjects(SqliteConnection& connection, Repository& repository, RepositoryAccess& access) {
    SqliteStatement rows(connection, "SELECT id, model, class, name FROM object ORDER BY id");
    while (rows.step()) {
        Object object;
        object.id = toId(rows.number(0));
        object.modelId = toId(rows.number(1));
        object.classId = toId(rows.number(2));
        object.name = rows.text(3);
        require(access.restoreObject(object));
    }
    SqliteStatement values(connection, "SELECT object, attribute, value FROM object_value");
    while (values.step()) {
        require(repository.setValue(toId(values.number(0)), toId(values.number(1)), readValue(values, 2)));
    }
}

void readRelations(SqliteConnection& connection, Repository& repository, RepositoryAccess& access) {
    SqliteStatement rows(connection, "SELECT id, class, source, target FROM relation ORDER BY id");
    while (rows.step()) {
        Relation relation;
        relation.id = toId(rows.number(0));
        relation.classId = toId(rows.number(1));
        relation.from = toId(rows.number(2));
        relation.to = toId(rows.number(3));
        require(access.restoreRelation(relation));
    }
    SqliteStatement values(connection, "SELECT relation, attribute, value FROM relation_value");
    while (values.step()) {
        require(repository.setRelationValue(toId(values.number(0)), toId(values.number(1)),
                                            readValue(values, 2)));
    }
}

std::int64_t readCounter(SqliteConnection& connection, std::string_view name) {
    SqliteStatement row(connection, "SELECT value FROM counter WHERE name = ?");
    row.bind(0, name);
    if (!row.step()) {
        throw RefusedContent(fmt::format("the counter \"{}\" is missing", name));
    }
    return row.number(0);
}

/// False for a database without content, as it is before the first commit.
bool isRepository(SqliteConnection& connection) {
    const std::int64_t applicationId = connection.queryNumber("PRAGMA application_id");
    if (applicationId == 0 && connection.queryNumber("SELECT count(*) FROM sqlite_schema") == 0) {
        return false;
    }
    if (applicationId != ApplicationId) {
        throw SqliteFailure(SQLITE_NOTADB, "foreign database");
    }
    const std::int64_t version = connection.queryNumber("PRAGMA user_version");
    if (version != SchemaVersion) {
        throw RefusedContent(version > SchemaVersion
                                 ? fmt::format("a newer version of Mero wrote the file (schema {})", version)
                                 : fmt::format("unknown schema version {}", version));
    }
    return true;
}

// Writing

void bindValue(SqliteStatement& statement, int parameter, const AttributeValue& value) {
    if (const auto* text = std::get_if<SV::String>(&value)) {
        statement.bind(parameter, text->view());
    } else if (const auto* number = std::get_if<double>(&value)) {
        statement.bind(parameter, *number);
    } else {
        statement.bind(parameter, static_cast<std::int64_t>(std::get<std::int32_t>(value)));
    }
}

/// Rows of one owner in a table of values, written anew.
class ValueWriter {
public:
    ValueWriter(SqliteConnection& connection, const char* eraseSql, const char* insertSql)
        : erase(connection, eraseSql), insert(connection, insertSql) {}

    void write(MeroId ownerId, const AttributeValues& values) {
        remove(ownerId);
        for (const auto& [attributeId, value] : values) {
            insert.bind(0, static_cast<std::int64_t>(ownerId))
                .bind(1, static_cast<std::int64_t>(attributeId));
            bindValue(insert, 2, value);
            insert.run();
        }
    }

    void remove(MeroId ownerId) { erase.bind(0, static_cast<std::int64_t>(ownerId)).run(); }

private:
    SqliteStatement erase;
    SqliteStatement insert;
};

/// In ascending order, so that rows are appended.
std::vector<std::int64_t> sorted(const std::unordered_set<MeroId>& ids) {
    std::vector<std::int64_t> result(ids.begin(), ids.end());
    std::sort(result.begin(), result.end());
    return result;
}

void writeModels(SqliteConnection& connection, const Repository& repository, const RepositoryAccess& access) {
    SqliteStatement erase(connection, "DELETE FROM model WHERE id = ?");
    SqliteStatement write(connection, "INSERT OR REPLACE INTO model VALUES (?, ?, ?, ?, ?)");
    for (const std::int64_t id : sorted(access.changes().models)) {
        const Model* model = repository.findModel(static_cast<MeroId>(id));
        if (model == nullptr) {
            erase.bind(0, id).run();
            continue;
        }
        const std::string_view type = repository.library().modelTypes()[model->type].name;
        write.bind(0, id).bind(1, model->name.view()).bind(2, type);
        write.bind(3, std::int64_t{model->access == ModelAccess::Write});
        write.bind(4, std::int64_t{access.isStoredAsLoaded(model->id)}).run();
    }
}

void writeObjects(SqliteConnection& connection, const Repository& repository,
                  const RepositoryAccess& access) {
    SqliteStatement erase(connection, "DELETE FROM object WHERE id = ?");
    SqliteStatement write(connection, "INSERT OR REPLACE INTO object VALUES (?, ?, ?, ?)");
    ValueWriter values(connection, "DELETE FROM object_value WHERE object = ?",
                       "INSERT INTO object_value VALUES (?, ?, ?)");
    for (const std::int64_t id : sorted(access.changes().objects)) {
        const Object* object = repository.findObject(static_cast<MeroId>(id));
        if (object == nullptr) {
            values.remove(static_cast<MeroId>(id));
            erase.bind(0, id).run();
            continue;
        }
        write.bind(0, id).bind(1, std::int64_t{object->modelId}).bind(2, std::int64_t{object->classId});
        write.bind(3, object->name.view()).run();
        values.write(object->id, object->values);
    }
}

void writeRelations(SqliteConnection& connection, const Repository& repository,
                    const RepositoryAccess& access) {
    SqliteStatement erase(connection, "DELETE FROM relation WHERE id = ?");
    SqliteStatement write(connection, "INSERT OR REPLACE INTO relation VALUES (?, ?, ?, ?)");
    ValueWriter values(connection, "DELETE FROM relation_value WHERE relation = ?",
                       "INSERT INTO relation_value VALUES (?, ?, ?)");
    for (const std::int64_t id : sorted(access.changes().relations)) {
        const Relation* relation = repository.findRelation(static_cast<MeroId>(id));
        if (relation == nullptr) {
            values.remove(static_cast<MeroId>(id));
            erase.bind(0, id).run();
            continue;
        }
        write.bind(0, id).bind(1, std::int64_t{relation->classId});
        write.bind(2, std::int64_t{relation->from}).bind(3, std::int64_t{relation->to}).run();
        values.write(relation->id, relation->values);
    }
}

void writeCounter(SqliteConnection& connection, std::string_view name, std::int64_t value) {
    SqliteStatement(connection, "INSERT OR REPLACE INTO counter VALUES (?, ?)")
        .bind(0, name)
        .bind(1, value)
        .run();
}

void makeSchema(SqliteConnection& connection) {
    connection.execute(Schema);
    connection.execute(fmt::format("PRAGMA application_id={}", ApplicationId).c_str());
    connection.execute(fmt::format("PRAGMA user_version={}", SchemaVersion).c_str());
}

std::filesystem::path withSuffix(const std::filesystem::path& path, const char* suffix) {
    std::filesystem::path result = path;
    result += suffix;
    return result;
}

/// Runs `action` and turns what it throws into an error that names the file.
template <class Action>
Result<void> guarded(const std::filesystem::path& path, Action action) {
    try {
        action();
        return {};
    } catch (const SqliteFailure& failure) {
        return Error{fmt::format("{}: {}", path.string(), describe(failure))};
    } catch (const RefusedContent& damage) {
        return Error{fmt::format("{}: {}", path.string(), damage.what())};
    }
}

Error refuse(const std::filesystem::path& path, std::string_view reason) {
    return {fmt::format("{}: {}", path.string(), reason)};
}

/// Place and kind of the file, as far as it can be told without opening it.
Result<void> checkPath(const std::filesystem::path& path, SqliteStore::OpenMode mode) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status)) {
        return std::filesystem::is_regular_file(status) ? Result<void>() : refuse(path, "this is not a file");
    }
    if (mode != SqliteStore::OpenMode::Create) {
        return refuse(path, "there is no such file");
    }
    const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
    return std::filesystem::is_directory(folder, ignored) ? Result<void>()
                                                          : refuse(path, "its folder doesn't exist");
}

}  // namespace

SqliteStore::SqliteStore([[maybe_unused]] Key key, std::filesystem::path storePath, OpenMode openMode)
    : path(std::move(storePath)), mode(openMode) {}

SqliteStore::~SqliteStore() {
    if (connection != nullptr) {
        // Closing does the same unless others have the file open; a failure leaves a log, which is no loss.
        sqlite3_wal_checkpoint_v2(connection->handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                                  nullptr);
    }
}

Result<std::unique_ptr<SqliteStore>> SqliteStore::open(const std::filesystem::path& path, OpenMode mode) {
    if (const auto checked = checkPath(path, mode); !checked) {
        return checked.error();
    }
    auto store = std::make_unique<SqliteStore>(Key(), path, mode);
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored)) {
        if (const auto loaded = guarded(path, [&store] { store->load(); }); !loaded) {
            return loaded.error();
        }
    }
    return store;
}

void SqliteStore::load() {
    if (mode != OpenMode::Read) {
        connection = std::make_unique<SqliteConnection>(path, SqliteAccess::Write);
        if (connection->isReadOnly()) {
            throw SqliteFailure(SQLITE_READONLY, "read-only");
        }
        readContent(*connection);
        return;
    }
    std::error_code ignored;
    const auto logSize = std::filesystem::file_size(withSuffix(path, "-wal"), ignored);
    const bool hasLog = !ignored && logSize > 0;
    try {
        SqliteConnection reader(path, SqliteAccess::Read);
        if (hasLog || !reader.isReadOnly()) {
            readContent(reader);
            return;
        }
    } catch (const SqliteFailure& failure) {
        const bool isProtected = failure.code == SQLITE_CANTOPEN || failure.code == SQLITE_READONLY;
        if (hasLog || !isProtected) {
            throw;
        }
    }
    SqliteConnection reader(path, SqliteAccess::Immutable);
    readContent(reader);
}

void SqliteStore::readContent(SqliteConnection& reader) {
    SqliteTransaction transaction(reader, SqliteTransactionKind::Reading);
    if (!isRepository(reader)) {
        return;
    }
    if (reader.queryText("PRAGMA quick_check(1)") != "ok") {
        throw SqliteFailure(SQLITE_CORRUPT, "its pages contradict each other");
    }
    RepositoryAccess access(content);
    try {
        readModels(reader, access);
        readObjects(reader, content, access);
        readRelations(reader, content, access);
        access.restoreCounters(toId(readCounter(reader, "next id")),
                               toId(readCounter(reader, "next relation")));
        generation = readCounter(reader, "generation");
    } catch (const RefusedContent& damage) {
        throw RefusedContent(fmt::format("the file is damaged ({})", damage.what()));
    }
    access.forgetChanges();
    transaction.commit();
}

Result<void> SqliteStore::commit() {
    if (mode == OpenMode::Read) {
        return refuse(path, "the file was opened for reading only");
    }
    RepositoryAccess access(content);
    if (generation > 0 && access.changes().empty()) {
        return {};
    }
    std::error_code ignored;
    const bool makesFile = !std::filesystem::exists(path, ignored);
    auto written = guarded(path, [this] { writeChanges(); });
    if (!written) {
        if (makesFile) {
            connection.reset();
            for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
                std::filesystem::remove(withSuffix(path, suffix), ignored);
            }
        }
        return written;
    }
    access.forgetChanges();
    ++generation;
    return {};
}

void SqliteStore::writeChanges() {
    if (connection == nullptr) {
        connection = std::make_unique<SqliteConnection>(path, SqliteAccess::Create);
    }
    connection->execute("PRAGMA journal_mode=WAL");
    SqliteTransaction transaction(*connection, SqliteTransactionKind::Writing);
    const bool isMade = isRepository(*connection);
    if (generation != (isMade ? readCounter(*connection, "generation") : 0)) {
        throw RefusedContent("another program has changed the file since it was read; nothing was saved");
    }
    if (!isMade) {
        makeSchema(*connection);
    }
    RepositoryAccess access(content);
    writeModels(*connection, content, access);
    writeObjects(*connection, content, access);
    writeRelations(*connection, content, access);
    writeCounter(*connection, "next id", access.nextId());
    writeCounter(*connection, "next relation", access.nextRelationId());
    writeCounter(*connection, "generation", generation + 1);
    transaction.commit();
}

}  // namespace mero
