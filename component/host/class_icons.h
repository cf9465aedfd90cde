#pragma once

#include "component/host/sv_image.h"
#include "component/host/sv_string.h"

/// Look of the objects of one class.
class MeroGrPattern {
public:
    explicit MeroGrPattern(const SV::Image& iconImage) : image(iconImage) {}
    [[nodiscard]] const SV::Image& GetIconImage() const { return image; }

private:
    SV::Image image;
};

/// Looks of all classes.
class MeroGrObjAttrHandler {
public:
    virtual ~MeroGrObjAttrHandler() = default;

    [[nodiscard]] static MeroGrObjAttrHandler* GetGlobal();
    /// Null for a class without a look. The last argument is the class's name; the first says whether it is
    /// one of the process library, the second is always true.
    [[nodiscard]] virtual const MeroGrPattern* FindPattern(bool isProcessLibrary, bool withDefault,
                                                           const SV::String& className) = 0;
};
