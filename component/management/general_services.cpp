#include "component/management/general_services.h"

#include <algorithm>
#include <string>

#include "component/host/basic_services.h"
#include "component/host/core_time.h"
#include "component/host/kiln_parser.h"
#include "component/host/sv_boxes.h"

#include "component/management/repository_call.h"
#include "component/management/run_globals.h"

const SV::String gTimeScopeDay("00:001:00:00:00");
const SV::String gTimeScopeMonth("00:030:10:00:00");
const SV::String gTimeScopeQuarter("00:091:06:00:00");
const SV::String gTimeScopeYear("01:000:00:00:00");

namespace {

constexpr char ModuleName[] = "aeagnrl";

constexpr double CalendarDaysPerYear = 365.0;
constexpr double CalendarHoursPerDay = 24.0;

constexpr SV::ResId MessageGeneralFailure(0x2004E27);
constexpr SV::ResId MessageSelectionCancelled(0x2004E2D);

struct StatusMessage {
    int status;
    SV::ResId message;
};

constexpr StatusMessage StatusMessages[] = {
    {StatusNoSubAgentObject, SV::ResId(0x2004E20)}, {StatusBadDefinition, SV::ResId(0x2004E21)},
    {StatusBadCalendar, SV::ResId(0x2004E23)},      {StatusAgentNotRunning, SV::ResId(0x2004E25)},
    {StatusTextTooLong, SV::ResId(0x2004E2F)},      {StatusNotAllAdded, SV::ResId(0x2004E28)},
    {StatusInvalidAgents, SV::ResId(0x2004E2A)},    {StatusModelNotWritable, SV::ResId(0x2004E29)},
    {StatusBadObjects, SV::ResId(0x2004E2E)},
};

bool isFaultOfProgram(int status) {
    return status == StatusRunInProgress || status == StatusNoRun || status == StatusBadAnalysis;
}

SV::ResId messageOfStatus(int status) {
    for (const StatusMessage& entry : StatusMessages) {
        if (entry.status == status) {
            return entry.message;
        }
    }
    return MessageGeneralFailure;
}

/// Makes a window the parent of boxes while it lives.
class BoxParent {
public:
    explicit BoxParent(SV::Window* wanted)
        : window(wanted != nullptr ? wanted : SV::GetpApp()->GetAppWindow()) {
        Mero_PushParentWindow(window);
    }
    BoxParent(const BoxParent&) = delete;
    BoxParent& operator=(const BoxParent&) = delete;
    ~BoxParent() { Mero_PopParentWindow(window); }

    [[nodiscard]] SV::Window* get() const { return window; }

private:
    SV::Window* window;
};

int readText(MeroId id, MeroId attributeId, SV::String& text) {
    return callRepository([&](auto& repository) {
        const char* value = nullptr;
        const int code = repository.enhanced().getAttributeValue(id, attributeId, value, true);
        text = value != nullptr ? SV::String(value) : SV::String();
        return code;
    });
}

SV::String quotedAndMasked(const SV::String& text) {
    return SV::String("\"") + Mero_Mask(text, '"', '\\') + SV::String("\"");
}

/// `"name":"class"`; false after a reported error.
bool appendOsePair(SV::String& text, MeroId objectId) {
    SV::String name;
    SV::String className;
    MeroId classId = MeroNoId;
    const bool known =
        readText(objectId, ClassCodeInstanceName, name) == RepositoryOk &&
        repositoryDoes([&](auto& repository) { return repository.enhanced().classOf(objectId, classId); }) &&
        readText(classId, ClassCodeName, className) == RepositoryOk;
    if (!known) {
        displayErrorMessage(ModuleName, __LINE__);
        return false;
    }
    text += quotedAndMasked(name) + SV::String(":") + quotedAndMasked(className);
    return true;
}

bool isModelClass(MeroId classId) {
    return classId == ClassCodeEnvironmentModel || classId == ClassCodeProcessModel ||
           classId == ClassCodeModel;
}

double yearInSeconds(MeroCoreTime& time) {
    return time._s2d(gTimeScopeYear);
}

}  // namespace

int showStatusMessage(int status, SV::Window* parent) {
    if (isFaultOfProgram(status)) {
        displayErrorMessage(ModuleName, __LINE__);
        return status;
    }
    showErrorBox(SV::String(messageOfStatus(status)), parent);
    if (status == StatusTextTooLong) {
        SV::GetpApp()->Wait(false);
        return StatusOk;
    }
    return status;
}

