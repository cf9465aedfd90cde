#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace mero {

/// Text of one message or control identifier. Placeholders are "%s", "%s1", "%a" and the like; "~" stands
/// before an accelerator.
struct Message {
    std::uint32_t id;
    std::string_view text;
};

/// The texts of one language, compiled in, in ascending order of identifiers. A language is added as one file
/// beside `messages_en.cpp` and one line in `messages.cpp`.
struct MessageCatalogue {
    std::string_view language;  ///< ISO 639-1 code
    std::span<const Message> messages;
};

[[nodiscard]] std::span<const MessageCatalogue> availableCatalogues();

/// Codes of the languages that have a catalogue.
[[nodiscard]] std::vector<std::string_view> availableLanguages();

/// Chooses the catalogue for "en", "en_GB.UTF-8" and the like. False, and no change, for a language without
/// one.
bool setLanguage(std::string_view locale);

[[nodiscard]] std::string_view currentLanguage();

/// Text in the current language, or else in English; empty for an unknown identifier. The view ends with a
/// zero byte behind it and stays valid for ever.
[[nodiscard]] std::string_view messageText(std::uint32_t id);

}  // namespace mero
