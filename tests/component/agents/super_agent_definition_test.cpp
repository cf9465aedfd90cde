#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "component/agents/super_agent.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

const std::string allAnalyses =
    "AGENT\npath-analysis\nvolume-analysis\nwlstatic-analysis\nwlnonstatic-analysis";

/// An agent "M" in "Order" with the definition text, attached, and what the text has become.
class AttachedAgent {
public:
    explicit AttachedAgent(const std::string& definition) : platform(modelsWithAgent(definition)) {
        instance = platform.agent("Order", "M");
        agent.attachToInstance(instance, platform.model("Order"));
    }

    [[nodiscard]] std::string stored() const { return platform.textOf(instance, "Definition"); }

    EmbeddedPlatform platform;
    MeroId instance = MeroNoId;
    MeroSuperAgent agent;
};

TEST(SuperAgentDefinition, EveryKeywordOfTheOwnSectionComesBackInItsOrder) {
    const std::string text =
        "AGENT\npath-analysis\nvolume-analysis\nwlstatic-analysis\nwlnonstatic-analysis\nlock-select-results"
        "\nhide-select-results\nauto-showextremum\nhide-extremum\nlock-extremum\nauto-buildsum\nhide-buildsum"
        "\nlock-buildsum\nauto-group\nhide-group\nlock-group\ngrouping-class:\"Task \\\"A\\\"\""
        "\ngrouping-relation:\"Sequence flow\"\nhide-calendar\nlock-calendar\nhide-infotext\nlock-infotext"
        "\ndeactivate\nhide-activation\nlock-activation";
    const AttachedAgent whole(text);
    EXPECT_EQ(whole.stored(), text);
    EXPECT_EQ(whole.agent.getSettings().groupClass, "Task \"A\"");
    EXPECT_EQ(whole.agent.getActivation(), 0);

    std::vector<std::string> lines;
    for (std::size_t start = 6; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    std::string reversed = "AGENT";
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        reversed += " " + *line;
    }
    EXPECT_EQ(AttachedAgent(reversed).stored(), text);
    for (std::size_t index = 4; index < lines.size(); ++index) {
        const std::string single = allAnalyses + "\n" + lines[index];
        EXPECT_EQ(AttachedAgent(single).stored(), single);
    }
}

TEST(SuperAgentDefinition, StoredTextConvergesOnTheCanonicalForm) {
    struct Case {
        const char* title;
        std::string stored;
        std::string canonical;
        std::vector<std::uint32_t> boxes;
    };
    const std::string frequency =
        "\nFREQUENCY\n name:\"F\"\n path-analysis\n resultscope:mainobjects\n absolute";
    const Case cases[] = {
        {"no analysis means all", "AGENT", allAnalyses, {}},
        {"capacity means volume", "AGENT capacity-analysis", "AGENT\nvolume-analysis", {}},
        {"keywords of the object list vanish",
         "AGENT path-analysis hide-objects lock-objects",
         "AGENT\npath-analysis",
         {}},
        {"a second own section ends reading",
         "AGENT path-analysis AGENT volume-analysis " + frequency,
         "AGENT\npath-analysis",
         {}},
        {"a sub-agent takes part in no more than its owner",
         "AGENT volume-analysis FREQUENCY name:\"F\" path-analysis volume-analysis resultscope:process "
         "absolute",
         "AGENT\nvolume-analysis\nFREQUENCY\n name:\"F\"\n volume-analysis\n resultscope:process\n absolute",
         {}},
        {"an unknown section goes after a box",
         "AGENT path-analysis TUSK name:\"T\" " + frequency,
         "AGENT\npath-analysis" + frequency,
         {0x20051AF}},
        {"an observed name belongs to the section before it",
         "AGENT path-analysis OBSERVED \"F\" " + frequency,
         "AGENT\npath-analysis" + frequency,
         {}},
        {"a section without a name gets the default",
         "AGENT path-analysis FREQUENCY path-analysis resultscope:mainobjects absolute",
         "AGENT\npath-analysis\nFREQUENCY\n name:\"Frequency\"\n path-analysis\n resultscope:mainobjects\n "
         "absolute",
         {0x2004E21}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.title);
        AttachedAgent attached(example.stored);
        EXPECT_EQ(attached.stored(), example.canonical);
        EXPECT_EQ(EmbeddedPlatform::boxes(), example.boxes);
        EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
        SV::String text;
        EXPECT_EQ(attached.agent.getDefinitionText(text).view(), example.canonical);
    }
}

