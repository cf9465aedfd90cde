#pragma once

#include "component/subagents/worker_agent.h"

/// The share of the available working time in which each worker actually worked. A work period counts as far
/// as the agent's calendar works; available is what the worker's calendar and the agent's have in common
/// since the run began. Only in the work load analyses.
class MeroWorkLoadAgent : public MeroWorkerAgent {
public:
    MeroWorkLoadAgent();

    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    /// Brings the values up to the time of the last event; with a history every call adds to it.
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int processEvent(MeroSimEvent* event) override;
    [[nodiscard]] MeroResultMode getCombinationMode() const override { return ResultModeItemMean; }

    /// Seconds that the worker could have worked from the start of the run to `now`; nothing if a calendar
    /// fails or the two have nothing in common, which a box tells.
    [[nodiscard]] std::optional<double> getAvailableTime(MeroId workerId, double now);
    /// Counts open periods up to now and reports all that was worked. False if the agent had to be ended.
    bool flushWorkLoad();

private:
    /// Work that is under way, by the key of its pass.
    class alignas(64) OpenPeriod : public MeroAgentObjectValueString {
    public:
        void begin(const SV::String& passKey, const Pass& pass);
        void clear() { *this = {}; }
        [[nodiscard]] bool isAlive() const { return alive; }
        [[nodiscard]] const SV::String& getKey() const { return key; }
        [[nodiscard]] MeroId getObject() const { return object; }
        [[nodiscard]] MeroId getWorker() const { return worker; }
        [[nodiscard]] const SV::String& getMainKey() const { return getFirstText(); }
        [[nodiscard]] const SV::String& getInstanceKey() const { return getSecondText(); }

    private:
        SV::String key;
        MeroId object = MeroNoId;
        MeroId worker = MeroNoId;
        bool alive = false;
    };
    /// Seconds that were worked on one path. Its key is a view of the path, which stays where it is when this
    /// moves.
    struct WorkedTime {
        MeroPath path;
        MeroId worker;
        double seconds;
    };

    [[nodiscard]] MeroAnalysisFlags servedAnalyses() const override {
        return {.staticWorkLoad = true, .nonStaticWorkLoad = true};
    }
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeAbsolute, ResultModeLast};
    }
    [[nodiscard]] bool needsRunningState(std::int32_t code) const override;
    [[nodiscard]] double startTimeAt(double time) const override { return time; }
    void callFailed([[maybe_unused]] const SV::String& mainKey) override { abortAgent(); }
    int prepareMeasure() override;
    [[nodiscard]] static bool opensPeriod(std::int32_t code) {
        return code == EventWorkStart || code == EventWorkResumed;
    }
    [[nodiscard]] bool measuresAt(std::int32_t code) const override {
        return opensPeriod(code) || code == EventWorkSuspended || code == EventWorkEnd;
    }
    int measure(const MeroSimEvent& event) override;
    std::size_t expectPass(const MeroSimEvent& event) const override {
        return expectKeyOfPass(event, openPeriods);
    }
    int endProcess(const MeroSimEvent& event) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;
    void finishMeasure() override { flushWorkLoad(); }
    void clearRunData() override;

    void openPeriod(MeroAgentProcessInstance& process, const Pass& pass);
    void closePeriod(MeroAgentProcessInstance& process, const Pass& pass);
    [[nodiscard]] bool addWork(MeroAgentProcessInstance& process, const Pass& pass, double seconds);
    [[nodiscard]] std::optional<double> workedBetween(double from, double to) const;
    bool bringUpToDate(OpenPeriod& period);
    bool countOpenPeriods();
    void collectWorkedTimes();
    bool reportWorkedTimes();
    [[nodiscard]] MeroPathView pathOfWork(const MeroAgentSubProcessInstance& instance, MeroId worker);
    /// True if the path is seen for the first time.
    bool addWorkedTime(MeroPathView path, MeroId worker, double seconds);
    /// Times in which worker and agent both work; null after an internal error or the box for none.
    [[nodiscard]] const MeroCalendar* availableCalendarOf(MeroId workerId);

    double runStartTime = -1.0;
    double currentTime = 0.0;                ///< of the last event
    MeroPlaceTable<OpenPeriod> openPeriods;  ///< by key of the pass
    MeroKeyedTable<MeroPathKey, WorkedTime> accumulated;
    MeroKeyedTable<MeroId, MeroCalendar> availableCalendars;
    MeroPath workPath;
};
