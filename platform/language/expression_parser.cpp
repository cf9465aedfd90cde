#include <algorithm>
#include <cmath>
#include <deque>
#include <muParser.h>
#include <string>

#include "component/host/kiln_expression_parser.h"

#include "platform/language/formula_check.h"

namespace {

constexpr int Success = 0;
constexpr int Failure = 1;

double smallest(const double* values, int count) {
    return *std::min_element(values, values + count);
}
double largest(const double* values, int count) {
    return *std::max_element(values, values + count);
}
double absolute(double value) {
    return std::fabs(value);
}
double rounded(double value) {
    return std::round(value);
}
double roundedDown(double value) {
    return std::floor(value);
}
double roundedUp(double value) {
    return std::ceil(value);
}
double squareRoot(double value) {
    return std::sqrt(value);
}

}  // namespace

void MeroKilnValueSet::OldMoveValue(const SV::String& name, const MeroKilnValue& value, bool replace) {
    const auto known =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.name == name; });
    if (known == entries.end()) {
        entries.push_back({name, value});
    } else if (replace) {
        known->value = value;
    }
}

const MeroKilnValue* MeroKilnValueSet::find(const SV::String& name) const {
    const auto known =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.name == name; });
    return known != entries.end() ? &known->value : nullptr;
}

struct MeroKilnExpressionParser::Impl {
    struct Variable {
        SV::String name;
        double value = 1.0;
    };

    Impl() {
        parser.ClearFun();
        parser.ClearConst();
        parser.DefineFun("min", smallest);
        parser.DefineFun("max", largest);
        parser.DefineFun("abs", absolute);
        parser.DefineFun("round", rounded);
        parser.DefineFun("floor", roundedDown);
        parser.DefineFun("ceil", roundedUp);
        parser.DefineFun("sqrt", squareRoot);
    }

    /// Compiles the text; evaluating it once brings out what compiling alone doesn't.
    void setExpression(const mero::CheckedFormula& formula) {
        variables.clear();
        parser.ClearVar();
        for (const std::string& name : formula.names) {
            const std::string shortName = mero::variableName(variables.size());
            variables.push_back({SV::String(name)});
            parser.DefineVar(shortName, &variables.back().value);
        }
        parser.SetExpr(formula.text);
        parser.Eval();
    }

    mu::Parser parser;
    std::deque<Variable> variables;  ///< the parser points to their values
    bool ready = false;
};

MeroKilnExpressionParser::MeroKilnExpressionParser() : impl(std::make_unique<Impl>()) {}
MeroKilnExpressionParser::~MeroKilnExpressionParser() = default;

int MeroKilnExpressionParser::SetExpression(const SV::String& text, SV::String& error) {
    impl->ready = false;
    const auto checked = mero::checkFormula(text.view());
    if (!checked) {
        error = SV::String(checked.error().text);
        return Failure;
    }
    try {
        impl->setExpression(checked.value());
    } catch (const mu::Parser::exception_type& fault) {
        error = SV::String(fault.GetMsg());
        return Failure;
    }
    impl->ready = true;
    return Success;
}

int MeroKilnExpressionParser::Evaluate(const MeroKilnValueSet& values, MeroKilnValue& value,
                                       SV::String& error, [[maybe_unused]] bool strict,
                                       [[maybe_unused]] bool silent) {
    if (!impl->ready) {
        error = "there is no formula";
        return Failure;
    }
    for (Impl::Variable& variable : impl->variables) {
        const MeroKilnValue* const known = values.find(variable.name);
        if (known == nullptr) {
            error = SV::String("no value for \"") + variable.name + SV::String("\"");
            return Failure;
        }
        variable.value = known->asDouble();
    }
    try {
        const double result = impl->parser.Eval();
        if (!std::isfinite(result)) {
            error = "the result isn't a finite number";
            return Failure;
        }
        value = MeroKilnValue(result);
    } catch (const mu::Parser::exception_type& fault) {
        error = SV::String(fault.GetMsg());
        return Failure;
    }
    return Success;
}
