#include "platform/interchange/history_file.h"

#include <charconv>
#include <fmt/format.h>
#include <optional>

namespace mero {

namespace {

constexpr std::string_view HeaderMark = "#";
constexpr std::size_t ShownBytes = 40;

std::string_view withoutLeadingBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

/// Cuts the number before the next semicolon off `line`; the last field of a line needs none.
template <class Number>
std::optional<Number> takeNumber(std::string_view& line) {
    const std::size_t end = line.find(';');
    std::string_view field = withoutLeadingBlanks(line.substr(0, end));
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    field = field.substr(0, field.find_last_not_of(" \t") + 1);
    Number number{};
    const auto [stop, status] = std::from_chars(field.data(), field.data() + field.size(), number);
    if (status != std::errc{} || stop != field.data() + field.size()) {
        return std::nullopt;
    }
    return number;
}

/// The reading of a line, or what is wrong with it.
Result<HistoryReading> readReading(std::string_view line) {
    const std::optional<MeroId> id = takeNumber<MeroId>(line);
    if (!id || *id < 0) {
        return Error{"an identifier is expected in the first field"};
    }
    const std::optional<double> time = takeNumber<double>(line);
    if (!time) {
        return Error{"a time in seconds is expected in the second field"};
    }
    const std::optional<double> value = takeNumber<double>(line);
    if (!value) {
        return Error{"a number is expected in the third field"};
    }
    return HistoryReading{*id, *time, *value, std::string(withoutLeadingBlanks(line))};
}

}  // namespace

Result<HistoryFile> readHistoryFile(std::string_view text, std::string_view source) {
    HistoryFile file;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = takeLine(text);
        if (file.readings.empty() && line.starts_with(HeaderMark)) {
            file.header.emplace_back(withoutLeadingBlanks(line.substr(HeaderMark.size())));
            continue;
        }
        if (withoutLeadingBlanks(line).empty()) {
            continue;
        }
        Result<HistoryReading> reading = readReading(line);
        if (!reading) {
            return Error{fmt::format("{}:{}: {}: \"{}{}\"", source, number, reading.error().text,
                                     line.substr(0, ShownBytes), line.size() > ShownBytes ? "…" : "")};
        }
        file.readings.push_back(std::move(reading.value()));
    }
    return file;
}

}  // namespace mero
