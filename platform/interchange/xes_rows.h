#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "component/host/types.h"

namespace mero {

/// One event of a run, before it is played.
struct XesRow {
    std::int64_t time = 0;         ///< milliseconds
    std::uint32_t caseNumber = 0;  ///< in the order of the log
    std::uint32_t sequence = 0;    ///< in its case
    std::int32_t code = 0;
    MeroId object = MeroNoId;
    MeroId worker = MeroNoId;
    std::uint32_t pass = 0;  ///< in its case, from 1; 0 for none

    friend bool operator<(const XesRow& left, const XesRow& right) {
        if (left.time != right.time) {
            return left.time < right.time;
        }
        return left.caseNumber != right.caseNumber ? left.caseNumber < right.caseNumber
                                                   : left.sequence < right.sequence;
    }
};

/// Sorts rows by time, case and sequence. At most `rowsInMemory` are held; more are sorted in runs on a
/// temporary file, which vanishes with this, and merged. Throws `DocumentRefused` where the file fails.
class XesRowSorter {
public:
    static constexpr std::size_t DefaultRowsInMemory = std::size_t{1} << 20;

    explicit XesRowSorter(std::size_t rowsInMemory = DefaultRowsInMemory) : limit(rowsInMemory) {}

    void add(const XesRow& row);
    /// Once, after the last `add`.
    void finish();
    /// False at the end.
    bool next(XesRow& row);
    [[nodiscard]] std::size_t size() const { return rowCount; }  ///< rows added

private:
    struct Run {
        std::uint64_t begin = 0;  ///< of what isn't read yet, in rows of the file
        std::uint64_t end = 0;
        std::vector<XesRow> rows;
        std::size_t position = 0;
    };
    struct CloseFile {
        void operator()(std::FILE* opened) const { std::fclose(opened); }
    };

    void writeRun();
    /// False if the run has ended.
    bool refill(Run& run);
    void orderHeap(std::size_t run);

    std::size_t limit;
    std::size_t rowCount = 0;
    std::vector<XesRow> memory;
    std::size_t position = 0;
    std::unique_ptr<std::FILE, CloseFile> file;
    std::vector<Run> runs;
    std::vector<std::size_t> heap;  ///< runs that aren't at their end, the least row at the front
};

}  // namespace mero
