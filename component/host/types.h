#pragma once

#include <cstdint>

/// Identifier of a model, instance, class, attribute, relation or library. All share one number space; 0
/// means none. It stands wherever an interface of the platform speaks of the 32-bit `long`.
using MeroId = std::int32_t;

inline constexpr MeroId MeroNoId = 0;

/// Status of an operation of the agents. 1 is success, 0 a plain refusal.
enum MeroErrorCode : int {
    StatusRefused = 0,
    StatusOk = 1,
    StatusNoSubAgentObject = 2,     ///< a sub-agent object couldn't be made
    StatusAgentUnknown = 3,         ///< agent not in the registry
    StatusBadDefinition = 4,        ///< definition text can't be parsed, or a section of it is unknown
    StatusRunInProgress = 5,        ///< a run is already in progress
    StatusBadCalendar = 6,          ///< calendar text can't be stored or used
    StatusInfoTextNotStored = 7,    ///< info text can't be stored
    StatusNoRun = 8,                ///< no run in progress
    StatusAgentNotRunning = 9,      ///< run started but this super agent isn't running
    StatusBadAnalysis = 10,         ///< an analysis number that isn't known
    StatusRefusedInRun = 12,        ///< refused because a run is in progress
    StatusTextTooLong = 13,         ///< text longer than the limit of 3600 characters
    StatusNoInstance = 14,          ///< the super agent has no repository instance
    StatusRepositoryError = 15,     ///< the model repository reported an error
    StatusNameInUse = 16,           ///< name already in use
    StatusNotAllAdded = 19,         ///< not all selected sub-agents could be added
    StatusSelectionCancelled = 20,  ///< selection dialog cancelled
    StatusInvalidAgents = 21,       ///< at least one agent has an invalid definition, calendar or object list
    StatusModelNotWritable = 23,    ///< model not open for writing
    StatusNoClass = 24,             ///< the agent needs a class and has none
    StatusNotDetached = 25,         ///< a passive component couldn't be detached
    StatusOutsideAnalysis = 26,     ///< the agent doesn't take part in the analysis
    StatusInputMissing = 27,        ///< an input of a formula is missing
    StatusBadObjects = 28,          ///< an agent's object expression can't be evaluated
    StatusNothingToDo = 30,         ///< this super agent takes no part in this run
    StatusDeclined = 31,            ///< the user declined
    StatusSelectionLocked = 33,     ///< selection of results is locked; no observed objects to widen
    StatusWrongSection = 34,        ///< definition section isn't of the expected kind
    StatusNothingObserved = 35,     ///< text names no observed agent, or no object is missing
    StatusBadExpression = 36,       ///< an empty or wrong formula
    StatusDuplicateName = 37,       ///< two sub-agents of a definition share a name
    StatusNoRelatedObject = 38,     ///< no measured object has a related object
    StatusNotInitialised = 43,      ///< `init` hasn't succeeded
};

/// Code of an operation of the model repository. 0 is success; a code without a name here is an unexpected
/// failure.
enum MeroRepositoryCode : int {
    RepositoryOk = 0,
    RepositoryClassUnknown = 5,    ///< the class isn't known here, or the identifier isn't inside a model
    RepositoryNotFound = 10,       ///< no such identifier, name or attribute
    RepositoryWrongType = 11,      ///< a text of a number, or a number of a text
    RepositoryBadValue = 12,       ///< the value doesn't fit the type of its attribute
    RepositoryNotWritable = 20,    ///< the model isn't open for writing
    RepositoryValueTooLong = 27,   ///< text too long for the attribute
    RepositoryStorageFailed = 30,  ///< the file can't be read or written
    RepositoryNameInUse = 52,      ///< name already in use
    RepositoryQuietRefusal = 60,   ///< refused without a message
};
