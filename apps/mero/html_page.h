#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/result_table.h"

namespace mero {

/// A picture of a page.
struct HtmlPicture {
    std::string title;
    std::string svg;                   ///< an SVG element, which stands in the page as it is
    std::optional<std::size_t> table;  ///< the one that it stands below; none for the end of the page
};

/// The results as one page that needs nothing else: tables whose rows fold by script and are all open without
/// one, light or dark as the reader's system is, with the run that the numbers are of. Texts of models are
/// escaped, pictures aren't.
std::string writeHtmlPage(const std::vector<ResultTable>& tables, const RunDescription& run,
                          const std::vector<HtmlPicture>& pictures = {});

/// The text with what HTML gives a meaning replaced; control characters become blanks.
[[nodiscard]] std::string escapedHtml(std::string_view text);

}  // namespace mero
