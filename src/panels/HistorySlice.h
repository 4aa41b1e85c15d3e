#pragma once

#include "core/Measurement.h"
#include "reactive/Subscription.h"
#include "toolkit/Accessible.h"
#include "toolkit/Picture.h"

#include <QWidget>

namespace tensio {

class TensioManager;

// One tile of the history strip: number, best pressure and time of a finished measurement. A click,
// Space or Enter selects it or takes the selection back, but only between sessions; a circle on its
// foot says that it may be selected. Its menu prints its curve. The texts are fixed when it is
// made.
class HistorySlice
    : public QWidget
    , public Accessible {
    Q_OBJECT

public:
    // index: position on the page, from 0.
    HistorySlice(TensioManager const& tensioManager, std::shared_ptr<Measurement> measurement,
        int index, QWidget& parent);

    std::shared_ptr<Measurement> const& measurement() const { return m_measurement; }

    QAccessible::Role accessibleRole() const override { return QAccessible::CheckBox; }
    void describeState(QAccessible::State& state) const override;
    QString accessibleAction() const override;
    void performAccessibleAction() override { toggle(); }

Q_SIGNALS:
    // Asks for the keyboard focus to move by that many tiles.
    void willMoveFocus(int step);
    void willPrintCurve();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    // Sizes are design units.
    QFont boldFont(int size) const;
    bool isSelectable() const;
    void showSelectable();
    void toggle();
    void observe();
    void drawText(QPainter& painter, QRectF rect, QFont const& textFont, QString const& text) const;
    void drawCircle(QPainter& painter) const;
    void drawOutline(QPainter& painter) const;

    TensioManager const& m_tensioManager;
    std::shared_ptr<Measurement> m_measurement;
    Picture m_bgImage {Picture::named(QStringLiteral("bottom_box"))};
    Picture m_bgImageSelected {Picture::named(QStringLiteral("bottom_box_on"))};
    QFont m_numberFont {boldFont(15)};
    QString m_numberText;
    QFont m_numberEndingFont {boldFont(10)};
    QString m_numberEndingText {QStringLiteral("回目")};
    QFont m_pressureFont {boldFont(20)};
    QString m_pressureText;
    QFont m_kPaFont {boldFont(12)};
    QString m_dateString;
    Subscriptions m_subscriptions;
};

} // namespace tensio
