#pragma once

#include <QPaintDevice>
#include <QSize>
#include <memory>

#include "platform/interchange/picture_document.h"

namespace mero {

/// Paints one picture on any paper, in the look of the application's palette.
class PicturePainter {
public:
    PicturePainter() = default;
    PicturePainter(const PicturePainter&) = delete;
    PicturePainter& operator=(const PicturePainter&) = delete;
    virtual ~PicturePainter() = default;

    /// Width and height in units of a screen at its usual size.
    [[nodiscard]] virtual QSize size() const = 0;
    /// `paper` has to be of that size, in units of its own.
    virtual void paint(QPaintDevice& paper) const = 0;
};

/// The picture isn't kept and has to outlive the painter.
[[nodiscard]] std::unique_ptr<PicturePainter> painterOf(const Picture& picture);

}  // namespace mero
