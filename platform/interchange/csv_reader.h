#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

#include "platform/support/result.h"

namespace mero {

/// Reads comma-separated values row by row (RFC 4180): cells in double quotes may hold commas, line breaks
/// and doubled quotes; rows end with CR LF or LF, the last one also with the end of the input. A byte order
/// mark in front is passed over. Refused, with line and column: text that isn't UTF-8, zero characters,
/// quotes and carriage returns where they mean nothing, empty lines but at the end, cells of more than 1 MiB.
class CsvReader {
public:
    /// What a row is made of. Lines and columns count from 1, columns in bytes.
    struct Cell {
        std::string text;
        std::size_t line = 1;
        std::size_t column = 1;
    };

    /// `input` has to outlive the reader; `source` names it in errors.
    CsvReader(std::istream& input, std::string source);

    /// Replaces `cells` by the next row; false at the end.
    Result<bool> next(std::vector<Cell>& cells);
    /// "source:line:column: reason".
    [[nodiscard]] Error errorAt(std::size_t line, std::size_t column, const std::string& reason) const;

private:
    enum class CellEnd { Comma, Row, Refused };

    int peek();
    int take();
    bool fill();
    bool takeLineBreak();
    Cell& startCell(std::vector<Cell>& cells, std::size_t index) const;
    CellEnd readPlain(Cell& cell);
    void takeOrdinary(Cell& cell);
    CellEnd readQuoted(Cell& cell);
    CellEnd refuse(std::size_t line, std::size_t column, const std::string& reason);
    CellEnd finish(const Cell& cell, CellEnd end);

    std::istream& stream;
    std::string sourceName;
    std::vector<char> buffer;
    std::size_t position = 0;
    std::size_t filled = 0;
    std::size_t currentLine = 1;
    std::size_t currentColumn = 1;
    bool started = false;
    std::string failure;
};

/// The text as a cell: in quotes where it holds a quote, a comma or a line break.
void appendCsvCell(std::string& row, std::string_view text);

}  // namespace mero
