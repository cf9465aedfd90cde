#pragma once

#include <string_view>

namespace mero {

/// Style sheet of result pages.
extern const std::string_view HtmlPageStyle;

/// Script of result pages: rows with rows below them get a button that folds these. A page without it is
/// whole.
extern const std::string_view HtmlPageScript;

}  // namespace mero
