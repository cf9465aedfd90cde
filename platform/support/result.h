#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace mero {

/// Why something was refused: the place (file, line, path in a document) and the reason, in one line for the
/// user.
struct Error {
    std::string text;
};

/// A value, or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): `return value;` is what results are for
    Result(T value) : content(std::in_place_index<0>, std::move(value)) {}
    // NOLINTNEXTLINE(google-explicit-constructor, performance-unnecessary-value-param): it is moved from
    Result(Error error) : content(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool isGood() const { return content.index() == 0; }
    explicit operator bool() const { return isGood(); }
    /// Only of a good result.
    [[nodiscard]] T& value() { return std::get<0>(content); }
    [[nodiscard]] const T& value() const { return std::get<0>(content); }
    /// Only of a bad one.
    [[nodiscard]] const Error& error() const { return std::get<1>(content); }

private:
    std::variant<T, Error> content;
};

/// Success, or the reason of a failure.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    // NOLINTNEXTLINE(google-explicit-constructor, performance-unnecessary-value-param): it is moved from
    Result(Error error) : failure(std::move(error)) {}

    [[nodiscard]] bool isGood() const { return !failure.has_value(); }
    explicit operator bool() const { return isGood(); }
    [[nodiscard]] const Error& error() const { return *failure; }

private:
    std::optional<Error> failure;
};

}  // namespace mero
