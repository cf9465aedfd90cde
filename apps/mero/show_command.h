#pragma once

#include <string>
#include <vector>

#include "apps/mero/command.h"
#include "apps/mero/run_plots.h"
#include "apps/mero/text_table.h"

namespace mero {

/// Shows a file of results.
class ShowCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    Result<void> run(Console& console) override;

private:
    struct Content {
        std::vector<TextTable> tables;
        std::vector<ResultPicture> pictures;
    };

    [[nodiscard]] Result<Content> readContent(CharacterSet characters) const;
    /// Of one run: as they were shown, if the document says so.
    [[nodiscard]] Result<Content> readResults(const std::string& text, CharacterSet characters) const;

    std::string file;
    bool ascii = false;
    RunPlots plots;
};

}  // namespace mero
