#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// The bytes of a fuzzer's call as text.
inline std::string_view asText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the program, so that the fuzzer keeps the input, if something that must hold doesn't.
inline void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "doesn't hold: %s\n", what);
        std::abort();
    }
}

/// A refusal has to say why.
template <class Result>
void requireReason(const Result& result) {
    require(result.isGood() || !result.error().text.empty(), "an error has a text");
}
