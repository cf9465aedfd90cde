#pragma once

#include "component/host/sv_string.h"

namespace SV {

/// A path.
class DirEntry {
public:
    explicit DirEntry(const String& pathText) : path(pathText) {}

    [[nodiscard]] const String& GetFull() const { return path; }
    /// Last part.
    [[nodiscard]] String GetName() const;
    /// All but the last part; "." without one.
    [[nodiscard]] String GetPath() const;
    [[nodiscard]] bool Exists() const;
    /// Not empty, not a folder, and in a folder that is there.
    [[nodiscard]] bool IsValidFile() const;
    /// Working folder of the program.
    [[nodiscard]] static String GetCurrent();
    /// False if it can't be entered.
    static bool SetCurrent(const String& folder);

private:
    String path;
};

}  // namespace SV
