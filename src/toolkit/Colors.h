#pragma once

#include <QColor>

// Colours that code draws with and resources/look.qss names as well: a change is made in both.
namespace tensio::colors {

constexpr QColor accent {0x00, 0x67, 0xb8};
constexpr QColor text {0x1f, 0x29, 0x37};
constexpr QColor placeholder {0x4b, 0x55, 0x63};
constexpr QColor border {0x73, 0x7b, 0x88};

} // namespace tensio::colors
