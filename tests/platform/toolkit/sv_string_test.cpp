#include "component/host/sv_string.h"

#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "component/host/basic_services.h"

namespace {

using SV::ResId;
using SV::String;

constexpr ResId SumLabel(0x2004F44);
constexpr ResId MinimumLabel(0x2004F45);

TEST(StringTest, KeepsTheMessageThroughCopiesAppendingAndReplacing) {
    String text(ResId(0x2005173));
    ASSERT_NE(text.Search("%s1"), String::NotFound);
    text.Replace("%s1", "Measures");
    text.Replace("%s2", "Tusk");
    EXPECT_EQ(text.GetMessage(), ResId(0x2005173));
    EXPECT_NE(text.Search("\"Tusk\""), String::NotFound);

    String copy = text;
    copy += "\n\n";
    copy.Insert("# ", 0).EraseAllChars('\n').Erase(0, 2);
    EXPECT_EQ(copy.GetMessage(), ResId(0x2005173));
    EXPECT_EQ(copy, text);
}

TEST(StringTest, TakesTheMessageOfTheFirstPieceThatHasOne) {
    EXPECT_EQ((String("Measures: ") + String(SumLabel) + String(MinimumLabel)).GetMessage(), SumLabel);
    EXPECT_EQ((String() + String(MinimumLabel)).GetMessage(), MinimumLabel);
    String pattern("%s (%s)");
    pattern.Replace("%s", String(MinimumLabel));
    EXPECT_EQ(pattern.GetMessage(), MinimumLabel);
    EXPECT_EQ(String(String(SumLabel).view()).GetMessage(), ResId());
}

TEST(StringTest, TellsTheNumberOfAnUnknownMessage) {
    EXPECT_EQ(String(ResId(0x2ABCDEF)).view(), "?0x2ABCDEF");
}

TEST(StringTest, ChangingOneTextLeavesItsCopiesAlone) {
    String first("order");
    const String second = first;
    first += "s";
    first.Replace("ord", "BORD");
    EXPECT_EQ(first.view(), "BORDers");
    EXPECT_EQ(second.view(), "order");
    first += first;
    EXPECT_EQ(first.view(), "BORDersBORDers");
    first.Insert(first, 4);
    EXPECT_EQ(first.view(), "BORDBORDersBORDersersBORDers");
}

TEST(StringTest, GrowsByAppendingLikeAStandardString) {
    String text;
    std::string expected;
    for (int step = 0; step < 5000; ++step) {
        const std::string piece(static_cast<std::size_t>(step % 7), static_cast<char>('a' + step % 26));
        const String shared = step % 3 == 0 ? text : String();
        text += String(piece);
        expected += piece;
        ASSERT_EQ(text.view(), expected);
        ASSERT_EQ(text.GetStr()[text.Len()], '\0');
    }
    EXPECT_EQ(text.hash(), String(expected).hash());
}

TEST(StringTest, HashFollowsAChangeInPlace) {
    String text(std::string(20, 'x'));
    const std::size_t before = text.hash();
    text += "y";
    EXPECT_NE(text.hash(), before);
    EXPECT_EQ(text.hash(), String(std::string(20, 'x') + "y").hash());
}

TEST(StringTest, OrdersByLengthAndThenByBytes) {
    const std::vector<String> ascending{"", "b", "\xC3", "aa", "ab", "aaa"};
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            EXPECT_EQ(ascending[left] <=> ascending[right], left <=> right);
            EXPECT_EQ(ascending[left] == ascending[right], left == right);
        }
    }
}

TEST(StringTest, WritesDoublesShortlyAndWithoutNeedlessExponents) {
    const struct {
        double number;
        const char* text;
    } cases[] = {
        {0.0, "0"},
        {3.0, "3"},
        {0.1, "0.1"},
        {-2.5, "-2.5"},
        {1.0 / 3.0, "0.3333333333333333"},
        {1e-6, "0.000001"},
        {9.5e-7, "9.5e-07"},
        {123456789012345.0, "123456789012345"},
        {999999999999999.9, "999999999999999.9"},
        {1e15, "1e+15"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {-std::numeric_limits<double>::infinity(), "-inf"},
    };
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(String(number).view(), text);
    }
}

TEST(StringTest, WrittenDoublesReadBackToTheSameNumber) {
    std::mt19937_64 random(1);
    for (int round = 0; round < 20000; ++round) {
        const double number =
            std::ldexp(static_cast<double>(random() >> 11), static_cast<int>(random() % 200) - 150);
        const String text(number);
        double back = 0.0;
        std::from_chars(text.GetStr(), text.GetStr() + text.Len(), back);
        ASSERT_EQ(back, number) << text.view();
    }
}

TEST(StringTest, TellsNumericTexts) {
    for (const char* numeric : {"0", "-12", "+3.5", ".5", "5."}) {
        EXPECT_TRUE(String(numeric).IsNumeric()) << numeric;
    }
    for (const char* other : {"", "-", ".", "1.2.3", "1e5", " 1", "1 ", "--1", "12a"}) {
        EXPECT_FALSE(String(other).IsNumeric()) << other;
    }
}

TEST(StringTest, CountsCodePointsAndStrayBytes) {
    EXPECT_EQ(String("Prüfung").CountCodePoints(), 7U);
    EXPECT_EQ(String("\xF0\x9F\x98\x80!").CountCodePoints(), 2U);
    EXPECT_EQ(String("a\xC3").CountCodePoints(), 2U);
    EXPECT_EQ(String("\x80\x80").CountCodePoints(), 2U);
    EXPECT_EQ(String("\xE2\x82").CountCodePoints(), 2U);
}

TEST(StringTest, PositionsOutsideTheTextChangeNothing) {
    String text("abc");
    EXPECT_EQ(text.Search("c", 10), String::NotFound);
    EXPECT_EQ(text.Replace("x", "y"), String::NotFound);
    EXPECT_EQ(text.Replace("", "y"), String::NotFound);
    text.Erase(3).Insert("d", 99);
    EXPECT_EQ(text.view(), "abcd");
    EXPECT_TRUE(text.Erase(0).IsEmpty());
}

TEST(StringTest, UnmaskingTakesBackMasking) {
    const String name("a \"b\" \\ c\\");
    const String masked = Mero_Mask(name, '"', '\\');
    EXPECT_EQ(masked.view(), R"(a \"b\" \\ c\\)");
    EXPECT_EQ(Mero_Unmask(masked, '\\'), name);
}

}  // namespace
