#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace SV {

/// Identifier of a message, control or form of the resource module.
struct ResId {
    std::uint32_t value = 0;

    constexpr ResId() = default;
    constexpr explicit ResId(std::uint32_t id) : value(id) {}
    friend constexpr bool operator==(ResId, ResId) = default;
};

/// UTF-8 text of the toolkit: reference-counted without atomics (one thread), so that a copy costs an
/// increment; its hash is computed once per shared text. Lengths and positions count bytes.
///
/// A text made of a message remembers the message's identifier through copies, replacements and appending,
/// and a text put together of several pieces has the identifier of the first piece that has one. Boxes report
/// it.
///
/// Ordering is that of every keyed container of the platform: by length, then by bytes.
class String {
public:
    static constexpr std::size_t NotFound = static_cast<std::size_t>(-1);

    String() noexcept = default;
    String(const char* text);         // NOLINT(google-explicit-constructor): literals are texts
    String(std::string_view text);    // NOLINT(google-explicit-constructor)
    String(const std::string& text);  // NOLINT(google-explicit-constructor)
    /// Loads the message; an unknown identifier gives "?" and the identifier in hexadecimal.
    explicit String(ResId message);
    /// Shortest decimal text that reads back to `number`, in the C locale: 3 is "3", 0.1 is "0.1". No
    /// exponent from 1e-6 to below 1e15; beyond, as in "1e+15". "nan", "inf" and "-inf" for what isn't
    /// finite.
    explicit String(double number);
    explicit String(std::int64_t number);
    explicit String(std::int32_t number) : String(static_cast<std::int64_t>(number)) {}

    String(const String& other) noexcept : rep(other.rep) { retain(); }
    String(String&& other) noexcept : rep(other.rep) { other.rep = nullptr; }
    String& operator=(const String& other) noexcept {
        if (this != &other) {
            other.retain();
            release();
            rep = other.rep;
        }
        return *this;
    }
    String& operator=(String&& other) noexcept {
        if (this != &other) {
            release();
            rep = other.rep;
            other.rep = nullptr;
        }
        return *this;
    }
    ~String() { release(); }

    [[nodiscard]] std::size_t Len() const noexcept { return rep != nullptr ? rep->length : 0; }
    [[nodiscard]] bool IsEmpty() const noexcept { return rep == nullptr; }
    /// Ends with a zero byte.
    [[nodiscard]] const char* GetStr() const noexcept { return rep != nullptr ? rep->text() : ""; }
    [[nodiscard]] std::string_view view() const noexcept { return {GetStr(), Len()}; }
    [[nodiscard]] char operator[](std::size_t index) const noexcept { return GetStr()[index]; }

    /// Code points, not bytes; a byte that isn't UTF-8 counts as one.
    [[nodiscard]] std::size_t CountCodePoints() const noexcept;

    String& operator+=(const String& other);
    friend String operator+(String left, const String& right) {
        left += right;
        return left;
    }

    [[nodiscard]] std::size_t Search(std::string_view part, std::size_t from = 0) const noexcept;
    String& Insert(const String& part, std::size_t position);
    String& Erase(std::size_t position, std::size_t count = NotFound);
    /// Replaces the first occurrence of `part` at or behind `from`; gives the position behind the
    /// replacement, or `NotFound`.
    std::size_t Replace(std::string_view part, const String& replacement, std::size_t from = 0);
    String& EraseAllChars(char unwanted);
    /// `count` times `filler`.
    String& Fill(std::size_t count, char filler);
    /// True for an optional sign and at least one digit, with at most one decimal point.
    [[nodiscard]] bool IsNumeric() const noexcept;

    /// Message that the text was made of; 0 for none.
    [[nodiscard]] ResId GetMessage() const noexcept { return ResId(rep != nullptr ? rep->message : 0); }

    /// The same for equal texts in every run.
    [[nodiscard]] std::size_t hash() const noexcept {
        if (rep == nullptr) {
            return 0;
        }
        if (rep->hashValue == 0) {
            rep->hashValue = computeHash();
        }
        return rep->hashValue;
    }

    /// Where a table found this text last: a guess that the table checks before it believes it, kept with the
    /// shared text so that all who hold a key help each other. 0 if nobody has left one; a host may give 0
    /// always.
    [[nodiscard]] std::uint32_t lookupHint() const noexcept { return rep != nullptr ? rep->hint : 0; }
    void setLookupHint(std::uint32_t hint) const noexcept {
        if (rep != nullptr) {
            rep->hint = hint;
        }
    }

    friend bool operator==(const String& left, const String& right) noexcept {
        return left.rep == right.rep || (left.Len() == right.Len() && left.hasSameBytes(right));
    }
    friend std::strong_ordering operator<=>(const String& left, const String& right) noexcept;

private:
    /// Shared text; its bytes and a zero byte follow it in memory.
    struct Rep {
        std::uint32_t references;
        std::uint32_t length;
        std::uint32_t message;
        std::uint32_t hint;
        std::size_t hashValue;

        [[nodiscard]] char* text() noexcept { return reinterpret_cast<char*>(this + 1); }
        [[nodiscard]] const char* text() const noexcept { return reinterpret_cast<const char*>(this + 1); }
    };

    static Rep* makeRep(std::size_t length, std::uint32_t message);
    static void freeRep(Rep* rep) noexcept;
    void assign(std::string_view text, std::uint32_t message);
    /// Text with `count` bytes at `position` exchanged for `replacement`.
    void splice(std::size_t position, std::size_t count, const String& replacement);

    void retain() const noexcept {
        if (rep != nullptr) {
            ++rep->references;
        }
    }
    void release() noexcept {
        if (rep != nullptr && --rep->references == 0) {
            freeRep(rep);
        }
    }
    [[nodiscard]] std::size_t computeHash() const noexcept;
    [[nodiscard]] bool hasSameBytes(const String& other) const noexcept;

    Rep* rep = nullptr;  ///< null for the empty text
};

}  // namespace SV

template <>
struct std::hash<SV::String> {
    std::size_t operator()(const SV::String& text) const noexcept { return text.hash(); }
};
