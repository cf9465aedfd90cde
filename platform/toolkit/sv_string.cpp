#include "component/host/sv_string.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>

#include "platform/resources/messages.h"
#include "platform/toolkit/mixing.h"

namespace SV {

namespace {

/// Room for the text and its zero byte. It depends on the length alone, so that an unshared text grows in
/// place and repeated appending is linear.
std::size_t roomFor(std::size_t length) {
    constexpr std::size_t Granule = 8;
    constexpr std::size_t DoublingFrom = 128;
    const std::size_t needed = length + 1;
    return needed >= DoublingFrom ? std::bit_ceil(needed) : (needed + Granule - 1) / Granule * Granule;
}

std::string_view viewOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

/// Two numbers of 32 and more digits: the longest fixed text has 6 zeros and 17 digits.
using NumberBuffer = std::array<char, 64>;

std::string_view textOf(double number, NumberBuffer& buffer) {
    if (std::isnan(number)) {
        return "nan";
    }
    constexpr double FixedFrom = 1e-6;
    constexpr double FixedBelow = 1e15;
    const double size = std::fabs(number);
    const bool isFixed = size == 0.0 || (size >= FixedFrom && size < FixedBelow);
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                   isFixed ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    return {buffer.data(), end};
}

std::string_view textOf(std::int64_t number, NumberBuffer& buffer) {
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

}  // namespace

String::Rep* String::makeRep(std::size_t length, std::uint32_t message) {
    if (length >= std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("text of more than 4 GB");
    }
    std::byte* const memory = std::allocator<std::byte>().allocate(sizeof(Rep) + roomFor(length));
    Rep* const made = std::construct_at(reinterpret_cast<Rep*>(memory),
                                        Rep{1, static_cast<std::uint32_t>(length), message, 0, 0});
    made->text()[length] = '\0';
    return made;
}

void String::freeRep(Rep* rep) noexcept {
    const std::size_t size = sizeof(Rep) + roomFor(rep->length);
    std::destroy_at(rep);
    std::allocator<std::byte>().deallocate(reinterpret_cast<std::byte*>(rep), size);
}

String::String(const char* text) : String(viewOf(text)) {}
String::String(std::string_view text) {
    assign(text, 0);
}
String::String(const std::string& text) {
    assign(text, 0);
}

String::String(ResId message) {
    const std::string_view text = mero::messageText(message.value);
    if (!text.empty()) {
        assign(text, message.value);
        return;
    }
    NumberBuffer buffer{'?', '0', 'x'};
    constexpr int Hexadecimal = 16;
    char* end =
        std::to_chars(buffer.data() + 3, buffer.data() + buffer.size(), message.value, Hexadecimal).ptr;
    std::transform(buffer.data() + 3, end, buffer.data() + 3,
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    assign({buffer.data(), end}, message.value);
}

String::String(double number) {
    NumberBuffer buffer;
    assign(textOf(number, buffer), 0);
}

String::String(std::int64_t number) {
    NumberBuffer buffer;
    assign(textOf(number, buffer), 0);
}

void String::assign(std::string_view text, std::uint32_t message) {
    if (text.empty()) {
        return;
    }
    rep = makeRep(text.size(), message);
    std::memcpy(rep->text(), text.data(), text.size());
}

std::size_t String::CountCodePoints() const noexcept {
    const std::string_view bytes = view();
    std::size_t count = 0;
    for (std::size_t at = 0; at < bytes.size(); ++count) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const std::size_t length = lead >= 0xF0 && lead < 0xF8   ? 4
                                   : lead >= 0xE0 && lead < 0xF0 ? 3
                                   : lead >= 0xC2 && lead < 0xE0 ? 2
                                                                 : 1;
        std::size_t followers = 1;
        while (followers < length && at + followers < bytes.size() &&
               (static_cast<unsigned char>(bytes[at + followers]) & 0xC0U) == 0x80U) {
            ++followers;
        }
        at += followers == length ? length : 1;
    }
    return count;
}

String& String::operator+=(const String& other) {
    if (rep == nullptr) {
        return *this = other;
    }
    if (other.rep == nullptr) {
        return *this;
    }
    const std::size_t oldLength = rep->length;
    const std::size_t newLength = oldLength + other.rep->length;
    if (rep->references != 1 || roomFor(newLength) != roomFor(oldLength)) {
        splice(oldLength, 0, other);
        return *this;
    }
    std::memmove(rep->text() + oldLength, other.rep->text(), other.rep->length);
    rep->text()[newLength] = '\0';
    rep->length = static_cast<std::uint32_t>(newLength);
    rep->hashValue = 0;
    if (rep->message == 0) {
        rep->message = other.rep->message;
    }
    return *this;
}

void String::splice(std::size_t position, std::size_t count, const String& replacement) {
    const std::size_t newLength = Len() - count + replacement.Len();
    const std::uint32_t ownMessage = GetMessage().value;
    if (newLength == 0) {
        release();
        rep = nullptr;
        return;
    }
    Rep* made = makeRep(newLength, ownMessage != 0 ? ownMessage : replacement.GetMessage().value);
    const std::size_t tail = position + count;
    std::memcpy(made->text(), GetStr(), position);
    std::memcpy(made->text() + position, replacement.GetStr(), replacement.Len());
    std::memcpy(made->text() + position + replacement.Len(), GetStr() + tail, Len() - tail);
    release();
    rep = made;
}

std::size_t String::Search(std::string_view part, std::size_t from) const noexcept {
    return view().find(part, from);
}

String& String::Insert(const String& part, std::size_t position) {
    if (!part.IsEmpty()) {
        splice(std::min(position, Len()), 0, part);
    }
    return *this;
}

String& String::Erase(std::size_t position, std::size_t count) {
    if (position < Len() && count > 0) {
        splice(position, std::min(count, Len() - position), String());
    }
    return *this;
}

std::size_t String::Replace(std::string_view part, const String& replacement, std::size_t from) {
    const std::size_t place = part.empty() ? NotFound : Search(part, from);
    if (place == NotFound) {
        return NotFound;
    }
    const std::size_t behind = place + replacement.Len();
    splice(place, part.size(), replacement);
    return behind;
}

String& String::EraseAllChars(char unwanted) {
    if (Search({&unwanted, 1}) == NotFound) {
        return *this;
    }
    std::string kept;
    std::ranges::copy_if(view(), std::back_inserter(kept),
                         [unwanted](char each) { return each != unwanted; });
    const std::uint32_t message = GetMessage().value;
    *this = String();
    assign(kept, message);
    return *this;
}

String& String::Fill(std::size_t count, char filler) {
    return *this = String(std::string(count, filler));
}

bool String::IsNumeric() const noexcept {
    std::string_view rest = view();
    if (!rest.empty() && (rest.front() == '+' || rest.front() == '-')) {
        rest.remove_prefix(1);
    }
    const auto isDigit = [](char each) { return each >= '0' && each <= '9'; };
    const auto digits = std::ranges::count_if(rest, isDigit);
    const auto points = std::ranges::count(rest, '.');
    return digits > 0 && points <= 1 && digits + points == static_cast<std::ptrdiff_t>(rest.size());
}

std::size_t String::computeHash() const noexcept {
    const std::uint64_t value = mero::mixText(view());
    return value != 0 ? value : 1;
}

bool String::hasSameBytes(const String& other) const noexcept {
    return std::memcmp(GetStr(), other.GetStr(), Len()) == 0;
}

std::strong_ordering operator<=>(const String& left, const String& right) noexcept {
    if (left.rep == right.rep) {
        return std::strong_ordering::equal;
    }
    if (left.Len() != right.Len()) {
        return left.Len() <=> right.Len();
    }
    return std::memcmp(left.GetStr(), right.GetStr(), left.Len()) <=> 0;
}

}  // namespace SV
