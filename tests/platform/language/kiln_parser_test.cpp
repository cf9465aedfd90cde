#include "component/host/kiln_parser.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include "component/host/sv_application.h"
#include "component/host/sv_boxes.h"

namespace {

MeroKilnParser makeParser(const SV::String& text) {
    return {text, "Agent definition", "Measures"};
}

std::string errorOf(const SV::String& text) {
    MeroKilnParser parser = makeParser(text);
    EXPECT_NE(parser.Parse(), 0) << text.view();
    EXPECT_EQ(parser.GetElemCount(), 0);
    return std::string(parser.GetErrorText().view());
}

TEST(KilnParserTest, ReadsElementsWithValuesFlagsModifiersAndStrings) {
    MeroKilnParser parser = makeParser(
        "AGENT\r\npath-analysis hide-name\nFREQUENCY_2 \"own \\\"value\\\"\"\tname: \"a\nb\" "
        "resultscope:mainobjects\n"
        "EMPTY\"\"flag");
    ASSERT_EQ(parser.Parse(), 0) << parser.GetErrorText().view();
    ASSERT_EQ(parser.GetElemCount(), 3);
    EXPECT_EQ(parser.GetKeyword().view(), "AGENT");
    EXPECT_TRUE(parser.IsContained("path-analysis"));
    EXPECT_TRUE(parser.IsContained("hide-name"));
    EXPECT_FALSE(parser.IsContained("name"));
    EXPECT_FALSE(parser.HasStrValue());

    ASSERT_TRUE(parser.SetCurElemIndex(1));
    EXPECT_EQ(parser.GetKeyword().view(), "FREQUENCY_2");
    EXPECT_EQ(parser.GetStrValue().view(), "own \"value\"");
    EXPECT_EQ(parser.GetStrValue("name").view(), "a\nb");
    EXPECT_EQ(parser.GetModifier("resultscope").view(), "mainobjects");

    ASSERT_TRUE(parser.SetCurElemIndex(2));
    EXPECT_TRUE(parser.HasStrValue());
    EXPECT_TRUE(parser.GetStrValue().IsEmpty());
    EXPECT_FALSE(parser.SetCurElemIndex(3));
    EXPECT_FALSE(parser.SetCurElemIndex(-1));
    EXPECT_EQ(parser.GetCurElemIndex(), 2);
}

TEST(KilnParserTest, TheWrongKindOfAttributeReadsAsEmptyAndIsContained) {
    MeroKilnParser parser = makeParser("A flag word:modifier text:\"string\"");
    ASSERT_EQ(parser.Parse(), 0);
    EXPECT_TRUE(parser.IsContained("flag") && parser.IsContained("word") && parser.IsContained("text"));
    EXPECT_TRUE(parser.GetStrValue("flag").IsEmpty());
    EXPECT_TRUE(parser.GetStrValue("word").IsEmpty());
    EXPECT_TRUE(parser.GetModifier("text").IsEmpty());
    EXPECT_TRUE(parser.GetModifier("flag").IsEmpty());
}

TEST(KilnParserTest, AnEmptyTextIsGoodAndHasNoElement) {
    for (const char* text : {"", " \r\n\t"}) {
        MeroKilnParser parser = makeParser(text);
        EXPECT_EQ(parser.Parse(), 0);
        EXPECT_EQ(parser.GetElemCount(), 0);
        EXPECT_TRUE(parser.GetKeyword().IsEmpty());
        EXPECT_FALSE(parser.IsContained("name"));
    }
}

TEST(KilnParserTest, ErrorsNameSourceLineColumnAndWhatWasExpected) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"name:\"x\"", "line 1, column 1: expected an element keyword in upper case"},
        {"\"x\"", "line 1, column 1: expected an element keyword in upper case"},
        {"AGENT\n  \"x\" \"y\"", "line 2, column 7: a string stands here; expected an attribute"},
        {"AGENT flag \"x\"", "line 1, column 12: a string stands here"},
        {"AGENT ü", "line 1, column 7: expected an attribute or an element keyword"},
        {"AGENT name:\"ü\" ?", "line 1, column 16: expected an attribute"},
        {"AGENTname", "line 1, column 6: expected white space behind the element keyword"},
        {"AGENT nameX", "line 1, column 11: expected a colon or white space behind the attribute"},
        {"AGENT name_x", "line 1, column 11: expected a colon or white space"},
        {"AGENT name:", "line 1, column 12: expected a string or a modifier"},
        {"AGENT name:\n\"x\"", "line 1, column 12: expected a string or a modifier"},
        {"AGENT name:Modifier", "line 1, column 12: expected a string or a modifier"},
        {"AGENT name:mod:x", "line 1, column 15: expected white space behind the modifier"},
        {"AGENT : x", "line 1, column 7: expected an attribute"},
        {"AGENT\nname:\"open", "line 2, column 6: the string that begins here doesn't end"},
        {"AGENT\nname:\"open\\\"", "line 2, column 6: the string that begins here doesn't end"},
        {"AGENT \"open\\", "line 1, column 7: the string that begins here doesn't end"},
        {"AGENT name:\"a\" name", "line 1, column 16: \"name\" stands a second time in the element AGENT"},
        {"AGENT name\nname:mod", "line 2, column 1: \"name\" stands a second time"},
    };
    for (const auto& [text, error] : cases) {
        EXPECT_EQ(errorOf(text).substr(
                      0, std::string("Agent definition \"Measures\", ").size() + std::string(error).size()),
                  std::string("Agent definition \"Measures\", ") + error)
            << text;
    }
}

