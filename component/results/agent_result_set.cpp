#include "component/results/agent_result_set.h"

#include <algorithm>

#include "component/host/basic_services.h"

#include "component/management/general_services.h"
#include "component/results/file_sequence_result.h"

MeroAgentResultSet::MeroAgentResultSet(MeroResultKind kind, SV::String agentName, MeroValueType type,
                                       bool resultShown, int analysis, MeroResultMode combinationMode)
    : showResult(resultShown),
      resultKind(kind),
      valueType(type),
      name(std::move(agentName)),
      mode(combinationMode),
      analysisType(analysis) {}

MeroAgentResultSet::~MeroAgentResultSet() {
    const MeroWaitCursor wait;
    clearValues();
    history.reset();
}

bool MeroAgentResultSet::enableMemoryHistory(bool historyShown) {
    if (historyDisk) {
        return false;
    }
    showHistory = historyShown;
    historyMem = true;
    return true;
}

bool MeroAgentResultSet::enableDiskHistory(const SV::String& fileName, const SV::String& header,
                                           bool historyShown) {
    if (historyMem) {
        return false;
    }
    historyFile = fileName;
    historyHeader = header;
    showHistory = historyShown;
    historyDisk = true;
    return true;
}

bool MeroAgentResultSet::addValue(const MeroReading& reading) {
    if (auto* const known = results.find(reading.itemKey)) {
        if (!addToResult(**known, reading)) {
            return false;
        }
        if (!(*known)->hasObjectId(reading.objectId)) {
            otherObjectIds.insert(reading.objectId);
        }
        return true;
    }
    auto& result = *results.add(
        reading.itemKey,
        std::make_unique<MeroDoubleResult>(reading.objectId, reading.itemKey, mode, reading.sourceAgentType));
    changeDivisor(result, result.addToItem(reading.value, reading.path), reading.count);
    beginHistory(reading);
    return true;
}

void MeroAgentResultSet::addValues(std::span<const MeroReading> readings) {
    constexpr std::size_t ManyResults = 2048;
    if (results.size() > ManyResults) {
        prefetch(readings);
    }
    for (const MeroReading& reading : readings) {
        addValue(reading);
    }
}

void MeroAgentResultSet::prefetch(std::span<const MeroReading> readings) {
    std::ranges::for_each(readings, [this](const auto& reading) { results.prefetchIndex(reading.itemKey); });
    std::ranges::for_each(readings, [this](const auto& reading) { results.prefetchEntry(reading.itemKey); });
    coming.clear();
    for (const MeroReading& reading : readings) {
        const auto* const known = results.find(reading.itemKey);
        coming.push_back(known != nullptr ? known->get() : nullptr);
        if (known != nullptr) {
            (*known)->prefetch();
        }
    }
    for (const auto step : {&MeroDoubleResult::prefetchIndex, &MeroDoubleResult::prefetchPlace,
                            &MeroDoubleResult::prefetchItem}) {
        for (std::size_t number = 0; number < readings.size(); ++number) {
            if (coming[number] != nullptr) {
                (coming[number]->*step)(readings[number].path);
            }
        }
    }
}

bool MeroAgentResultSet::updateValue(const MeroReading& reading) {
    auto* const known = results.find(reading.itemKey);
    return known != nullptr && addToResult(**known, reading);
}

bool MeroAgentResultSet::addToResult(MeroDoubleResult& result, const MeroReading& reading) {
    changeDivisor(result, result.addToItem(reading.value, reading.path), reading.count);
    return !keepsHistory() || reading.history == MeroHistoryUse::Left || addToRunningHistory(result, reading);
}

void MeroAgentResultSet::changeDivisor(MeroDoubleResult& result, MeroDoubleResultItem& item, int count) {
    if (mode == ResultModeMean) {
        result.setDivisorAll(count);
    } else if (mode == ResultModeItemMean) {
        item.changeDivisor(count);
    }
}

bool MeroAgentResultSet::addToRunningHistory(const MeroDoubleResult& result, const MeroReading& reading) {
    if (history == nullptr || (hasDivisor(mode) && reading.count == DivisorKept)) {
        displayErrorMessage("aearslt", __LINE__);
        return false;
    }
    const bool accumulates = mode == ResultModeSum || hasDivisor(mode);
    writeEntry(accumulates ? result.getTotal() : reading.value, reading.time, reading.itemKey);
    return true;
}

void MeroAgentResultSet::beginHistory(const MeroReading& reading) {
    if (keepsHistory() && makeHistory(reading.objectId, reading.itemKey) &&
        reading.history == MeroHistoryUse::Kept) {
        writeEntry(reading.value, reading.time, reading.itemKey);
    }
}

