#include "component/agents/super_agent_settings.h"

#include <array>

#include "component/agents/keyword_flags.h"

namespace {

using Settings = MeroSuperAgentSettings;
using Flag = MeroKeywordFlag<Settings>;

constexpr const char* LineStart = "\n";

constexpr std::array ResultFlags{
    Flag{"lock-select-results", &Settings::enableSelectResults, false},
    Flag{"hide-select-results", &Settings::showSelectResults, false},
    Flag{"auto-showextremum", &Settings::extremeChecked, true},
    Flag{"hide-extremum", &Settings::extremeVisible, false},
    Flag{"lock-extremum", &Settings::extremeEnabled, false},
    Flag{"auto-buildsum", &Settings::sumChecked, true},
    Flag{"hide-buildsum", &Settings::sumVisible, false},
    Flag{"lock-buildsum", &Settings::sumEnabled, false},
    Flag{"auto-group", &Settings::groupChecked, true},
    Flag{"hide-group", &Settings::groupVisible, false},
    Flag{"lock-group", &Settings::groupEnabled, false},
};

struct KeywordText {
    const char* keyword;
    SV::String Settings::*field;
};

constexpr std::array GroupingTexts{
    KeywordText{"grouping-class", &Settings::groupClass},
    KeywordText{"grouping-relation", &Settings::groupRelation},
};

constexpr std::array AccessFlags{
    Flag{"hide-calendar", &Settings::calendarShown, false},
    Flag{"lock-calendar", &Settings::calendarEnabled, false},
    Flag{"hide-infotext", &Settings::infoTextShown, false},
    Flag{"lock-infotext", &Settings::infoTextEnabled, false},
    Flag{"deactivate", &Settings::active, false},
    Flag{"hide-activation", &Settings::showActivation, false},
    Flag{"lock-activation", &Settings::enableActivation, false},
};

constexpr std::array FlagsNeverWritten{
    Flag{"hide-objects", &Settings::objectsShown, false},
    Flag{"lock-objects", &Settings::objectsEnabled, false},
};

}  // namespace

void MeroSuperAgentSettings::read(const MeroKilnParser& parser) {
    readKeywordFlags<Settings>(parser, *this, ResultFlags);
    for (const auto& [keyword, field] : GroupingTexts) {
        if (parser.IsContained(keyword)) {
            this->*field = parser.GetStrValue(keyword);
        }
    }
    readKeywordFlags<Settings>(parser, *this, AccessFlags);
    readKeywordFlags<Settings>(parser, *this, FlagsNeverWritten);
}

void MeroSuperAgentSettings::append(SV::String& text) const {
    appendKeywordFlags<Settings>(text, *this, ResultFlags, LineStart);
    for (const auto& [keyword, field] : GroupingTexts) {
        if (!(this->*field).IsEmpty()) {
            text +=
                SV::String(LineStart) + keyword + ":" + MeroKilnParser::GetKilnTextOfStrValue(this->*field);
        }
    }
    appendKeywordFlags<Settings>(text, *this, AccessFlags, LineStart);
}
