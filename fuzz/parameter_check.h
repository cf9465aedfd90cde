#pragma once

#include <string_view>
#include <vector>

#include "component/host/calendar.h"

#include "fuzz/fuzz_input.h"
#include "platform/engine/distribution.h"
#include "platform/interchange/bpmn_import.h"

inline constexpr const char* FuzzProcess =
    R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL"><process id="p"><startEvent id="s"/>
<task id="t" name="Check"/><exclusiveGateway id="g"/><intermediateCatchEvent id="i"/><endEvent id="e"/>
<sequenceFlow id="f1" sourceRef="s" targetRef="t"/><sequenceFlow id="f2" sourceRef="t" targetRef="g"/>
<sequenceFlow id="f3" sourceRef="g" targetRef="e"/><sequenceFlow id="f4" sourceRef="g" targetRef="t"/>
</process></definitions>)";

/// What is imported has to be readable for a run; what is refused has to leave nothing.
inline void checkParameters(std::string_view process, const std::vector<mero::ImportFile>& parameters) {
    mero::Repository repository;
    const auto report = mero::importBpmn({.bytes = process, .name = "process.bpmn"}, repository, parameters);
    requireReason(report);
    require(report.isGood() || repository.modelIds().empty(), "refused parameters leave nothing");
    for (const MeroId modelId : repository.modelIds()) {
        for (const MeroId id : repository.findModel(modelId)->objects) {
            const mero::Object& object = *repository.findObject(id);
            for (const char* attribute : {"Duration", "Arrival"}) {
                const SV::String text = repository.textOf(object, attribute);
                require(text.IsEmpty() || mero::Distribution::parse(text.view()).isGood(),
                        "a distribution can be read");
            }
            for (const char* attribute : {"Calendar", "Arrival calendar"}) {
                const SV::String text = repository.textOf(object, attribute);
                MeroCalendar calendar(0, 0, 1, 365);
                require(text.IsEmpty() || calendar.initializeCalendar(text) == 0, "a calendar can be read");
            }
        }
    }
}
