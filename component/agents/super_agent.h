#pragma once

#include <memory>
#include <span>
#include <vector>

#include "component/host/containers.h"
#include "component/host/kiln_parser.h"
#include "component/host/sv_application.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

#include "component/agents/basic_agent.h"
#include "component/agents/super_agent_settings.h"
#include "component/results/result_options.h"

class MeroAgentResultSet;
class MeroAgentResultWindows;
class MeroAtomarAgent;
class MeroControlComponent;
class MeroPassiveComponent;
class MeroSupportAgent;
struct MeroResultRequest;

/// Sub-agents made of a definition text for a check, apart from those of a run. They go under the wait
/// cursor.
struct MeroSubAgentList {
    MeroSubAgentList() = default;
    MeroSubAgentList(const MeroSubAgentList&) = delete;
    MeroSubAgentList& operator=(const MeroSubAgentList&) = delete;
    ~MeroSubAgentList();

    std::vector<std::unique_ptr<MeroAtomarAgent>> agents;
};

/// Object form of one agent instance of a model: the modeller's unit of configuration. It keeps the texts of
/// the instance, stores every change of them at once, and owns during a run the sub-agents that the
/// definition text names. `MeroAgentManagement` makes it on the first mention of the instance:
///
///     attachToInstance  (startRun  clearResults)*
///
/// Without an instance it is a temporary agent: its texts live in the object alone.
class MeroSuperAgent : public MeroBasicAgent {
public:
    MeroSuperAgent();
    ~MeroSuperAgent() override;

    /// Reads the texts of the instance and stores them in canonical form. An empty text is replaced by its
    /// default; one that can't be read counts as empty and is left as it is in the repository. 0 if the
    /// instance isn't an agent: the object is then a temporary agent.
    int attachToInstance(MeroId newInstanceId, MeroId newModelId);
    /// True if a text couldn't be read when attaching: attaching again, outside of a run, makes up for it.
    [[nodiscard]] bool hasUnreadTexts() const { return definitionUnread || otherTextUnread; }
    /// 0 for a temporary agent.
    [[nodiscard]] MeroId getInstanceId() const { return instanceId; }

    // The agent's name is the instance's; 14 without one.

    int getName(SV::String& nameOut) override;
    /// 16 for a name in use.
    int setName(const SV::String& newName) override;

    // Definition text

    /// Reads the "AGENT" section on which the parser stands and the sub-agents behind it, and stores the
    /// canonical text. 0 if the current element is another, 13 if the text gets too long: what is stored then
    /// stays.
    int readDefinition(MeroKilnParser* parser) override;
    /// As `readDefinition` from the first element. 4, after the parser's box, for a text that can't be
    /// parsed.
    int readDefinitionText(const SV::String& text);
    /// Canonical form of the stored text; empty if that can't be read or parsed.
    SV::String& getDefinitionText(SV::String& text) override;
    /// The "AGENT" section alone.
    SV::String& getOwnDefinitionText(SV::String& text);
    /// Appends the names in the stored text; `onlyWithResult` leaves out those that don't show a result. 0 if
    /// the text can't be parsed or a section has no name.
    int getSubAgentNames(std::vector<SV::String>& names, bool onlyWithResult);
    /// Replaces all three texts by their defaults. 15 if the definition can't be stored.
    int setDefaultValues() override;

    // Other texts: the object keeps what the repository couldn't store.

    /// 0 if it can't be stored.
    int setCalendarText(const SV::String& text);
    SV::String& getCalendarText(SV::String& text) const;
    /// 13 if it is too long for the repository, 15 on another failure.
    int setObjectsText(const SV::String& text);
    SV::String& getObjectsText(SV::String& text) const;
    /// Replaces the first occurrence of `oldText`; an empty `newText` takes the comma in front of it along. 0
    /// if there is none or the text can't be stored.
    int replaceInObjectsText(const SV::String& oldText, const SV::String& newText);
    /// Objects of the expression in the agent's model. 0 if it can't be evaluated.
    int evaluateObjects(ISortedSet<MeroId>& objects);
    /// 0 without an instance, or if it can't be stored; the object keeps no copy.
    int setInfoText(const SV::String& text);
    /// Empty on any failure.
    SV::String& getInfoText(SV::String& text);

    // Settings

    [[nodiscard]] int getActivation() const { return settings.active ? 1 : 0; }
    /// In the object only: the definition text takes it over at the next rewrite.
    bool setActivation(int activation);
    int setResultOptions(const MeroResultOptions& options);
    int getResultOptions(MeroResultOptions& options) const;
    [[nodiscard]] const MeroSuperAgentSettings& getSettings() const { return settings; }

    // Check and run

    /// Whether definition, calendar and objects are good; 1 only if all are, 15 if a text can't be read.
    /// Answers are kept until a text changes. An empty list of objects is good with `allowEmpty`.
    int checkAgent(int& definitionOk, int& calendarOk, int& objectsOk, int allowEmpty);
    /// Makes the sub-agents of the analysis and attaches them to `engineControl`, which isn't owned and has
    /// to live until `clearResults`. 30 if the agent has nothing to do in it: it counts as started all the
    /// same.
    int startRun(int algorithm, MeroControlComponent* engineControl);
    /// Ends the run and the sub-agents with their results. 8 if there is none, 25 if one couldn't be
    /// detached.
    int clearResults() override;
    /// True from `startRun` to `clearResults`, also when there was nothing to do.
    [[nodiscard]] bool isStarted() const { return started; }
    /// Of the current run, in the order of the definition.
    [[nodiscard]] std::span<const std::unique_ptr<MeroAtomarAgent>> getSubAgents() const { return subAgents; }
    /// Null outside of runs of the work-load analyses.
    [[nodiscard]] MeroSupportAgent* getSupportAgent() const { return supportAgent.get(); }
    /// Null if no sub-agent of the current run has the name.
    [[nodiscard]] MeroAtomarAgent* findSubAgentByName(const SV::String& subAgentName) const;

