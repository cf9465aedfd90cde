#include <algorithm>

#include "component/host/basic_services.h"

#include "component/agents/agent_types.h"
#include "component/agents/atomar_agent.h"
#include "component/agents/support_agent.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"
#include "component/subagents/animation_agent.h"
#include "component/subagents/average_attribute_sum_agent.h"
#include "component/subagents/change_worker_agent.h"
#include "component/subagents/cycle_time_agent.h"
#include "component/subagents/formula_agent.h"
#include "component/subagents/frequency_agent.h"
#include "component/subagents/strain_agent.h"
#include "component/subagents/unweighted_ref_cost_agent.h"
#include "component/subagents/work_load_agent.h"

namespace {

constexpr char ModuleName[] = "aeagnrl";

enum class Kind { Super, EventProcessing, Combining };
enum class Place { AnyModel, ProcessModelOnly };

struct AgentType {
    int type;
    const char* keyword;  ///< empty for the type that is never written
    Kind kind;
    Place place;
};

constexpr AgentType AgentTypes[] = {
    {AgentTypeSuper, "AGENT", Kind::Super, Place::AnyModel},
    {AgentTypeAverageSum, "AVGSUM", Kind::EventProcessing, Place::ProcessModelOnly},
    {AgentTypeAnimation, "ANIMATION", Kind::Combining, Place::AnyModel},
    {AgentTypeStrain, "STRAIN", Kind::EventProcessing, Place::AnyModel},
    {AgentTypeWorkLoad, "WORKLOAD", Kind::EventProcessing, Place::AnyModel},
    {AgentTypeCycleTime, "CYCLETIME", Kind::EventProcessing, Place::ProcessModelOnly},
    {AgentTypeSupport, "", Kind::EventProcessing, Place::AnyModel},
    {AgentTypeWeightedCost, "WWECOST", Kind::EventProcessing, Place::AnyModel},
    {AgentTypeUnweightedCost, "UWWECOST", Kind::EventProcessing, Place::AnyModel},
    {AgentTypeFrequency, "FREQUENCY", Kind::EventProcessing, Place::ProcessModelOnly},
    {AgentTypeChangeOfWorker, "RESPCHANGE", Kind::EventProcessing, Place::ProcessModelOnly},
    {AgentTypeFormula, "FORMULA", Kind::Combining, Place::AnyModel},
};

const AgentType* findType(int type) {
    const auto* place = std::find_if(std::begin(AgentTypes), std::end(AgentTypes),
                                     [&](const AgentType& entry) { return entry.type == type; });
    return place != std::end(AgentTypes) ? place : nullptr;
}

const AgentType* findKeyword(const SV::String& keyword) {
    if (keyword.IsEmpty()) {
        return nullptr;
    }
    const auto* place = std::find_if(std::begin(AgentTypes), std::end(AgentTypes),
                                     [&](const AgentType& entry) { return keyword.view() == entry.keyword; });
    return place != std::end(AgentTypes) ? place : nullptr;
}

bool isOfKind(int type, Kind kind) {
    const AgentType* entry = findType(type);
    return entry != nullptr && entry->kind == kind;
}

/// Null, after an internal error, for what isn't a sub-agent.
const AgentType* findSubAgentType(int type) {
    const AgentType* entry = findType(type);
    if (entry == nullptr || entry->kind == Kind::Super) {
        displayErrorMessage(ModuleName, __LINE__);
        return nullptr;
    }
    return entry;
}

/// `StatusRefused` for a type that may not stand in the model.
int permissionInModel(int type, MeroId modelId) {
    const AgentType* entry = findSubAgentType(type);
    if (entry == nullptr) {
        return StatusRefused;
    }
    if (entry->place == Place::AnyModel) {
        return StatusOk;
    }
    MeroId classId = MeroNoId;
    if (!repositoryDoes([&](auto& repository) { return repository.enhanced().classOf(modelId, classId); })) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    return classId == ClassCodeProcessModel ? StatusOk : StatusRefused;
}

std::unique_ptr<MeroAtomarAgent> makeAgentOfType(int type) {
    switch (type) {
        case AgentTypeAverageSum:
            return std::make_unique<MeroAvgAttributeSumAgent>();
        case AgentTypeAnimation:
            return std::make_unique<MeroAnimationAgent>();
        case AgentTypeFormula:
            return std::make_unique<MeroFormulaAgent>();
        case AgentTypeStrain:
            return std::make_unique<MeroStrainAgent>();
        case AgentTypeWorkLoad:
            return std::make_unique<MeroWorkLoadAgent>();
        case AgentTypeCycleTime:
            return std::make_unique<MeroCycleTimeAgent>();
        case AgentTypeSupport:
            return std::make_unique<MeroSupportAgent>();
        case AgentTypeWeightedCost:
            return std::make_unique<MeroRefCostAgent>();
        case AgentTypeUnweightedCost:
            return std::make_unique<MeroUnWeightedRefCostAgent>();
        case AgentTypeChangeOfWorker:
            return std::make_unique<MeroChangeWorkerAgent>();
        case AgentTypeFrequency:
            return std::make_unique<MeroFrequencyAgent>();
        default:
            return nullptr;
    }
}

}  // namespace

