#include "toolkit/Look.h"

#include "toolkit/Accessible.h"
#include "toolkit/Colors.h"
#include "toolkit/LightPalette.h"
#include "toolkit/MessageBoxes.h"
#include "toolkit/StyleSheet.h"
#include "toolkit/WaylandWindowSizes.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>

namespace tensio {

void applyLook(QApplication& application)
{
    installAccessibility();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/tensio.svg")));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    setLightPalette();
    // The typeface of the design, or those of Windows and macOS.
    QFont font(QStringList {QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Yu Gothic UI"),
        QStringLiteral("Meiryo"), QStringLiteral("Hiragino Sans")});
    font.setPixelSize(14);
    QApplication::setFont(font);
    new MessageBoxes(application);
    if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland")))
        new WaylandWindowSizes(application);
    // A style sheet would make the placeholder too pale to read.
    QPalette fields;
    fields.setColor(QPalette::Text, colors::text);
    fields.setColor(QPalette::PlaceholderText, colors::placeholder);
    QApplication::setPalette(fields, "QLineEdit");
    // Alerts and system panels; the windows of the design carry their own, scaled.
    application.setStyleSheet(styleSheet(1.0));
}

} // namespace tensio
