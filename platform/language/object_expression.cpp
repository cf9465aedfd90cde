#include "platform/language/object_expression.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "platform/language/object_expression_tree.h"

namespace mero {

namespace {

/// Brackets deeper than this are refused, so that no text exhausts the stack.
constexpr int DeepestNesting = 200;

class ExpressionReader {
public:
    explicit ExpressionReader(std::string_view expressionText) : text(expressionText) {}

    Result<ObjectExpressionTree> read() {
        ObjectExpressionTree tree = readExpression();
        if (!failure && !atEnd()) {
            fail("expected +, -, &, where or the end of the expression");
        }
        if (failure) {
            return *std::move(failure);
        }
        return tree;
    }

private:
    ObjectExpressionTree readExpression() {
        ObjectExpressionTree tree;
        SetOperation operation = SetOperation::Union;
        do {
            tree.steps.push_back({operation, readOperand()});
        } while (!failure && readOperation(operation));
        return tree;
    }

    bool readOperation(SetOperation& operation) {
        skipWhiteSpace();
        if (accept('+')) {
            operation = SetOperation::Union;
        } else if (accept('-')) {
            operation = SetOperation::Difference;
        } else if (accept('&')) {
            operation = SetOperation::Intersection;
        } else {
            return false;
        }
        return true;
    }

    ObjectOperand readOperand() {
        ObjectOperand operand;
        skipWhiteSpace();
        if (accept('{')) {
            operand.content = readNamedObjects();
        } else if (accept('(')) {
            operand.content = readBrackets();
        } else if (acceptWord("all")) {
            operand.content = ObjectsOfClass{readString("a class name in double quotes")};
        } else {
            fail(R"(expected {"name":"class"}, all "class" or an expression in brackets)");
        }
        while (!failure && acceptWord("where")) {
            operand.filters.push_back(readFilter());
        }
        return operand;
    }

    std::unique_ptr<ObjectExpressionTree> readBrackets() {
        if (depth == DeepestNesting) {
            fail("brackets are nested too deeply");
            return nullptr;
        }
        ++depth;
        auto inner = std::make_unique<ObjectExpressionTree>(readExpression());
        --depth;
        expect(')', "+, -, &, where or a closing bracket");
        return inner;
    }

    NamedObjects readNamedObjects() {
        NamedObjects named;
        bool needsComma = false;
        for (skipWhiteSpace(); !failure && !accept('}'); skipWhiteSpace()) {
            if (accept(',')) {
                needsComma = false;
            } else if (needsComma) {
                fail("expected a comma or a closing brace");
            } else {
                NamedObject object;
                object.name = readString("an object name in double quotes, a comma or a closing brace");
                expect(':', "a colon behind the object name");
                object.className = readString("a class name in double quotes");
                named.objects.push_back(object);
                needsComma = true;
            }
        }
        return named;
    }

    ObjectFilter readFilter() {
        ObjectFilter filter{readString("an attribute name in double quotes"), readComparison(), {}};
        skipWhiteSpace();
        if (!atEnd() && text[position] == '"') {
            filter.literal = readString("a string").plain();
        } else {
            filter.literal = readNumber();
        }
        return filter;
    }

    Comparison readComparison() {
        skipWhiteSpace();
        if (accept('=')) {
            return Comparison::Equal;
        }
        if (accept('<')) {
            return accept('>')   ? Comparison::NotEqual
                   : accept('=') ? Comparison::LessOrEqual
                                 : Comparison::Less;
        }
        if (accept('>')) {
            return accept('=') ? Comparison::GreaterOrEqual : Comparison::Greater;
        }
        fail("expected =, <>, <, <=, > or >=");
        return Comparison::Equal;
    }

    double readNumber() {
        const std::size_t begin = position;
        accept('+') || accept('-');
        const bool isNegative = text.substr(begin, 1) == "-";
        const std::string_view rest = text.substr(position);
        double number = 0.0;
        const bool isNumber = !rest.empty() && rest.front() >= '0' && rest.front() <= '9';
        const auto [end, status] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
        if (!isNumber || status != std::errc()) {
            position = begin;
            fail(isNumber ? "this number is out of range" : "expected a string or a number");
            return 0.0;
        }
        position += static_cast<std::size_t>(end - rest.data());
        return isNegative ? -number : number;
    }

    QuotedText readString(const char* expected) {
        skipWhiteSpace();
        if (atEnd() || text[position] != '"') {
            fail(std::string("expected ") + expected);
            return {};
        }
        const std::optional<QuotedText> string = readQuotedText(text, position);
        if (!string) {
            fail("the string that begins here doesn't end; expected a double quote");
            return {};
        }
        return *string;
    }

    void expect(char wanted, const char* expected) {
        skipWhiteSpace();
        if (!accept(wanted)) {
            fail(std::string("expected ") + expected);
        }
    }

    bool accept(char wanted) {
        if (atEnd() || text[position] != wanted) {
            return false;
        }
        ++position;
        return true;
    }

    bool acceptWord(std::string_view word) {
        skipWhiteSpace();
        const std::size_t end = position + word.size();
        const bool isThere = text.substr(position, word.size()) == word;
        if (!isThere || (end < text.size() && !isWhiteSpace(text[end]) && text[end] != '"')) {
            return false;
        }
        position = end;
        return true;
    }

    void skipWhiteSpace() {
        while (!atEnd() && isWhiteSpace(text[position])) {
            ++position;
        }
    }

    [[nodiscard]] bool atEnd() const { return position >= text.size(); }

    void fail(const std::string& reason) {
        if (!failure) {
            failure = Error{describePlace(text, position) + ": " + reason};
        }
    }

    std::string_view text;
    std::size_t position = 0;
    int depth = 0;
    std::optional<Error> failure;
};

}  // namespace

Result<ObjectExpressionTree> readObjectExpression(std::string_view text) {
    return ExpressionReader(text).read();
}

Result<void> checkObjectExpression(std::string_view text) {
    const auto tree = readObjectExpression(text);
    return tree ? Result<void>() : Result<void>(tree.error());
}

}  // namespace mero
