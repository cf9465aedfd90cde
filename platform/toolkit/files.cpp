#include <filesystem>

#include "component/host/sv_files.h"

namespace SV {

namespace {

std::filesystem::path asPath(const String& text) {
    const std::string_view bytes = text.view();
    return {std::u8string(bytes.begin(), bytes.end())};
}

String asText(const std::filesystem::path& path) {
    const std::u8string bytes = path.u8string();
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace

String DirEntry::GetName() const {
    return asText(asPath(path).filename());
}

String DirEntry::GetPath() const {
    const String parent = asText(asPath(path).parent_path());
    return parent.IsEmpty() ? String(".") : parent;
}

bool DirEntry::Exists() const {
    std::error_code error;
    return std::filesystem::exists(asPath(path), error);
}

bool DirEntry::IsValidFile() const {
    std::error_code error;
    return !GetName().IsEmpty() && !std::filesystem::is_directory(asPath(path), error) &&
           std::filesystem::is_directory(asPath(GetPath()), error);
}

String DirEntry::GetCurrent() {
    std::error_code error;
    return asText(std::filesystem::current_path(error));
}

bool DirEntry::SetCurrent(const String& folder) {
    std::error_code error;
    std::filesystem::current_path(asPath(folder), error);
    return !error;
}

}  // namespace SV
