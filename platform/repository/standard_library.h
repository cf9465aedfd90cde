#pragma once

#include <utility>
#include <vector>

#include "platform/repository/library.h"

namespace mero {

/// Content of the standard library as plain tables. `Library` makes look-ups of it.
struct StandardLibraryTables {
    std::vector<Library::Attribute> attributes;
    std::vector<Library::Class> classes;
    std::vector<Library::RelationClass> relationClasses;
    std::vector<Library::ModelType> modelTypes;
    std::vector<std::pair<MeroCoreVarType, MeroId>> coreVariables;
};

[[nodiscard]] StandardLibraryTables makeStandardLibraryTables();

}  // namespace mero
