#include "platform/resources/messages.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

const mero::Message* findIn(const mero::MessageCatalogue& catalogue, std::uint32_t id) {
    const auto place = std::ranges::find(catalogue.messages, id, &mero::Message::id);
    return place != catalogue.messages.end() ? &*place : nullptr;
}

TEST(MessagesTest, EveryIdentifierInTheSourcesHasATextInEveryCatalogue) {
    namespace fs = std::filesystem;
    const std::regex identifier("0x2[0-9A-Fa-f]{6}\\b");
    std::size_t found = 0;
    for (const char* folder : {"component", "platform", "apps"}) {
        for (const auto& file : fs::recursive_directory_iterator(fs::path(MERO_SOURCE_DIR) / folder)) {
            if (file.path().extension() != ".cpp" && file.path().extension() != ".h") {
                continue;
            }
            std::ifstream stream(file.path());
            const std::string text(std::istreambuf_iterator<char>(stream), {});
            for (std::sregex_iterator each(text.begin(), text.end(), identifier), end; each != end; ++each) {
                ++found;
                const auto id = static_cast<std::uint32_t>(std::stoul(each->str(), nullptr, 16));
                for (const auto& catalogue : mero::availableCatalogues()) {
                    EXPECT_NE(findIn(catalogue, id), nullptr)
                        << each->str() << " of " << file.path() << " in " << catalogue.language;
                }
            }
        }
    }
    EXPECT_GT(found, 200U);
}

TEST(MessagesTest, TextsHoldThePlaceholdersThatAreReplaced) {
    const struct {
        std::uint32_t id;
        std::vector<std::string> placeholders;
    } cases[] = {
        {0x2004F08, {"%s"}},         {0x2004F1F, {"%s"}},
        {0x2004F20, {"%s"}},         {0x2004F47, {"%a"}},
        {0x2004F49, {"%s", "%s"}},   {0x200505B, {"%s", "%d", "%t"}},
        {0x2005173, {"%s1", "%s2"}}, {0x2005176, {"%s"}},
        {0x2005188, {"%s"}},         {0x20051B3, {"%s1", "%s2", "%s3", "%s4", "%s5", "%s6"}},
        {0x20051D8, {"%s"}},         {0x20051D9, {"%s"}},
    };
    for (const auto& catalogue : mero::availableCatalogues()) {
        for (const auto& [id, placeholders] : cases) {
            const mero::Message* message = findIn(catalogue, id);
            ASSERT_NE(message, nullptr);
            std::string rest(message->text);
            for (const std::string& placeholder : placeholders) {
                const std::size_t place = rest.find(placeholder);
                ASSERT_NE(place, std::string::npos) << std::hex << id << " lacks " << placeholder;
                rest.erase(place, placeholder.size());
            }
            EXPECT_EQ(rest.find('%'), std::string::npos) << std::hex << id << ": " << message->text;
        }
    }
}

TEST(MessagesTest, OnlyKnownPlaceholdersStandInTexts) {
    const std::regex placeholder("%(?!s|a|d|t|h)");
    for (const auto& catalogue : mero::availableCatalogues()) {
        for (const auto& message : catalogue.messages) {
            EXPECT_FALSE(message.text.empty());
            EXPECT_FALSE(std::regex_search(std::string(message.text), placeholder)) << message.text;
            EXPECT_LE(std::ranges::count(message.text, '~'), 1) << message.text;
        }
    }
}

TEST(MessagesTest, EveryLanguageHasTheSameIdentifiersAndPlaceholders) {
    const std::regex placeholder("%(s[0-9]?|[adth])");
    const auto placeholdersOf = [&](std::string_view view) {
        const std::string text(view);
        std::multiset<std::string> found;
        for (std::sregex_iterator each(text.begin(), text.end(), placeholder), end; each != end; ++each) {
            found.insert(each->str());
        }
        return found;
    };
    const mero::MessageCatalogue& english = mero::availableCatalogues().front();
    EXPECT_GE(mero::availableCatalogues().size(), 2U);
    for (const auto& catalogue : mero::availableCatalogues()) {
        EXPECT_EQ(catalogue.messages.size(), english.messages.size()) << catalogue.language;
        for (const auto& [id, text] : english.messages) {
            const mero::Message* message = findIn(catalogue, id);
            ASSERT_NE(message, nullptr) << std::hex << id << " in " << catalogue.language;
            EXPECT_EQ(placeholdersOf(message->text), placeholdersOf(text)) << message->text;
            EXPECT_EQ(message->text.ends_with(' '), text.ends_with(' ')) << message->text;
        }
    }
}

TEST(MessagesTest, TextsThatAreDataAreTheSameInEveryLanguage) {
    // The calendar of a new agent, the signs of operators, and the enumeration of the process library.
    for (const std::uint32_t id : {0x20051A6U, 0x200501AU, 0x200501EU, 0x2000802U, 0x2000803U, 0x2000804U}) {
        for (const auto& catalogue : mero::availableCatalogues()) {
            EXPECT_EQ(findIn(catalogue, id)->text, findIn(mero::availableCatalogues().front(), id)->text);
        }
    }
}

TEST(MessagesTest, ChoosesALanguageByLocaleAndKeepsItForAnUnknownOne) {
    EXPECT_TRUE(mero::setLanguage("en_GB.UTF-8"));
    EXPECT_FALSE(mero::setLanguage("xx_XX"));
    EXPECT_EQ(mero::currentLanguage(), "en");
    EXPECT_EQ(mero::messageText(0x2004EAC), "Frequency");
    EXPECT_EQ(mero::messageText(0x20051A6), "CALENDAR\nDAILY hours:\"00:00-24:00\"");
    EXPECT_TRUE(mero::messageText(0x2FFFFFF).empty());
}

}  // namespace
