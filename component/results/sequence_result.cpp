#include "component/results/sequence_result.h"

#include "component/management/general_services.h"

void MeroSequenceBlock::append(double value, double time) {
    if (readings.size() == readings.capacity()) {
        // Growing by half keeps a reading below 24 bytes.
        readings.reserve(readings.size() + readings.size() / 2 + 4);
    }
    readings.push_back({value, time});
}

MeroInternSequenceResult::~MeroInternSequenceResult() {
    MeroInternSequenceResult::clear();
}

bool MeroInternSequenceResult::addEntry(double value, double time, MeroId measuredObject) {
    MeroSequenceBlock* block = blocks.find(measuredObject);
    if (block == nullptr) {
        block = &blocks.add(measuredObject, {});
    }
    block->append(value, time);
    return true;
}

bool MeroInternSequenceResult::getNext(MeroSequenceEntry& entry) {
    if (rewindPending) {
        blocks.sortBy(std::less<>{});
        currentBlock = 0;
        currentReading = 0;
        rewindPending = false;
    }
    for (; currentBlock < blocks.size(); ++currentBlock, currentReading = 0) {
        const auto& [blockObject, block] = *(blocks.begin() + static_cast<std::ptrdiff_t>(currentBlock));
        if (currentReading < block.size()) {
            entry = {block.valueAt(currentReading), block.timeAt(currentReading), blockObject};
            ++currentReading;
            return true;
        }
    }
    rewindPending = true;
    return false;
}

void MeroInternSequenceResult::clear() {
    const MeroWaitCursor wait;
    blocks.clear();
    rewindPending = true;
}
