#include "apps/mero/measure_notes.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <span>

#include "component/host/kiln_parser.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/management/general_services.h"

namespace mero {

namespace {

constexpr std::array MeasuresOfClasses{AgentTypeAverageSum,     AgentTypeStrain,
                                       AgentTypeWorkLoad,       AgentTypeWeightedCost,
                                       AgentTypeUnweightedCost, AgentTypeChangeOfWorker};
constexpr std::array MeasuresOfAttributes{AgentTypeAverageSum, AgentTypeWeightedCost,
                                          AgentTypeUnweightedCost};
/// The class has to be one of executives or of resources.
constexpr std::array MeasuresOfWork{AgentTypeStrain, AgentTypeWeightedCost, AgentTypeUnweightedCost,
                                    AgentTypeChangeOfWorker};
/// These read times, rates and calendars of who does the work.
constexpr std::array MeasuresOfWorkers{AgentTypeStrain, AgentTypeWorkLoad, AgentTypeWeightedCost,
                                       AgentTypeUnweightedCost};

bool isOneOf(std::span<const MeroAgentType> types, int type) {
    return std::ranges::find(types, type) != types.end();
}

std::string_view nameOfClass(const Library& library, MeroCoreVarType number) {
    return library.findClass(library.coreVariable(number))->name;
}

/// Why a class can't be measured by those who do the work; empty if it can, or if it isn't known.
std::string faultOfWorkClass(std::string_view className, const Library& library) {
    const Library::Class* const found =
        library.findClass(Mero_GetCoreVarConst(CoreEnvironmentLibrary), className);
    const bool isFit =
        found == nullptr ||
        std::ranges::any_of(std::array{CoreExecutive, CoreResource}, [&](MeroCoreVarType number) {
            return library.isSubClassOf(library.coreVariable(number), found->id);
        });
    return isFit ? std::string()
                 : fmt::format("its class \"{}\" is neither a kind of \"{}\" nor of \"{}\"", className,
                               nameOfClass(library, CoreExecutive), nameOfClass(library, CoreResource));
}

/// Of the section on which the parser stands; empty if there is none.
std::string faultOfSection(const MeroKilnParser& parser, const Library& library) {
    const int type = getTypeOfKeyword(parser.GetKeyword());
    if (isOneOf(MeasuresOfClasses, type) && !parser.IsContained("class")) {
        return "it has no class";
    }
    std::string fault = isOneOf(MeasuresOfWork, type)
                            ? faultOfWorkClass(parser.GetStrValue("class").view(), library)
                            : std::string();
    if (fault.empty() && isOneOf(MeasuresOfAttributes, type) && !parser.IsContained("attribute")) {
        return "it has no attribute";
    }
    return fault;
}

/// What its section tells of why a measure has no results, else `otherwise`.
std::string reasonOf(MeroAtomarAgent& measure, const Library& library, const char* otherwise) {
    SV::String section;
    const auto faults = measureFaultsOf(measure.getDefinitionText(section).view(), library);
    return faults.empty() ? otherwise : faults.front().reason;
}

}  // namespace

std::vector<MeasureFault> measureFaultsOf(std::string_view definition, const Library& library) {
    std::vector<MeasureFault> faults;
    MeroKilnParser parser(SV::String(definition), SV::String("definition"), SV::String());
    if (parser.Parse() != 0) {
        return faults;
    }
    for (int index = 0; parser.SetCurElemIndex(index); ++index) {
        if (std::string reason = faultOfSection(parser, library); !reason.empty()) {
            faults.push_back({std::string(parser.GetStrValue("name").view()), std::move(reason)});
        }
    }
    return faults;
}

std::vector<std::string> notesOnMissingMeasures(MeroSuperAgent& agent, bool isScaled,
                                                const Library& library) {
    std::vector<std::string> notes;
    if (!agent.isRunPrepared()) {
        return notes;
    }
    SV::String agentName;
    agent.getName(agentName);
    for (const auto& measure : agent.getSubAgents()) {
        SV::String name;
        measure->getName(name);
        const std::string label =
            fmt::format("measure \"{}\" of agent \"{}\"", name.view(), agentName.view());
        if (measure->getAgentState() == AgentIdle) {
            notes.push_back(
                label + " wasn't measured: " +
                reasonOf(*measure, library,
                         measure->isEventProcessing()
                             ? "an object that it observes, or a value of one, isn't as it needs it"
                             : "its formula or inputs can't be used"));
        } else if (measure->getAgentState() == AgentFailed) {
            notes.push_back(
                label + " had to stop and has no results: " +
                reasonOf(*measure, library,
                         isOneOf(MeasuresOfWorkers, measure->getAgentType())
                             ? "it met work that nobody does, or an event, an object or a calendar "
                               "that isn't as it needs it"
                             : "an event, an object or a calendar of the run isn't as it needs it"));
        } else if (!isScaled && measure->getAgentType() == AgentTypeStrain) {
            notes.push_back(label + " is shown only with --scaled N --period TIME --scope TIME");
        }
    }
    return notes;
}

}  // namespace mero
