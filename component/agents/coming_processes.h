#pragma once

#include <array>
#include <cstddef>
#include <limits>

#include "component/agents/process_instance.h"
#include "component/results/place_table.h"

/// Processes of the events that were announced last. Where the rest of a process lies, the process itself
/// tells: some events after it has been asked for, it is read, and the rest is asked for as well.
class MeroComingProcesses {
public:
    using Table = MeroPlaceTable<MeroAgentProcessInstance>;

    /// Of the next event: where its process lies, which has been asked for, in `processes`.
    void expect(Table::Place place, bool ends, const Table& processes) {
        const Coming oldest = std::exchange(coming[next], {place, ends});
        next = (next + 1) % Distance;
        if (const MeroAgentProcessInstance* const process = processes.at(oldest.place)) {
            askForRestOf(*process, oldest.ends);
        }
    }
    /// The next event needs no process.
    void expectNone(const Table& processes) { expect(NoPlace, false, processes); }

private:
    static constexpr std::size_t Distance = 6;
    static constexpr Table::Place NoPlace = std::numeric_limits<Table::Place>::max();

    struct Coming {
        Table::Place place = NoPlace;
        bool ends = false;
    };

    static void askForRestOf(const MeroAgentProcessInstance& process, bool ends) {
        if (ends) {
            process.prefetchForEnd();
        } else {
            process.prefetchForPass();
        }
    }

    std::array<Coming, Distance> coming;
    std::size_t next = 0;
};
