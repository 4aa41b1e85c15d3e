#include "toolkit/LightPalette.h"

#include <QApplication>
#include <QPalette>

namespace tensio {

void setLightPalette()
{
    QColor const ink(0x1f, 0x29, 0x37);
    QColor const pale(0x9a, 0xa1, 0xac);
    QColor const panel(0xf7, 0xf8, 0xfa);
    QColor const blue(0x00, 0x67, 0xb8);
    QPalette palette(ink, Qt::white, Qt::white, QColor(0x8a, 0x93, 0xa1), QColor(0xdb, 0xdb, 0xdb),
        ink, Qt::white, Qt::white, panel);
    palette.setColor(QPalette::AlternateBase, panel);
    palette.setColor(QPalette::ToolTipBase, Qt::white);
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::PlaceholderText, QColor(0x4b, 0x55, 0x63));
    palette.setColor(QPalette::Highlight, blue);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, blue);
    palette.setColor(QPalette::LinkVisited, blue);
    palette.setColor(QPalette::Midlight, QColor(0xe5, 0xe7, 0xeb));
    palette.setColor(QPalette::Shadow, QColor(0x8a, 0x93, 0xa1));
    for (auto const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, pale);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xdb, 0xdb, 0xdb));
    QApplication::setPalette(palette);
}

} // namespace tensio
