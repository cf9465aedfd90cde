#include "platform/language/formula_check.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <locale>
#include <sstream>

namespace mero {

namespace {

constexpr std::size_t DeepestFormula = 200;
/// The evaluating library takes fewer characters than this.
constexpr std::size_t LongestFormula = 20000;

struct Function {
    std::string_view name;
    bool takesList;  ///< two arguments or more, else one
};
constexpr std::array Functions{Function{"min", true},    Function{"max", true},    Function{"abs", false},
                               Function{"round", false}, Function{"floor", false}, Function{"ceil", false},
                               Function{"sqrt", false}};

struct FormulaFault {
    std::size_t place;
    std::string reason;
};

bool isBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}
bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_';
}
bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Bytes of the UTF-8 character that begins the text.
std::string_view firstCharacter(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return text.substr(0, length);
}

/// Reads by recursive descent, from the weakest operator to the strongest, and writes what it reads.
class FormulaReader {
public:
    explicit FormulaReader(std::string_view written) : text(written) {}

    CheckedFormula read() {
        readConditional();
        if (hasMore()) {
            refuseNext();
        }
        return std::move(formula);
    }

private:
    /// c ? a : b ? …
    void readConditional() {
        for (;;) {
            readComparison();
            if (!isNext('?')) {
                return;
            }
            const std::size_t begin = place;
            take(1);
            enter(begin);
            readConditional();
            --depth;
            if (!hasMore() || isNext(')') || isNext(',')) {
                fail(begin, "\"?\" has no \":\"");
            }
            takeOrRefuse(':');
        }
    }

    void readComparison() {
        readSum();
        if (takeComparison()) {
            readSum();
            if (comparisonLength() > 0) {
                fail(place, "comparisons can't be chained");
            }
        }
    }

    bool takeComparison() {
        const std::size_t length = comparisonLength();
        take(length);
        return length > 0;
    }

    /// Characters of the comparison that stands next; 0 for none.
    std::size_t comparisonLength() {
        if (!hasMore()) {
            return 0;
        }
        const bool doubled = place + 1 < text.size() && text[place + 1] == '=';
        switch (text[place]) {
            case '<':
            case '>':
                return doubled ? 2 : 1;
            case '=':
            case '!':
                return doubled ? 2 : 0;
            default:
                return 0;
        }
    }

    void readSum() {
        readProduct();
        while (isNext('+') || isNext('-')) {
            take(1);
            readProduct();
        }
    }

    void readProduct() {
        readSigned();
        while (isNext('*') || isNext('/')) {
            take(1);
            readSigned();
        }
    }

    /// The library takes one sign before a value; more come down to one minus or none.
    void readSigned() {
        bool isNegative = false;
        for (; isNext('+') || isNext('-'); ++place) {
            isNegative = isNegative != (text[place] == '-');
        }
        if (isNegative) {
            write("-");
        }
        readValue();
    }

    void readValue() {
        if (!hasMore()) {
            fail(place, "a value is expected here");
        }
        if (isLetter(text[place])) {
            readName();
        } else if (isDigit(text[place]) || text[place] == '.') {
            readNumber();
        } else if (isNext('(')) {
            readBrackets();
        } else if (std::string_view("*/?:<>=!),").find(text[place]) != std::string_view::npos) {
            fail(place, "a value is expected here");
        } else {
            refuseNext();
        }
    }

    void readBrackets() {
        const std::size_t begin = place;
        openBracket(begin);
        readConditional();
        closeBracket(begin);
    }

    void openBracket(std::size_t begin) {
        take(1);
        enter(begin);
    }

    void closeBracket(std::size_t begin) {
        if (!hasMore()) {
            fail(begin, "a bracket isn't closed");
        }
        takeOrRefuse(')');
        --depth;
    }

    void readName() {
        const std::size_t begin = place;
        while (place < text.size() && (isLetter(text[place]) || isDigit(text[place]))) {
            ++place;
        }
        const std::string_view name = text.substr(begin, place - begin);
        const auto* const function = std::ranges::find(Functions, name, &Function::name);
        const bool isCall = isNext('(');
        if (function != Functions.end()) {
            if (!isCall) {
                fail(begin, fmt::format("\"{}\" is a function, its arguments stand in brackets", name));
            }
            readCall(*function, begin);
        } else if (isCall) {
            fail(begin, fmt::format("there is no function \"{}\"", name));
        } else {
            writeVariable(name);
        }
    }

