#pragma once

#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace mero::test {

/// A worked example: repository, recorded run, arguments of `mero replay`, expected results.
struct GoldenExample {
    std::string name;
    std::string folder;

    /// All arguments behind the program's name.
    [[nodiscard]] std::vector<std::string> arguments() const;

    friend void PrintTo(const GoldenExample& example, std::ostream* out) { *out << example.name; }
};

/// Section keywords of the measures that this version makes.
std::set<std::string> madeMeasures();

/// The examples whose agents this version can make, in order of name; all of them with `everyExample`.
std::vector<GoldenExample> goldenExamples(bool everyExample = false);

}  // namespace mero::test
