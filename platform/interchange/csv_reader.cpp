#include "platform/interchange/csv_reader.h"

#include <fmt/format.h>
#include <string_view>

namespace mero {

namespace {

constexpr std::size_t BufferSize = std::size_t{1} << 16;
constexpr std::size_t CellLimit = std::size_t{1} << 20;
constexpr int EndOfInput = -1;

/// Length of the code point beyond ASCII that begins at `text[0]`, 0 where there is none (Unicode 15, table
/// 3-7).
std::size_t codePointLength(std::string_view text) {
    const auto byte = [&](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const auto follows = [&](std::size_t index) { return (byte(index) & 0xC0U) == 0x80U; };
    const unsigned first = byte(0);
    if (first >= 0xC2 && first <= 0xDF) {
        return follows(1) ? 2 : 0;
    }
    if (first >= 0xE0 && first <= 0xEF) {
        const unsigned low = first == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = first == 0xED ? 0x9F : 0xBF;
        return byte(1) >= low && byte(1) <= high && follows(2) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const unsigned low = first == 0xF0 ? 0x90 : 0x80;
        const unsigned high = first == 0xF4 ? 0x8F : 0xBF;
        return byte(1) >= low && byte(1) <= high && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

bool isUtf8(std::string_view text) {
    while (true) {
        while (!text.empty() && static_cast<unsigned char>(text.front()) < 0x80) {
            text.remove_prefix(1);
        }
        if (text.empty()) {
            return true;
        }
        const std::size_t length = codePointLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
}

}  // namespace

CsvReader::CsvReader(std::istream& input, std::string source)
    : stream(input), sourceName(std::move(source)), buffer(BufferSize) {}

Error CsvReader::errorAt(std::size_t line, std::size_t column, const std::string& reason) const {
    return Error{fmt::format("{}:{}:{}: {}", sourceName, line, column, reason)};
}

Result<bool> CsvReader::next(std::vector<Cell>& cells) {
    if (!started) {
        started = true;
        fill();
        if (std::string_view(buffer.data(), filled).starts_with("\xEF\xBB\xBF")) {
            position = 3;
        }
    }
    const std::size_t emptyLine = currentLine;
    while (takeLineBreak()) {
    }
    if (peek() == EndOfInput) {
        return stream.bad() ? Result<bool>(errorAt(currentLine, currentColumn, "the file can't be read"))
                            : Result<bool>(false);
    }
    if (currentLine != emptyLine) {
        return errorAt(emptyLine, 1, "an empty line");
    }
    std::size_t count = 0;
    CellEnd end = CellEnd::Comma;
    while (end == CellEnd::Comma) {
        Cell& cell = startCell(cells, count++);
        if (peek() == '"') {
            take();
            end = readQuoted(cell);
        } else {
            end = readPlain(cell);
        }
    }
    cells.resize(count);
    return end == CellEnd::Refused ? Result<bool>(Error{failure}) : Result<bool>(true);
}

/// Cells are used again, so that a row costs no memory.
CsvReader::Cell& CsvReader::startCell(std::vector<Cell>& cells, std::size_t index) const {
    if (index == cells.size()) {
        cells.emplace_back();
    }
    Cell& cell = cells[index];
    cell.text.clear();
    cell.line = currentLine;
    cell.column = currentColumn;
    return cell;
}

CsvReader::CellEnd CsvReader::readPlain(Cell& cell) {
    while (true) {
        takeOrdinary(cell);
        if (cell.text.size() > CellLimit) {
            return refuse(cell.line, cell.column, "a cell of more than 1 MiB");
        }
        switch (peek()) {
            case ',':
                take();
                return finish(cell, CellEnd::Comma);
            case '"':
                return refuse(currentLine, currentColumn, "a quote in a cell that doesn't begin with one");
            case EndOfInput:
                return finish(cell, CellEnd::Row);
            case '\n':
            case '\r':
                return takeLineBreak() ? finish(cell, CellEnd::Row)
                                       : refuse(currentLine, currentColumn,
                                                "a carriage return without a line feed, outside quotes");
            default:
                break;  // the end of a piece of input
        }
    }
}

/// What is in the buffer up to a character that may end the cell.
void CsvReader::takeOrdinary(Cell& cell) {
    const std::string_view rest(buffer.data() + position, filled - position);
    std::size_t length = 0;
    while (length < rest.size() && rest[length] != ',' && rest[length] != '\n' && rest[length] != '"' &&
           rest[length] != '\r') {
        ++length;
    }
    cell.text.append(rest.substr(0, length));
    position += length;
    currentColumn += length;
}

CsvReader::CellEnd CsvReader::readQuoted(Cell& cell) {
    while (true) {
        const int next = take();
        if (next == EndOfInput) {
            return refuse(cell.line, cell.column, "the closing quote of the cell is missing");
        }
        if (next != '"' || peek() == '"') {
            cell.text.push_back(static_cast<char>(next));
            if (next == '"') {
                take();
            }
            if (cell.text.size() > CellLimit) {
                return refuse(cell.line, cell.column, "a cell of more than 1 MiB");
            }
            continue;
        }
        if (peek() == ',') {
            take();
            return finish(cell, CellEnd::Comma);
        }
        if (peek() == EndOfInput || takeLineBreak()) {
            return finish(cell, CellEnd::Row);
        }
        return refuse(currentLine, currentColumn, "text behind the closing quote of a cell");
    }
}

CsvReader::CellEnd CsvReader::finish(const Cell& cell, CellEnd end) {
    if (cell.text.find('\0') != std::string::npos) {
        return refuse(cell.line, cell.column, "a zero character in a cell");
    }
    return isUtf8(cell.text) ? end : refuse(cell.line, cell.column, "the cell isn't UTF-8");
}

CsvReader::CellEnd CsvReader::refuse(std::size_t line, std::size_t column, const std::string& reason) {
    failure = errorAt(line, column, reason).text;
    return CellEnd::Refused;
}

bool CsvReader::takeLineBreak() {
    if (peek() == '\n') {
        take();
        return true;
    }
    if (peek() != '\r') {
        return false;
    }
    if (position + 1 == filled) {
        // Keeps the carriage return in front of what is read next.
        buffer[0] = '\r';
        stream.read(buffer.data() + 1, static_cast<std::streamsize>(buffer.size() - 1));
        filled = static_cast<std::size_t>(stream.gcount()) + 1;
        position = 0;
    }
    if (position + 1 == filled || buffer[position + 1] != '\n') {
        return false;
    }
    take();
    take();
    return true;
}

bool CsvReader::fill() {
    stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    filled = static_cast<std::size_t>(stream.gcount());
    position = 0;
    return filled != 0;
}

int CsvReader::peek() {
    if (position == filled && !fill()) {
        return EndOfInput;
    }
    return static_cast<unsigned char>(buffer[position]);
}

int CsvReader::take() {
    const int next = peek();
    if (next == EndOfInput) {
        return next;
    }
    ++position;
    if (next == '\n') {
        ++currentLine;
        currentColumn = 1;
    } else {
        ++currentColumn;
    }
    return next;
}

void appendCsvCell(std::string& row, std::string_view text) {
    if (text.find_first_of("\",\r\n") == std::string_view::npos) {
        row += text;
        return;
    }
    row += '"';
    for (const char character : text) {
        if (character == '"') {
            row += '"';
        }
        row += character;
    }
    row += '"';
}

}  // namespace mero
