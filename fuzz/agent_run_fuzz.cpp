#include "component/host/sv_boxes.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "fuzz/fuzz_input.h"
#include "platform/engine/control_component.h"
#include "platform/interchange/repository_document.h"
#include "platform/repository/repository_services.h"
#include "platform/toolkit/internal_errors.h"

namespace {

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process",
    "objects": [ { "name": "Check", "class": "Task", "attributes": { "Execution time": "00:000:01:00:00", "Number": 3 } },
                 { "name": "Ship", "class": "Call activity", "attributes": { "Referenced model": "Shipping" } } ],
    "agents": [ { "name": "P", "class": "Process agent", "objects": "all \"Activity\" + all \"Call\"",
      "calendar": "CALENDAR DAILY hours:\"00:00-12:00\"", "definition":
      "AGENT
FREQUENCY name:\"F\" resultscope:allobjects relative history-mem path-analysis volume-analysis wlstatic-analysis wlnonstatic-analysis
CYCLETIME name:\"T\" resultscope:mainobjects path-analysis volume-analysis wlstatic-analysis wlnonstatic-analysis
AVGSUM name:\"A\" resultscope:allobjects class:\"Task\" attribute:\"Number\" attribute-type:numeric path-analysis volume-analysis wlstatic-analysis
RESPCHANGE name:\"R\" resultscope:process class:\"Worker\" volume-analysis wlstatic-analysis wlnonstatic-analysis
STRAIN name:\"S\" resultscope:mainobjects class:\"Worker\" volume-analysis
WWECOST name:\"C\" resultscope:mainobjects class:\"Worker\" attribute:\"Hourly wages\" volume-analysis
UWWECOST name:\"U\" resultscope:allobjects class:\"Worker\" attribute:\"Hourly wages\" volume-analysis wlstatic-analysis wlnonstatic-analysis
WORKLOAD name:\"W\" resultscope:mainobjects class:\"Worker\" history-mem wlstatic-analysis wlnonstatic-analysis
FORMULA name:\"X\" expression:\"N:\\\"F\\\" / \\\"T\\\"\" path-analysis OBSERVED \"F\" OBSERVED \"T\"" } ] },
  { "name": "Shipping", "type": "Business process",
    "objects": [ { "name": "Load", "class": "Task", "attributes": { "Execution time": "00:000:00:30:00" } },
                 { "name": "Again", "class": "Call activity", "attributes": { "Referenced model": "Shipping" } } ] },
  { "name": "Staff", "type": "Working environment",
    "objects": [ { "name": "Ann", "class": "Worker", "attributes": { "Hourly wages": 20,
                     "Calendar": "CALENDAR DAILY hours:\"08:00-16:00\"" } },
                 { "name": "Van", "class": "IT system" } ],
    "agents": [ { "name": "E", "class": "Environment agent", "objects": "all \"Worker\"",
      "calendar": "CALENDAR DAILY hours:\"00:00-24:00\"", "definition":
      "AGENT
WORKLOAD name:\"W\" resultscope:mainobjects class:\"Worker\" wlstatic-analysis wlnonstatic-analysis
STRAIN name:\"S\" resultscope:allobjects class:\"Worker\" volume-analysis
WWECOST name:\"C\" resultscope:mainobjects class:\"Worker\" attribute:\"Hourly wages\" volume-analysis" } ] } ] })";

/// The document with its line breaks inside texts written as JSON wants them.
std::string documentOf(std::string_view models) {
    std::string document;
    bool inText = false;
    for (std::size_t place = 0; place < models.size(); ++place) {
        const char character = models[place];
        if (character == '"' && models[place - 1] != '\\') {
            inText = !inText;
        }
        if (inText && character == '\n') {
            document += "\\n";
        } else {
            document += character;
        }
    }
    return document;
}

