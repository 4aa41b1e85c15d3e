#include "panels/HistorySlice.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "core/TensioManager.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

constexpr double firstTileX = 139.0;
constexpr double gap = 4.0;
constexpr double bottom = 7.0;
// Least distance of a text from the edge of a tile.
constexpr double leastMargin = 6.0;
// Top of the Japanese em box over the baseline. The line box of the typeface is taller, and would
// push big and small texts that belong together off a common line.
constexpr double ascent = 0.88;

} // namespace

HistorySlice::HistorySlice(TensioManager const& tensioManager,
    std::shared_ptr<Measurement> measurement, int index, QWidget& parent)
    : QWidget(&parent)
    , m_tensioManager(tensioManager)
    , m_measurement(std::move(measurement))
    , m_numberText(QString::number(m_measurement->number))
    , m_pressureText(QString::fromStdString(tensio::pressureText(*m_measurement->bestPressure)))
    , m_dateString(QString::fromStdString(formatLocalTime(*m_measurement->timeStamp, "%H:%M:%S")))
{
    auto const size = m_bgImage.size();
    QPointF const topLeft(firstTileX + index * (size.width() + gap),
        designFrame(parent).height() - bottom - size.height());
    setDesignFrame(*this, QRectF(topLeft, size));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setAccessibleName(u"%1回目 最大圧 %2 kPa %3"_s.arg(m_numberText, m_pressureText, m_dateString));
    observe();
}

void HistorySlice::observe()
{
    QAccessible::State selection;
    selection.checked = true;
    selection.selected = true;
    m_subscriptions += m_measurement->isCounted.observeChanges([this, selection](bool) {
        announceState(*this, selection);
        update();
    });
    QAccessible::State ability;
    ability.disabled = true;
    for (auto const* property :
        {&std::as_const(m_measurement->isEnabled), &m_tensioManager.isMeasuring})
        m_subscriptions += property->observeChanges([this, ability](bool) {
            announceState(*this, ability);
            showSelectable();
        });
    showSelectable();
}

void HistorySlice::describeState(QAccessible::State& state) const
{
    state.checkable = true;
    state.checked = m_measurement->isCounted.value();
    state.selectable = isSelectable();
    state.selected = state.checked;
    state.disabled = !isSelectable();
}

QString HistorySlice::accessibleAction() const
{
    return QAccessibleActionInterface::toggleAction();
}

void HistorySlice::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    auto const size = designFrame(*this).size();
    painter.scale(width() / size.width(), height() / size.height());
    auto const& background = m_measurement->isCounted.value() ? m_bgImageSelected : m_bgImage;
    background.draw(painter, QRectF(QPointF(0.0, 0.0), size));
    drawCircle(painter);
    drawOutline(painter);
    painter.setPen(Qt::black);
    drawText(painter, {10.0, 30.0, 30.0, 30.0}, m_numberFont, m_numberText);
    drawText(painter, {30.0, 26.0, 30.0, 30.0}, m_numberEndingFont, m_numberEndingText);
    drawText(painter, {2.0, 0.0, 50.0, 45.0}, m_pressureFont, m_pressureText);
    drawText(painter, {45.0, 19.0, 30.0, 20.0}, m_kPaFont, u"kPa"_s);
    drawText(painter, {0.0, 5.0, 70.0, 20.0}, m_kPaFont, m_dateString);
}

void HistorySlice::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        toggle();
}

void HistorySlice::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        toggle();
        break;
    case Qt::Key_Left:
        Q_EMIT willMoveFocus(-1);
        break;
    case Qt::Key_Right:
        Q_EMIT willMoveFocus(+1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void HistorySlice::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_tensioManager.isMeasuring.value())
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"この測定の波形を印刷…"_s, this, &HistorySlice::willPrintCurve);
    menu->popup(event->globalPos());
}

QFont HistorySlice::boldFont(int size) const
{
    auto bold = font();
    bold.setBold(true);
    bold.setPixelSize(size);
    return bold;
}

bool HistorySlice::isSelectable() const
{
    return m_measurement->isEnabled.value() && !m_tensioManager.isMeasuring.value();
}

void HistorySlice::showSelectable()
{
    setCursor(isSelectable() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    auto const reason = m_tensioManager.isMeasuring.value() ? u"「終了」のあとに選べます"_s
                                                            : u"選べるのは3つまでです"_s;
    setToolTip(isSelectable() ? QString() : reason);
    update();
}

void HistorySlice::toggle()
{
    if (isSelectable())
        m_measurement->isCounted.setValue(!m_measurement->isCounted.value());
}

void HistorySlice::drawText(
    QPainter& painter, QRectF rect, QFont const& textFont, QString const& text) const
{
    // 100.0 is a little wider than its rectangle.
    double const textWidth = QFontMetricsF(textFont).horizontalAdvance(text);
    double const room = rect.right() - std::max(rect.left(), leastMargin);
    double const squeeze = std::min(1.0, room / textWidth);
    double const baseline
        = designFrame(*this).height() - rect.bottom() + ascent * textFont.pixelSize();
    painter.save();
    painter.setFont(textFont);
    painter.translate(rect.right() - textWidth * squeeze, baseline);
    painter.scale(squeeze, 1.0);
    painter.drawText(QPointF(0.0, 0.0), text);
    painter.restore();
}

void HistorySlice::drawCircle(QPainter& painter) const
{
    if (!isSelectable() || m_measurement->isCounted.value())
        return;
    auto const size = designFrame(*this).size();
    painter.setBrush(Qt::white);
    painter.setPen(QPen(colors::caption, 1.0));
    painter.drawEllipse(QPointF(size.width() / 2.0, size.height() - 6.0), 3.0, 3.0);
}

void HistorySlice::drawOutline(QPainter& painter) const
{
    bool const isHovered = underMouse() && isSelectable();
    if (!hasFocus() && !isHovered)
        return;
    painter.setBrush(isHovered ? colors::accentTint : QColor(Qt::transparent));
    painter.setPen(hasFocus() ? QPen(colors::text, 3.0) : QPen(colors::accent, 2.0));
    auto const size = designFrame(*this).size();
    painter.drawRoundedRect(
        QRectF(QPointF(0.0, 0.0), size).adjusted(1.5, 1.5, -1.5, -1.5), 6.0, 6.0);
}

} // namespace tensio
