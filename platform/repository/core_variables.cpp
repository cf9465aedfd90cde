#include "component/host/core_variables.h"

#include "platform/repository/library.h"

const MeroId& Mero_GetCoreVar(MeroCoreVarType number) {
    return mero::Library::standard().coreVariable(number);
}

MeroId Mero_GetCoreVarConst(MeroCoreVarConstType number) {
    switch (number) {
        case CoreProcessLibrary:
            return ClassCodeProcessLibrary;
        case CoreEnvironmentLibrary:
            return ClassCodeEnvironmentLibrary;
    }
    return MeroNoId;
}
