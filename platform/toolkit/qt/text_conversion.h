#pragma once

#include <QString>
#include <cstddef>

#include "component/host/sv_string.h"

namespace mero::qt {

[[nodiscard]] inline QString plain(const SV::String& text) {
    return QString::fromUtf8(text.GetStr(), static_cast<qsizetype>(text.Len()));
}

[[nodiscard]] inline SV::String fromQt(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

/// "&" before the accelerator, other ampersands doubled.
[[nodiscard]] inline QString withMnemonic(const SV::String& text) {
    return plain(text).replace('&', "&&").replace('~', '&');
}

[[nodiscard]] inline QString withoutMnemonic(const SV::String& text) {
    return plain(text).remove('~');
}

/// Byte position in UTF-8 of a position in `text`, and back.
[[nodiscard]] inline std::size_t bytePosition(const QString& text, int position) {
    return static_cast<std::size_t>(text.left(position).toUtf8().size());
}
[[nodiscard]] inline int charPosition(const SV::String& text, std::size_t bytes) {
    return static_cast<int>(
        QString::fromUtf8(text.GetStr(), static_cast<qsizetype>(std::min(bytes, text.Len()))).size());
}

}  // namespace mero::qt
