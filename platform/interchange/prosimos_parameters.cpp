#include "platform/interchange/prosimos_parameters.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <unordered_map>

#include "platform/interchange/json_reader.h"
#include "platform/interchange/name_rules.h"
#include "platform/interchange/object_writer.h"
#include "platform/interchange/prosimos_document.h"

namespace mero {

namespace {

class ParameterApplier {
public:
    ParameterApplier(const ProsimosDocument& readDocument, std::string_view sourceName, Repository& target,
                     ImportReport& importReport)
        : document(readDocument),
          source(sourceName),
          repository(target),
          writer(target),
          report(importReport) {}

    void apply() {
        for (const ProsimosNote& unused : document.notes) {
            note(unused.path, unused.text);
        }
        findElements();
        checkTasks();
        applyBranches();
        applyEvents();
        makeStaff();
        for (const ProsimosTask& task : document.tasks) {
            applyTask(task);
        }
        storeTaskDurations();
        applyArrival();
    }

private:
    struct Crew {
        MeroId role;
        std::set<std::string> resources;
    };

    void note(const std::string& path, std::string_view done) {
        report.notes.push_back({fmt::format("{}: {}", source, path), "parameters", std::string(done)});
    }

    void findElements() {
        for (const MeroId modelId : report.models) {
            const Model& model = *repository.findModel(modelId);
            for (const MeroId id : model.objects) {
                const SV::String element = repository.textOf(*repository.findObject(id), "BPMN identifier");
                if (!element.IsEmpty()) {
                    nodes.emplace(element.view(), id);
                }
            }
            for (const MeroId id : model.relations) {
                const Relation& relation = *repository.findRelation(id);
                const SV::String element = repository.textOf(relation, "BPMN identifier");
                if (!element.IsEmpty()) {
                    flows.emplace(element.view(), id);
                }
            }
        }
    }

    /// Parameters of another process are a mistake of the user; a few unknown tasks are not.
    void checkTasks() const {
        const bool fits = std::any_of(document.tasks.begin(), document.tasks.end(),
                                      [this](const ProsimosTask& task) { return nodes.contains(task.id); });
        if (!fits && !document.tasks.empty()) {
            throw DocumentRefused(
                fmt::format("{}: none of the tasks is in the imported process", document.tasks.front().path));
        }
    }

    void applyBranches() {
        for (const ProsimosBranch& branch : document.branches) {
            const auto flow = flows.find(branch.flow);
            if (flow == flows.end()) {
                note(branch.path, fmt::format("there is no sequence flow \"{}\"", branch.flow));
                continue;
            }
            writer.setRelation(flow->second, "Probability", branch.probability);
        }
    }

    void applyEvents() {
        for (const ProsimosEvent& event : document.events) {
            setDuration(event.id, event.path, event.distribution);
        }
    }

    bool setDuration(const std::string& element, const std::string& path, const std::string& distribution) {
        const auto node = nodes.find(element);
        if (node == nodes.end()) {
            note(path, fmt::format("there is no element \"{}\"", element));
            return false;
        }
        if (!writer.hasAttribute(node->second, "Duration")) {
            note(path, fmt::format("the duration of \"{}\" isn't used: its kind has none",
                                   repository.findObject(node->second)->name.view()));
            return false;
        }
        writer.set(node->second, "Duration", SV::String(distribution));
        return true;
    }

    void makeStaff() {
        if (document.profiles.empty()) {
            return;
        }
        if (report.environment == MeroNoId) {
            const std::string wanted(
                fmt::format("{} staff", repository.findModel(report.models.front())->name.view()));
            report.environment = writer.addModel(
                freeName(wanted,
                         [this](const std::string& name) { return repository.findModel(name) != nullptr; }),
                "Working environment");
        }
        for (const ProsimosProfile& profile : document.profiles) {
            Crew crew{roleNamed(profile.name), {}};
            for (const ProsimosResource& resource : profile.resources) {
                crew.resources.insert(resource.id);
                for (const MeroId worker : workersOf(resource)) {
                    giveRole(worker, crew.role);
                }
            }
            crews.push_back(std::move(crew));
        }
    }

    /// A profile and a lane of the same name are the same role.
    MeroId roleNamed(const std::string& name) {
        const Library::Class* roleClass = repository.library().findClass(ClassCodeEnvironmentLibrary, "Role");
        const Object* existing = repository.findObject(report.environment, roleClass->id, name);
        return existing != nullptr ? existing->id : writer.addObject(report.environment, "Role", name);
    }

    void giveRole(MeroId worker, MeroId role) {
        if (rolesGiven.emplace(worker, role).second) {
            writer.relate("Has role", worker, role);
        }
    }

    const std::vector<MeroId>& workersOf(const ProsimosResource& resource) {
        const auto [entry, fresh] = workers.try_emplace(resource.id);
        for (int number = 1; fresh && number <= resource.amount; ++number) {
            entry->second.push_back(makeWorker(resource, number));
        }
        return entry->second;
    }

