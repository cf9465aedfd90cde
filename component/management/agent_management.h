#pragma once

#include <memory>
#include <span>

#include "component/host/containers.h"
#include "component/host/core_variables.h"
#include "component/host/kiln_parser.h"
#include "component/host/sv_application.h"
#include "component/host/sv_datetime.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

#include "component/management/agent_registry.h"

class MeroControlComponent;
class MeroMessWin;
class MeroSuperAgent;

/// The one door into the agents. A host makes one object, keeps agents in models with it, and takes it
/// through runs:
///
///     simStart, the engine's run, showResults as often as wanted, simEnd
///
/// Results end with `simEnd`, and every `simStart` that passed its checks needs one. Super agents are made on
/// the first mention of their instance and stay registered until `deleteSuperAgent`.
///
/// Operations give a `MeroErrorCode`: 43 for an object that isn't initialised, 12 for what a run forbids, 15
/// after an unexpected failure of the repository, which is reported as an internal error. All is used on the
/// one user-interface thread.
class MeroAgentManagement {
public:
    /// Calls `init`.
    MeroAgentManagement();
    /// A copy shares the agents and the message window with its source.
    MeroAgentManagement(const MeroAgentManagement&);
    MeroAgentManagement& operator=(const MeroAgentManagement&);
    /// Leaves the component without a management object, whichever object goes.
    ~MeroAgentManagement();

    /// 0, and nothing works, without a defined simulation mapping or while another object is initialised.
    int init();

    // Agents in models

    /// Fills an instance that is there: empty texts get their defaults. 21, after a box on `parent`, if the
    /// agent isn't valid; an empty list of objects is. With `configure` the configuration dialog comes next:
    /// it is shown by a later version, until then that answers 0.
    int newSuperAgent(const MeroId& agentId, const SV::String& objects, SV::Window* parent,
                      const int& configure);
    /// As above with all texts. `definition` stands on the "AGENT" element and isn't owned. 6 and 7 if
    /// calendar or info text can't be stored.
    int newSuperAgent(const MeroId& agentId, const SV::String& objects, MeroKilnParser* definition,
                      const SV::String& calendar, const SV::String& infoText, SV::Window* parent,
                      const int& configure);
    /// Makes an instance of the first agent class for the model's kind and fills it; `agentId` gets its
    /// identifier. 0 for what is neither a process nor an environment model. What `newSuperAgent` refuses
    /// leaves no instance behind, so with `configure` nothing is made until the dialog is there.
    int createSuperAgent(const MeroId& modelId, MeroId& agentId, const SV::String& objects,
                         SV::Window* parent, const int& configure);
    int createSuperAgent(const MeroId& modelId, const MeroId& classId, MeroId& agentId,
                         const SV::String& objects, SV::Window* parent, const int& configure);
    /// With all texts, and a name of `namePrefix`, "-" and a number, if the prefix isn't empty: the first
    /// free one of the identifier, 3 above it, and so on. 15 with the instance left behind if it can't be
    /// named.
    int createSuperAgent(const MeroId& modelId, const MeroId& classId, MeroId& agentId,
                         const SV::String& objects, MeroKilnParser* definition, const SV::String& calendar,
                         const SV::String& infoText, SV::Window* parent, const int& configure,
                         const SV::String& namePrefix);
    /// The dialog is shown by a later version; until then 0 after the checks.
    int configureSuperAgent(const MeroId& agentId, SV::Window* parent);
    /// Forgets the object; the instance stays in the repository. 1 also for an unknown agent.
    int deleteSuperAgent(const MeroId& agentId);
    /// Adds the valid agents of the models that take part in the analysis to `usable` and the others to
    /// `invalid`, whether they are activated or not.
    int getExistingSuperAgents(const ISortedSet<MeroId>& bpModels, const ISortedSet<MeroId>& weModels,
                               ISortedSet<MeroId>& usable, ISortedSet<MeroId>& invalid, const int& algorithm,
                               const int& withSubProcesses);
    int getActivationOfAgent(const MeroId& agentId, int& active);
    /// 4 if the definition can't be parsed; 1 also if it can't be stored.
    int setActivationOfAgent(const MeroId& agentId, const int& active);
    /// A count: of environment agents in the model itself, or with `withSubProcesses` of process agents in it
    /// and the models that it calls. -1 on a failure, but 15 if the called models can't be computed.
    int getNumberOfAgentsInModel(const MeroId& modelId, const int& withSubProcesses, const int& onlyValid);
    /// The dialog is shown by a later version; until then 0 after the agents have been looked through.
    int openAgentsInModelsDlg(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& changed,
                              const MeroId& weModelId, SV::Window* parent, const int& algorithm);

    // Runs