int getTypeOfKeyword(const SV::String& keyword) {
    const AgentType* entry = findKeyword(keyword);
    return entry != nullptr ? entry->type : AgentTypeUnknown;
}

SV::String getKeywordOfType(int type) {
    const AgentType* entry = findType(type);
    return entry != nullptr ? SV::String(entry->keyword) : SV::String();
}

bool isAgentKeyword(const SV::String& keyword, bool acceptAgent) {
    const AgentType* entry = findKeyword(keyword);
    return entry != nullptr && (acceptAgent || entry->kind != Kind::Super);
}

bool isSuperAgentType(int type) {
    return isOfKind(type, Kind::Super);
}

bool isCombiningType(int type) {
    return isOfKind(type, Kind::Combining);
}

bool isEventProcessingType(int type) {
    return isOfKind(type, Kind::EventProcessing);
}

int getAllSubAgentTypes(std::vector<int>& types) {
    for (const Kind kind : {Kind::EventProcessing, Kind::Combining}) {
        for (const AgentType& entry : AgentTypes) {
            if (entry.kind == kind) {
                types.push_back(entry.type);
            }
        }
    }
    return StatusOk;
}

bool isTypeAllowedInModel(int type, MeroId modelId) {
    return permissionInModel(type, modelId) == StatusOk;
}

bool isTypeAllowedInLibrary(int type, MeroId libraryClassId) {
    const AgentType* entry = findSubAgentType(type);
    return entry != nullptr && (entry->place == Place::AnyModel || libraryClassId == ClassCodeProcessLibrary);
}

std::unique_ptr<MeroAtomarAgent> createSubAgent(int type, MeroId modelId, MeroSuperAgent* owner,
                                                int& status) {
    const int permission = permissionInModel(type, modelId);
    if (permission != StatusOk) {
        status = permission == StatusRepositoryError ? StatusRepositoryError : StatusNoSubAgentObject;
        return nullptr;
    }
    std::unique_ptr<MeroAtomarAgent> agent = makeAgentOfType(type);
    if (agent == nullptr) {
        status = StatusNoSubAgentObject;
        return nullptr;
    }
    if (!agent->initAgent(modelId, owner)) {
        // Only a repository that doesn't tell the model's kind keeps a permitted agent from its start.
        status = StatusRepositoryError;
        return nullptr;
    }
    status = StatusOk;
    return agent;
}

std::unique_ptr<MeroAtomarAgent> createEventAgent(int type, MeroId modelId, MeroSuperAgent* owner) {
    int status = StatusOk;
    return createSubAgent(type, modelId, owner, status);
}

std::unique_ptr<MeroAtomarAgent> createCombiningAgent(int type, MeroId modelId, MeroSuperAgent* owner) {
    return isCombiningType(type) ? createEventAgent(type, modelId, owner) : nullptr;
}
