#include "apps/mero/plot_program.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

#include "apps/mero/atomic_file.h"
#include "platform/resources/messages.h"

namespace mero {

namespace {

constexpr auto ProgramName = "mero-plot";

bool isProgram(const std::filesystem::path& path) {
    return ::access(path.c_str(), X_OK) == 0 && !std::filesystem::is_directory(path);
}

std::vector<std::filesystem::path> searchedFolders() {
    std::vector<std::filesystem::path> folders;
    std::error_code status;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", status);
    if (!status) {
        folders.push_back(own.parent_path());
    }
    const char* const path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        if (end > 0) {
            folders.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return folders;
}

/// A file that goes with the object.
class TemporaryOrder {
public:
    explicit TemporaryOrder(std::string_view text) {
        std::string name = (std::filesystem::temp_directory_path() / "mero-pictures-XXXXXX").string();
        const int file = ::mkstemp(name.data());
        if (file >= 0) {
            ::close(file);
            path = name;
            status = writeFileAtomically(path, text);
        }
    }
    TemporaryOrder(const TemporaryOrder&) = delete;
    TemporaryOrder& operator=(const TemporaryOrder&) = delete;
    ~TemporaryOrder() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    std::string path;
    Result<void> status = Error{"the folder for temporary files can't be written to"};
};

/// Runs a program to its end; its messages go where this program's go, its output nowhere.
bool runProgram(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failure =
        ::posix_spawn(&child, arguments.front(), &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    while (failure == 0 && ::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return failure == 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The element itself, without the name spaces that HTML knows, and with identifiers of its own: those of all
/// pictures of a page share one space.
std::string svgForPage(const std::string& document, std::size_t number) {
    const std::size_t begin = document.find("<svg");
    std::string svg = begin == std::string::npos ? std::string() : document.substr(begin);
    for (const std::string_view declaration : {" xmlns=\"", " xmlns:xlink=\""}) {
        if (const std::size_t place = svg.find(declaration); place != std::string::npos) {
            svg.erase(place, svg.find('"', place + declaration.size()) + 1 - place);
        }
    }
    for (const std::string_view use : {" id=\"", "xml:id=\"", "url(#", "href=\"#"}) {
        for (std::size_t place = svg.find(use); place != std::string::npos; place = svg.find(use, place)) {
            place += use.size();
            svg.insert(place, fmt::format("p{}-", number));
        }
    }
    return svg;
}

}  // namespace

Result<PlotProgram> PlotProgram::find() {
    for (const std::filesystem::path& folder : searchedFolders()) {
        if (isProgram(folder / ProgramName)) {
            return PlotProgram((folder / ProgramName).string());
        }
    }
    return Error{
        fmt::format("pictures are drawn by the program {}, which is neither beside this one nor in "
                    "the folders of PATH",
                    ProgramName)};
}

Result<std::size_t> PlotProgram::draw(const std::vector<ResultPicture>& pictures,
                                      const std::string& folder) const {
    std::vector<Picture> order;
    order.reserve(pictures.size());
    for (const ResultPicture& picture : pictures) {
        order.push_back(picture.picture);
    }
    const TemporaryOrder file(writePictures(order));
    if (!file.status) {
        return file.status.error();
    }
    const std::string language(currentLanguage());
    if (!runProgram({path, "--folder", folder, "--language", language, file.path})) {
        return Error{folder + ": the pictures couldn't be drawn"};
    }
    constexpr std::size_t FilesOfAPicture = 3;
    return order.size() * FilesOfAPicture;
}

Result<std::vector<HtmlPicture>> PlotProgram::drawForPage(const std::vector<ResultPicture>& pictures,
                                                          const std::string& folder) const {
    if (const auto drawn = draw(pictures, folder); !drawn) {
        return drawn.error();
    }
    std::vector<HtmlPicture> forPage;
    for (const ResultPicture& picture : pictures) {
        const auto svg = readWholeFile(folder + "/" + picture.picture.name + ".svg");
        if (!svg) {
            return svg.error();
        }
        forPage.push_back({picture.title, svgForPage(svg.value(), forPage.size() + 1), picture.table});
    }
    return forPage;
}

}  // namespace mero
