#pragma once

#include "component/host/containers.h"
#include "component/host/types.h"

/// Tells which classes of the application library take part in simulation.
class MeroSimMappingHandler {
public:
    virtual ~MeroSimMappingHandler() = default;

    /// Null while none is installed.
    [[nodiscard]] static MeroSimMappingHandler* GetGlobal();
    /// Not owned; gives the one before.
    static MeroSimMappingHandler* SetGlobal(MeroSimMappingHandler* handler);

    /// The agents don't initialise without a defined mapping.
    [[nodiscard]] virtual bool isDefined() = 0;
    /// A `MeroRepositoryCode`, as the two below.
    virtual int getSimableBPClasses(ISortedSet<MeroId>& classes) = 0;
    /// All concrete classes of the environment library.
    virtual int getSimableWEClasses(ISortedSet<MeroId>& classes) = 0;
    virtual int isSimableClass(MeroId classId, bool& simulatable) = 0;
};
