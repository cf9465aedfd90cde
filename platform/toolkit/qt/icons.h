#pragma once

#include <QIcon>
#include <span>
#include <string_view>

#include "component/host/sv_image.h"

namespace mero::qt {

struct IconSource {
    std::string_view name;
    std::string_view document;  ///< SVG whose lines have the colour "currentColor"
};

[[nodiscard]] std::span<const IconSource> iconSources();

/// Picture of the toolkit as an icon in the colours of the palette; a null icon for an empty picture, a
/// question mark for an unknown one.
[[nodiscard]] QIcon iconOf(const SV::Image& image);

/// Icon by the name of its file.
[[nodiscard]] QIcon namedIcon(std::string_view name);

}  // namespace mero::qt
