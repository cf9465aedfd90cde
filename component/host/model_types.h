#pragma once

#include "component/host/sv_string.h"
#include "component/host/types.h"

/// Model types of the application library: "Business process", "Working environment", "Company map".
class MeroModelTypeAttrHandler {
public:
    virtual ~MeroModelTypeAttrHandler() = default;

    /// Null while none is installed.
    [[nodiscard]] static MeroModelTypeAttrHandler* GetGlobal();
    /// Not owned; gives the one before.
    static MeroModelTypeAttrHandler* SetGlobal(MeroModelTypeAttrHandler* handler);

    /// -1 for an unknown name.
    [[nodiscard]] virtual int GetModelTypeIndex(const SV::String& name) = 0;
    /// -1 for an unknown model.
    [[nodiscard]] virtual int GetModelTypeIndexOfModel(MeroId modelId) = 0;
    /// 42 for process models, 39 for environments, 0 for an unknown index.
    [[nodiscard]] virtual MeroId GetModelTypeLibraryClassID(int index) = 0;
    [[nodiscard]] virtual bool IsSimulateableModelType(int index) = 0;
    /// Name of the icon in the resources; empty for an unknown index. `size` in pixels.
    [[nodiscard]] virtual SV::String GetModelTypeIconImg(int index, int size) = 0;
};
