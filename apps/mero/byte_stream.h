#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace mero {

/// Numbers and texts as bytes, the same on every machine: 64 bits, the lowest byte first; a text behind its
/// length.
class ByteWriter {
public:
    void number(std::uint64_t value) {
        for (unsigned shift = 0; shift < 64U; shift += 8U) {
            content += static_cast<char>(static_cast<unsigned char>(value >> shift));
        }
    }
    void real(double value) { number(std::bit_cast<std::uint64_t>(value)); }
    void text(std::string_view value) {
        number(value.size());
        content += value;
    }
    [[nodiscard]] std::string& bytes() { return content; }

private:
    std::string content;
};

/// Reads what `ByteWriter` wrote. Behind the first fault, which is the end of the bytes, everything is 0 or
/// empty.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : rest(bytes) {}

    std::uint64_t number() {
        std::uint64_t value = 0;
        const std::string_view bytes = take(sizeof value);
        for (std::size_t index = 0; index < bytes.size(); ++index) {
            value |= std::uint64_t{static_cast<unsigned char>(bytes[index])} << (8U * index);
        }
        return value;
    }
    double real() { return std::bit_cast<double>(number()); }
    std::string text() { return std::string(take(number())); }
    /// Length of a list whose elements take at least one byte each.
    std::size_t length() {
        const std::uint64_t value = number();
        if (value > rest.size()) {
            isGood = false;
        }
        return isGood ? static_cast<std::size_t>(value) : 0;
    }
    /// All has been read, and nothing was missing.
    [[nodiscard]] bool isDone() const { return isGood && rest.empty(); }

private:
    std::string_view take(std::uint64_t count) {
        if (!isGood || count > rest.size()) {
            isGood = false;
            return {};
        }
        const std::string_view taken = rest.substr(0, static_cast<std::size_t>(count));
        rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest;
    bool isGood = true;
};

}  // namespace mero
