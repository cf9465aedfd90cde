#include "apps/mero/run_plots.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fmt/format.h>

namespace mero {

namespace {

/// A folder that goes with all its files.
class TemporaryFolder {
public:
    TemporaryFolder() : path((std::filesystem::temp_directory_path() / "mero-page-XXXXXX").string()) {
        if (::mkdtemp(path.data()) == nullptr) {
            path.clear();
        }
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::string path;
};

}  // namespace

void RunPlots::describe(CLI::App& command) {
    command
        .add_option("--plots", folder,
                    "Draws charts, histories and coloured processes as PNG and SVG into this folder")
        ->type_name("DIR");
}

Result<void> RunPlots::prepare(bool isForPage, const Console& console) {
    forPage = isForPage;
    if (!wantsFiles() && !forPage) {
        return {};
    }
    Result<PlotProgram> found = PlotProgram::find();
    if (found) {
        program = std::move(found.value());
    } else if (wantsFiles()) {
        return found.error();
    } else {
        console.tell("the page goes without pictures: " + found.error().text);
    }
    return {};
}

Result<std::vector<HtmlPicture>> RunPlots::draw(const std::vector<ResultPicture>& pictures,
                                                const Console& console) const {
    if (!program || pictures.empty()) {
        return std::vector<HtmlPicture>{};
    }
    if (!wantsFiles()) {
        const TemporaryFolder temporary;
        return program->drawForPage(pictures, temporary.path);
    }
    Result<std::vector<HtmlPicture>> drawn = program->drawForPage(pictures, folder);
    if (drawn) {
        console.tell(fmt::format("{} pictures written to {}", pictures.size(), folder));
    }
    return drawn;
}

}  // namespace mero
