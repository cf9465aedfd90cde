#include "component/display/measure_description.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/management/message_text.h"

namespace {

constexpr SV::ResId AnalysisLine{0x2012001};
constexpr SV::ResId FactorLine{0x2012002};

/// 0 for a type that measures nothing.
SV::ResId meaningOf(int agentType) {
    switch (agentType) {
        case AgentTypeAverageSum:
            return SV::ResId(0x2012012);
        case AgentTypeStrain:
            return SV::ResId(0x2012014);
        case AgentTypeWorkLoad:
            return SV::ResId(0x2012015);
        case AgentTypeCycleTime:
            return SV::ResId(0x2012016);
        case AgentTypeWeightedCost:
            return SV::ResId(0x2012018);
        case AgentTypeUnweightedCost:
            return SV::ResId(0x2012019);
        case AgentTypeFrequency:
            return SV::ResId(0x201201A);
        case AgentTypeChangeOfWorker:
            return SV::ResId(0x201201B);
        case AgentTypeFormula:
            return SV::ResId(0x201201C);
        default:
            return {};
    }
}

/// 0 for what is none of the four.
SV::ResId nameOfAnalysis(int analysis) {
    switch (analysis) {
        case AnalysisPath:
            return SV::ResId(0x2004FC7);
        case AnalysisVolume:
            return SV::ResId(0x2004FC9);
        case AnalysisStaticWorkLoad:
            return SV::ResId(0x2004FCB);
        case AnalysisNonStaticWorkLoad:
            return SV::ResId(0x2004FCD);
        default:
            return {};
    }
}

void appendLine(SV::String& text, const SV::String& line) {
    text += text.IsEmpty() ? line : SV::String("\n") + line;
}

}  // namespace

SV::String describeMeasure(const MeroSuperAgent& owner, const MeroAgentResultSet& set, double factor) {
    SV::String name;
    set.getName(name);
    SV::String text;
    const MeroAtomarAgent* const agent = owner.findSubAgentByName(name);
    if (const SV::ResId meaning = agent != nullptr ? meaningOf(agent->getAgentType()) : SV::ResId();
        meaning != SV::ResId()) {
        appendLine(text, SV::String(meaning));
    }
    if (const SV::ResId analysis = nameOfAnalysis(owner.getAnalysisType()); analysis != SV::ResId()) {
        appendLine(text, fillMessage(AnalysisLine, {{"%s", SV::String(analysis)}}));
    }
    if (factor != 1.0) {
        appendLine(text, fillMessage(FactorLine, {{"%s", SV::String(factor)}}));
    }
    return text;
}
