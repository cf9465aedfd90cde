#pragma once

#include "component/host/sv_string.h"

namespace SV {

/// A small picture, known by its resource or by its name in the image pool. It holds no pixels: the toolkit
/// draws it for the size and the palette at hand. Two pictures are equal if they show the same.
class Image {
public:
    Image() = default;
    explicit Image(ResId resource) : id(resource) {}
    explicit Image(const String& poolName) : name(poolName) {}

    [[nodiscard]] bool IsEmpty() const { return id.value == 0 && name.IsEmpty(); }
    /// 0 for a picture of the pool.
    [[nodiscard]] ResId GetResource() const { return id; }
    /// Empty for a picture of the resource module.
    [[nodiscard]] const String& GetName() const { return name; }
    friend bool operator==(const Image&, const Image&) = default;

private:
    ResId id;
    String name;
};

using Bitmap = Image;
using Icon = Image;

/// Pictures of the platform by name, such as "selbox/unknow2.png" for a model that isn't known.
class ImagePool {
public:
    [[nodiscard]] static Image GetImage(const String& name) { return Image(name); }
};

}  // namespace SV
