#include "ControlStates.h"

#include "Stage.h"

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <vector>

namespace tensio {

namespace {

void setDown(QWidget& control, bool isDown)
{
    if (auto* button = qobject_cast<QAbstractButton*>(&control))
        button->setDown(isDown);
}

void setUnderMouse(QWidget& control, bool isUnderMouse)
{
    control.setAttribute(Qt::WA_UnderMouse, isUnderMouse);
    auto const place = control.rect().center();
    QMouseEvent move(QEvent::MouseMove, place, control.mapToGlobal(place), Qt::NoButton,
        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&control, &move);
}

QList<QWidget*> controlsOn(QWidget const& window)
{
    QList<QWidget*> controls;
    for (auto* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &window && !widget->inherits("QMenuBar")
            && widget->focusPolicy() != Qt::NoFocus)
            controls << widget;
    }
    return controls;
}

// Only one control has the focus at a time, so each is pictured while it has it.
QImage pictureWithFocus(QWidget& window, QList<QWidget*> const& controls)
{
    auto picture = window.grab().toImage();
    QPainter painter(&picture);
    for (auto* control : controls) {
        control->setFocus(Qt::TabFocusReason);
        QRect const frame(control->mapTo(&window, QPoint()), control->size());
        painter.drawPixmap(frame.topLeft(), window.grab(frame));
    }
    painter.end();
    return picture;
}

} // namespace

void showControlStates(Stage const& stage, QWidget& window, QString const& prefix)
{
    auto const controls = controlsOn(window);
    std::vector<bool> enabled;
    for (auto* control : controls) {
        enabled.push_back(control->isEnabled());
        control->setEnabled(true);
    }
    window.activateWindow();
    window.setFocus();
    stage.waitFor(300);
    auto const give = [&](QString const& name, auto const& look) {
        for (auto* control : controls)
            look(*control);
        stage.takePicture(prefix + QStringLiteral("-controls-") + name);
    };
    give(QStringLiteral("resting"), [](QWidget&) {});
    give(QStringLiteral("hover"), [](QWidget& control) { setUnderMouse(control, true); });
    give(QStringLiteral("pressed"), [](QWidget& control) { setDown(control, true); });
    give(QStringLiteral("disabled"), [](QWidget& control) {
        setUnderMouse(control, false);
        setDown(control, false);
        control.setEnabled(false);
    });
    for (auto* control : controls)
        control->setEnabled(true);
    stage.keep(pictureWithFocus(window, controls), prefix + QStringLiteral("-controls-focused"));
    for (qsizetype index = 0; index < controls.size(); ++index)
        controls[index]->setEnabled(enabled[static_cast<std::size_t>(index)]);
}

} // namespace tensio
