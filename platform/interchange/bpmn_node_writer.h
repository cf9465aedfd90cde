#pragma once

#include <string>
#include <string_view>

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/bpmn_notes.h"
#include "platform/interchange/object_writer.h"

namespace mero {

/// Gives an object what its BPMN element tells, and notes what of that isn't executed.
class BpmnNodeWriter {
public:
    BpmnNodeWriter(const BpmnFile& readFile, ObjectWriter& objectWriter, BpmnNotes& importNotes)
        : file(readFile), writer(objectWriter), notes(importNotes) {}

    /// `className` is the class of the object, which may be another than the element's kind asks for.
    void describe(const BpmnNode& node, std::string_view className, MeroId object);

private:
    void describeEvent(const BpmnNode& node, MeroId object);
    void describeTimer(const BpmnNode& node, MeroId object);
    void noteOddities(const BpmnNode& node, std::string_view className);
    void setText(MeroId object, std::string_view attribute, const std::string& value);

    const BpmnFile& file;
    ObjectWriter& writer;
    BpmnNotes& notes;
};

}  // namespace mero
