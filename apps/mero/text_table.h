#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "apps/mero/console.h"

namespace mero {

/// Characters of tables and plots.
enum class CharacterSet { BoxDrawing, Ascii };

/// A table for a terminal: a label column whose indentation is the hierarchy, and value columns.
struct TextTable {
    struct Row {
        std::size_t depth = 0;
        std::string label;
        std::vector<std::string> cells;  ///< one for each column
    };

    std::vector<std::string> headers;  ///< lines above the table, the first one stands out
    std::string labelTitle;
    std::vector<std::string> columns;
    std::vector<Row> rows;
    std::vector<Row> summary;       ///< below a rule: sum and extremes
    bool leftAlignedCells = false;  ///< texts instead of numbers
};

/// Prints to `console.out`, fitted to its width: columns that don't fit stand in further tables below, each
/// with the labels; a label that is still too long is cut. Numbers of a column get the same number of
/// decimals, as many as the column needs, four at most behind the first digit that counts.
void printTable(const TextTable& table, const Console& console, CharacterSet characters);

/// Columns that the text takes on a terminal, by the widths of Unicode's East Asian characters.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

/// The text cut to at most `width` columns, with a mark for what is missing.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t width, CharacterSet characters);

/// Gives the cells that are numbers a common number of decimals; others stay.
void alignDecimals(std::vector<std::string>& cells);

}  // namespace mero
