#include "platform/interchange/xes_trace.h"

#include <chrono>
#include <fmt/format.h>
#include <unordered_map>
#include <vector>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/xes_case.h"
#include "platform/interchange/xes_reader.h"
#include "platform/interchange/xes_rows.h"

namespace mero {

namespace {

/// Finds objects by name; each name is looked up in the repository once.
class ObjectNames {
public:
    ObjectNames(const Repository& models, MeroId modelId, const char* className, const char* kindName)
        : repository(models), model(modelId), kind(kindName) {
        const MeroId library = models.library().findClass(ClassCodeProcessLibrary, className) != nullptr
                                   ? ClassCodeProcessLibrary
                                   : ClassCodeEnvironmentLibrary;
        const Library::Class* const found = models.library().findClass(library, className);
        classId = found != nullptr ? found->id : MeroNoId;
    }

    [[nodiscard]] MeroId idOf(const std::string& name) {
        const auto [place, isNew] = known.try_emplace(name, MeroNoId);
        if (isNew) {
            const Object* object = repository.findObject(model, classId, name);
            if (object == nullptr) {
                object = repository.findObject(model, MeroNoId, name);
            }
            if (object == nullptr) {
                throw DocumentRefused(fmt::format("the model \"{}\" has no {} \"{}\"",
                                                  repository.findModel(model)->name.view(), kind, name));
            }
            place->second = object->id;
        }
        return place->second;
    }

private:
    const Repository& repository;
    MeroId model;
    const char* kind;
    MeroId classId = MeroNoId;
    std::unordered_map<std::string, MeroId> known;
};

std::int64_t secondsOf(std::int64_t milliseconds) {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::milliseconds(milliseconds)).count();
}

}  // namespace

class XesTrace::Implementation {
public:
    Implementation(std::istream& log, std::string name, const Repository& models, MeroId processId,
                   MeroId environmentId, XesClock clockKind)
        : input(log),
          source(std::move(name)),
          process(processId),
          environment(environmentId),
          clock(clockKind),
          activities(models, processId, "Task", "activity"),
          workers(models, environmentId, "Worker", "worker") {}

    Result<void> prepare() {
        try {
            const XesSurvey survey = surveyLog();
            readCases(survey);
            rows.finish();
        } catch (const DocumentRefused& refused) {
            return Error{refused.what()};
        }
        return {};
    }

    /// With the start and the end of the run.
    [[nodiscard]] std::size_t size() const { return rows.size() + 2; }

    Result<bool> next(SimEvent& event) {
        event = SimEvent{};
        event.time = lastTime;
        if (state == State::Begin) {
            state = State::Rows;
            event.code = EventRunStart;
            return true;
        }
        if (state == State::End) {
            return false;
        }
        try {
            XesRow row;
            if (rows.next(row)) {
                fill(event, row);
                return true;
            }
        } catch (const DocumentRefused& refused) {
            return Error{source + ": " + refused.what()};
        }
        state = State::End;
        event.code = EventRunEnd;
        return true;
    }

private:
    enum class State { Begin, Rows, End };

    XesSurvey surveyLog() {
        XesSurvey survey;
        XesReader reader(input, source);
        XesEvent event;
        for (XesStep step = take(reader.next(event)); step != XesStep::LogEnd;
             step = take(reader.next(event))) {
            if (step == XesStep::Event) {
                survey.add(event);
            }
        }
        input.clear();
        if (!input.seekg(0)) {
            throw DocumentRefused(source + ": the log can't be read a second time");
        }
        return survey;
    }

    void readCases(const XesSurvey& survey) {
        const IsoTime beginning = survey.beginning();
        const std::int64_t week = survey.startOfCalendar();
        zero = clock == XesClock::WallClock ? week : week - beginning.offset;
        XesCase builder(clock == XesClock::WallClock ? beginning.wallClock() : beginning.milliseconds,
                        survey.everyEventIsPass());
        XesReader reader(input, source);
        XesEvent event;
        std::vector<XesCaseEvent> events;
        std::uint32_t caseNumber = 0;
        for (XesStep step = take(reader.next(event)); step != XesStep::LogEnd;
             step = take(reader.next(event))) {
            if (step == XesStep::TraceBegin) {
                events.clear();
                ++caseNumber;
            } else if (step == XesStep::Event) {
                events.push_back(lookUp(event));
            } else {
                for (const XesRow& row : builder.rowsOf(events, caseNumber)) {
                    rows.add(row);
                }
            }
        }
    }

    static XesStep take(const Result<XesStep>& step) {
        if (!step) {
            throw DocumentRefused(step.error().text);
        }
        return step.value();
    }

    XesCaseEvent lookUp(const XesEvent& event) {
        try {
            XesCaseEvent result;
            result.time = timeOf(event.time);
            result.start = timeOf(event.start);
            result.object = activities.idOf(event.activity.empty() ? NoActivityName : event.activity);
            if (environment != MeroNoId && !event.resource.empty()) {
                result.worker = workers.idOf(event.resource);
            }
            result.transition = transitionOf(event.transition);
            return result;
        } catch (const DocumentRefused& refused) {
            throw DocumentRefused(fmt::format("{}:{}: {}", source, event.line, refused.what()));
        }
    }

    [[nodiscard]] std::optional<std::int64_t> timeOf(const std::string& text) const {
        const auto time = parseIsoTime(text);
        if (!time) {
            return std::nullopt;
        }
        return clock == XesClock::WallClock ? time->wallClock() : time->milliseconds;
    }

    void fill(SimEvent& event, const XesRow& row) {
        lastTime = secondsOf(row.time - zero);
        event.time = lastTime;
        event.code = row.code;
        event.mainModelId = event.modelId = process;
        event.mainKey = event.key = keyOf(row);
        event.objectId = row.object;
        if (row.pass != 0) {
            passKey = SV::String(fmt::format("{}.{}", row.caseNumber, row.pass));
            event.passKey = &passKey;
        }
        (row.code == EventExecutiveAssigned ? event.assignedExecutiveId : event.executiveId) = row.worker;
    }

    /// The key of a case that has ended lives on in `endedKey` for the event at hand.
    const SV::String* keyOf(const XesRow& row) {
        if (row.code == EventProcessEnd || row.code == EventInstanceDropped) {
            endedKey = liveKeys[row.caseNumber];
            liveKeys.erase(row.caseNumber);
            return &endedKey;
        }
        SV::String& key = liveKeys[row.caseNumber];
        if (key.IsEmpty()) {
            key = SV::String(static_cast<std::int64_t>(row.caseNumber));
        }
        return &key;
    }

    std::istream& input;
    std::string source;
    MeroId process;
    MeroId environment;
    XesClock clock;
    ObjectNames activities;
    ObjectNames workers;
    XesRowSorter rows;
    State state = State::Begin;
    std::int64_t zero = 0;      ///< milliseconds at time 0 of the run
    std::int64_t lastTime = 0;  ///< of the run, in seconds
    std::unordered_map<std::uint32_t, SV::String> liveKeys;
    SV::String endedKey;
    SV::String passKey;
};

XesTrace::XesTrace(std::istream& input, std::string source, const Repository& repository, MeroId processId,
                   MeroId environmentId, XesClock clock)
    : implementation(std::make_unique<Implementation>(input, std::move(source), repository, processId,
                                                      environmentId, clock)) {}

XesTrace::~XesTrace() = default;

Result<void> XesTrace::prepare() {
    return implementation->prepare();
}

std::size_t XesTrace::size() const {
    return implementation->size();
}

Result<bool> XesTrace::next(SimEvent& event) {
    return implementation->next(event);
}

}  // namespace mero