    // Results of the current run

    [[nodiscard]] bool canLimitByRelation() override;
    [[nodiscard]] bool hasObjectResults(bool ignoreShowFlag) override;
    [[nodiscard]] bool hasHistory(bool ignoreShowFlag) override;
    /// Factor that brings results to `scopeTime`: from `frequency` process starts in a `frequencyPeriod`
    /// (path, volume), or from the processes that finished in a worked second, whole ones only (work load).
    /// Both times are time texts of a year of 365 days of 24 hours. 1, or 8, 9, 6 or 0 after a box or an
    /// internal error; `scale` is then 1.0.
    int computeScale(const SV::String& scopeTime, int frequency, const SV::String& frequencyPeriod,
                     double& scale, SV::Window* parent = nullptr);
    /// Shows the results in a window of `kind`, by the result options; `title` identifies the view. With
    /// `scaled` they are brought to a scale, for which see `computeScale`. 1 also if there is nothing to
    /// show, which a box tells. `parent` isn't owned and has to stay until the windows are closed; if it is a
    /// `MeroBusyOwner`, it is kept from closing while works of the windows run.
    int displayResults(SV::Window* parent, MeroDisplayKind kind, const SV::String& title,
                       const SV::String& scopeTime, bool scaled, int frequency,
                       const SV::String& frequencyPeriod);
    /// Closes what `displayResults` opened.
    void closeResultWindows();
    /// Null if nothing has been displayed since the windows were closed.
    [[nodiscard]] MeroAgentResultWindows* getResultWindows() const { return resultWindows.get(); }

private:
    enum class ModelKind { None, Process, Environment };
    enum class TextRole { Definition, Calendar, Objects, InfoText };
    enum class Default { Unused, InObject, Stored };
    struct TextChecks {
        SV::String definition;
        SV::String calendar;
        SV::String objects;
    };

    [[nodiscard]] MeroId attributeOf(TextRole role) const;
    /// 15 on a failure, which has been reported then.
    int readText(TextRole role, SV::String& text) const;
    /// Gives the repository's code.
    [[nodiscard]] int storeText(TextRole role, const SV::String& text) const;
    /// Text as attaching finds it, and which default it takes.
    Default readForAttaching(TextRole role, SV::String& text) const;
    int applyDefaults(Default definition, Default calendar, Default objects);
    int storeDefinition(const SV::String& text) const;
    void keepCalendarText(const SV::String& text);
    void keepObjectsText(const SV::String& text);

    /// Parser of a definition text, labelled with the attribute and the agent. 15 if a label can't be had;
    /// the parser is made all the same.
    int makeParser(const SV::String& text, std::unique_ptr<MeroKilnParser>& parser);
    /// Appends the canonical sections of the sub-agents from element `first` to the next "AGENT". 15 if the
    /// repository failed, so that sections may be missing.
    int appendSections(MeroKilnParser& parser, int first, SV::String& text);
    int parseSubAgents(const SV::String& text, MeroSubAgentList& list);

    int fetchChangedTexts(TextChecks& texts);
    int checkTexts(const TextChecks& texts, bool allowEmpty);
    [[nodiscard]] bool isDefinitionGood(const SV::String& text);
    [[nodiscard]] bool areObjectsGood(const SV::String& text, bool allowEmpty) const;

    int buildSubAgents();
    void attach(MeroPassiveComponent* component);
    /// True also for a component that was never attached.
    bool detach(MeroPassiveComponent* component);

    [[nodiscard]] int computeStartScale(double scopeSeconds, int frequency, const SV::String& frequencyPeriod,
                                        double& scale, SV::Window* parent) const;
    [[nodiscard]] int computeWorkedScale(double scopeSeconds, double& scale) const;
    /// Results of the sub-agents that a display takes; with grouping those of the related objects. False if
    /// the display is grouped and no group was formed.
    [[nodiscard]] bool gatherResults(const MeroResultRequest& request,
                                     std::vector<MeroAgentResultSet*>& results);
    [[nodiscard]] bool readScopeTime(const SV::String& text, double& seconds) const;

    bool started = false;
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
    MeroId instanceId = MeroNoId;
    ModelKind modelKind = ModelKind::None;
    SV::String calendarText;
    SV::String objectsText;
    MeroSuperAgentSettings settings;
    std::vector<std::unique_ptr<MeroAtomarAgent>> subAgents;
    std::unique_ptr<MeroSupportAgent> supportAgent;
    std::vector<MeroPassiveComponent*> attachedComponents;
    std::unique_ptr<MeroKilnParser> runParser;  ///< of the current run's text
    MeroControlComponent* control = nullptr;
    std::unique_ptr<MeroAgentResultWindows> resultWindows;  ///< from the first display on

    bool definitionUnread = false;  ///< the object doesn't know the stored settings and must not rewrite them
    bool otherTextUnread = false;

    bool definitionChanged = true;
    bool definitionValid = false;
    bool calendarChanged = true;
    bool calendarValid = false;
    bool objectsChanged = true;
    bool objectsAllowEmpty = false;
    bool objectsValid = false;
};
