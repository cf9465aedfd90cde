#pragma once

#include "component/host/types.h"

/// Numbers of the table that names classes and attributes of the current application library.
enum MeroCoreVarType : int {
    CoreFlowNode = 9,
    CoreExclusiveGateway = 10,
    CoreInclusiveGateway = 11,
    CoreParallelGateway = 12,
    CoreCall = 13,
    CoreEndEvent = 15,
    CoreIntermediateEvent = 16,
    CoreActivity = 17,
    CoreStartEvent = 18,
    CoreEventBasedGateway = 19,
    CoreVariable = 20,
    CoreProcessAgentBase = 24,
    CoreExecutive = 26,
    CoreGroup = 27,
    CoreResource = 28,
    CoreEnvironmentAgentBase = 32,
    CoreStartQuantity = 78,
    CoreStartPeriod = 79,
    CoreReferencedModel = 90,
    CoreProcessAgentCalendar = 111,
    CoreProcessAgentObjects = 112,
    CoreProcessAgentDefinition = 113,
    CoreProcessAgentResults = 114,
    CoreProcessAgentInfoText = 115,
    CorePredefinedAgents = 135,
    CoreAvailability = 199,
    CoreExecutiveCalendar = 202,
    CoreEnvironmentAgentCalendar = 217,
    CoreEnvironmentAgentObjects = 218,
    CoreEnvironmentAgentDefinition = 219,
    CoreEnvironmentAgentResults = 220,
    CoreEnvironmentAgentInfoText = 221,
};

/// Constants of the same table.
enum MeroCoreVarConstType : int { CoreProcessLibrary = 4, CoreEnvironmentLibrary = 6 };

/// Class codes that identify a model's kind and its library.
enum MeroClassCode : MeroId {
    ClassCodeName = 4,           ///< attribute: a class's name
    ClassCodeAbstract = 5,       ///< attribute: 1 for a class without instances of its own
    ClassCodeInstanceName = 9,   ///< attribute: an instance's name
    ClassCodeRelationName = 10,  ///< attribute: a relation class's name
    ClassCodeEnvironmentLibrary = 39,
    ClassCodeProcessLibrary = 42,
    ClassCodeEnvironmentModel = 53,
    ClassCodeProcessModel = 56,
    ClassCodeModel = 69,
    ClassCodeModelType = 94,  ///< attribute: name of a model's type
};

/// Reference to the identifier that the current application library gives to `number`; 0 for an unknown
/// number.
[[nodiscard]] const MeroId& Mero_GetCoreVar(MeroCoreVarType number);
/// Identifier of a library; 0 for an unknown number.
[[nodiscard]] MeroId Mero_GetCoreVarConst(MeroCoreVarConstType number);
