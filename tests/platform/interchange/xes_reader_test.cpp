#include "platform/interchange/xes_reader.h"

#include <gtest/gtest.h>
#include <sstream>

#include "platform/interchange/iso_time.h"
#include "tests/platform/interchange/test_files.h"

namespace mero {

namespace {

/// The steps of a log: "(" and ")" for a trace, each event's activity, or the error.
std::string read(const std::string& bytes) {
    std::istringstream input(bytes);
    XesReader reader(input, "log");
    XesEvent event;
    std::string text;
    while (true) {
        const Result<XesStep> step = reader.next(event);
        if (!step) {
            return step.error().text;
        }
        switch (step.value()) {
            case XesStep::TraceBegin:
                text += reader.logName() + "(";
                break;
            case XesStep::Event:
                text += "[" + event.activity + "]";
                break;
            case XesStep::TraceEnd:
                text += ")";
                break;
            case XesStep::LogEnd:
                return text;
        }
    }
}

TEST(XesReader, ReadsOverWhatIsNested) {
    EXPECT_EQ(
        read("\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE log><!-- <log> --><x:log xmlns:x='u'>"
             "<x:global scope='event'><x:string key='concept:name' value='G'/></x:global>"
             "<x:string key='concept:name' value='L'><x:string key='concept:name' value='N'/></x:string>"
             "<x:trace><x:list key='l'><x:values><x:string key='concept:name' value='V'/>"
             "<x:event/></x:values></x:list><x:event><x:container key='c'>"
             "<x:string key='concept:name' value='W'/></x:container>"
             "<x:string value = 'a>b &lt;&amp;&#x20AC;&apos;' key = \"concept:name\" />"
             "<![CDATA[<event>]]></x:event ><x:event/></x:trace><x:trace/></x:log>\n"),
        "L([a>b <&\xE2\x82\xAC'][])L()");
}

TEST(XesReader, ReadsLatin1) {
    EXPECT_EQ(read("<?xml version='1.0' encoding='iso-8859-1'?><log><trace><event>"
                   "<string key='concept:name' value='Pr\xFC"
                   "fen'/></event></trace></log>"),
              "([Pr\xC3\xBC"
              "fen])");
}

TEST(XesReader, ReadsTagsAcrossTheBordersOfItsBuffer) {
    std::string log = "<log><trace>";
    std::string expected = "(";
    for (int index = 0; index < 20'000; ++index) {
        const std::string name(static_cast<std::size_t>(index % 41), 'x');
        log += "<event><string key='concept:name' value='" + name + "'/></event>";
        expected += "[" + name + "]";
    }
    EXPECT_EQ(read(log + "</trace></log>"), expected + ")");
}

TEST(XesReader, RefusesWithLineAndColumn) {
    using namespace std::string_literals;
    const std::string attribute = "<log>\n <trace><event>\n <string key='concept:name' value=";
    for (const auto& [bytes, error] : std::vector<std::pair<std::string, std::string>>{
             {"", "log:1:1: no XES log: there is no element \"log\""},
             {"text", "log:1:1: no XML: text outside of the elements"},
             {"<xml/>", "log:1:1: expected the element \"log\", found \"xml\""},
             {"<log>\n <event/></log>", "log:2:2: an event outside of a trace has no case"},
             {"<log><trace>\n", "log:2:1: \"trace\" isn't closed"},
             {"<log>\n<trace", "log:2:1: the file ends inside of a tag"},
             {"<log></log>x", "log:1:12: no XML: text outside of the elements"},
             {"<log></log>\n<log/>", "log:2:1: a second root element, \"log\"; a file holds one log"},
             {"\xFF\xFE<\0l\0"s, "log:1:1: the encoding \"UTF-16\" isn't supported"},
             {"\0<\0l"s, "log:1:1: the encoding \"UTF-16\" isn't supported"},
             {"\xFF\xFE\0\0<\0\0\0"s, "log:1:1: the encoding \"UTF-32\" isn't supported"},
             {attribute + "'a<b'/>", "log:3:2: \"<\" inside of an attribute's value"},
             {attribute + "<b/>", "log:3:2: \"<\" inside of a tag"},
             {"<!DOCTYPE log [<!ENTITY a 'b'>]><log/>",
              "log:1:1: a document type with declarations isn't supported"},
             {"<?xml version='1.0' encoding='UTF-16'?><log/>",
              "log:1:1: the encoding \"UTF-16\" isn't supported"},
             {attribute + "'&a;'/>", "log:3:2: the entity \"&a;\" isn't declared"},
             {attribute + "'&#xD800;'/>", "log:3:2: \"&#xD800;\" is no character"},
             {attribute + "'\xFF'/>", "log:3:2: a text isn't in the encoding of the file"},
             {attribute + "x/>", "log:3:2: an attribute's value has to stand in quotes"},
             {"\x1F\x8B\x08", "log:1:1: the compressed file ends too early"},
             {"\x1F\x8BXXXXXXXXXXXXXXX", "log:1:1: the compressed file is damaged"}}) {
        EXPECT_EQ(read(bytes), error) << bytes;
    }
    std::string deep = "<log>";
    for (int depth = 0; depth < 300; ++depth) {
        deep += "<string>";
    }
    EXPECT_EQ(read(deep), "log:1:1598: the elements are nested too deeply");
}

TEST(XesReader, UnpacksSeveralMembers) {
    const std::string packed =
        test::readFile(test::sourceFile("tests/platform/interchange/data/xes/a12f0n05.xes.gz"));
    EXPECT_NE(read(packed).find("([S][f][g][h][i][k][E])"), std::string::npos);
    EXPECT_NE(read(packed + packed).find("a second root element"), std::string::npos);
    EXPECT_NE(read(packed.substr(0, packed.size() / 2)).find("ends too early"), std::string::npos);
}

TEST(IsoTime, ReadsDatesOfSeveralForms) {
    constexpr std::int64_t Noon = 1'772'539'200'000;  // 2026-03-03T12:00:00Z
    for (const auto& [text, expected] :
         std::vector<std::pair<std::string, std::int64_t>>{{"2026-03-03T12:00:00Z", Noon},
                                                           {"2026-03-03T12:00:00", Noon},
                                                           {"2026-03-03T12:00", Noon},
                                                           {"2026/03/03 12:00:00.000", Noon},
                                                           {"2026-03-03T14:00:00.0019+02:00", Noon + 1},
                                                           {"2026-03-03T06:30:00,5-0530", Noon + 500},
                                                           {"2026-03-02T24:00:00+00", Noon - 43'200'000},
                                                           {"1969-12-31T23:59:59.999Z", -1}}) {
        const auto time = parseIsoTime(text);
        ASSERT_TRUE(time.has_value()) << text;
        EXPECT_EQ(time->milliseconds, expected) << text;
    }
    for (const char* const text : {"", "2026-02-29T00:00:00Z", "2026-03-03", "2026-03/03T00:00:00",
                                   "2026-03-03T24:00:01Z", "2026-03-03T12:60:00Z", "2026-03-03T12:00:00+2",
                                   "2026-03-03T12:00:00.Z", "2026-03-03T12:00:00Zx", "yesterday"}) {
        EXPECT_FALSE(parseIsoTime(text).has_value()) << text;
    }
}

}  // namespace

}  // namespace mero
