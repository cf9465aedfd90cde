#include <algorithm>

#include "component/host/basic_services.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/related_objects.h"

namespace {

/// Exchanges the measured object at the end of the path, or else at its beginning; false if it is at neither.
bool exchangeMeasuredObject(MeroPath& path, MeroId measured, MeroId related) {
    if (path.empty()) {
        return false;
    }
    MeroId& end = path.back() == measured ? path.back() : path.front();
    if (end != measured) {
        return false;
    }
    end = related;
    return true;
}

void addForRelatedObjects(MeroAgentResultSet& limited, const MeroDoubleResult& result,
                          const ISortedSet<MeroId>& related) {
    const int count = limited.getMode() == ResultModeItemMean ? DivisorRaised : DivisorKept;
    for (const auto& item : result.getItems()) {
        for (const MeroId object : related) {
            MeroPath path(item->getPath().begin(), item->getPath().end());
            if (!exchangeMeasuredObject(path, result.getObjectId(), object)) {
                displayErrorMessage("aeagents", __LINE__);
                return;
            }
            limited.addValue({.objectId = object,
                              .path = path,
                              .itemKey = object,
                              .value = item->getValue(),
                              .count = count,
                              .history = MeroHistoryUse::Left,
                              .sourceAgentType = result.getSourceAgentType()});
        }
    }
}

}  // namespace

MeroAgentResultSet* MeroAtomarAgent::getLimitedResultSet(const SV::String& className,
                                                         const SV::String& relationName, int& status,
                                                         const MeroResultRequest& request) {
    limitedResultSet.reset();
    status = StatusRefused;
    MeroAgentResultSet* const source = getResultSet(request);
    if (source == nullptr || !runPrepared || !source->hasObjectResults(false)) {
        return nullptr;
    }
    ISortedSet<MeroId> measured;
    source->getObjectIds(measured);
    MeroRelatedObjects related;
    status = findRelatedObjects(measured, className, relationName, related);
    if (status == StatusNoRelatedObject) {
        return source;
    }
    if (status != StatusOk) {
        return nullptr;
    }
    SV::String agentName;
    source->getName(agentName);
    limitedResultSet = std::make_unique<MeroAgentResultSet>(resultKind, agentName, source->getValueType(),
                                                            source->getShowResult(),
                                                            source->getAnalysisType(), getCombinationMode());
    for (const auto& [object, relatedObjects] : related) {
        if (const MeroDoubleResult* const result = source->findResultByObject(object, true)) {
            addForRelatedObjects(*limitedResultSet, *result, relatedObjects);
        }
    }
    return limitedResultSet.get();
}
