#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/bpmn_notes.h"
#include "platform/interchange/object_writer.h"

namespace mero {

/// Gives an object what its BPMN element tells, and notes what of that isn't executed.
class BpmnNodeWriter {
public:
    BpmnNodeWriter(const BpmnFile& readFile, const Repository& target, ObjectWriter& objectWriter,
                   BpmnNotes& importNotes)
        : file(readFile), repository(target), writer(objectWriter), notes(importNotes) {}

    /// `className` is the class of the object, which may be another than the element's kind asks for.
    void describe(const BpmnNode& node, std::string_view className, MeroId object);

    /// Notes the events that aren't executed as they are meant; to be called last, since parameters and
    /// message flows give times, chances and messages to some.
    void noteEvents() const;

private:
    void describeEvent(const BpmnNode& node, MeroId object);
    void describeTimer(const BpmnNode& node, MeroId object);
    [[nodiscard]] bool receivesMessages(MeroId object) const;
    void noteOddities(const BpmnNode& node, std::string_view className);
    void setText(MeroId object, std::string_view attribute, const std::string& value);

    const BpmnFile& file;
    const Repository& repository;
    ObjectWriter& writer;
    BpmnNotes& notes;
    std::vector<std::pair<const BpmnNode*, MeroId>> oddEvents;
};

}  // namespace mero
