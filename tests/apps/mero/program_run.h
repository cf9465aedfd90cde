#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mero::test {

/// What one call of the program gave.
struct ProgramRun {
    int status = 0;
    std::string out;
    std::string err;
};

/// Runs the program in this process, as if on no terminal, with results `width` columns wide.
ProgramRun runProgram(const std::vector<std::string>& arguments, std::size_t width = 100);

/// A folder that goes with all its files.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] std::string operator/(const std::string& name) const { return (path / name).string(); }

private:
    std::filesystem::path path;
};

std::string readFile(const std::string& name);
void writeFile(const std::string& name, const std::string& bytes);

/// A file of the repository's sources.
std::string sourceFile(const std::string& name);

/// Repository document: process "Order" with tasks Check and Pack, half of the instances pass Check twice; an
/// agent "Counts" with the frequency measures "F" (relative) and "A" (absolute, with a history in memory).
std::string orderDocument();

}  // namespace mero::test
