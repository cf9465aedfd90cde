#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "component/host/types.h"

namespace mero {

/// One thing that an import did differently from what the file says, or left out.
struct ImportNote {
    std::string place;    ///< file, and line and column or the path in the document
    std::string element;  ///< kind, name and identifier: `task "Check" (sid-1)`
    std::string done;     ///< for instance "imported, not executed"
};

/// What an import made. A model's objects tell their element by the attribute `BPMN identifier`.
struct ImportReport {
    std::vector<MeroId> models;     ///< process models, those of sub-processes included, in order of making
    MeroId environment = MeroNoId;  ///< working environment with roles and workers; 0 if there is none
    std::vector<ImportNote> notes;
    std::string
        runOptions;  ///< options for runs that the parameters ask for, "--instances 10 …"; may be empty
};

/// "place: element: done"
std::string noteText(const ImportNote& note);

/// Bytes of a file and its name for messages and for models that have no name of their own.
struct ImportFile {
    std::string_view bytes;
    std::string_view name;
};

}  // namespace mero
