#include "toolkit/Look.h"

#include "toolkit/Accessible.h"
#include "toolkit/Colors.h"
#include "toolkit/MessageBoxes.h"
#include "toolkit/OnEvent.h"
#include "toolkit/StyleSheet.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>
#include <QWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// Every role, so that no dark desktop palette shows through where the style sheet says nothing.
void setLightPalette()
{
    QPalette palette(colors::text, Qt::white, Qt::white, colors::fieldBorder, colors::hairline,
        colors::text, Qt::white, Qt::white, colors::panel);
    palette.setColor(QPalette::AlternateBase, colors::panel);
    palette.setColor(QPalette::ToolTipBase, Qt::white);
    palette.setColor(QPalette::ToolTipText, colors::text);
    palette.setColor(QPalette::PlaceholderText, colors::placeholder);
    palette.setColor(QPalette::Highlight, colors::accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors::accent);
    palette.setColor(QPalette::LinkVisited, colors::accent);
    palette.setColor(QPalette::Midlight, colors::midlight);
    palette.setColor(QPalette::Shadow, colors::fieldBorder);
    for (auto const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors::disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors::hairline);
    QApplication::setPalette(palette);
}

// Lets every window take the size that a Wayland compositor gives it, also one above the maximum of
// its widget: the title bars that Qt draws offer to maximize even a window of a fixed size, and
// some compositors kill a client that ignores the size.
void takeSizesOfCompositor(QObject& application)
{
    // By then Qt has given the window the limits of its widget.
    onEvent(application, {QEvent::Expose}, application, [](QObject& receiver) {
        if (auto* window = qobject_cast<QWindow*>(&receiver))
            window->setMaximumSize(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    });
}

} // namespace

void applyLook(QApplication& application)
{
    installAccessibility();
    QApplication::setWindowIcon(QIcon(u":/tensio.svg"_s));
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    setLightPalette();
    // The typeface of the design, or those of Windows and macOS.
    QFont font(
        QStringList {u"Noto Sans CJK JP"_s, u"Yu Gothic UI"_s, u"Meiryo"_s, u"Hiragino Sans"_s});
    font.setPixelSize(14);
    QApplication::setFont(font);
    layOutMessageBoxes(application);
    if (QGuiApplication::platformName().startsWith(u"wayland"_s))
        takeSizesOfCompositor(application);
    // A style sheet would make the placeholder too pale to read.
    QPalette fields;
    fields.setColor(QPalette::Text, colors::text);
    fields.setColor(QPalette::PlaceholderText, colors::placeholder);
    QApplication::setPalette(fields, "QLineEdit");
    // Alerts and system panels; the windows of the design carry their own, scaled.
    application.setStyleSheet(styleSheet(1.0));
}

} // namespace tensio
