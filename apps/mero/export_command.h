#pragma once

#include <string>

#include "apps/mero/command.h"

namespace mero {

/// Writes a repository to one file.
class ExportCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    Result<void> run(Console& console) override;

private:
    std::string repositoryFile;
    std::string targetFile;
};

}  // namespace mero
