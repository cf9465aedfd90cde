#include "component/agents/basic_agent.h"

#include <array>

#include "component/host/types.h"

#include "component/agents/keyword_flags.h"
#include "component/management/general_services.h"

namespace {

constexpr std::array AnalysisKeywords{
    MeroKeywordFlag<MeroAnalysisFlags>{"path-analysis", &MeroAnalysisFlags::path, true},
    MeroKeywordFlag<MeroAnalysisFlags>{"volume-analysis", &MeroAnalysisFlags::volume, true},
    MeroKeywordFlag<MeroAnalysisFlags>{"wlstatic-analysis", &MeroAnalysisFlags::staticWorkLoad, true},
    MeroKeywordFlag<MeroAnalysisFlags>{"wlnonstatic-analysis", &MeroAnalysisFlags::nonStaticWorkLoad, true},
};

}  // namespace

void MeroAnalysisFlags::restrictTo(const MeroAnalysisFlags& other) {
    path = path && other.path;
    volume = volume && other.volume;
    staticWorkLoad = staticWorkLoad && other.staticWorkLoad;
    nonStaticWorkLoad = nonStaticWorkLoad && other.nonStaticWorkLoad;
}

MeroAnalysisFlags readAnalysisKeywords(const MeroKilnParser& parser) {
    MeroAnalysisFlags flags;
    readKeywordFlags<MeroAnalysisFlags>(parser, flags, AnalysisKeywords);
    flags.volume = flags.volume || parser.IsContained("capacity-analysis");
    return flags;
}

void appendAnalysisKeywords(SV::String& text, const MeroAnalysisFlags& flags, const SV::String& lineStart) {
    appendKeywordFlags<MeroAnalysisFlags>(text, flags, AnalysisKeywords, lineStart);
}

bool MeroBasicAgent::isActiveInAnalysis(int analysis) {
    switch (analysis) {
        case AnalysisNone:
            return false;
        case AnalysisAny:
            return analyses.any();
        case AnalysisPath:
            return analyses.path;
        case AnalysisVolume:
            return analyses.volume;
        case AnalysisStaticWorkLoad:
            return analyses.staticWorkLoad;
        case AnalysisNonStaticWorkLoad:
            return analyses.nonStaticWorkLoad;
        default:
            showStatusMessage(StatusBadAnalysis);
            return false;
    }
}
