#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/mero/console.h"
#include "apps/mero/plot_program.h"

namespace CLI {
class App;
}

namespace mero {

/// Whether and where a command draws pictures: `--plots DIR`, and those that a page of results takes in.
class RunPlots {
public:
    void describe(CLI::App& command);
    [[nodiscard]] bool wantsFiles() const { return !folder.empty(); }

    /// To be called before a run. Refused where files are wanted and the program that draws isn't there; a
    /// page goes without, which is told.
    [[nodiscard]] Result<void> prepare(bool forPage, const Console& console);
    /// Whether pictures will be drawn; false before `prepare`.
    [[nodiscard]] bool draws() const { return program.has_value(); }
    /// Draws what was asked for; gives the pictures for the page.
    [[nodiscard]] Result<std::vector<HtmlPicture>> draw(const std::vector<ResultPicture>& pictures,
                                                        const Console& console) const;

private:
    std::string folder;
    bool forPage = false;
    std::optional<PlotProgram> program;
};

}  // namespace mero
