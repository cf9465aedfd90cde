#include "platform/engine/staff_plan.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>

#include "component/host/simulation.h"

#include "platform/engine/task_places.h"
#include "platform/language/assignment_rule.h"
#include "platform/language/kiln_document.h"
#include "platform/repository/repository_services.h"
#include "platform/time/calendar_text.h"

namespace mero {

std::uint32_t CrewPlan::groupOf(std::vector<std::uint32_t> candidates) {
    const auto place = std::find(groups.begin(), groups.end(), candidates);
    const auto number = static_cast<std::uint32_t>(place - groups.begin());
    if (place == groups.end()) {
        groups.push_back(std::move(candidates));
    }
    return number;
}

class StaffCompiler {
public:
    StaffCompiler(Repository& compiledRepository, const ProcessGraph& processGraph, MeroId environmentModel,
                  std::int64_t offset)
        : repository(compiledRepository),
          library(compiledRepository.library()),
          graph(processGraph),
          environment(environmentModel),
          startOffset(offset) {}

    Result<StaffPlan> compile() {
        plan.needOfNode.assign(graph.nodeCount(), StaffPlan::None);
        plan.durationsOfNode.resize(graph.nodeCount());
        if (environment != MeroNoId) {
            if (repository.findModel(environment) == nullptr) {
                return Error{fmt::format("there is no working environment #{}", environment)};
            }
            addMembers();
            addNeeds();
            addDurations();
        }
        if (failure) {
            return *failure;
        }
        return std::move(plan);
    }

private:
    struct Crew {
        CrewPlan& plan;
        std::unordered_map<MeroId, std::uint32_t> members;
        const char* attribute;                                    ///< of an activity, with the rule
        const char* roleRelation;                                 ///< from a member to a role
        const char* unitRelation;                                 ///< from a member to an organisational unit
        std::map<std::string, std::vector<std::uint32_t>> known;  ///< candidates by rule
    };

    void addMembers() {
        for (const MeroId id : repository.findModel(environment)->objects) {
            const Object& object = *repository.findObject(id);
            if (library.isSubClassOf(library.coreVariable(CoreExecutive), object.classId)) {
                const double availability = repository.numberOf(object, "Availability");
                if (availability > 0.0) {
                    addMember(workers, object, 100.0 / availability);
                } else {
                    report(object, "has no availability, and is never assigned");
                }
            } else if (library.isSubClassOf(library.coreVariable(CoreResource), object.classId)) {
                addMember(resources, object, 1.0);
            }
        }
    }

    void addMember(Crew& crew, const Object& object, double pace) {
        const SV::String text = repository.textOf(object, "Calendar");
        const auto [place, isNew] = shiftOfText.try_emplace(
            std::string(text.view()), static_cast<std::uint32_t>(plan.shiftPlans.size()));
        if (isNew) {
            Result<WorkingCalendar> calendar =
                readCalendarText(text.IsEmpty() ? std::string_view(AlwaysWorking) : text.view());
            if (!calendar) {
                shiftOfText.erase(place);
                refuse(object, "Calendar", calendar.error().text);
                return;
            }
            plan.shiftPlans.emplace_back(std::make_shared<const WorkingCalendar>(std::move(calendar.value())),
                                         startOffset);
        }
        if (!plan.shiftPlans[place->second].hasWork()) {
            report(object, "has a calendar without working time, and is never assigned");
            return;
        }
        crew.members.emplace(object.id, static_cast<std::uint32_t>(crew.plan.members.size()));
        crew.plan.members.push_back({object.id, place->second, pace});
    }

    void addNeeds() {
        for (const ProcessModel& model : graph.models()) {
            for (std::uint32_t index = 0; index < model.nodes.size(); ++index) {
                if (model.nodes[index].kind == NodeKind::Activity) {
                    const Object& activity = *repository.findObject(model.nodes[index].objectId);
                    addNeed(model.firstNode + index,
                            {groupOf(workers, activity), groupOf(resources, activity)});
                }
            }
        }
    }

