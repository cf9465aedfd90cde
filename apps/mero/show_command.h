#pragma once

#include <string>

#include "apps/mero/command.h"

namespace mero {

/// Shows a file of results.
class ShowCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    Result<void> run(Console& console) override;

private:
    std::string file;
    bool ascii = false;
};

}  // namespace mero
