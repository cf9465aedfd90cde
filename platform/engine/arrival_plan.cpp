#include "platform/engine/arrival_plan.h"

#include <fmt/format.h>

#include "platform/time/calendar_text.h"

namespace mero {

namespace {

Error faultAt(const ProcessModel& model, const Object& start, std::string_view attribute,
              std::string_view reason) {
    return Error{
        fmt::format("model \"{}\", object \"{}\", {}: {}", model.name, start.name.view(), attribute, reason)};
}

double secondsOfPeriod(std::string_view period) {
    constexpr double Day = 86'400.0;
    constexpr double Year = 365.0 * Day;
    return period == "per year" ? Year : period == "per month" ? Year / 12.0 : Day;
}

Result<std::optional<ShiftPlan>> calendarOf(const Repository& repository, const ProcessModel& model,
                                            const Object& start, std::int64_t startOffset) {
    constexpr auto Attribute = "Arrival calendar";
    const SV::String text = repository.textOf(start, Attribute);
    if (text.IsEmpty()) {
        return std::optional<ShiftPlan>();
    }
    Result<WorkingCalendar> calendar = readCalendarText(text.view());
    if (!calendar) {
        return faultAt(model, start, Attribute, calendar.error().text);
    }
    ShiftPlan shifts(std::make_shared<const WorkingCalendar>(std::move(calendar.value())), startOffset);
    if (!shifts.hasWork()) {
        return faultAt(model, start, Attribute, "has no working time, so that no instance arrives");
    }
    return std::optional(std::move(shifts));
}

/// Nothing if the start event doesn't say when instances arrive.
Result<std::optional<ArrivalPlan::Source>> sourceOf(const Repository& repository, const ProcessModel& model,
                                                    const Object& start, std::int64_t startOffset) {
    const SV::String text = repository.textOf(start, "Arrival");
    const double quantity = repository.numberOf(start, "Quantity");
    if (text.IsEmpty() && quantity <= 0.0) {
        return std::optional<ArrivalPlan::Source>();
    }
    ArrivalPlan::Source source;
    Result<std::optional<ShiftPlan>> calendar = calendarOf(repository, model, start, startOffset);
    if (!calendar) {
        return calendar.error();
    }
    source.calendar = std::move(calendar.value());
    if (!text.IsEmpty()) {
        Result<Distribution> gap = Distribution::parse(text.view());
        if (!gap) {
            return faultAt(model, start, "Arrival", gap.error().text);
        }
        source.gap = std::move(gap.value());
    } else {
        const double share = source.calendar ? source.calendar->workShare() : 1.0;
        source.workGap = secondsOfPeriod(repository.textOf(start, "Time period").view()) * share / quantity;
    }
    return std::optional(std::move(source));
}

}  // namespace

Result<ArrivalPlan> ArrivalPlan::compile(const Repository& repository, const ProcessGraph& graph,
                                         std::int64_t startOffset) {
    ArrivalPlan plan;
    for (std::uint32_t main = 0; main < graph.mainModels().size(); ++main) {
        const std::uint32_t modelIndex = graph.mainModels()[main];
        const ProcessModel& model = graph.models()[modelIndex];
        bool begins = false;
        for (const std::uint32_t node : model.startNodes) {
            const ProcessNode& start = model.nodes[node];
            if (start.kind != NodeKind::Start || start.awaitsMessage) {
                begins |= start.awaitsMessage;
                continue;
            }
            Result<std::optional<Source>> source =
                sourceOf(repository, model, *repository.findObject(start.objectId), startOffset);
            if (!source) {
                return source.error();
            }
            if (source.value()) {
                plan.sourceList.push_back(std::move(*source.value()));
                plan.sourceList.back().main = main;
                plan.sourceList.back().model = modelIndex;
                plan.sourceList.back().node = node;
                begins = true;
            }
        }
        if (!begins) {
            plan.oddities.push_back(
                fmt::format("model \"{}\" has no start event with an arrival: it isn't started", model.name));
        }
    }
    if (plan.sourceList.empty()) {
        return Error{
            "nothing says when instances arrive: a start event needs \"Arrival\", or \"Quantity\" and \"Time "
            "period\""};
    }
    return plan;
}

}  // namespace mero
