#include "platform/interchange/staff_writer.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/interchange/environment_model.h"
#include "platform/interchange/name_rules.h"

namespace mero {

void StaffWriter::write(const SimulationParameters& parameters) {
    if (parameters.crews.empty() && parameters.roles.empty()) {
        return;
    }
    takeEnvironment(repository, report);
    std::map<std::string, const CrewParameters*> crews;
    for (const CrewParameters& crew : parameters.crews) {
        crews.emplace(crew.id, &crew);
    }
    for (const RoleParameters& role : parameters.roles) {
        const std::set<std::string> members(role.crews.begin(), role.crews.end());
        const MeroId object = roleNamed(role.name);
        for (const std::string& crew : role.crews) {
            makeCrew(*crews.at(crew));
        }
        giveRole(object, members);
    }
    for (const CrewParameters& crew : parameters.crews) {
        makeCrew(crew);
    }
}

std::string StaffWriter::roleOf(const std::vector<std::string>& crews, const std::string& task) {
    const std::set<std::string> members(crews.begin(), crews.end());
    auto found = roles.find(members);
    if (found == roles.end()) {
        const std::string name = freeName(task, [this](const std::string& candidate) {
            return writer.isNameTaken(report.environment, candidate);
        });
        giveRole(writer.addObject(report.environment, "Role", name), members);
        found = roles.find(members);
    }
    return std::string(repository.findObject(found->second)->name.view());
}

void StaffWriter::addDuration(const CrewDuration& duration, const Object& task) {
    for (const MeroId worker : workers.at(duration.crew)) {
        std::string& text = taskDurations[worker];
        text += fmt::format("{}DURATION model:{} task:{} distribution:{}", text.empty() ? "" : "\n",
                            kilnString(repository.findModel(task.modelId)->name.view()),
                            kilnString(task.name.view()), kilnString(duration.distribution));
    }
}

void StaffWriter::storeDurations() {
    for (const auto& [worker, text] : taskDurations) {
        writer.set(worker, "Task durations", SV::String(text));
    }
}

void StaffWriter::makeCrew(const CrewParameters& crew) {
    const auto [entry, fresh] = workers.try_emplace(crew.id);
    if (!fresh) {
        return;
    }
    std::map<std::string, int> countOfName;
    for (const WorkerParameters& worker : crew.workers) {
        countOfName[worker.name] += worker.amount;
    }
    std::map<std::string, int> numberOfName;
    for (const WorkerParameters& worker : crew.workers) {
        for (int made = 0; made < worker.amount; ++made) {
            const int number = countOfName[worker.name] == 1 ? 0 : ++numberOfName[worker.name];
            entry->second.push_back(makeWorker(worker, number));
        }
    }
}

/// `number` is 0 for the only one of this name in its crew.
MeroId StaffWriter::makeWorker(const WorkerParameters& worker, int number) {
    const bool alone = number == 0 && !writer.isNameTaken(report.environment, worker.name);
    const std::string wanted = alone ? worker.name : fmt::format("{} {}", worker.name, std::max(number, 1));
    const std::string name = freeName(wanted, [this](const std::string& candidate) {
        return writer.isNameTaken(report.environment, candidate);
    });
    const MeroId object = writer.addObject(report.environment, "Worker", name);
    if (!worker.calendar.empty()) {
        writer.set(object, "Calendar", SV::String(worker.calendar));
    }
    writer.set(object, "Hourly wages", worker.hourlyWages);
    return object;
}

/// A role of the parameters and a lane of the same name are the same role.
MeroId StaffWriter::roleNamed(const std::string& name) {
    const Library::Class* roleClass = repository.library().findClass(ClassCodeEnvironmentLibrary, "Role");
    const Object* existing = repository.findObject(report.environment, roleClass->id, name);
    return existing != nullptr ? existing->id : writer.addObject(report.environment, "Role", name);
}

void StaffWriter::giveRole(MeroId role, const std::set<std::string>& crews) {
    roles.emplace(crews, role);
    for (const std::string& crew : crews) {
        for (const MeroId worker : workers.at(crew)) {
            if (rolesGiven.emplace(worker, role).second) {
                writer.relate("Has role", worker, role);
            }
        }
    }
}

}  // namespace mero