    MeroId makeWorker(const ProsimosResource& resource, int number) {
        const bool alone = resource.amount == 1 && !writer.isNameTaken(report.environment, resource.name);
        const std::string wanted = alone ? resource.name : fmt::format("{} {}", resource.name, number);
        const std::string name = freeName(wanted, [this](const std::string& candidate) {
            return writer.isNameTaken(report.environment, candidate);
        });
        const MeroId worker = writer.addObject(report.environment, "Worker", name);
        if (!resource.calendar.empty()) {
            writer.set(worker, "Calendar", SV::String(resource.calendar));
        }
        writer.set(worker, "Hourly wages", resource.costPerHour);
        return worker;
    }

    void applyTask(const ProsimosTask& task) {
        if (task.durations.empty() || !setDuration(task.id, task.path, durationOf(task))) {
            return;
        }
        const MeroId object = nodes.at(task.id);
        const std::string taskName(repository.findObject(object)->name.view());
        if (!sharesDuration(task)) {
            for (const ProsimosDuration& duration : task.durations) {
                for (const MeroId worker : workers.at(duration.resource)) {
                    taskDurations[worker] +=
                        fmt::format("DURATION task:{} distribution:{}\n", kilnString(taskName),
                                    kilnString(duration.distribution));
                }
            }
        }
        if (writer.hasAttribute(object, "Performer")) {
            const std::string role(repository.findObject(roleOf(task, taskName))->name.view());
            writer.set(object, "Performer", SV::String("role " + kilnString(role)));
        }
    }

    static bool sharesDuration(const ProsimosTask& task) {
        return std::all_of(task.durations.begin(), task.durations.end(),
                           [&task](const ProsimosDuration& duration) {
                               return duration.distribution == task.durations.front().distribution;
                           });
    }

    static std::string durationOf(const ProsimosTask& task) {
        if (sharesDuration(task)) {
            return task.durations.front().distribution;
        }
        std::string mixture;
        for (const ProsimosDuration& duration : task.durations) {
            mixture += (mixture.empty() ? "" : "; ") + duration.distribution;
        }
        return fmt::format("mixture({})", mixture);
    }

    /// The profile whose resources are those of the task, or a role of the task's own.
    MeroId roleOf(const ProsimosTask& task, const std::string& taskName) {
        std::set<std::string> resources;
        for (const ProsimosDuration& duration : task.durations) {
            resources.insert(duration.resource);
        }
        const auto crew = std::find_if(crews.begin(), crews.end(), [&resources](const Crew& candidate) {
            return candidate.resources == resources;
        });
        if (crew != crews.end()) {
            return crew->role;
        }
        const std::string name = freeName(taskName, [this](const std::string& candidate) {
            return writer.isNameTaken(report.environment, candidate);
        });
        Crew made{writer.addObject(report.environment, "Role", name), resources};
        for (const std::string& resource : resources) {
            for (const MeroId worker : workers.at(resource)) {
                giveRole(worker, made.role);
            }
        }
        crews.push_back(made);
        return made.role;
    }

    void storeTaskDurations() {
        for (auto& [worker, text] : taskDurations) {
            text.pop_back();
            writer.set(worker, "Task durations", SV::String(text));
        }
    }

    void applyArrival() {
        if (document.arrival.empty() && document.arrivalCalendar.empty()) {
            return;
        }
        const std::vector<MeroId> starts = startEvents();
        if (starts.empty()) {
            note("arrival_time_distribution", "not used, the process has no start event");
            return;
        }
        if (starts.size() > 1) {
            note("arrival_time_distribution",
                 fmt::format("given to \"{}\", the first of {} start events",
                             repository.findObject(starts.front())->name.view(), starts.size()));
        }
        if (!document.arrival.empty()) {
            writer.set(starts.front(), "Arrival", SV::String(document.arrival));
        }
        if (!document.arrivalCalendar.empty()) {
            writer.set(starts.front(), "Arrival calendar", SV::String(document.arrivalCalendar));
        }
    }

    /// Those of the process that the first known task belongs to; the first model where no task is known.
    [[nodiscard]] std::vector<MeroId> startEvents() const {
        MeroId model = report.models.front();
        for (const ProsimosTask& task : document.tasks) {
            if (const auto node = nodes.find(task.id); node != nodes.end()) {
                model = repository.findObject(node->second)->modelId;
                break;
            }
        }
        const Library::Class* startClass =
            repository.library().findClass(ClassCodeProcessLibrary, "Start event");
        const auto found = repository.objectsOfClass(model, startClass->id);
        return {found.begin(), found.end()};
    }

    const ProsimosDocument& document;
    std::string_view source;
    Repository& repository;
    ObjectWriter writer;
    ImportReport& report;
    std::unordered_map<std::string, MeroId> nodes;
    std::unordered_map<std::string, MeroId> flows;
    std::unordered_map<std::string, std::vector<MeroId>> workers;
    std::vector<Crew> crews;
    std::set<std::pair<MeroId, MeroId>> rolesGiven;
    std::map<MeroId, std::string> taskDurations;
};

}  // namespace

Result<void> applySimulationParameters(const ImportFile& document, Repository& repository,
                                       ImportReport& report) {
    const Result<nlohmann::json> json = readJson(document.bytes, document.name);
    if (!json) {
        return json.error();
    }
    try {
        const ProsimosDocument read = readProsimosDocument(DocumentNode(json.value(), ""));
        ParameterApplier(read, document.name, repository, report).apply();
    } catch (const DocumentRefused& refused) {
        return Error{fmt::format("{}: {}", document.name, refused.what())};
    }
    return {};
}

}  // namespace mero