TEST(SuperAgentDefinition, UnknownSectionIsNamedInItsBox) {
    const AttachedAgent attached("AGENT path-analysis TUSK name:\"T\"");
    ASSERT_EQ(SV::BoxDesk::GetGlobal().getRecords().size(), 1U);
    const std::string text(SV::BoxDesk::GetGlobal().getRecords()[0].text.view());
    EXPECT_EQ(text.substr(text.size() - 6), "\"TUSK\"");
}

TEST(SuperAgentDefinition, KeywordsOfTheObjectListSetTheirFieldsOnce) {
    const AttachedAgent attached("AGENT hide-objects lock-objects");
    EXPECT_FALSE(attached.agent.getSettings().objectsShown);
    EXPECT_FALSE(attached.agent.getSettings().objectsEnabled);
}

TEST(SuperAgentDefinition, TextThatIsRefusedStaysStored) {
    struct Case {
        const char* title;
        std::string text;
        int status;
        std::vector<std::string> internalErrors;
        std::vector<std::uint32_t> boxes;
    };
    const Case cases[] = {
        {"not Kiln", "AGENT path-analysis:", StatusBadDefinition, {}, {0}},
        {"empty", "", StatusRefused, {"aeagents"}, {}},
        {"begins with a sub-agent", frequencySection, StatusRefused, {"aeagents"}, {}},
        {"one character too long",
         "AGENT\npath-analysis\ngrouping-class:\"" + std::string(3600 - 36, 'x') + "\"",
         StatusTextTooLong,
         {"aeagents"},
         {}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.title);
        AttachedAgent attached(canonicalDefinition);
        EXPECT_EQ(attached.agent.readDefinitionText(example.text), example.status);
        EXPECT_EQ(attached.stored(), canonicalDefinition);
        EXPECT_EQ(EmbeddedPlatform::internalErrors(), example.internalErrors);
        EXPECT_EQ(EmbeddedPlatform::boxes(), example.boxes);
    }
    AttachedAgent attached(canonicalDefinition);
    const std::string longest =
        "AGENT\npath-analysis\ngrouping-class:\"" + std::string(3600 - 37, 'x') + "\"";
    EXPECT_EQ(attached.agent.readDefinitionText(longest), StatusOk);
    EXPECT_EQ(attached.agent.readDefinition(nullptr), StatusRefused);
}

TEST(SuperAgentDefinition, TemporaryAgentReadsItsOwnSectionAlone) {
    const EmbeddedPlatform platform(sampleModels(""));
    MeroSuperAgent agent;
    EXPECT_EQ(agent.readDefinitionText("AGENT volume-analysis TUSK name:\"T\""), StatusOk);
    SV::String text;
    EXPECT_EQ(agent.getDefinitionText(text), "AGENT\nvolume-analysis");
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(SuperAgentDefinition, SubAgentNamesComeFromTheStoredText) {
    AttachedAgent attached(canonicalDefinition +
                           "\nFREQUENCY\n name:\"G\"\n dont-show-result\n resultscope:process\n absolute");
    std::vector<SV::String> names;
    EXPECT_EQ(attached.agent.getSubAgentNames(names, false), 1);
    EXPECT_EQ(names, (std::vector<SV::String>{"F", "G"}));
    names.clear();
    EXPECT_EQ(attached.agent.getSubAgentNames(names, true), 1);
    EXPECT_EQ(names, (std::vector<SV::String>{"F"}));
    const auto* const definition = Library::standard().findAttribute(
        attached.platform.repository().findObject(attached.instance)->classId, "Definition");
    for (const char* const bad : {"AGENT FREQUENCY", "AGENT :"}) {
        ASSERT_TRUE(
            attached.platform.repository().setValue(attached.instance, definition->id, SV::String(bad)));
        EXPECT_EQ(attached.agent.getSubAgentNames(names, false), 0);
    }
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeagents"}));
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0}));
}

}  // namespace
}  // namespace mero::test
