#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/support/result.h"

namespace mero {

/// A formula as the evaluating library is given it.
struct CheckedFormula {
    /// Without blanks, with one sign at most before a value, and with `variableName` for each name.
    std::string text;
    std::vector<std::string> names;  ///< of the variables as written, each once, in order of first use
};

/// Name in the checked text of the variable with this number, from 0: names as they are written may be longer
/// than the library takes.
[[nodiscard]] std::string variableName(std::size_t number);

/// Reads a whole formula, so that what passes is taken by the evaluating library as well. Of anything else
/// the error names the column, from 1, in the text as it is given.
Result<CheckedFormula> checkFormula(std::string_view text);

}  // namespace mero
