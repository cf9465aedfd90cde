#pragma once

#include <string>
#include <vector>

#include "apps/mero/command.h"

namespace mero {

class Repository;

/// Adds what files hold to a repository.
class ImportCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    Result<void> run(Console& console) override;

private:
    Result<void> importFile(const std::string& name, Repository& repository, const Console& console) const;
    Result<void> importProcesses(const std::string& name, const std::string& bytes, Repository& repository,
                                 const Console& console) const;

    std::string repositoryFile;
    std::vector<std::string> files;
    std::vector<std::string> parametersFiles;
};

}  // namespace mero