    void addNeed(std::uint32_t node, StaffPlan::Need need) {
        if (need.workerGroup == StaffPlan::None && need.resourceGroup == StaffPlan::None) {
            return;
        }
        const auto place =
            std::find_if(plan.needList.begin(), plan.needList.end(), [&](const StaffPlan::Need& each) {
                return each.workerGroup == need.workerGroup && each.resourceGroup == need.resourceGroup;
            });
        plan.needOfNode[node] = static_cast<std::uint32_t>(place - plan.needList.begin());
        if (place == plan.needList.end()) {
            plan.needList.push_back(need);
        }
    }

    std::uint32_t groupOf(Crew& crew, const Object& activity) {
        const SV::String text = repository.textOf(activity, crew.attribute);
        const auto [place, isNew] = crew.known.try_emplace(std::string(text.view()));
        if (isNew) {
            const Result<AssignmentRule> rule = readAssignmentRule(text.view());
            if (!rule) {
                refuse(activity, crew.attribute, rule.error().text);
                return StaffPlan::None;
            }
            place->second = candidatesOf(crew, rule.value());
        }
        if (place->second.empty()) {
            if (!text.IsEmpty()) {
                report(activity, fmt::format("has a rule \"{}\" that names nothing in the environment, and "
                                             "is done without",
                                             crew.attribute));
            }
            return StaffPlan::None;
        }
        return crew.plan.groupOf(place->second);
    }

    std::vector<std::uint32_t> candidatesOf(const Crew& crew, const AssignmentRule& rule) {
        std::set<MeroId> objects;
        switch (rule.kind) {
            case AssignmentRule::Kind::Nobody:
                break;
            case AssignmentRule::Kind::Role:
                addRelated("Role", rule.text, crew.roleRelation, objects);
                break;
            case AssignmentRule::Kind::Unit:
                addRelated("Organisational unit", rule.text, crew.unitRelation, objects);
                break;
            case AssignmentRule::Kind::Expression: {
                const RepositoryServices services(repository);
                ISortedSet<MeroId> found;
                aEvaluateExpression(environment, SV::String(rule.text), found, OseScopeModel, true, true);
                objects.insert(found.begin(), found.end());
                break;
            }
        }
        std::vector<std::uint32_t> candidates;
        for (const MeroId id : objects) {
            if (const auto member = crew.members.find(id); member != crew.members.end()) {
                candidates.push_back(member->second);
            }
        }
        return candidates;
    }

    /// Objects that hang on the group by the relation; for a unit also those of its parts.
    void addRelated(const char* className, const std::string& name, const char* relationClass,
                    std::set<MeroId>& objects) {
        const Object* group = repository.findObject(
            environment, library.findClass(ClassCodeEnvironmentLibrary, className)->id, name);
        if (group == nullptr) {
            return;
        }
        const MeroId wanted = library.findRelationClass(ClassCodeEnvironmentLibrary, relationClass)->id;
        const MeroId part = library.findRelationClass(ClassCodeEnvironmentLibrary, "Part of")->id;
        std::vector<MeroId> groups{group->id};
        std::set<MeroId> seen{group->id};
        for (std::size_t index = 0; index < groups.size(); ++index) {
            for (const MeroId id : repository.relationsTo(groups[index])) {
                const Relation& relation = *repository.findRelation(id);
                if (relation.classId == wanted) {
                    objects.insert(relation.from);
                } else if (relation.classId == part && seen.insert(relation.from).second) {
                    groups.push_back(relation.from);
                }
            }
        }
    }

    void addDurations() {
        const TaskPlaces places(repository, graph);
        for (std::uint32_t worker = 0; worker < plan.workerCrew.members.size(); ++worker) {
            const Object& object = *repository.findObject(plan.workerCrew.members[worker].id);
            const SV::String text = repository.textOf(object, "Task durations");
            const Result<KilnDocument> document = readKilnDocument(text.view());
            if (!document) {
                refuse(object, "Task durations", document.error().text);
                return;
            }
            addDurations(object, worker, document.value(), places);
        }
    }

