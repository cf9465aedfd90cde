#pragma once

#include <vector>

#include "component/results/agent_result_set.h"

/// Readings of a process that ended, gathered so that a result set takes them together.
class MeroReadingBatch {
public:
    /// Keeps a copy of the path.
    void add(const MeroReading& reading) {
        readings.push_back(reading);
        paths.insert(paths.end(), reading.path.begin(), reading.path.end());
    }

    /// Hands all over in the order of adding; then none is left.
    void addTo(MeroAgentResultSet& set) {
        const MeroId* path = paths.data();
        for (MeroReading& reading : readings) {
            reading.path = {path, reading.path.size()};
            path += reading.path.size();
        }
        set.addValues(readings);
        clear();
    }

    /// Drops all.
    void clear() {
        readings.clear();
        paths.clear();
    }

private:
    std::vector<MeroReading> readings;
    std::vector<MeroId> paths;  ///< of all readings, one behind the other
};
