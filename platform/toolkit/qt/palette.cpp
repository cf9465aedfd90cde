#include "platform/toolkit/qt/palette.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <algorithm>
#include <array>

#include "platform/diagram/colour_scale.h"

namespace mero::qt {

namespace {

constexpr std::array<QRgb, 8> Categories{0xFF0072B2, 0xFFE69F00, 0xFF009E73, 0xFFCC79A7,
                                         0xFF56B4E9, 0xFFD55E00, 0xFFF0E442, 0xFF7F7F7F};

QPalette darkPalette() {
    // Outlines are made of the window's colour, so it may not be the darkest.
    const QColor window(0x32, 0x37, 0x3E);
    const QColor base(0x1B, 0x1F, 0x24);
    const QColor text(0xE6, 0xE9, 0xED);
    const QColor faint(0x8D, 0x95, 0x9F);
    QPalette palette(QColor(0x43, 0x4A, 0x54), window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x22, 0x27, 0x2D));
    palette.setColor(QPalette::ToolTipBase, QColor(0x2A, 0x30, 0x38));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xA8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x56, 0xB4, 0xE9));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::PlaceholderText, faint);
    return palette;
}

QPalette lightPalette() {
    QPalette palette(QColor(0xF2, 0xF3, 0xF5));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF5, 0xF8, 0xFB));
    palette.setColor(QPalette::Highlight, QColor(0x00, 0x62, 0x9B));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x70, 0x76, 0x7D));
    return palette;
}

}  // namespace

QColor categoryColor(int index) {
    return Categories.at(static_cast<std::size_t>(std::max(index, 0)) % Categories.size());
}

bool isDashedCategory(int index) {
    return static_cast<std::size_t>(std::max(index, 0)) / Categories.size() % 2 == 1;
}

bool isDark() {
    return QApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

QColor magnitudeColor(double share) {
    const Colour colour = magnitudeColour(share, isDark() ? Look::Dark : Look::Light);
    return {colour.red, colour.green, colour.blue};
}

void applyLook(QApplication& application, bool dark) {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    application.setPalette(dark ? darkPalette() : lightPalette());
}

}  // namespace mero::qt
