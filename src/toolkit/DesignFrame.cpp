#include "toolkit/DesignFrame.h"

#include "toolkit/StyleSheet.h"

#include <QAbstractButton>
#include <QLayout>
#include <QVariant>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

constexpr auto frameProperty = "designFrame";
constexpr auto iconProperty = "designIconSize";
constexpr auto scaleProperty = "designScale";

QRect scaled(QRectF frame, double scale)
{
    return wholePixels({frame.topLeft() * scale, frame.bottomRight() * scale});
}

void scaleIcon(QAbstractButton& button, double scale)
{
    if (!button.property(iconProperty).isValid())
        button.setProperty(iconProperty, button.iconSize());
    button.setIconSize(button.property(iconProperty).toSize() * scale);
}

void scaleChildren(QWidget& parent, double scale)
{
    for (auto* child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        // A control places its own inner widgets.
        if (child->isWindow() || child->objectName().startsWith(u"qt_"_s))
            continue;
        setDesignFrame(*child, designFrame(*child));
        if (auto* button = qobject_cast<QAbstractButton*>(child))
            scaleIcon(*button, scale);
        if (!child->inherits("QLineEdit"))
            scaleChildren(*child, scale);
    }
}

// Qt leaves out opaque widgets when it repaints one that they lie on.
void updateAll(QWidget& widget, QRect area)
{
    widget.update(area);
    for (auto* child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (!child->isWindow() && child->geometry().intersects(area))
            updateAll(*child, area.translated(-child->pos()));
    }
}

} // namespace

QRectF designFrame(QWidget const& widget)
{
    auto const stored = widget.property(frameProperty);
    return stored.isValid() ? stored.toRectF() : QRectF(widget.geometry());
}

void setDesignFrame(QWidget& widget, QRectF frame)
{
    widget.setProperty(frameProperty, frame);
    auto const geometry = scaled(frame, scaleOf(widget));
    if (widget.geometry() == geometry)
        return;
    updateAround(widget);
    widget.setGeometry(geometry);
    updateAround(widget);
}

void updateAround(QWidget& widget)
{
    auto& window = *widget.window();
    QRect const inWindow(widget.mapTo(&window, QPoint(0, 0)), widget.size());
    updateAll(window, inWindow.adjusted(-1, -1, 1, 1));
}

double scaleOf(QWidget const& widget)
{
    for (auto const* ancestor = &widget; ancestor; ancestor = ancestor->parentWidget()) {
        if (auto const scale = ancestor->property(scaleProperty); scale.isValid())
            return scale.toDouble();
    }
    return 1.0;
}

double scaleOfContent(QWidget const& window)
{
    if (window.property(scaleProperty).isValid())
        return scaleOf(window);
    for (auto const* widget : window.findChildren<QWidget*>()) {
        if (widget->property(scaleProperty).isValid())
            return scaleOf(*widget);
    }
    return 1.0;
}

void scaleDesign(QWidget& root, double scale)
{
    if (root.property(scaleProperty) == scale)
        return;
    auto const frame = designFrame(root);
    root.setProperty(frameProperty, frame);
    root.setProperty(scaleProperty, scale);
    root.resize(scaled(frame, scale).size());
    root.setStyleSheet(styleSheet(scale));
    scaleChildren(root, scale);
}

void scaleLayouts(QWidget& window, double scale)
{
    double const step = scale / scaleOf(window);
    window.setProperty(scaleProperty, scale);
    window.setStyleSheet(styleSheet(scale));
    for (auto* layout : window.findChildren<QLayout*>()) {
        layout->setContentsMargins(layout->contentsMargins() * step);
        layout->setSpacing(qRound(layout->spacing() * step));
    }
    window.resize(window.size() * step);
}

QRect wholePixels(QRectF rect)
{
    QPoint const topLeft(qRound(rect.left()), qRound(rect.top()));
    QPoint const end(qRound(rect.right()), qRound(rect.bottom()));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

QTransform designToSurface(QSizeF designSize, QSizeF surfaceSize)
{
    return QTransform::fromScale(1.0, -1.0) * QTransform::fromTranslate(0.0, designSize.height())
        * QTransform::fromScale(
            surfaceSize.width() / designSize.width(), surfaceSize.height() / designSize.height());
}

} // namespace tensio
