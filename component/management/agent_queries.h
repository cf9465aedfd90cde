#pragma once

#include "component/host/containers.h"
#include "component/host/core_variables.h"
#include "component/host/types.h"

class MeroSuperAgent;

/// Reports internal errors of the management object.
inline constexpr char MeroManagementModule[] = "aeamanag";

/// Instances of an agent class and its sub-classes in a model; replaces the content of `agents`. False if the
/// repository fails.
[[nodiscard]] bool findAgentsInModel(MeroId modelId, MeroCoreVarType agentClass, ISortedSet<MeroId>& agents);

enum class MeroEmptyObjects { Accepted, Refused };

/// True if all texts of the agent are good.
[[nodiscard]] bool isAgentValid(MeroSuperAgent& agent, MeroEmptyObjects emptyObjects);