bool MeroAgentResultSet::addHistoryPoint(MeroId objectId, MeroId itemKey, double value, double time) {
    if (!keepsHistory()) {
        return false;
    }
    if (!makeHistory(objectId, itemKey)) {
        displayErrorMessage("aearslt", __LINE__);
        return false;
    }
    writeEntry(value, time, itemKey);
    return true;
}

bool MeroAgentResultSet::makeHistory(MeroId objectId, MeroId itemKey) {
    if (history != nullptr) {
        return true;
    }
    if (historyMem) {
        history = std::make_unique<MeroInternSequenceResult>(objectId, itemKey);
        return true;
    }
    history = std::make_unique<MeroFileSequenceResult>(objectId, itemKey, historyFile);
    if (!history->openForWriting(historyHeader)) {
        giveUpHistory();
        return false;
    }
    return true;
}

void MeroAgentResultSet::writeEntry(double value, double time, MeroId itemKey) {
    const bool writable = history->isWriting() || history->reopenForAppend();
    if (!writable || !history->addEntry(value, time, itemKey)) {
        giveUpHistory();
    }
}

void MeroAgentResultSet::giveUpHistory() {
    historyMem = false;
    historyDisk = false;
    history.reset();
}

bool MeroAgentResultSet::setDivisor(int count) {
    if (mode != ResultModeMean) {
        return false;
    }
    for (auto& [key, result] : results) {
        result->setDivisorAll(count);
    }
    return true;
}

bool MeroAgentResultSet::clearValues() {
    for (const auto& [key, result] : results) {
        otherObjectIds.insert(result->getObjectId());
    }
    results.clear();
    return true;
}

bool MeroAgentResultSet::hasHistory(bool ignoreShowFlag) const {
    return (showHistory || ignoreShowFlag) && history != nullptr;
}

bool MeroAgentResultSet::hasObjectResults(bool ignoreShowFlag) const {
    return showsValues(ignoreShowFlag) && !results.empty();
}

bool MeroAgentResultSet::showsValues(bool ignoreShowFlag) const {
    return (showResult || ignoreShowFlag) && (resultKind == ResultKindNumber || resultKind == ResultKindTime);
}

bool MeroAgentResultSet::isShown(bool scaledDisplay) const {
    return (hasObjectResults(false) || hasHistory(false)) && (scaledDisplay || valueType != ValueTypeScaled);
}

void MeroAgentResultSet::getObjectIds(ISortedSet<MeroId>& objects) const {
    std::vector<MeroId> all(otherObjectIds.begin(), otherObjectIds.end());
    for (const auto& [key, result] : results) {
        all.push_back(result->getObjectId());
    }
    objects.clear();
    objects.insertRange(all.begin(), all.end());
}

void MeroAgentResultSet::getItemKeys(ISortedSet<MeroId>& keys) const {
    std::vector<MeroId> all;
    all.reserve(results.size());
    for (const auto& [key, result] : results) {
        all.push_back(key);
    }
    keys.clear();
    keys.insertRange(all.begin(), all.end());
}

MeroDoubleResult* MeroAgentResultSet::findResultByObject(MeroId objectId, bool ignoreShowFlag) {
    MeroDoubleResult* found = nullptr;
    if (showsValues(ignoreShowFlag)) {
        for (auto& [key, result] : results) {
            if (result->hasObjectId(objectId) && (found == nullptr || key < found->getItemKey())) {
                found = result.get();
            }
        }
    }
    return found;
}

MeroDoubleResult* MeroAgentResultSet::findResult(MeroId itemKey, bool ignoreShowFlag) {
    auto* const found = showsValues(ignoreShowFlag) ? results.find(itemKey) : nullptr;
    return found != nullptr ? found->get() : nullptr;
}

MeroDoubleResultItem* MeroAgentResultSet::findItem(MeroPathView path, MeroId itemKey) {
    auto* const result = results.find(itemKey);
    return result != nullptr ? (*result)->findItem(path) : nullptr;
}

std::vector<MeroDoubleResult*> MeroAgentResultSet::getResults(bool ignoreShowFlag) {
    return showsValues(ignoreShowFlag) ? getAllResults() : std::vector<MeroDoubleResult*>();
}

std::vector<MeroDoubleResult*> MeroAgentResultSet::getAllResults() {
    results.sortBy(std::less<>{});
    std::vector<MeroDoubleResult*> ordered;
    ordered.reserve(results.size());
    for (auto& [key, result] : results) {
        ordered.push_back(result.get());
    }
    return ordered;
}

MeroSequenceResult* MeroAgentResultSet::getHistory(bool ignoreShowFlag) {
    if (!hasHistory(ignoreShowFlag)) {
        return nullptr;
    }
    const bool unfinishedFile = historyDisk && history->isWriting();
    if (!history->closeForReading() && unfinishedFile) {
        giveUpHistory();
    }
    return history.get();
}
