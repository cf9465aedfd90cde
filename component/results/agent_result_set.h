#pragma once

#include <memory>
#include <span>
#include <unordered_set>
#include <vector>

#include "component/host/containers.h"

#include "component/results/double_result.h"
#include "component/results/keyed_table.h"
#include "component/results/sequence_result.h"

enum MeroResultKind : int {
    ResultKindNone = 0,  ///< no object values to show, like any code but the two below
    ResultKindNumber = 1,
    ResultKindTime = 2,
};

enum MeroValueType : int {
    ValueTypeSingle = 1,  ///< multiplied by a display's scale
    ValueTypeAbsolute = 2,
    ValueTypeScaled = 3,  ///< shown only in a scaled display
};

/// Whether a reading also enters the history.
enum class MeroHistoryUse { Kept, Left };

/// One value on its way into a result set.
struct MeroReading {
    MeroId objectId = MeroNoId;
    MeroPathView path;
    MeroId itemKey = MeroNoId;
    double value = 0.0;
    double time = 0.0;  ///< abscissa of the history
    int count = DivisorKept;
    MeroHistoryUse history = MeroHistoryUse::Kept;
    int sourceAgentType = 0;
};

/// What a sub-agent hands out: for each measured object its values by path, and at most one history of single
/// readings. The display reads from this set and from nothing else. A history that fails is given up, the
/// values go on.
class MeroAgentResultSet {
public:
    MeroAgentResultSet(MeroResultKind kind, SV::String agentName, MeroValueType type, bool resultShown,
                       int analysis, MeroResultMode combinationMode);
    MeroAgentResultSet(const MeroAgentResultSet&) = delete;
    MeroAgentResultSet& operator=(const MeroAgentResultSet&) = delete;
    ~MeroAgentResultSet();

    /// False if the other history is on.
    bool enableMemoryHistory(bool historyShown);
    bool enableDiskHistory(const SV::String& fileName, const SV::String& header, bool historyShown);

    /// Combines a value into the item of its path. False if a history that has to be there isn't.
    bool addValue(const MeroReading& reading);
    /// The same for one after the other. Of many results the memory is asked for at once.
    void addValues(std::span<const MeroReading> readings);
    /// As `addValue` for an item key that is there; false and no change for another.
    bool updateValue(const MeroReading& reading);
    /// A reading for the history alone. False without a history.
    bool addHistoryPoint(MeroId objectId, MeroId itemKey, double value, double time);
    /// Divisor of every item; only in `ResultModeMean`.
    bool setDivisor(int count);
    /// Removes all values; history and object identifiers stay.
    bool clearValues();

    [[nodiscard]] bool hasHistory(bool ignoreShowFlag) const;
    [[nodiscard]] bool hasObjectResults(bool ignoreShowFlag) const;
    /// Whether a display takes the set: values or a history that may be shown, and scaled values in a scaled
    /// display alone.
    [[nodiscard]] bool isShown(bool scaledDisplay) const;
    /// All objects that have been measured.
    void getObjectIds(ISortedSet<MeroId>& objects) const;
    void getItemKeys(ISortedSet<MeroId>& keys) const;
    /// Null where nothing may be shown or fits; of several the one with the smallest item key.
    [[nodiscard]] MeroDoubleResult* findResultByObject(MeroId objectId, bool ignoreShowFlag);
    [[nodiscard]] MeroDoubleResult* findResult(MeroId itemKey, bool ignoreShowFlag);
    [[nodiscard]] MeroDoubleResultItem* findItem(MeroPathView path, MeroId itemKey);
    /// By ascending item key; empty where nothing may be shown.
    [[nodiscard]] std::vector<MeroDoubleResult*> getResults(bool ignoreShowFlag);
    /// All that the set holds, whatever may be shown, by ascending item key.
    [[nodiscard]] std::vector<MeroDoubleResult*> getAllResults();
    /// Closed for reading; null where there is none or it may not be shown.
    [[nodiscard]] MeroSequenceResult* getHistory(bool ignoreShowFlag = false);

    void getName(SV::String& nameOut) const { nameOut = name; }
    [[nodiscard]] MeroResultKind getResultKind() const { return resultKind; }
    [[nodiscard]] MeroValueType getValueType() const { return valueType; }
    [[nodiscard]] MeroResultMode getMode() const { return mode; }
    [[nodiscard]] bool isSingleValue() const { return valueType == ValueTypeSingle; }
    [[nodiscard]] bool getShowResult() const { return showResult; }
    [[nodiscard]] int getAnalysisType() const { return analysisType; }

private:
    using Results = MeroKeyedTable<MeroId, std::unique_ptr<MeroDoubleResult>>;

    [[nodiscard]] bool keepsHistory() const { return historyMem || historyDisk; }
    [[nodiscard]] bool showsValues(bool ignoreShowFlag) const;
    void prefetch(std::span<const MeroReading> readings);
    bool addToResult(MeroDoubleResult& result, const MeroReading& reading);
    void changeDivisor(MeroDoubleResult& result, MeroDoubleResultItem& item, int count);
    bool addToRunningHistory(const MeroDoubleResult& result, const MeroReading& reading);
    void beginHistory(const MeroReading& reading);
    bool makeHistory(MeroId objectId, MeroId itemKey);
    void writeEntry(double value, double time, MeroId itemKey);
    void giveUpHistory();

    bool historyMem = false;
    bool historyDisk = false;
    SV::String historyFile;
    bool showHistory = false;
    bool showResult;
    MeroResultKind resultKind;
    MeroValueType valueType;
    SV::String name;
    SV::String historyHeader;
    MeroResultMode mode;
    int analysisType;
    std::unique_ptr<MeroSequenceResult> history;
    Results results;
    std::unordered_set<MeroId> otherObjectIds;    ///< measured, besides those of the results
    std::vector<const MeroDoubleResult*> coming;  ///< of the readings that are being added
};
