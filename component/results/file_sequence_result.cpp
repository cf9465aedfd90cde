#include "component/results/file_sequence_result.h"

#include <charconv>
#include <cmath>
#include <string>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"

#include "component/management/general_services.h"
#include "component/management/message_text.h"

namespace {

constexpr std::size_t HeaderPiece = 400;
constexpr int FieldsRead = 3;

constexpr SV::ResId OpenFailed{0x20051D7};
constexpr SV::ResId WriteFailed{0x20051D8};
constexpr SV::ResId ReadFailed{0x20051D9};

void showBoxOfFile(SV::ResId message, const SV::String& fileName) {
    showErrorBox(fillMessage(message, {{"%s", fileName}}));
}

/// Right-aligned in at least `width` places, with a decimal point in every locale.
void appendNumber(std::string& line, double number, int decimals, std::size_t width) {
    char digits[400];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, decimals).ptr;
    const auto length = static_cast<std::size_t>(end - digits);
    line.append(length < width ? width - length : 0, ' ');
    line.append(digits, length);
}

void appendIdentifier(std::string& line, MeroId id) {
    const std::string digits = std::to_string(static_cast<unsigned long>(id));
    line.append(digits.size() < 10 ? 10 - digits.size() : 0, ' ');
    line += digits;
}

/// A line break in a name would break the line of its reading.
void appendName(std::string& line, const SV::String& name) {
    for (const char character : name.view()) {
        line.push_back(character == '\n' || character == '\r' ? ' ' : character);
    }
}

const char* skipBlanks(const char* text) {
    while (*text == ' ' || *text == '\t') {
        ++text;
    }
    return text;
}

bool parseField(const char*& text, const char* end, double& number) {
    text = skipBlanks(text);
    const auto [rest, error] = std::from_chars(text, end, number);
    text = rest;
    return error == std::errc{};
}

bool parseSeparator(const char*& text) {
    text = skipBlanks(text);
    return *text++ == ';';
}

/// "id; time; value".
bool parseLine(const std::string& line, MeroSequenceEntry& entry) {
    const char* text = line.c_str();
    const char* const end = text + line.size();
    unsigned long id = 0;
    text = skipBlanks(text);
    const auto [rest, error] = std::from_chars(text, end, id);
    text = rest;
    if (error != std::errc{} || !parseSeparator(text) || !parseField(text, end, entry.time) ||
        !parseSeparator(text) || !parseField(text, end, entry.value)) {
        return false;
    }
    entry.objectId = static_cast<MeroId>(id);
    return true;
}

bool isAtEnd(std::FILE* stream) {
    const int next = std::getc(stream);
    if (next == EOF) {
        return true;
    }
    std::ungetc(next, stream);
    return false;
}

/// Reads to the end of the line and keeps the fields that are read back, however long they are: of what
/// stands behind them nothing is kept. Gives the number of bytes that it took; 0 at the end of the file.
long readLine(std::FILE* stream, std::string& fields) {
    fields.clear();
    long taken = 0;
    int separators = 0;
    for (int next = std::getc(stream); next != EOF; next = std::getc(stream)) {
        ++taken;
        if (next == '\n') {
            break;
        }
        separators += next == ';' ? 1 : 0;
        if (separators < FieldsRead) {
            fields.push_back(static_cast<char>(next));
        }
    }
    return taken;
}

void skipHeader(std::FILE* stream) {
    std::string line;
    for (int next = std::getc(stream); next != EOF; next = std::getc(stream)) {
        std::ungetc(next, stream);
        if (next != '#') {
            return;
        }
        readLine(stream, line);
    }
}

}  // namespace

MeroFileSequenceResult::MeroFileSequenceResult(MeroId object, MeroId key, SV::String name)
    : MeroSequenceResult(object, key), fileName(std::move(name)) {}

MeroFileSequenceResult::~MeroFileSequenceResult() {
    const MeroWaitCursor wait;
    if (writing) {
        closeWritten();
    }
    file.reset();
}

bool MeroFileSequenceResult::openForWriting(const SV::String& header) {
    if (writing || !openToWrite("w", "\n\n")) {
        return false;
    }
    for (std::size_t begin = 0; begin <= header.Len(); begin += HeaderPiece) {
        const std::string_view piece = header.view().substr(begin, HeaderPiece);
        std::fwrite(piece.data(), 1, piece.size(), file.get());
    }
    return true;
}

bool MeroFileSequenceResult::reopenForAppend() {
    return !writing && openToWrite("a", "");
}

bool MeroFileSequenceResult::openToWrite(const char* mode, const char* endOfBox) {
    file.reset(std::fopen(fileName.GetStr(), mode));
    if (file == nullptr) {
        showErrorBox(SV::String(OpenFailed) + fileName + SV::String(endOfBox));
        return false;
    }
    writing = true;
    readable = false;
    rewindPending = true;
    return true;
}

bool MeroFileSequenceResult::closeForReading() {
    if (!writing) {
        return false;
    }
    const bool complete = closeWritten();
    writing = false;
    readable = true;
    return complete;
}

bool MeroFileSequenceResult::closeWritten() {
    const bool complete = std::fclose(file.release()) == 0;
    if (!complete && !writeFailed) {
        showBoxOfFile(WriteFailed, fileName);
    }
    return complete;
}

bool MeroFileSequenceResult::addEntry(double value, double time, MeroId measuredObject) {
    if (!writing && (!readable || !reopenForAppend())) {
        return false;
    }
    const SV::String& name = nameOf(measuredObject);
    std::string& text = line;
    text.clear();
    appendIdentifier(text, measuredObject);
    text += "; ";
    if (time == 0.0) {
        text += '0';
    } else {
        appendNumber(text, time, 0, 10);
    }
    text += "; ";
    appendNumber(text, value, 6, 12);
    text += "; ";
    appendName(text, name);
    text += '\n';
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
        writeFailed = true;
        showBoxOfFile(WriteFailed, fileName);
        return false;
    }
    return true;
}

void MeroFileSequenceResult::rewind() {
    if (!writing) {
        file.reset();
        rewindPending = true;
    }
}

bool MeroFileSequenceResult::getNext(MeroSequenceEntry& entry) {
    if (writing) {
        return false;
    }
    if (rewindPending) {
        if (file != nullptr) {
            displayErrorMessage("aearslt", __LINE__);
            return false;
        }
        file.reset(std::fopen(fileName.GetStr(), "r"));
        if (file != nullptr) {
            skipHeader(file.get());
            rewindPending = false;
        }
    }
    if (file == nullptr) {
        displayErrorMessage("aearslt", __LINE__);
        return false;
    }
    if (isAtEnd(file.get()) && std::ferror(file.get()) == 0) {
        std::rewind(file.get());
        skipHeader(file.get());
        return false;
    }
    const long taken = readLine(file.get(), line);
    if (taken == 0 || std::ferror(file.get()) != 0 || !parseLine(line, entry)) {
        std::clearerr(file.get());
        std::fseek(file.get(), -taken, SEEK_CUR);
        showBoxOfFile(ReadFailed, fileName);
        return false;
    }
    return true;
}

const SV::String& MeroFileSequenceResult::nameOf(MeroId measuredObject) {
    if (const SV::String* const known = names.find(measuredObject)) {
        return *known;
    }
    SV::String name;
    if (getAttributeText(measuredObject, name, ClassCodeInstanceName) != StatusOk) {
        name = "?";
    }
    return names.add(measuredObject, name);
}
