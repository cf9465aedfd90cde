#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/object_writer.h"
#include "platform/interchange/simulation_parameters.h"

namespace mero {

/// Makes the workers and roles of simulation parameters in the working environment of an import.
class StaffWriter {
public:
    StaffWriter(Repository& target, ImportReport& importReport)
        : repository(target), writer(target), report(importReport) {}

    void write(const SimulationParameters& parameters);

    /// Name of the role that these crews and nobody else have; where there is none it is made, with the name
    /// of the task.
    std::string roleOf(const std::vector<std::string>& crews, const std::string& task);
    /// Adds to what the workers of the crew need for tasks; `task` is an object of a process.
    void addDuration(const CrewDuration& duration, const Object& task);
    /// Stores what was added.
    void storeDurations();

private:
    void makeCrew(const CrewParameters& crew);
    [[nodiscard]] MeroId makeWorker(const WorkerParameters& worker, int number);
    [[nodiscard]] MeroId roleNamed(const std::string& name);
    void giveRole(MeroId role, const std::set<std::string>& crews);

    Repository& repository;
    ObjectWriter writer;
    ImportReport& report;
    std::map<std::string, std::vector<MeroId>> workers;  ///< by crew
    std::map<std::set<std::string>, MeroId> roles;       ///< by crews; the first of several
    std::set<std::pair<MeroId, MeroId>> rolesGiven;
    std::map<MeroId, std::string> taskDurations;
};

}  // namespace mero
