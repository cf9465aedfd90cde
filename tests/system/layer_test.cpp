#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>

#include "tests/apps/mero/program_run.h"

namespace mero::test {

namespace {

struct Include {
    std::string file;  ///< from the root
    int line;
    std::string target;
    bool quoted;

    [[nodiscard]] std::string place() const {
        return file + ":" + std::to_string(line) + " includes " + target;
    }
};

bool startsWith(const std::string& text, const std::string& start) {
    return text.rfind(start, 0) == 0;
}

std::vector<Include> includesBelow(const std::string& folder) {
    static const std::regex Pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> includes;
    const std::filesystem::path root = sourceFile("");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp") {
            continue;
        }
        std::ifstream input(entry.path());
        std::string text;
        for (int line = 1; std::getline(input, text); ++line) {
            std::smatch found;
            if (std::regex_search(text, found, Pattern)) {
                includes.push_back({entry.path().lexically_relative(root).generic_string(), line,
                                    found[2].str(), found[1].str() == "\""});
            }
        }
    }
    return includes;
}

/// "component/agents" of "component/agents/super_agent.h".
std::string folderOf(const std::string& file) {
    return std::filesystem::path(file).parent_path().generic_string();
}

/// Headers of the language's standard library and of C have no folder and no ".h", but for a few of C.
bool isStandardHeader(const std::string& name) {
    return name.find('/') == std::string::npos && name.find('.') == std::string::npos;
}

TEST(LayerTest, TheComponentKnowsTheStandardLibraryAndItself) {
    for (const Include& include : includesBelow("component")) {
        EXPECT_TRUE(include.quoted ? startsWith(include.target, "component/")
                                   : isStandardHeader(include.target))
            << include.place();
    }
}

TEST(LayerTest, ThePlatformKnowsTheHostContractAndItself) {
    const auto includes = includesBelow("platform");
    EXPECT_FALSE(includes.empty());
    for (const Include& include : includes) {
        if (include.quoted) {
            EXPECT_TRUE(startsWith(include.target, "component/host/") ||
                        startsWith(include.target, "platform/"))
                << include.place();
        }
    }
}

TEST(LayerTest, LibrariesStayInTheirFolders) {
    const std::map<std::string, std::vector<std::string>> homes{
        {"sqlite3", {"platform/repository"}},
        {"zlib.h", {"platform/interchange"}},
        {"muParser", {"platform/language"}},
        {"mpi.h", {"apps/mero-mpi"}},
        {"pugixml", {"platform/interchange", "platform/toolkit/forms.cpp"}},
        {"Q", {"platform/toolkit/qt/", "apps/mero-plot/", "apps/workbench/"}},
        {"qcustomplot", {"platform/toolkit/qt/", "apps/mero-plot/"}},
        {"CLI/", {"apps/mero"}}};
    for (const std::string folder : {"component", "platform", "apps"}) {
        for (const Include& include : includesBelow(folder)) {
            for (const auto& [library, folders] : homes) {
                if (!include.quoted && startsWith(include.target, library)) {
                    EXPECT_TRUE(std::any_of(folders.begin(), folders.end(), [&](const std::string& home) {
                        return startsWith(include.file, home);
                    })) << include.place();
                }
            }
        }
    }
}

TEST(LayerTest, HeadersOfTheComponentLookDownwardOnly) {
    // A header may include those of folders that stand before its own.
    const std::vector<std::string> order{"component/host",    "component/results",
                                         "component/agents",  "component/subagents",
                                         "component/display", "component/configuration"};
    const auto levelOf = [&](const std::string& file) {
        return std::find(order.begin(), order.end(), folderOf(file)) - order.begin();
    };
    for (const Include& include : includesBelow("component")) {
        if (!include.file.ends_with(".h") || !include.quoted ||
            folderOf(include.file) == "component/management") {
            continue;
        }
        EXPECT_NE(folderOf(include.target), "component/management") << include.place();
        EXPECT_LE(levelOf(include.target), levelOf(include.file)) << include.place();
    }
}

TEST(LayerTest, HeadersFormNoCycle) {
    std::map<std::string, std::set<std::string>> targets;
    for (const std::string folder : {"component", "platform", "apps"}) {
        for (const Include& include : includesBelow(folder)) {
            if (include.quoted && include.file.ends_with(".h")) {
                targets[include.file].insert(include.target);
            }
        }
    }
    // Takes away headers that include nothing that is left, until none is left or only cycles are.
    bool removed = true;
    while (removed) {
        removed =
            std::erase_if(targets, [&](const auto& entry) {
                return std::none_of(entry.second.begin(), entry.second.end(),
                                    [&](const std::string& target) { return targets.contains(target); });
            }) > 0;
    }
    for (const auto& entry : targets) {
        ADD_FAILURE() << entry.first << " includes itself over other headers";
    }
}

}  // namespace

}  // namespace mero::test
