#include "component/agents/history_header.h"

#include <string>

#include "component/host/repository.h"
#include "component/host/sv_datetime.h"

#include "component/management/message_text.h"

namespace {

constexpr SV::ResId HeaderText{0x20051B3};

SV::String nameAndVersion(MeroId modelId) {
    SV::String name;
    auto* const manager = MeroCoreModelingManager::GetGlobal();
    const bool known =
        manager != nullptr && manager->enhanced().getModelNameAndVersion(modelId, name) == RepositoryOk;
    return known ? name : SV::String("?");
}

/// UTF-8 characters aren't cut: the end of a stretch of at most the width.
std::size_t endOfPiece(std::string_view text, std::size_t begin) {
    std::size_t end = begin + HistoryHeaderWidth;
    while (end > begin + 1 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return end;
}

}  // namespace

SV::String wrapAsComment(const SV::String& text) {
    const std::string_view source = text.view();
    std::string wrapped = "# ";
    std::size_t begin = 0;
    for (std::size_t lineEnd = source.find('\n'); lineEnd != std::string_view::npos;
         lineEnd = source.find('\n', begin)) {
        while (lineEnd - begin > HistoryHeaderWidth) {
            const std::size_t end = endOfPiece(source, begin);
            wrapped.append(source, begin, end - begin).append("\n# ");
            begin = end;
        }
        wrapped.append(source, begin, lineEnd - begin).append("\n# ");
        begin = lineEnd + 1;
    }
    wrapped.append(source, begin, std::string_view::npos).push_back('\n');
    return SV::String(wrapped);
}

SV::String makeHistoryHeader(const SV::String& agentName, MeroId modelId, const SV::String& superAgentName) {
    const SV::String model = nameAndVersion(modelId);
    return wrapAsComment(
        fillMessage(HeaderText, {{"%s1", agentName},
                                 {"%s2", model},
                                 {"%s3", superAgentName},
                                 {"%s4", SV::International::GetDate(SV::Date::Today(), true)},
                                 {"%s5", SV::International::GetTime(SV::Time::Now(), true, false)},
                                 {"%s6", model}}));
}
