#pragma once

#include <string>
#include <vector>

#include "apps/mero/command.h"
#include "apps/mero/text_table.h"

namespace mero {

/// Shows a file of results.
class ShowCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    Result<void> run(Console& console) override;

private:
    [[nodiscard]] Result<std::vector<TextTable>> readTables(CharacterSet characters) const;

    std::string file;
    bool ascii = false;
};

}  // namespace mero
