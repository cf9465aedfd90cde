#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/core_variables.h"

#include "component/display/change_time_scope_dialog.h"
#include "component/display/select_result_manager.h"
#include "component/display/time_scope.h"
#include "component/management/general_services.h"
#include "component/management/repository_call.h"

// Scope and frequency of the selection of results.

namespace {

constexpr char ModuleName[] = "aeadsply";
constexpr int ApplyFrequencyItem = 20366;

constexpr SV::ResId MessageUnscaled(0x2004F14);
constexpr SV::ResId MessageStartsPer(0x2004F7C);
constexpr SV::ResId MessageValuesFor(0x2004F7D);
constexpr SV::ResId MessageModelFrequency(0x2004F8E);

// Words of the library for the period of a start event.
constexpr SV::ResId WordPerYear(0x2000802);
constexpr SV::ResId WordPerMonth(0x2000803);
constexpr SV::ResId WordPerDay(0x2000804);

/// Shows up in results as a value that nobody has asked for.
constexpr char PlaceholderPeriod[] = "00:000:12:34:56";

/// Label and period of a word of the library. False for a word or a time base that can't be used.
bool readPeriodWord(const SV::String& word, SV::String& label, SV::String& period) {
    if (word == SV::String(WordPerYear)) {
        label = SV::String(MeroTimeScopeLabel::Year);
        period = gTimeScopeYear;
        return true;
    }
    if (word == SV::String(WordPerMonth)) {
        label = SV::String(MeroTimeScopeLabel::Month);
        period = gTimeScopeMonth;
        return true;
    }
    label = SV::String(MeroTimeScopeLabel::Day);
    return word == SV::String(WordPerDay) && convertScopeToCalendarBase(gTimeScopeDay, period);
}

/// Of a process model; 0 for an environment, or, after an internal error, unless there is exactly one.
MeroId findStartEvent(MeroId modelId) {
    MeroId classId = MeroNoId;
    ISortedSet<MeroId> startEvents;
    const bool isRead = repositoryDoes([&](auto& repository) {
        const int code = repository.enhanced().classOf(modelId, classId);
        return code != RepositoryOk || classId == ClassCodeEnvironmentModel
                   ? code
                   : repository.basic().getAllInstancesOfClassAndSubClassInModel(
                         modelId, Mero_GetCoreVar(CoreStartEvent), startEvents, true);
    });
    if (isRead && classId == ClassCodeEnvironmentModel) {
        return MeroNoId;
    }
    if (!isRead || startEvents.size() != 1) {
        displayErrorMessage(ModuleName, __LINE__);
        return MeroNoId;
    }
    return startEvents[0];
}

}  // namespace

void MeroSelectResultManager::showScale() {
    frequencyLabel.SetText(SV::String(MessageStartsPer) + SV::String(" ") + scale.frequencyUnitText +
                           SV::String(":"));
    scaledRadio.SetText(SV::String("~") + scale.scopeText);
}

SV::String MeroSelectResultManager::getTitle(bool isScaled) const {
    const SV::String blank(" ");
    const SV::String head = SV::String(MessageValuesFor) + blank;
    if (!isScaled) {
        return head + SV::String(MessageUnscaled);
    }
    if (!isScaledByFrequency()) {
        return head + scale.scopeText;
    }
    return head + scale.scopeText + SV::String(", ") + SV::String(scale.frequency) + blank +
           SV::String(MessageStartsPer).EraseAllChars('~') + blank + scale.frequencyUnitText;
}

void MeroSelectResultManager::changeScope() {
    changeTime(scale.scopeText, scale.scopeTime);
}

void MeroSelectResultManager::changePeriod() {
    changeTime(scale.frequencyUnitText, scale.frequencyPeriod);
}

void MeroSelectResultManager::changeTime(SV::String& label, SV::String& time) {
    MeroChangeTimeScopeDialog dialog(this, analysisType, label, time);
    if (dialog.Execute() == SV::DialogOk) {
        showScale();
    }
}

int MeroSelectResultManager::getModelFrequency(MeroId modelId, std::int32_t& count, SV::String& unitText,
                                               SV::String& period) {
    const MeroId startEvent = findStartEvent(modelId);
    if (startEvent == MeroNoId) {
        return 0;
    }
    const char* unit = nullptr;
    if (!repositoryDoes([&](auto& repository) {
            const int code = repository.enhanced().getAttributeValue(
                startEvent, Mero_GetCoreVar(CoreStartQuantity), count, true);
            return code != RepositoryOk ? code
                                        : repository.enhanced().getAttributeValue(
                                              startEvent, Mero_GetCoreVar(CoreStartPeriod), unit, true);
        })) {
        displayErrorMessage(ModuleName, __LINE__);
        return 0;
    }
    const SV::String word(unit != nullptr ? unit : "");
    if (word.IsEmpty()) {
        return 0;
    }
    if (!readPeriodWord(word, unitText, period)) {
        displayErrorMessage(ModuleName, __LINE__);
        unitText = "?";
        period = PlaceholderPeriod;
    }
    return 1;
}

void MeroSelectResultManager::fillPopup(SV::PopupMenu& menu) const {
    const MeroId model = tree.getModelOfSelection();
    if (!isScaledByFrequency() || model == MeroNoId) {
        return;
    }
    std::int32_t count = 0;
    SV::String unitText;
    SV::String period;
    SV::String text(MessageModelFrequency);
    const bool isThere = getModelFrequency(model, count, unitText, period) == 1;
    if (isThere) {
        text += SV::String(" (") + SV::String(count) + SV::String(" / ") + unitText + SV::String(")");
    }
    menu.InsertItem(ApplyFrequencyItem, text);
    menu.EnableItem(ApplyFrequencyItem, isThere && count >= 1);
}

void MeroSelectResultManager::applyModelFrequency(MeroId modelId) {
    std::int32_t count = 0;
    if (getModelFrequency(modelId, count, scale.frequencyUnitText, scale.frequencyPeriod) != 1) {
        return;
    }
    scale.frequency = std::max(count, 1);
    frequencyField.SetValue(scale.frequency);
    showScale();
}