/// Draws choices from the fuzzer's bytes.
class Choices {
public:
    Choices(const std::uint8_t* bytes, std::size_t count) : next(bytes), end(bytes + count) {}

    [[nodiscard]] bool isEmpty() const { return next == end; }
    std::size_t below(std::size_t limit) { return isEmpty() ? 0 : *next++ % limit; }
    template <class List>
    const auto& of(const List& list) {
        return list[below(std::size(list))];
    }

private:
    const std::uint8_t* next;
    const std::uint8_t* end;
};

class World {
public:
    World() {
        (void)readRepositoryDocument(documentOf(Models), "models", repository);
        for (const char* const name : {"Order", "Shipping"}) {
            const mero::Model* const model = repository.findModel(name);
            models.push_back(model->id);
            objects.insert(objects.end(), model->objects.begin(), model->objects.end());
        }
        staff = repository.findModel("Staff")->id;
        workers = repository.findModel("Staff")->objects;
        workers.push_back(MeroNoId);
        const auto& library = mero::Library::standard();
        executionTime = library.findAttribute(library.coreVariable(CoreActivity), "Execution time")->id;
    }

    void run(Choices& choices) {
        const mero::RepositoryServices services(repository);
        MeroAgentManagement management;
        mero::ControlComponent control;
        const ISortedSet<MeroId> mains{models[0]};
        const int analysis = static_cast<int>(1 + choices.below(4));
        (void)management.simStart(analysis, &control, {executionTime, 0, 0, 0}, mains, staff, nullptr, 365.0,
                                  24.0);
        std::int64_t time = 0;
        while (!choices.isEmpty()) {
            time += static_cast<std::int64_t>(choices.below(8)) * 1800;
            send(control, choices, time);
            if (choices.below(64) == 0) {
                readResults(management);
            }
        }
        readResults(management);
        (void)management.simEnd();
    }

private:
    void send(mero::ControlComponent& control, Choices& choices, std::int64_t time) {
        static constexpr std::int32_t Codes[] = {11, 17, 20, 22, 1,  12, 14, 13, 18,
                                                 19, 8,  9,  3,  15, 16, 6,  28};
        mero::SimEvent event;
        event.time = time;
        event.code = choices.of(Codes);
        event.mainModelId = choices.below(8) == 0 ? models[1] : models[0];
        event.modelId = choices.of(models);
        event.calledModelId = choices.of(models);
        event.objectId = choices.of(objects);
        event.callingObjectId = choices.of(objects);
        event.executiveId = choices.of(workers);
        event.assignedExecutiveId = event.executiveId;
        event.resourceId = choices.of(workers);
        event.mainKey = &choices.of(keys);
        event.key = choices.below(2) == 0 ? event.mainKey : &choices.of(keys);
        event.calledKey = &choices.of(keys);
        event.passKey = &choices.of(keys);
        control.send(event);
    }

    static void readResults(MeroAgentManagement& management) {
        for (const auto& agent : management.getSuperAgents()) {
            for (const auto& subAgent : agent->getSubAgents()) {
                MeroAgentResultSet* const set = subAgent->getResultSet(
                    {.scaled = true, .frequency = 2, .frequencyPeriod = "01:000:00:00:00"});
                for (const MeroDoubleResult* const result :
                     set != nullptr ? set->getResults(true) : std::vector<MeroDoubleResult*>{}) {
                    require(!result->getItems().empty(), "a result has items");
                }
            }
        }
    }

    mero::Repository repository;
    std::vector<MeroId> models;
    std::vector<MeroId> objects;
    std::vector<MeroId> workers;
    const std::vector<SV::String> keys{"1", "2", "3", "s", "t", "p", "q"};
    MeroId staff = MeroNoId;
    MeroId executionTime = MeroNoId;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    Choices choices(data, size);
    world.run(choices);
    SV::BoxDesk::GetGlobal().clearRecords();
    mero::InternalErrorLog::GetGlobal().clear();
    return 0;
}
