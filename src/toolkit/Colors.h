#pragma once

#include <QColor>

// Colours that code draws with. resources/look.qss names most of them as well: a change is made in
// both.
namespace tensio::colors {

constexpr QColor accent {0x00, 0x67, 0xb8};
constexpr QColor accentTint {0x00, 0x67, 0xb8, 24};
constexpr QColor text {0x1f, 0x29, 0x37};
constexpr QColor placeholder {0x4b, 0x55, 0x63};
constexpr QColor caption {0x5b, 0x64, 0x72};
constexpr QColor disabledText {0x9a, 0xa1, 0xac};
constexpr QColor border {0x73, 0x7b, 0x88};
constexpr QColor fieldBorder {0x8a, 0x93, 0xa1};
constexpr QColor tableRule {0xb8, 0xbe, 0xc8};
constexpr QColor hairline {0xdb, 0xdb, 0xdb};
constexpr QColor midlight {0xe5, 0xe7, 0xeb};
constexpr QColor desk {0xe9, 0xec, 0xf1};
constexpr QColor code {0xf1, 0xf2, 0xf4};
constexpr QColor panel {0xf7, 0xf8, 0xfa};
// On dark ground.
constexpr QColor focusRing {0x5c, 0xb8, 0xff};
constexpr QColor pressedGround {0xff, 0xff, 0xff, 60};
// On paper.
constexpr QColor printedTarget {0xc4, 0x00, 0x10};
constexpr QColor printedBest {0x16, 0x80, 0x2a};

} // namespace tensio::colors

namespace tensio {

// "rrggbb", optionally after a "#", as an opaque colour; black when the text does not read as
// hexadecimal.
inline QColor colorFromHexString(QString const& text)
{
    auto const name = text.startsWith(u'#') ? text : u'#' + text;
    auto const color = QColor::fromString(name);
    return name.size() == 7 && color.isValid() ? color : QColor(Qt::black);
}

} // namespace tensio
