#include "apps/mero/repository_file.h"

#include <fstream>
#include <string>
#include <string_view>

#include "apps/mero/atomic_file.h"
#include "platform/interchange/repository_document.h"
#include "platform/repository/sqlite_store.h"

namespace mero {

namespace {

constexpr std::string_view DatabaseMagic = "SQLite format 3";

class DatabaseFile final : public RepositoryFile {
public:
    explicit DatabaseFile(std::unique_ptr<SqliteStore> openStore) : store(std::move(openStore)) {}
    Repository& repository() override { return store->repository(); }
    Result<void> save() override { return store->commit(); }

private:
    std::unique_ptr<SqliteStore> store;
};

class DocumentFile final : public RepositoryFile {
public:
    explicit DocumentFile(std::filesystem::path documentPath) : path(std::move(documentPath)) {}

    Result<void> load() {
        const Result<std::string> text = readWholeFile(path);
        return text ? readRepositoryDocument(text.value(), path.string(), content) : text.error();
    }
    Repository& repository() override { return content; }
    Result<void> save() override { return writeFileAtomically(path, writeRepositoryDocument(content)); }

private:
    std::filesystem::path path;
    Repository content;
};

bool isDocument(const std::filesystem::path& path) {
    std::ifstream input(path, std::ios::binary);
    std::string start(DatabaseMagic.size(), '\0');
    if (!input.read(start.data(), static_cast<std::streamsize>(start.size())) && input.gcount() == 0) {
        return path.extension() == ".json";
    }
    if (start == DatabaseMagic) {
        return false;
    }
    return path.extension() == ".json" || start.find_first_not_of(" \t\r\n\xef\xbb\xbf") == start.find('{');
}

Result<std::unique_ptr<RepositoryFile>> openDocument(const std::filesystem::path& path,
                                                     RepositoryFile::Use use) {
    auto file = std::make_unique<DocumentFile>(path);
    std::error_code status;
    if (use != RepositoryFile::Use::Create || std::filesystem::exists(path, status)) {
        if (Result<void> loaded = file->load(); !loaded) {
            return loaded.error();
        }
    }
    return std::unique_ptr<RepositoryFile>(std::move(file));
}

SqliteStore::OpenMode modeOf(RepositoryFile::Use use) {
    switch (use) {
        case RepositoryFile::Use::Read:
            return SqliteStore::OpenMode::Read;
        case RepositoryFile::Use::Change:
            return SqliteStore::OpenMode::Write;
        case RepositoryFile::Use::Create:
            break;
    }
    return SqliteStore::OpenMode::Create;
}

}  // namespace

Result<std::unique_ptr<RepositoryFile>> RepositoryFile::open(const std::filesystem::path& path, Use use) {
    if (isDocument(path)) {
        return openDocument(path, use);
    }
    Result<std::unique_ptr<SqliteStore>> store = SqliteStore::open(path, modeOf(use));
    if (!store) {
        return store.error();
    }
    return std::unique_ptr<RepositoryFile>(std::make_unique<DatabaseFile>(std::move(store.value())));
}

}  // namespace mero
