#include "apps/mero/text_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <optional>

namespace mero {

namespace {

constexpr std::size_t MinimumLabelWidth = 16;
constexpr std::size_t ColumnGap = 2;
constexpr int DecimalsWanted = 4;
constexpr int DecimalsAtMost = 9;
/// Beyond this, numbers are printed as they are.
constexpr double GroupLimit = 1e15;

struct CodePoint {
    std::uint32_t value;
    std::size_t length;
};

/// A byte that isn't UTF-8 stands for itself.
CodePoint codePointAt(std::string_view text, std::size_t position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    std::size_t length = 1;
    std::uint32_t value = lead;
    if (lead >= 0xf0) {
        length = 4;
        value = lead & 0x07U;
    } else if (lead >= 0xe0) {
        length = 3;
        value = lead & 0x0fU;
    } else if (lead >= 0xc0) {
        length = 2;
        value = lead & 0x1fU;
    }
    if (position + length > text.size()) {
        return {lead, 1};
    }
    for (std::size_t index = 1; index < length; ++index) {
        value = (value << 6U) | (static_cast<unsigned char>(text[position + index]) & 0x3fU);
    }
    return {value, length};
}

std::size_t widthOf(std::uint32_t value) {
    if (value >= 0x300 && value <= 0x36f) {
        return 0;  // combining marks
    }
    const bool wide = (value >= 0x1100 && value <= 0x115f) || (value >= 0x2e80 && value <= 0xa4cf) ||
                      (value >= 0xac00 && value <= 0xd7a3) || (value >= 0xf900 && value <= 0xfaff) ||
                      (value >= 0xfe30 && value <= 0xfe6f) || (value >= 0xff00 && value <= 0xff60) ||
                      (value >= 0x1f300 && value <= 0x1faff) || (value >= 0x20000 && value <= 0x3fffd);
    return wide ? 2 : 1;
}

/// A name from a model may hold line breaks and other control characters.
std::string withoutControls(std::string_view text) {
    std::string cleaned(text);
    std::replace_if(
        cleaned.begin(), cleaned.end(),
        [](char character) { return static_cast<unsigned char>(character) < 0x20 || character == 0x7f; },
        ' ');
    return cleaned;
}

std::optional<double> numberIn(std::string_view text) {
    double number = 0.0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size() || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

/// Decimals that show the number, but no more than count.
int decimalsNeeded(double number) {
    const double magnitude = std::abs(number);
    const int zeros =
        magnitude > 0.0 && magnitude < 1.0 ? static_cast<int>(-std::floor(std::log10(magnitude))) - 1 : 0;
    const int limit = std::min(DecimalsAtMost, DecimalsWanted + zeros);
    std::string digits = fmt::format("{:.{}f}", magnitude, limit);
    const std::size_t last = digits.find_last_not_of('0');
    const std::size_t point = digits.find('.');
    return last > point ? static_cast<int>(last - point) : 0;
}

std::string pad(std::size_t count) {
    return std::string(count, ' ');
}

std::string leftIn(std::string_view text, std::size_t width, CharacterSet characters) {
    std::string cut = cutToWidth(text, width, characters);
    return cut + pad(width - displayWidth(cut));
}

std::string rightIn(std::string_view text, std::size_t width) {
    const std::size_t taken = displayWidth(text);
    return (taken < width ? pad(width - taken) : std::string()) + std::string(text);
}

/// Texts of a table as they are printed, with the width of each column.
class TableLayout {
public:
    TableLayout(const TextTable& shown, const Console& target, CharacterSet characterSet)
        : table(shown), console(target), characters(characterSet) {
        for (const auto* const group : {&table.rows, &table.summary}) {
            for (const TextTable::Row& row : *group) {
                labels.push_back(pad(2 * row.depth) + withoutControls(row.label));
            }
        }
        labelWidth = displayWidth(table.labelTitle);
        for (const std::string& label : labels) {
            labelWidth = std::max(labelWidth, displayWidth(label));
        }
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            addColumn(column);
        }
        limitLabels();
    }

    void print() const {
        for (std::size_t line = 0; line < table.headers.size(); ++line) {
            const std::string text = withoutControls(table.headers[line]);
            console.out << (line == 0 ? emphasised(text) : text) << '\n';
        }
        std::size_t first = 0;
        do {
            const std::size_t end = endOfBlock(first);
            printBlock(first, end);
            first = end;
            if (first < columns.size()) {
                console.out << '\n';
            }
        } while (first < columns.size());
    }

private:
    struct Column {
        std::string title;
        std::vector<std::string> cells;
        std::size_t width = 0;
    };

    void addColumn(std::size_t number) {
        Column column{withoutControls(table.columns[number]), {}, 0};
        for (const auto* const group : {&table.rows, &table.summary}) {
            for (const TextTable::Row& row : *group) {
                column.cells.push_back(withoutControls(row.cells[number]));
            }
        }
        if (!table.leftAlignedCells) {
            alignDecimals(column.cells);
        }
        column.width = displayWidth(column.title);
        for (const std::string& cell : column.cells) {
            column.width = std::max(column.width, displayWidth(cell));
        }
        columns.push_back(std::move(column));
    }

    /// Leaves room for the widest column beside the labels.
    void limitLabels() {
        std::size_t widest = 0;
        for (const Column& column : columns) {
            widest = std::max(widest, column.width);
        }
        const std::size_t taken = columns.empty() ? 0 : widest + ColumnGap;
        const std::size_t room = console.width > taken ? console.width - taken : 0;
        labelWidth = std::min(labelWidth, std::max(room, MinimumLabelWidth));
    }

    [[nodiscard]] std::size_t endOfBlock(std::size_t first) const {
        std::size_t width = labelWidth;
        std::size_t end = first;
        while (end < columns.size() &&
               (end == first || width + ColumnGap + columns[end].width <= console.width)) {
            width += ColumnGap + columns[end].width;
            ++end;
        }
        return end;
    }

    [[nodiscard]] std::string emphasised(const std::string& text) const {
        return console.colours ? "\033[1m" + text + "\033[0m" : text;
    }

    [[nodiscard]] std::string inColumn(const Column& column, const std::string& text) const {
        return pad(ColumnGap) + (table.leftAlignedCells ? leftIn(text, column.width, characters)
                                                        : rightIn(text, column.width));
    }

    void printLine(std::string line, bool emphasise) const {
        while (!line.empty() && line.back() == ' ') {
            line.pop_back();
        }
        console.out << (emphasise ? emphasised(line) : line) << '\n';
    }

    void printRule(std::size_t width) const {
        std::string rule;
        for (std::size_t index = 0; index < width; ++index) {
            rule += characters == CharacterSet::Ascii ? "-" : "─";
        }
        console.out << rule << '\n';
    }

    void printBlock(std::size_t first, std::size_t end) const {
        std::string titles = leftIn(table.labelTitle, labelWidth, characters);
        std::size_t width = labelWidth;
        for (std::size_t number = first; number < end; ++number) {
            titles += inColumn(columns[number], columns[number].title);
            width += ColumnGap + columns[number].width;
        }
        printLine(titles, true);
        printRule(width);
        for (std::size_t row = 0; row < labels.size(); ++row) {
            if (row == table.rows.size()) {
                printRule(width);
            }
            std::string line = leftIn(labels[row], labelWidth, characters);
            for (std::size_t number = first; number < end; ++number) {
                line += inColumn(columns[number], columns[number].cells[row]);
            }
            printLine(line, false);
        }
    }

    const TextTable& table;
    const Console& console;
    CharacterSet characters;
    std::vector<std::string> labels;  ///< of rows and summary
    std::vector<Column> columns;
    std::size_t labelWidth = 0;
};

}  // namespace

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t position = 0; position < text.size();) {
        const CodePoint point = codePointAt(text, position);
        width += widthOf(point.value);
        position += point.length;
    }
    return width;
}

std::string cutToWidth(std::string_view text, std::size_t width, CharacterSet characters) {
    if (displayWidth(text) <= width) {
        return std::string(text);
    }
    const std::string_view mark = characters == CharacterSet::Ascii ? "~" : "…";
    std::string kept;
    std::size_t taken = 1;
    for (std::size_t position = 0; position < text.size();) {
        const CodePoint point = codePointAt(text, position);
        taken += widthOf(point.value);
        if (taken > width) {
            break;
        }
        kept += text.substr(position, point.length);
        position += point.length;
    }
    return width == 0 ? std::string() : kept + std::string(mark);
}

void alignDecimals(std::vector<std::string>& cells) {
    int decimals = 0;
    for (const std::string& cell : cells) {
        if (const auto number = numberIn(cell); number && std::abs(*number) < GroupLimit) {
            decimals = std::max(decimals, decimalsNeeded(*number));
        }
    }
    for (std::string& cell : cells) {
        if (const auto number = numberIn(cell); number && std::abs(*number) < GroupLimit) {
            cell = fmt::format("{:.{}f}", *number, decimals);
        }
    }
}

void printTable(const TextTable& table, const Console& console, CharacterSet characters) {
    TableLayout(table, console, characters).print();
}

}  // namespace mero
