#pragma once

#include <string>
#include <vector>

#include "apps/mero/command.h"

namespace mero {

/// Adds what files hold to a repository.
class ImportCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    Result<void> run(Console& console) override;

private:
    std::string repositoryFile;
    std::vector<std::string> files;
    std::vector<std::string> parametersFiles;
};

}  // namespace mero
