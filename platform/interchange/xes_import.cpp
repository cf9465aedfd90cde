#include "platform/interchange/xes_import.h"

#include <algorithm>
#include <fmt/format.h>
#include <fstream>
#include <set>
#include <unordered_map>

#include "component/host/simulation.h"

#include "platform/interchange/name_rules.h"
#include "platform/interchange/object_writer.h"
#include "platform/interchange/run_parameters.h"
#include "platform/interchange/xes_case.h"
#include "platform/interchange/xes_reader.h"
#include "platform/interchange/xes_survey.h"

namespace mero {

namespace {

class XesImport {
public:
    XesImport(std::istream& input, const std::string& name, Repository& target)
        : reader(input, name), source(name), repository(target), writer(target) {}

    ImportReport run() {
        readEvents();
        makeProcess();
        ImportReport report;
        report.models.push_back(process);
        report.environment = environment;
        addNotes(report);
        report.runOptions = "--start " + wallClockText(survey.startOfCalendar());
        return report;
    }

    /// Takes back what was made.
    void discard() {
        for (const MeroId model : {process, environment}) {
            if (model != MeroNoId) {
                (void)repository.removeModel(model);
            }
        }
    }

private:
    using Known = std::unordered_map<std::string, MeroId>;

    void readEvents() {
        XesEvent event;
        std::vector<XesCaseEvent> events;
        while (true) {
            const Result<XesStep> step = reader.next(event);
            if (!step) {
                throw DocumentRefused(step.error().text);
            }
            switch (step.value()) {
                case XesStep::TraceBegin:
                    makeProcess();
                    events.clear();
                    break;
                case XesStep::Event:
                    survey.add(event);
                    events.push_back(addObjects(event));
                    break;
                case XesStep::TraceEnd:
                    ++survey.cases;
                    survey.emptyCases += events.empty() ? 1U : 0U;
                    countUnmannedPasses(events);
                    break;
                case XesStep::LogEnd:
                    return;
            }
        }
    }

    /// By the first trace the name of the log has been read.
    void makeProcess() {
        if (process == MeroNoId) {
            const std::string& name = reader.logName();
            process = writer.addModel(freeModelName(name.empty() ? fileTitle() : name), "Business process");
        }
    }

    [[nodiscard]] std::string fileTitle() const {
        const std::filesystem::path file = std::filesystem::path(source).stem();
        return (file.extension() == ".xes" ? file.stem() : file).string();
    }

    XesCaseEvent addObjects(const XesEvent& event) {
        XesCaseEvent played;
        played.object =
            object(process, "Task", event.activity.empty() ? NoActivityName : event.activity, activities);
        if (!event.resource.empty()) {
            played.worker = addWorker(event);
        }
        if (const auto time = parseIsoTime(event.time); time) {
            played.time = time->milliseconds;
        }
        played.transition = transitionOf(event.transition);
        return played;
    }

    MeroId addWorker(const XesEvent& event) {
        if (environment == MeroNoId) {
            environment = writer.addModel(
                freeModelName(std::string(repository.findModel(process)->name.view()) + " resources"),
                "Working environment");
        }
        const MeroId worker = object(environment, "Worker", event.resource, workers);
        if (!event.role.empty()) {
            relateOnce("Has role", worker, object(environment, "Role", event.role, roles));
        }
        if (!event.group.empty()) {
            relateOnce("Belongs to", worker, object(environment, "Organisational unit", event.group, units));
        }
        return worker;
    }

    /// Of a case with a life cycle; without one each event is a pass by itself.
    void countUnmannedPasses(std::vector<XesCaseEvent>& events) {
        for (const XesRow& row : cases.rowsOf(events, 0)) {
            unmannedPasses += row.code == EventWorkStart && row.worker == MeroNoId ? 1U : 0U;
        }
    }

    MeroId object(MeroId model, std::string_view className, const std::string& name, Known& known) {
        const auto [place, isNew] = known.try_emplace(name, MeroNoId);
        if (isNew) {
            place->second = writer.addObject(model, className, name);
        }
        return place->second;
    }

    void relateOnce(std::string_view relation, MeroId from, MeroId to) {
        if (related.emplace(from, to).second) {
            (void)writer.relate(relation, from, to);
        }
    }

    [[nodiscard]] std::string freeModelName(const std::string& wanted) const {
        return freeName(wanted.empty() ? "Event log" : wanted,
                        [this](const std::string& name) { return repository.findModel(name) != nullptr; });
    }

    void addNote(ImportReport& report, std::size_t count, std::string_view what,
                 std::string_view done) const {
        if (count != 0) {
            report.notes.push_back({source, fmt::format("{} {}", count, what), std::string(done)});
        }
    }

    void addNotes(ImportReport& report) const {
        addNote(report, survey.emptyCases, "traces without events", "left out");
        addNote(report, survey.withoutActivity, "events without activity",
                fmt::format("played as \"{}\"", NoActivityName));
        addNote(report, survey.withoutResource, "events without resource",
                "played with the worker of their pass");
        addNote(
            report, survey.everyEventIsPass() ? survey.withoutResource : unmannedPasses,
            "passes without any resource",
            "played without a worker; work load, strain and costs on the process model stop at the first");
        addNote(report, survey.withoutTime, "events without time", "played with the event before them");
        addNote(report, survey.unreadableTimes, "times that can't be read", "taken as missing");
        if (survey.everyEventIsPass()) {
            addNote(report, survey.events, "events in a log without \"complete\"", "each played as a pass");
        } else {
            addNote(report, survey.unknownTransitions, "events with an unknown transition", "not played");
        }
    }

    XesReader reader;
    const std::string& source;
    Repository& repository;
    ObjectWriter writer;
    XesSurvey survey;
    XesCase cases{0, false};
    std::size_t unmannedPasses = 0;
    MeroId process = MeroNoId;
    MeroId environment = MeroNoId;
    Known activities;
    Known workers;
    Known roles;
    Known units;
    std::set<std::pair<MeroId, MeroId>> related;
};

}  // namespace

bool isXesFile(const std::filesystem::path& file) {
    std::string name = file.filename().string();
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return name.ends_with(".xes") || name.ends_with(".xes.gz");
}

Result<ImportReport> importXes(std::istream& input, const std::string& source, Repository& repository) {
    XesImport import(input, source, repository);
    try {
        return import.run();
    } catch (const DocumentRefused& refused) {
        import.discard();
        const std::string_view reason = refused.what();
        return Error{reason.starts_with(source) ? std::string(reason) : source + ": " + refused.what()};
    }
}

Result<ImportReport> importXesFile(const std::filesystem::path& file, Repository& repository) {
    std::ifstream input(file, std::ios::binary);
    if (!input) {
        return Error{file.string() + ": can't be opened"};
    }
    return importXes(input, file.string(), repository);
}

}  // namespace mero
