#include "apps/mero/run_options.h"

#include <CLI/CLI.hpp>
#include <array>
#include <charconv>
#include <cmath>
#include <map>

#include "component/host/core_time.h"
#include "component/host/core_variables.h"

namespace mero {

namespace {

const std::map<std::string, int>& analysisWords() {
    static const std::map<std::string, int> words{{"path", AnalysisPath},
                                                  {"capacity", AnalysisVolume},
                                                  {"static", AnalysisStaticWorkLoad},
                                                  {"nonstatic", AnalysisNonStaticWorkLoad}};
    return words;
}

std::string checkTimeText(const std::string& text) {
    return MeroCoreTime::isTime(SV::String(text)) ? std::string()
                                                  : "\"" + text + "\" isn't a time YY:DDD:HH:MM:SS";
}

/// The whole text as a number.
template <class Number>
std::optional<Number> parsedAs(std::string_view text) {
    Number number{};
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() ? std::optional(number)
                                                                               : std::nullopt;
}

std::string checkCount(const std::string& text) {
    return parsedAs<int>(text).value_or(-1) >= 0 ? std::string()
                                                 : "\"" + text + "\" isn't a whole number, 0 or more";
}

std::string checkPositive(const std::string& text) {
    const double number = parsedAs<double>(text).value_or(0.0);
    return std::isfinite(number) && number > 0.0 ? std::string() : "\"" + text + "\" isn't a number above 0";
}

/// Digits of a fixed length; -1 for anything else.
int digitsOf(std::string_view text) {
    return parsedAs<int>(text).value_or(-1);
}

/// "2026-01-05T08:00", with seconds or without.
std::optional<SV::DateTime> readDateTime(std::string_view text) {
    constexpr std::string_view Shape = "0000-00-00T00:00:00";
    constexpr std::size_t ShortLength = 16;
    if (text.size() != Shape.size() && text.size() != ShortLength) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool isDigit = text[index] >= '0' && text[index] <= '9';
        if (Shape[index] == '0' ? !isDigit : text[index] != Shape[index]) {
            return std::nullopt;
        }
    }
    const SV::Date date(digitsOf(text.substr(8, 2)), digitsOf(text.substr(5, 2)),
                        digitsOf(text.substr(0, 4)));
    const int hour = digitsOf(text.substr(11, 2));
    const int minute = digitsOf(text.substr(14, 2));
    const int second = text.size() == Shape.size() ? digitsOf(text.substr(17, 2)) : 0;
    if (!date.IsValid() || hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    return SV::DateTime(date, SV::Time(hour, minute, second));
}

std::string checkDateTime(const std::string& text) {
    return readDateTime(text) ? std::string()
                              : "\"" + text + "\" isn't a date and time such as 2026-01-05T08:00";
}

std::vector<std::string> splitAtCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        if (end > begin) {
            parts.push_back(text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return parts;
}

std::string checkGroup(const std::string& text) {
    const std::size_t slash = text.find('/');
    return slash != std::string::npos && slash > 0 && slash + 1 < text.size()
               ? std::string()
               : "\"" + text + "\" isn't a class and a relation such as Role/Has role";
}

/// Both have to be of the library of working environments.
Result<void> checkGroupNames(const RunOptions& options, const Library& library) {
    if (options.groupClass.empty()) {
        return {};
    }
    const Library::Class* const found = library.findClass(ClassCodeEnvironmentLibrary, options.groupClass);
    if (found == nullptr || found->agent) {
        return Error{"--group: working environments have no class \"" + options.groupClass + "\""};
    }
    if (library.findRelationClass(ClassCodeEnvironmentLibrary, options.groupRelation) == nullptr) {
        return Error{"--group: working environments have no relation \"" + options.groupRelation + "\""};
    }
    return {};
}

/// Finds and loads a model of the wanted kind.
Result<MeroId> takeModel(Repository& repository, const std::string& name, MeroId kind) {
    const Model* const model = repository.findModel(name);
    if (model == nullptr) {
        return Error{"there is no model \"" + name + "\" in the repository"};
    }
    if (repository.library().modelTypes()[model->type].classId != kind) {
        return Error{"model \"" + name + "\" is " +
                     (kind == ClassCodeProcessModel ? "a working environment, not a process"
                                                    : "a process, not a working environment")};
    }
    const MeroId id = model->id;
    if (Result<void> loaded = repository.setLoaded(id, true); !loaded) {
        return loaded.error();
    }
    return id;
}

}  // namespace

void RunOptions::describeRun(CLI::App& command) {
    command.add_option("REPO", repositoryFile, "Repository: a .mero file or a repository document")
        ->required();
    auto* const analysisOption = command.add_option(
        "--analysis", analysis,
        "What the run answers: path (times and frequencies), capacity (volume and capacity), "
        "static, nonstatic (work load)");
    analysisOption->transform(CLI::CheckedTransformer(analysisWords()).description(""));
    analysisOption->default_str("path")->type_name("WORD");
    command
        .add_option("--models", models,
                    "Names of the main models, with commas or repeated; what they call comes along")
        ->required()
        ->allow_extra_args(false)
        ->type_name("A,B");
    command.add_option("--environment", environment, "Name of the working environment model")
        ->type_name("NAME");
    command.add_option("--start", start, "Begin of the run, such as 2026-01-05T08:00")
        ->check(CLI::Validator(checkDateTime, ""))
        ->type_name("DATE");
    command.add_option("--days-per-year", daysPerYear, "Working days of a year, the base of time texts")
        ->capture_default_str()
        ->check(CLI::Validator(checkPositive, ""))
        ->type_name("N");
    command.add_option("--hours-per-day", hoursPerDay, "Working hours of a day, the base of time texts")
        ->capture_default_str()
        ->check(CLI::Validator(checkPositive, ""))
        ->type_name("N");
}

void RunOptions::describeScaling(CLI::App& command) {
    command.add_option("--scaled", scaled, "Scales results: so many processes start in a period")
        ->check(CLI::Validator(checkCount, ""))
        ->type_name("N");
    command.add_option("--period", period, "Period of --scaled, YY:DDD:HH:MM:SS")
        ->check(CLI::Validator(checkTimeText, ""))
        ->type_name("TIME");
    command.add_option("--scope", scope, "Stretch of time that scaled results are for, YY:DDD:HH:MM:SS")
        ->check(CLI::Validator(checkTimeText, ""))
        ->type_name("TIME");
}

void RunOptions::describeResults(CLI::App& command) {
    command.add_option("--results", format, "Form of the results: table, csv, json, html")
        ->transform(
            CLI::CheckedTransformer(std::map<std::string, ResultFormat>{{"table", ResultFormat::Table},
                                                                        {"csv", ResultFormat::Csv},
                                                                        {"json", ResultFormat::Json},
                                                                        {"html", ResultFormat::Html}})
                .description(""))
        ->default_str("table")
        ->type_name("WORD");
    auto* const detailFlag =
        command.add_flag("--detail", detail, "Table with a row for every path to an object (the default)");
    command.add_flag("--total", total, "Table with one row for every object")->excludes(detailFlag);
    command.add_flag("--sum", sum, "Adds a row with the sum to the table");
    command.add_flag("--extremes", extremes, "Adds rows with minimum and maximum to the table");
    command
        .add_option("--group", group,
                    "Groups results over the objects of a class that a relation joins with the measured "
                    "ones, such as \"Role/Has role\"")
        ->check(CLI::Validator(checkGroup, ""))
        ->each([this](const std::string& text) {
            const std::size_t slash = text.find('/');
            groupClass = text.substr(0, slash);
            groupRelation = text.substr(slash + 1);
        })
        ->type_name("CLASS/RELATION");
    command.add_flag("--ascii", ascii, "Table without box drawing");
}

void RunOptions::describe(CLI::App& command) {
    describeRun(command);
    describeScaling(command);
    describeResults(command);
    command.add_flag("--timing", timing, "Tells the seconds of load, run and results on standard error");
    plots.describe(command);
    command.add_option("--record-events", recordFile, "Writes every event of the run to this file (CSV)")
        ->type_name("FILE");
}

Result<void> RunOptions::check() const {
    if (isWorkLoadAnalysis(analysis) && start.empty()) {
        return Error{"--analysis " + analysisName() + " works on calendar time: --start is missing"};
    }
    if (scaled.has_value()) {
        if (scope.empty()) {
            return Error{"--scaled needs --scope, the stretch of time that results are for"};
        }
        if (period.empty() && !isWorkLoadAnalysis(analysis)) {
            return Error{"--scaled needs --period, in which so many processes start"};
        }
    } else if (!period.empty() || !scope.empty()) {
        return Error{"--period and --scope belong to --scaled, which is missing"};
    }
    return {};
}

std::string RunOptions::analysisName() const {
    for (const auto& [word, number] : analysisWords()) {
        if (number == analysis) {
            return word;
        }
    }
    return {};
}

Result<RunPlan> planRun(const RunOptions& options, Repository& repository) {
    RunPlan plan;
    if (Result<void> known = checkGroupNames(options, repository.library()); !known) {
        return known.error();
    }
    for (const std::string& text : options.models) {
        const bool isName = repository.findModel(text) != nullptr;
        for (const std::string& name : isName ? std::vector<std::string>{text} : splitAtCommas(text)) {
            const Result<MeroId> model = takeModel(repository, name, ClassCodeProcessModel);
            if (!model) {
                return Error{"--models: " + model.error().text};
            }
            plan.models.push_back(model.value());
        }
    }
    if (!options.environment.empty()) {
        const Result<MeroId> model = takeModel(repository, options.environment, ClassCodeEnvironmentModel);
        if (!model) {
            return Error{"--environment: " + model.error().text};
        }
        plan.environment = model.value();
    }
    if (!options.start.empty()) {
        plan.start = readDateTime(options.start);
    }
    return plan;
}

}  // namespace mero