TEST(KilnParserTest, AKeyMayComeAgainInAnotherElement) {
    MeroKilnParser parser = makeParser("A name:\"x\" B name:\"y\"");
    EXPECT_EQ(parser.Parse(), 0);
}

TEST(KilnParserTest, FindsADoubleKeyAmongManyAndReadsLongTextsInLinearTime) {
    std::string text = "AGENT";
    for (int key = 0; key < 200000; ++key) {
        text += " key-" + std::to_string(key);
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(makeParser(text).Parse(), 0);
    EXPECT_NE(errorOf(text + " key-7").find("\"key-7\" stands a second time"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST(KilnParserTest, WrittenStringsReadBack) {
    for (const char* value :
         {"", "plain", "a \"quoted\" name", "back\\slash\\", "line\nbreak", "größer; {x}"}) {
        const SV::String quoted = MeroKilnParser::GetKilnTextOfStrValue(value);
        MeroKilnParser parser = makeParser("A " + quoted + " key:" + quoted);
        ASSERT_EQ(parser.Parse(), 0) << quoted.view();
        EXPECT_EQ(parser.GetStrValue().view(), value);
        EXPECT_EQ(parser.GetStrValue("key").view(), value);
    }
    EXPECT_EQ(MeroKilnParser::GetKilnTextOfStrValue("a\"b\\c").view(), "\"a\\\"b\\\\c\"");
}

TEST(KilnParserTest, AParserKeepsItsPlaceWhenMoved) {
    MeroKilnParser parser = makeParser("A B name:\"x\"");
    ASSERT_EQ(parser.Parse(), 0);
    parser.SetCurElemIndex(1);
    const MeroKilnParser moved = std::move(parser);
    EXPECT_EQ(moved.GetStrValue("name").view(), "x");
}

TEST(KilnParserTest, ShowsItsErrorInABoxWithoutAMessageIdentifierAndWithoutWaitState) {
    auto& desk = SV::BoxDesk::GetGlobal();
    desk.clearRecords();
    desk.setResponder([](SV::BoxKind, SV::Window*, int style, const SV::String&) {
        EXPECT_EQ(style, SV::BoxStyleError);
        EXPECT_FALSE(SV::GetpApp()->IsWait());
        return static_cast<int>(SV::BoxOk);
    });
    SV::GetpApp()->Wait(true);
    MeroKilnParser parser("AGENT ?", SV::String(SV::ResId(0x2000921)), "Measures");
    parser.ShowErrorBox();
    EXPECT_TRUE(desk.getRecords().empty());
    parser.Parse();
    parser.ShowErrorBox();
    EXPECT_TRUE(SV::GetpApp()->IsWait());
    SV::GetpApp()->Wait(false);
    ASSERT_EQ(desk.getRecords().size(), 1U);
    EXPECT_EQ(desk.getRecords()[0].kind, SV::BoxKind::Error);
    EXPECT_EQ(desk.getRecords()[0].message, SV::ResId());
    desk.setResponder({});
    desk.clearRecords();
}

}  // namespace
