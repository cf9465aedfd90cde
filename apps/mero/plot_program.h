#pragma once

#include <string>
#include <vector>

#include "apps/mero/html_page.h"
#include "apps/mero/result_pictures.h"
#include "platform/support/result.h"

namespace mero {

/// The program that draws pictures, `mero-plot`, so that this one needs no library for windows.
class PlotProgram {
public:
    /// Looks beside this program, then in the folders of PATH; an error tells that it isn't there.
    static Result<PlotProgram> find();

    /// Draws into a folder, which is made if it isn't there; gives the number of files.
    [[nodiscard]] Result<std::size_t> draw(const std::vector<ResultPicture>& pictures,
                                           const std::string& folder) const;
    /// Draws, and gives what a page can take in.
    [[nodiscard]] Result<std::vector<HtmlPicture>> drawForPage(const std::vector<ResultPicture>& pictures,
                                                               const std::string& folder) const;

private:
    explicit PlotProgram(std::string programPath) : path(std::move(programPath)) {}

    std::string path;
};

}  // namespace mero
