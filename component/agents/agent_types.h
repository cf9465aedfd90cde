#pragma once

/// What an agent is; stands in the definition text as the keyword of its section.
enum MeroAgentType : int {
    AgentTypeUnknown = -1,
    AgentTypeSuper = 1,
    AgentTypeAverageSum = 2,
    AgentTypeAnimation = 3,
    AgentTypeStrain = 4,
    AgentTypeWorkLoad = 5,
    AgentTypeCycleTime = 6,
    AgentTypeSupport = 7,  ///< made by the super agent itself, never written
    AgentTypeWeightedCost = 8,
    AgentTypeUnweightedCost = 9,
    AgentTypeFrequency = 10,
    AgentTypeChangeOfWorker = 11,
    AgentTypeFormula = 12,
};

/// Algorithm of a run, also the analysis that an agent takes part in.
enum MeroAnalysis : int {
    AnalysisNone = -1,
    AnalysisAny = 0,  ///< only as a question: any of the four
    AnalysisPath = 1,
    AnalysisVolume = 2,
    AnalysisStaticWorkLoad = 3,
    AnalysisNonStaticWorkLoad = 4,
};

/// True for the two analyses that work on calendar time.
[[nodiscard]] constexpr bool isWorkLoadAnalysis(int analysis) {
    return analysis == AnalysisStaticWorkLoad || analysis == AnalysisNonStaticWorkLoad;
}

/// State word of a sub-agent: every event handler tests it first.
enum MeroAgentState : int {
    AgentIdle = 1,      ///< honours no event
    AgentPrepared = 2,  ///< waits for the start of the run
    AgentRunning = 3,   ///< honours all events
    AgentFailed = 4,    ///< out of this run, swallows the rest of it
    AgentFinished = 5,  ///< the run has ended; a restart or a new start is honoured
};
