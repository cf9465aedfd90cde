#pragma once

#include <utility>
#include <vector>

#include "component/host/containers.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

/// An object with the objects that a relation joins with it; with itself alone if there are none.
using MeroRelatedObjects = std::vector<std::pair<MeroId, ISortedSet<MeroId>>>;

/// For each of `objects` the instances of the class that a relation of the relation class joins with it, in
/// either direction. 1 if at least one has any, 38 if none has or `objects` is empty, 15 on a repository
/// error.
int findRelatedObjects(const ISortedSet<MeroId>& objects, const SV::String& className,
                       const SV::String& relationName, MeroRelatedObjects& related);

/// Adds to `objects` what the relations between `classId` and the classes below `baseClassId` join with those
/// of them that are instances of such a class. A `MeroErrorCode`: 33 if there are no objects, 15 on a
/// repository error.
int widenByRelations(ISortedSet<MeroId>& objects, MeroId classId, MeroId baseClassId);
