#pragma once

#include <filesystem>
#include <memory>

#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// The repository of a command: a `.mero` file (a database) or a repository document (JSON), told apart by
/// the content, or by the name for a file that isn't there yet.
class RepositoryFile {
public:
    enum class Use {
        Read,    ///< changes stay in memory
        Change,  ///< the file must be there and writable
        Create,  ///< as `Change`, but a missing file is an empty repository
    };

    static Result<std::unique_ptr<RepositoryFile>> open(const std::filesystem::path& path, Use use);

    RepositoryFile() = default;
    RepositoryFile(const RepositoryFile&) = delete;
    RepositoryFile& operator=(const RepositoryFile&) = delete;
    virtual ~RepositoryFile() = default;

    [[nodiscard]] virtual Repository& repository() = 0;
    /// All changes or none.
    virtual Result<void> save() = 0;
};

}  // namespace mero
