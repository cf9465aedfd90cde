#pragma once

#include <cstddef>
#include <vector>

#include "component/results/double_result.h"
#include "component/results/keyed_table.h"

/// One reading of a history.
struct MeroSequenceEntry {
    double value = 0.0;
    double time = 0.0;
    MeroId objectId = MeroNoId;
};

/// A history: readings with their time. Written first, then read in passes.
class MeroSequenceResult : public MeroAtomarResult {
public:
    using MeroAtomarResult::MeroAtomarResult;

    /// False if the reading can't be kept.
    virtual bool addEntry(double value, double time, MeroId measuredObject) = 0;
    /// Next reading of a pass; false at its end, after which the next call begins a new pass.
    virtual bool getNext(MeroSequenceEntry& entry) = 0;
    /// The next reading is the first one, wherever the pass before stopped.
    virtual void rewind() { rewindPending = true; }
    [[nodiscard]] virtual bool isWriting() const { return true; }
    virtual bool openForWriting([[maybe_unused]] const SV::String& header) { return true; }
    virtual bool closeForReading() { return true; }
    virtual bool reopenForAppend() { return true; }

protected:
    bool rewindPending = true;
};

/// The readings of one object in memory.
class MeroSequenceBlock {
public:
    void append(double value, double time);
    [[nodiscard]] std::size_t size() const { return readings.size(); }
    [[nodiscard]] double valueAt(std::size_t position) const { return readings[position].value; }
    [[nodiscard]] double timeAt(std::size_t position) const { return readings[position].time; }

private:
    struct Reading {
        double value;
        double time;
    };
    std::vector<Reading> readings;
};

/// A history in memory. It reads by ascending object, then in the order of entry.
class MeroInternSequenceResult : public MeroSequenceResult {
public:
    using MeroSequenceResult::MeroSequenceResult;
    ~MeroInternSequenceResult() override;

    bool addEntry(double value, double time, MeroId measuredObject) override;
    bool getNext(MeroSequenceEntry& entry) override;
    void clear();

private:
    MeroKeyedTable<MeroId, MeroSequenceBlock> blocks;
    std::size_t currentBlock = 0;
    std::size_t currentReading = 0;
};
