#include "apps/mero/atomic_file.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace mero {

namespace {

Error systemError(const std::filesystem::path& path, std::string_view what, int code) {
    return Error{path.string() + ": " + std::string(what) + ": " + std::generic_category().message(code)};
}

bool synchronise(const std::filesystem::path& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool done = ::fsync(descriptor) == 0;
    ::close(descriptor);
    return done;
}

/// The file itself where the name is a link to it.
std::filesystem::path withoutLinks(const std::filesystem::path& path) {
    std::error_code ignored;
    if (!std::filesystem::is_symlink(path, ignored)) {
        return path;
    }
    const auto target = std::filesystem::weakly_canonical(path, ignored);
    return ignored ? path : target;
}

}  // namespace

AtomicFile::AtomicFile(const std::filesystem::path& target)
    : path(withoutLinks(target)), temporaryPath(path.string() + ".new" + std::to_string(::getpid())) {}

AtomicFile::~AtomicFile() {
    if (pending) {
        output.close();
        std::error_code ignored;
        std::filesystem::remove(temporaryPath, ignored);
    }
}

Error AtomicFile::failure(std::string_view what) const {
    return systemError(path, what, errno != 0 ? errno : EIO);
}

Result<void> AtomicFile::open() {
    if (std::filesystem::exists(path) && ::access(path.c_str(), W_OK) != 0) {
        return failure("can't be written");
    }
    errno = 0;
    output.open(temporaryPath, std::ios::binary | std::ios::trunc);
    if (!output) {
        return failure("can't be written");
    }
    pending = true;
    return {};
}

Result<void> AtomicFile::commit() {
    errno = 0;
    output.close();
    if (!output || !synchronise(temporaryPath)) {
        return failure("can't be written");
    }
    std::error_code status;
    if (std::filesystem::exists(path, status)) {
        std::filesystem::permissions(temporaryPath, std::filesystem::status(path, status).permissions(),
                                     status);
    }
    std::filesystem::rename(temporaryPath, path, status);
    if (status) {
        return systemError(path, "can't be written", status.value());
    }
    pending = false;
    const auto folder = path.parent_path();
    synchronise(folder.empty() ? "." : folder);
    return {};
}

Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
    AtomicFile file(path);
    if (Result<void> opened = file.open(); !opened) {
        return opened;
    }
    file.stream().write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file.commit();
}

Result<std::string> readWholeFile(const std::filesystem::path& path) {
    std::error_code status;
    if (std::filesystem::is_directory(path, status)) {
        return systemError(path, "can't be read", EISDIR);
    }
    errno = 0;
    std::ifstream input(path, std::ios::binary);
    if (!input) {
        return systemError(path, "can't be read", errno != 0 ? errno : EIO);
    }
    std::string bytes((std::istreambuf_iterator<char>(input)), std::istreambuf_iterator<char>());
    if (input.bad()) {
        return systemError(path, "can't be read", EIO);
    }
    return bytes;
}

}  // namespace mero
