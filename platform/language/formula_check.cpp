#include "platform/language/formula_check.h"

#include <cctype>
#include <fmt/format.h>
#include <vector>

namespace mero {

namespace {

constexpr std::size_t DeepestFormula = 200;

bool isLetter(char character) {
    return std::isalpha(static_cast<unsigned char>(character)) != 0 || character == '_';
}
bool isDigit(char character) {
    return std::isdigit(static_cast<unsigned char>(character)) != 0;
}

/// What has been seen between two brackets.
struct Level {
    std::string_view function;  ///< empty for a plain bracket
    std::size_t arguments = 1;
    bool compared = false;
};

class FormulaChecker {
public:
    explicit FormulaChecker(std::string_view formula) : text(formula) {}

    Result<void> check() {
        levels.emplace_back();
        while (place < text.size()) {
            if (auto step = checkNext(); !step) {
                return step;
            }
        }
        return levels.size() == 1 ? Result<void>() : fail("a bracket isn't closed");
    }

private:
    Result<void> checkNext() {
        const char character = text[place];
        if (std::isspace(static_cast<unsigned char>(character)) != 0) {
            ++place;
            return {};
        }
        if (isLetter(character)) {
            const std::size_t begin = place;
            while (place < text.size() && (isLetter(text[place]) || isDigit(text[place]))) {
                ++place;
            }
            lastName = text.substr(begin, place - begin);
            return {};
        }
        if (isDigit(character) || character == '.') {
            skipNumber();
            return {};
        }
        auto outcome = checkSign(character);
        lastName = {};
        return outcome;
    }

    /// A letter behind a number can't begin a name.
    void skipNumber() {
        while (place < text.size() && (isDigit(text[place]) || text[place] == '.')) {
            ++place;
        }
        if (place < text.size() && (text[place] == 'e' || text[place] == 'E')) {
            place += place + 1 < text.size() && (text[place + 1] == '+' || text[place + 1] == '-') ? 2 : 1;
            while (place < text.size() && isDigit(text[place])) {
                ++place;
            }
        }
        lastName = {};
    }

    Result<void> checkSign(char character) {
        switch (character) {
            case '+':
            case '-':
            case '*':
            case '/':
                ++place;
                return {};
            case '?':
            case ':':
                levels.back().compared = false;
                ++place;
                return {};
            case '(':
                return openBracket();
            case ')':
                return closeBracket();
            case ',':
                return checkComma();
            case '<':
            case '>':
            case '=':
            case '!':
                return checkComparison(character);
            default:
                return fail(fmt::format("\"{}\" isn't part of a formula", character));
        }
    }

    Result<void> openBracket() {
        if (levels.size() > DeepestFormula) {
            return fail("brackets are nested too deeply");
        }
        levels.push_back({lastName});
        ++place;
        return {};
    }

    Result<void> closeBracket() {
        const Level& level = levels.back();
        if (levels.size() == 1) {
            return fail("a bracket closes that wasn't opened");
        }
        if ((level.function == "min" || level.function == "max") && level.arguments < 2) {
            return fail(fmt::format("\"{}\" needs two arguments or more", level.function));
        }
        levels.pop_back();
        ++place;
        return {};
    }

    Result<void> checkComma() {
        Level& level = levels.back();
        if (level.function.empty()) {
            return fail("a list stands outside a function");
        }
        ++level.arguments;
        level.compared = false;
        ++place;
        return {};
    }

    Result<void> checkComparison(char character) {
        const bool doubled = place + 1 < text.size() && text[place + 1] == '=';
        if (!doubled && (character == '=' || character == '!')) {
            return fail(character == '=' ? "a formula assigns nothing" : "\"!\" isn't part of a formula");
        }
        if (levels.back().compared) {
            return fail("comparisons can't be chained");
        }
        levels.back().compared = true;
        place += doubled ? 2 : 1;
        return {};
    }

    [[nodiscard]] Error fail(std::string_view reason) const {
        return {fmt::format("column {}: {}", place + 1, reason)};
    }

    std::string_view text;
    std::size_t place = 0;
    std::string_view lastName;  ///< the name right before this place, as a function's
    std::vector<Level> levels;
};

}  // namespace

Result<void> checkFormula(std::string_view text) {
    return FormulaChecker(text).check();
}

}  // namespace mero
