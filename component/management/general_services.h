#pragma once

#include <memory>
#include <ostream>
#include <vector>

#include "component/host/containers.h"
#include "component/host/sv_application.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

class MeroAtomarAgent;
class MeroKilnParser;
class MeroSuperAgent;

/// Longest definition or objects text, in characters.
inline constexpr std::size_t MeroDefinitionLimit = 3600;

/// Keyword of the elements that name the agents whose results a combining agent uses.
inline constexpr const char* MeroObservedKeyword = "OBSERVED";

// Error reporting

/// Shows the box that belongs to a status; 5, 8 and 10 are internal errors without a box. Gives the status,
/// but 1 for 13, which also leaves the wait state off. A null `parent` means the application's main window.
int showStatusMessage(int status, SV::Window* parent = nullptr);
/// Shows a status as information. Gives the status.
int showStatusInfo(int status, SV::Window* parent = nullptr);

/// Takes the wait state off while it lives and restores it: around every modal box.
class MeroWaitPause {
public:
    MeroWaitPause() : wasWaiting(SV::GetpApp()->IsWait()) { SV::GetpApp()->Wait(false); }
    MeroWaitPause(const MeroWaitPause&) = delete;
    MeroWaitPause& operator=(const MeroWaitPause&) = delete;
    ~MeroWaitPause() { SV::GetpApp()->Wait(wasWaiting); }

private:
    bool wasWaiting;
};

/// Turns the wait state on while it lives and restores it: around every long stretch.
class MeroWaitCursor {
public:
    MeroWaitCursor() : wasWaiting(SV::GetpApp()->IsWait()) { SV::GetpApp()->Wait(true); }
    MeroWaitCursor(const MeroWaitCursor&) = delete;
    MeroWaitCursor& operator=(const MeroWaitCursor&) = delete;
    ~MeroWaitCursor() { SV::GetpApp()->Wait(wasWaiting); }

private:
    bool wasWaiting;
};

/// Modal boxes on `parent`, or on the application's main window for null. The wait state is off while the box
/// is open.
void showErrorBox(const SV::String& text, SV::Window* parent = nullptr);
void showInfoBox(const SV::String& text, SV::Window* parent = nullptr);
/// A `BoxAnswer`. Leaves the wait state alone: whether it comes back depends on the answer.
[[nodiscard]] int askQuestion(const SV::String& text, SV::Window* parent = nullptr);
/// The parser's own box for what it found.
void showParseError(const MeroKilnParser& parser);

// Agent types

/// -1 if unknown; compares exactly.
[[nodiscard]] int getTypeOfKeyword(const SV::String& keyword);
/// Empty for the support agent and for unknown types.
[[nodiscard]] SV::String getKeywordOfType(int type);
/// True for every section keyword; "AGENT" only with `acceptAgent`.
[[nodiscard]] bool isAgentKeyword(const SV::String& keyword, bool acceptAgent);
[[nodiscard]] bool isSuperAgentType(int type);
[[nodiscard]] bool isCombiningType(int type);
[[nodiscard]] bool isEventProcessingType(int type);
/// Appends all types of sub-agents in the order in which they are offered.
int getAllSubAgentTypes(std::vector<int>& types);
/// Whether a type may stand in a model of this kind; an unknown type and a failing repository are internal
/// errors.
[[nodiscard]] bool isTypeAllowedInModel(int type, MeroId modelId);
[[nodiscard]] bool isTypeAllowedInLibrary(int type, MeroId libraryClassId);
/// A sub-agent of the type with its defaults; null if the type is unknown or refused for the model.
/// `createEventAgent` hands on what isn't event processing.
[[nodiscard]] std::unique_ptr<MeroAtomarAgent> createEventAgent(int type, MeroId modelId,
                                                                MeroSuperAgent* owner);
[[nodiscard]] std::unique_ptr<MeroAtomarAgent> createCombiningAgent(int type, MeroId modelId,
                                                                    MeroSuperAgent* owner);

/// As `createEventAgent`. `status` tells a failure of the repository (15) from a type that can't be had (2).
[[nodiscard]] std::unique_ptr<MeroAtomarAgent> createSubAgent(int type, MeroId modelId, MeroSuperAgent* owner,
                                                              int& status);

// Text of repository objects

[[nodiscard]] bool isModelWritable(MeroId modelId);
/// Object expression `{"name":"class", "name":"class" }`, a blank before the closing brace; empty for an
/// empty set and on any error.
[[nodiscard]] SV::String getOseOfObjects(const ISortedSet<MeroId>& objects);
/// Object expression `{"name":"class"}`; empty on any error.
[[nodiscard]] SV::String getOseOfObject(MeroId objectId);
/// Text of an attribute; the name of a model is its name and version. 15 on an error, else 1.
int getAttributeText(MeroId instanceId, SV::String& text, MeroId attributeId);
/// Name of an attribute. 15 on an error, else 1.
int getAttributeNameText(MeroId attributeId, SV::String& text);
[[nodiscard]] SV::String formatTime(double seconds, double daysPerYear, double hoursPerDay);
/// A time text as the same share of a year in the run's time base. False if it isn't a time.
bool convertTimeToSimBase(const SV::String& text, SV::String& converted);
/// Text of the value with the fraction cut; gives `text`.
SV::String& doubleToIntegerText(SV::String& text, double value);
/// Replaces `duplicates` by the names that stand more than once; true if there are none.
bool findDuplicates(const std::vector<SV::String>& names, ISortedSet<SV::String>& duplicates);
/// Every identifier in decimal followed by "@".
void appendIdsAsText(const ISequence<MeroId>& ids, std::ostream& stream);

// Ready time scopes, for a year of 365 days of 24 hours

extern const SV::String gTimeScopeDay;
extern const SV::String gTimeScopeMonth;    ///< a twelfth of a year
extern const SV::String gTimeScopeQuarter;  ///< a quarter of a year
extern const SV::String gTimeScopeYear;
