#pragma once

#include <memory>
#include <vector>

#include "component/host/sv_string.h"

/// Value of a formula.
class MeroKilnValue {
public:
    enum class Kind { Real, Integer, Time };

    MeroKilnValue() = default;
    explicit MeroKilnValue(double number, Kind valueKind = Kind::Real) : value(number), kind(valueKind) {}

    [[nodiscard]] Kind getKind() const { return kind; }
    [[nodiscard]] double asDouble() const { return value; }

private:
    double value = 0.0;
    Kind kind = Kind::Real;
};

/// Named values of a formula.
class MeroKilnValueSet {
public:
    struct Entry {
        SV::String name;
        MeroKilnValue value;
    };

    /// Adds a value; one of this name that is there is replaced with `replace` and kept without.
    void OldMoveValue(const SV::String& name, const MeroKilnValue& value, bool replace);
    [[nodiscard]] const std::vector<Entry>& getEntries() const { return entries; }
    /// Null if there is none.
    [[nodiscard]] const MeroKilnValue* find(const SV::String& name) const;

private:
    std::vector<Entry> entries;
};

/// Formula over named values: numbers, variables, `+ - * /`, signs, brackets, the functions min, max (two
/// arguments or more), abs, round (halves away from zero), floor, ceil and sqrt, comparisons (1 or 0, weaker
/// than `+`, not chained) and `c ? a : b` (weakest, to the right; only the branch taken counts). All values
/// are doubles.
class MeroKilnExpressionParser {
public:
    MeroKilnExpressionParser();
    MeroKilnExpressionParser(const MeroKilnExpressionParser&) = delete;
    MeroKilnExpressionParser& operator=(const MeroKilnExpressionParser&) = delete;
    ~MeroKilnExpressionParser();

    /// 0 if the text is a formula; else `error` tells place and reason.
    int SetExpression(const SV::String& text, SV::String& error);
    /// 0 on success. A variable without a value and a result that isn't finite are errors. The flags are
    /// without effect.
    int Evaluate(const MeroKilnValueSet& values, MeroKilnValue& value, SV::String& error, bool strict,
                 bool silent);

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};
