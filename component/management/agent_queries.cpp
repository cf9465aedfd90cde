#include "component/management/agent_queries.h"

#include "component/agents/super_agent.h"
#include "component/management/repository_call.h"

bool findAgentsInModel(MeroId modelId, MeroCoreVarType agentClass, ISortedSet<MeroId>& agents) {
    return repositoryDoes([&](auto& repository) {
        return repository.basic().getAllInstancesOfClassAndSubClassInModel(
            modelId, Mero_GetCoreVar(agentClass), agents, true);
    });
}

bool isAgentValid(MeroSuperAgent& agent, MeroEmptyObjects emptyObjects) {
    int definitionOk = 0;
    int calendarOk = 0;
    int objectsOk = 0;
    const int allowEmpty = emptyObjects == MeroEmptyObjects::Accepted ? 1 : 0;
    return agent.checkAgent(definitionOk, calendarOk, objectsOk, allowEmpty) == StatusOk;
}
