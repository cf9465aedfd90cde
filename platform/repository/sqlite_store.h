#pragma once

#include <filesystem>
#include <memory>

#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

class SqliteConnection;

/// A `.mero` file: one SQLite database that holds a whole repository. Opening loads everything; commands
/// change the repository in memory, and `commit` writes the differences in one transaction. So a process that
/// is killed at any moment leaves the state before or after a commit, and changes without a commit are lost.
///
/// Journal: write-ahead log with full synchronisation. The log is folded in on closing, so that the
/// repository is one file again. The file format is SQLite's (version 3); application identifier and schema
/// version tell a repository from other databases.
class SqliteStore {
public:
    enum class OpenMode {
        Read,    ///< the file may be write-protected; `commit` is refused
        Write,   ///< the file must be there and writable
        Create,  ///< as `Write`, but without a file the repository is empty and the first `commit` makes it
    };

    /// Refused with the file's name and the reason: missing, no repository, written by a newer version,
    /// damaged, write-protected, in use.
    static Result<std::unique_ptr<SqliteStore>> open(const std::filesystem::path& path, OpenMode mode);

    SqliteStore(const SqliteStore&) = delete;
    SqliteStore& operator=(const SqliteStore&) = delete;
    /// Changes that weren't committed are dropped.
    ~SqliteStore();

    [[nodiscard]] Repository& repository() { return content; }

    /// Saves all changes since the last commit or none. After a refusal the file is as it was and the changes
    /// are still in memory. A file that another process has changed since it was read here is left alone.
    Result<void> commit();

    /// Only `open` has one, and so makes stores.
    class Key {
        friend class SqliteStore;
        Key() = default;
    };
    SqliteStore(Key key, std::filesystem::path storePath, OpenMode openMode);

private:
    void load();
    void readContent(SqliteConnection& connection);
    void writeChanges();

    std::filesystem::path path;
    OpenMode mode;
    Repository content;
    std::unique_ptr<SqliteConnection> connection;  ///< null until it is needed for writing
    std::int64_t generation = 0;  ///< number of commits that the content rests on; 0 for a new file
};

}  // namespace mero