    /// What an element of "Task durations" is for.
    struct TimedTask {
        std::optional<std::string> model;  ///< none for every model
        std::string name;

        auto operator<=>(const TimedTask&) const = default;
        [[nodiscard]] std::string text() const {
            return model ? fmt::format("\"{}\" of model \"{}\"", name, *model) : fmt::format("\"{}\"", name);
        }
    };

    /// Those for tasks of every model come first, so that one for a certain model comes before them.
    void addDurations(const Object& object, std::uint32_t worker, const KilnDocument& document,
                      const TaskPlaces& places) {
        std::set<TimedTask> seen;
        for (const bool ofModel : {false, true}) {
            for (const KilnElement& element : document.elements) {
                const KilnAttribute* const model = document.find(element, "model");
                if ((model != nullptr) != ofModel) {
                    continue;
                }
                const KilnAttribute* const name = document.find(element, "task");
                const KilnAttribute* const text = document.find(element, "distribution");
                if (element.keyword != "DURATION" || name == nullptr || text == nullptr) {
                    refuse(object, "Task durations",
                           "expected DURATION task:\"…\" distribution:\"…\", or with model:\"…\"");
                    continue;
                }
                TimedTask task{ofModel ? std::optional(model->value.plain()) : std::nullopt,
                               name->value.plain()};
                addDuration(object, worker, task, text->value.plain(), places);
                if (!seen.insert(task).second) {
                    report(object,
                           fmt::format("has two durations for the task {}: the last counts", task.text()));
                }
            }
        }
    }

    void addDuration(const Object& object, std::uint32_t worker, const TimedTask& task,
                     const std::string& text, const TaskPlaces& places) {
        Result<Distribution> distribution = Distribution::parse(text);
        if (!distribution) {
            refuse(object, "Task durations", distribution.error().text);
            return;
        }
        const std::vector<std::uint32_t>& nodes = places.nodesOf(task.model, task.name);
        if (nodes.empty()) {
            if (!places.isKnown(task.model, task.name)) {
                report(object, fmt::format("has a duration for the task {}, which isn't there", task.text()));
            }
            return;
        }
        plan.distributions.push_back(std::move(distribution.value()));
        for (const std::uint32_t node : nodes) {
            plan.durationsOfNode[node].resize(plan.workerCrew.members.size(), StaffPlan::None);
            plan.durationsOfNode[node][worker] = static_cast<std::uint32_t>(plan.distributions.size() - 1);
        }
    }

    void refuse(const Object& object, std::string_view attribute, std::string_view reason) {
        if (!failure) {
            failure = Error{fmt::format("{}, {}: {}", placeOf(object), attribute, reason)};
        }
    }
    void report(const Object& object, std::string_view what) {
        plan.oddities.push_back(fmt::format("{} {}", placeOf(object), what));
    }
    [[nodiscard]] std::string placeOf(const Object& object) const {
        return fmt::format("model \"{}\", object \"{}\"", repository.findModel(object.modelId)->name.view(),
                           object.name.view());
    }

    static constexpr auto AlwaysWorking = "CALENDAR\nDAILY hours:\"00:00-24:00\"";

    Repository& repository;
    const Library& library;
    const ProcessGraph& graph;
    MeroId environment;
    std::int64_t startOffset;
    StaffPlan plan;
    Crew workers{plan.workerCrew, {}, "Performer", "Has role", "Belongs to", {}};
    Crew resources{plan.resourceCrew, {}, "Resources", "Used by", "Provided by", {}};
    std::unordered_map<std::string, std::uint32_t> shiftOfText;
    std::optional<Error> failure;
};

Result<StaffPlan> StaffPlan::compile(Repository& repository, const ProcessGraph& graph, MeroId environment,
                                     std::int64_t startOffset) {
    return StaffCompiler(repository, graph, environment, startOffset).compile();
}

}  // namespace mero
