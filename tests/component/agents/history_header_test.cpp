#include "component/agents/history_header.h"

#include <gtest/gtest.h>

namespace {

TEST(HistoryHeader, BreaksLongLinesAndMarksEach) {
    struct Case {
        std::string text;
        std::string expected;
    };
    const std::string hundred(100, 'x');
    for (const auto& [text, expected] : {
             Case{"", "# \n"},
             Case{"one", "# one\n"},
             Case{"one\ntwo", "# one\n# two\n"},
             Case{hundred + "\nend", "# " + hundred + "\n# end\n"},
             Case{hundred + "y\nend", "# " + hundred + "\n# y\n# end\n"},
             Case{hundred + hundred + "z\n", "# " + hundred + "\n# " + hundred + "\n# z\n# \n"},
             Case{"a\n" + hundred + "behind", "# a\n# " + hundred + "behind\n"},
             Case{std::string(99, 'x') + "ä\n", "# " + std::string(99, 'x') + "\n# ä\n# \n"},
         }) {
        EXPECT_EQ(wrapAsComment(SV::String(text)), SV::String(expected));
    }
}

TEST(HistoryHeader, NamesThatLookLikePlacesStayAsTheyAre) {
    const std::string header(makeHistoryHeader("a %s2 of %s3", MeroNoId, "%s1 %s6 100%").view());
    EXPECT_NE(header.find("\"a %s2 of %s3\""), std::string::npos) << header;
    EXPECT_NE(header.find("\"%s1 %s6 100%\""), std::string::npos) << header;
    for (const char* const place : {"%s4", "%s5"}) {
        EXPECT_EQ(header.find(place), std::string::npos) << header;
    }
}

}  // namespace