int showStatusInfo(int status, SV::Window* parent) {
    const bool cancelled = status == StatusSelectionCancelled;
    showInfoBox(SV::String(cancelled ? MessageSelectionCancelled : MessageGeneralFailure), parent);
    return status;
}

void showErrorBox(const SV::String& text, SV::Window* parent) {
    const MeroWaitPause pause;
    const BoxParent boxParent(parent);
    MeroErrorBox(boxParent.get(), SV::BoxStyleError, text).Execute(0);
}

void showInfoBox(const SV::String& text, SV::Window* parent) {
    const MeroWaitPause pause;
    const BoxParent boxParent(parent);
    MeroInfoBox(boxParent.get(), text).Execute();
}

int askQuestion(const SV::String& text, SV::Window* parent) {
    const BoxParent boxParent(parent);
    return MeroQueryBox(boxParent.get(), SV::BoxStyleQuery, text).Execute();
}

void showParseError(const MeroKilnParser& parser) {
    const MeroWaitPause pause;
    parser.ShowErrorBox();
}

bool isModelWritable(MeroId modelId) {
    MeroCoreAccessMode mode = AccessNone;
    if (!repositoryDoes(
            [&](auto& repository) { return repository.enhanced().getAccessMode(modelId, mode); })) {
        displayErrorMessage(ModuleName, __LINE__);
        return false;
    }
    return mode == AccessWrite;
}

SV::String getOseOfObjects(const ISortedSet<MeroId>& objects) {
    if (objects.empty()) {
        return {};
    }
    SV::String text("{");
    for (const MeroId objectId : objects) {
        if (!appendOsePair(text, objectId)) {
            return {};
        }
        text += ", ";
    }
    text.Erase(text.Len() - 2, 1);
    text += "}";
    return text;
}

SV::String getOseOfObject(MeroId objectId) {
    SV::String text("{");
    return appendOsePair(text, objectId) ? text + "}" : SV::String();
}

int getAttributeText(MeroId instanceId, SV::String& text, MeroId attributeId) {
    MeroId classId = MeroNoId;
    int code = RepositoryOk;
    if (attributeId == ClassCodeInstanceName) {
        code = callRepository(
            [&](auto& repository) { return repository.enhanced().classOf(instanceId, classId); });
    }
    if (code == RepositoryOk) {
        code = isModelClass(classId) ? callRepository([&](auto& repository) {
            return repository.enhanced().getModelNameAndVersion(instanceId, text);
        })
                                     : readText(instanceId, attributeId, text);
    }
    if (code != RepositoryOk) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    return StatusOk;
}

int getAttributeNameText(MeroId attributeId, SV::String& text) {
    const char* name = nullptr;
    if (!repositoryDoes(
            [&](auto& repository) { return repository.basic().getAttributeName(attributeId, name); })) {
        displayErrorMessage(ModuleName, __LINE__);
        return StatusRepositoryError;
    }
    text = name != nullptr ? SV::String(name) : SV::String();
    return StatusOk;
}

SV::String formatTime(double seconds, double daysPerYear, double hoursPerDay) {
    return MeroCoreTime(seconds, daysPerYear, hoursPerDay).asText();
}

bool convertTimeToSimBase(const SV::String& text, SV::String& converted) {
    if (!MeroCoreTime::isTime(text)) {
        return false;
    }
    MeroCoreTime time;
    time.setBase(CalendarDaysPerYear, CalendarHoursPerDay);
    const double shareOfYear = time._s2d(text) / yearInSeconds(time);
    time.setBase(gDaysPerYear, gHoursPerDay);
    converted = time._d2s(yearInSeconds(time) * shareOfYear);
    return true;
}

SV::String& doubleToIntegerText(SV::String& text, double value) {
    text = SV::String(value);
    std::size_t fraction = text.Search(".");
    if (fraction == SV::String::NotFound) {
        fraction = text.Search(",");
    }
    if (fraction != SV::String::NotFound) {
        text.Erase(fraction);
    }
    return text;
}

bool findDuplicates(const std::vector<SV::String>& names, ISortedSet<SV::String>& duplicates) {
    duplicates.clear();
    std::vector<SV::String> sorted = names;
    std::ranges::sort(sorted);
    for (auto twice = std::ranges::adjacent_find(sorted); twice != sorted.end();
         twice = std::adjacent_find(std::next(twice), sorted.end())) {
        duplicates.insert(*twice);
    }
    return duplicates.empty();
}

void appendIdsAsText(const ISequence<MeroId>& ids, std::ostream& stream) {
    for (const MeroId id : ids) {
        stream << std::to_string(id) << '@';
    }
}
