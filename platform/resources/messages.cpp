#include "platform/resources/messages.h"

#include <algorithm>
#include <array>

#include "platform/resources/catalogues.h"

namespace mero {

namespace {

std::span<const MessageCatalogue> allCatalogues() {
    static const std::array catalogues{EnglishMessages, GermanMessages};
    return catalogues;
}

const MessageCatalogue*& chosenCatalogue() {
    static const MessageCatalogue* chosen = &allCatalogues().front();
    return chosen;
}

std::string_view textIn(const MessageCatalogue& catalogue, std::uint32_t id) {
    const auto place = std::ranges::lower_bound(catalogue.messages, id, {}, &Message::id);
    return place != catalogue.messages.end() && place->id == id ? place->text : std::string_view{};
}

}  // namespace

std::span<const MessageCatalogue> availableCatalogues() {
    return allCatalogues();
}

std::vector<std::string_view> availableLanguages() {
    std::vector<std::string_view> languages;
    for (const MessageCatalogue& catalogue : allCatalogues()) {
        languages.push_back(catalogue.language);
    }
    return languages;
}

bool setLanguage(std::string_view locale) {
    const std::string_view language = locale.substr(0, locale.find_first_of("_.@-"));
    const auto place = std::ranges::find(allCatalogues(), language, &MessageCatalogue::language);
    if (place == allCatalogues().end()) {
        return false;
    }
    chosenCatalogue() = &*place;
    return true;
}

std::string_view currentLanguage() {
    return chosenCatalogue()->language;
}

std::string_view messageText(std::uint32_t id) {
    const std::string_view text = textIn(*chosenCatalogue(), id);
    return text.empty() ? textIn(EnglishMessages, id) : text;
}

}  // namespace mero