    /// Starts the active agents of the models, of all models that they call and of the environment, in the
    /// order of their registration. `control` isn't owned and has to live until `simEnd`. `simAttributes`
    /// holds the four attributes of times, `startDate` is needed in the analyses of work load alone.
    ///
    /// 43, 5 during a run and 0 without four attributes change nothing; every other result needs its
    /// `simEnd`. 21: started, but agents are invalid, which the user agreed to; 31: the user declined; else
    /// the last status of an agent that couldn't be started.
    int simStart(const int& algorithm, MeroControlComponent* control, const ISequence<MeroId>& simAttributes,
                 const ISortedSet<MeroId>& models, const MeroId& weModelId, const SV::DateTime* startDate,
                 const double& newDaysPerYear, const double& newHoursPerDay);
    /// Ends all agents and their results. 8 without a run; 25 if an agent couldn't be detached.
    int simEnd();
    /// Lets the user choose results and look at them, until he closes the dialog; what was opened from it
    /// goes with it. 8 without a run. Tells in a box when there is nothing to show. `parent` isn't owned.
    int showResults(SV::Window* parent);

    // Queries

    /// 3 for an agent that isn't registered; `create` registers it.
    int getAgentFromID(MeroSuperAgent*& agent, const MeroId& agentId, const int& create);
    /// Super agents that started in the current run.
    [[nodiscard]] int getNumberOfInstantiatedAgents() const;
    /// -1 outside of a run.
    [[nodiscard]] int getCurrentAlgorithm();
    /// Attribute that holds the availability of an executive.
    int getGlobalSimAttributes(MeroId& attributes);
    /// Models of this run and the runs before; 0 if there are none.
    int getApplicationModel(ISortedSet<MeroId>& models);
    /// All registered agents, in order of registration.
    [[nodiscard]] std::span<const std::unique_ptr<MeroSuperAgent>> getSuperAgents() const {
        return superAgents->agents();
    }

    // Message of a long phase of the agents

    void showEventMessage(const SV::String& text);
    /// The window goes when every agent that takes events has asked for it; 0 until then.
    int hideEventMessage();
    [[nodiscard]] bool hasEventMessage() const { return eventMessageWindow != nullptr; }

private:
    int addSuperAgentToList(std::unique_ptr<MeroSuperAgent>& agent);
    int getSuperAgentFromList(const MeroId& agentId, MeroSuperAgent*& agent);
    /// The registered agent of the instance, made on the first mention.
    MeroSuperAgent& ensureSuperAgent(MeroId agentId, MeroId modelId);
    /// As above, in the instance's model; null, after an internal error, if that can't be had.
    MeroSuperAgent* ensureSuperAgent(MeroId agentId);

    /// 43 or 12 where agents may not be changed.
    [[nodiscard]] int checkEditable() const;
    int finishCreation(MeroSuperAgent& agent, SV::Window* parent, int configure);
    int makeInstance(MeroId modelId, MeroId classId, MeroId& agentId, SV::Window* parent);
    int nameInstance(MeroId modelId, MeroId agentId, const SV::String& namePrefix);
    int undoCreation(MeroId modelId, MeroId agentId, int status);
    int sortAgentsOfModels(const ISortedSet<MeroId>& models, MeroCoreVarType agentClass, int algorithm,
                           ISortedSet<MeroId>& usable, ISortedSet<MeroId>& invalid);

    struct RunAgents;
    int findEnvironmentModels(MeroId weModelId, ISortedSet<MeroId>& weModels);
    int findProcessModels(const ISortedSet<MeroId>& models, ISortedSet<MeroId>& bpModels);
    int findRunAgents(const ISortedSet<MeroId>& models, MeroCoreVarType agentClass, RunAgents& found);
    int startAgents(const RunAgents& found, MeroControlComponent* control, int result);
    [[nodiscard]] int countExpectedHides() const;

    /// Models that `modelId` calls, over all levels. 0 if they can't be had: what had to be loaded has been
    /// discarded then. `loadedModels` are the caller's to discard.
    int computeSubProcesses(const MeroId& modelId, ISortedSet<MeroId>& subProcessModels,
                            const bool& expectedFlag, const bool& refuseLoads,
                            ISortedSet<MeroId>& loadedModels);
    /// The repository's code for the last model.
    int discardSubProcesses(const ISortedSet<MeroId>& loadedModels);
    /// Finds agents whose objects are gone. The dialog that repairs them is shown by a later version; until
    /// then 0.
    int checkCorruptRefObjects(const ISortedSet<MeroId>& models, const MeroId& weModelId,
                               const int& algorithm, ISortedSet<MeroId>& changed);

    bool running = false;
    int currentAlgorithm = -1;
    std::shared_ptr<MeroAgentRegistry> superAgents;
    ISortedSet<MeroId> applicationModels;
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
    int instantiatedAgents = 0;
    std::shared_ptr<MeroMessWin> eventMessageWindow;
    bool initialised = false;
};
