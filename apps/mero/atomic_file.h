#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/support/result.h"

namespace mero {

/// A file that appears, or replaces another, only when it is whole: written beside its place, synchronised
/// and renamed. What isn't committed goes with the object.
class AtomicFile {
public:
    explicit AtomicFile(const std::filesystem::path& target);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    Result<void> open();
    [[nodiscard]] std::ostream& stream() { return output; }
    Result<void> commit();

private:
    [[nodiscard]] Error failure(std::string_view what) const;

    std::filesystem::path path;
    std::filesystem::path temporaryPath;
    std::ofstream output;
    bool pending = false;
};

Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view bytes);

/// All bytes of a file; an error names it and the system's reason.
Result<std::string> readWholeFile(const std::filesystem::path& path);

}  // namespace mero