    void readCall(const Function& function, std::size_t begin) {
        write(function.name);
        const std::size_t bracket = place;
        openBracket(bracket);
        std::size_t arguments = 0;
        if (!isNext(')')) {
            readConditional();
            for (arguments = 1; isNext(','); ++arguments) {
                take(1);
                readConditional();
            }
        }
        closeBracket(bracket);
        if (function.takesList ? arguments < 2 : arguments != 1) {
            fail(begin, fmt::format("\"{}\" takes {}", function.name,
                                    function.takesList ? "two arguments or more" : "one argument"));
        }
    }

    void writeVariable(std::string_view name) {
        const auto known = std::ranges::find(formula.names, name);
        write(variableName(static_cast<std::size_t>(known - formula.names.begin())));
        if (known == formula.names.end()) {
            formula.names.emplace_back(name);
        }
    }

    void readNumber() {
        const std::size_t begin = place;
        std::size_t digits = skipDigits();
        if (place < text.size() && text[place] == '.') {
            ++place;
            digits += skipDigits();
        }
        if (digits == 0) {
            fail(begin, "a number needs digits");
        }
        if (place < text.size() && (text[place] == 'e' || text[place] == 'E')) {
            ++place;
            if (place < text.size() && (text[place] == '+' || text[place] == '-')) {
                ++place;
            }
            if (skipDigits() == 0) {
                fail(begin, "the exponent of a number needs digits");
            }
        }
        const std::string number(text.substr(begin, place - begin));
        if (!isReadable(number)) {
            fail(begin, "a number is too large");
        }
        write(number);
    }

    std::size_t skipDigits() {
        const std::size_t begin = place;
        while (place < text.size() && isDigit(text[place])) {
            ++place;
        }
        return place - begin;
    }

    /// As the library reads it: too large a number fails, too small a one is 0.
    static bool isReadable(const std::string& number) {
        std::istringstream stream(number);
        stream.imbue(std::locale::classic());
        double value = 0.0;
        return static_cast<bool>(stream >> value);
    }

    /// Tells of what stands next, where a formula or a part of it could have ended.
    [[noreturn]] void refuseNext() const {
        const char next = text[place];
        switch (next) {
            case ')':
                fail(place, "a bracket closes that wasn't opened");
            case ',':
                fail(place, "a list stands outside a function");
            case ':':
                fail(place, "\":\" has no \"?\"");
            case '=':
                fail(place, "a formula assigns nothing");
            default:
                break;
        }
        if (isLetter(next) || isDigit(next) || next == '.' || next == '(') {
            fail(place, "an operator is expected here");
        }
        fail(place, fmt::format("\"{}\" isn't part of a formula", firstCharacter(text.substr(place))));
    }

    [[noreturn]] static void fail(std::size_t at, std::string reason) {
        throw FormulaFault{at, std::move(reason)};
    }

    void enter(std::size_t at) {
        if (++depth > DeepestFormula) {
            fail(at, "a formula is nested too deeply");
        }
    }

    bool hasMore() {
        while (place < text.size() && isBlank(text[place])) {
            ++place;
        }
        return place < text.size();
    }
    bool isNext(char character) { return hasMore() && text[place] == character; }

    void takeOrRefuse(char character) {
        if (!isNext(character)) {
            refuseNext();
        }
        take(1);
    }

    void take(std::size_t length) {
        write(text.substr(place, length));
        place += length;
    }

    void write(std::string_view part) {
        if (formula.text.size() + part.size() >= LongestFormula) {
            fail(place, "a formula is too long");
        }
        formula.text += part;
    }

    std::string_view text;
    std::size_t place = 0;
    std::size_t depth = 0;
    CheckedFormula formula;
};

}  // namespace

std::string variableName(std::size_t number) {
    return fmt::format("v{}", number);
}

Result<CheckedFormula> checkFormula(std::string_view text) {
    try {
        return FormulaReader(text).read();
    } catch (const FormulaFault& fault) {
        return Error{fmt::format("column {}: {}", fault.place + 1, fault.reason)};
    }
}

}  // namespace mero
