#include "printing/QtPrintCanvas.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tensio {

namespace {

// Measured and drawn large, then scaled down, because font sizes are whole pixels and screen
// hinting would distort the widths.
constexpr int measuringSize = 1000;

QFont printFont()
{
    QFont font;
    font.setFamilies({QStringLiteral("VL PGothic"), QStringLiteral("Noto Sans CJK JP")});
    font.setPixelSize(measuringSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double startOf(TextAlignment alignment, double room)
{
    switch (alignment) {
    case TextAlignment::Left:
        return 0.0;
    case TextAlignment::Centre:
        return room / 2.0;
    case TextAlignment::Right:
        break;
    }
    return room;
}

} // namespace

double QtPrintCanvas::capHeight(double fontSize) const
{
    return QFontMetricsF(printFont()).capHeight() * fontSize / measuringSize;
}

void QtPrintCanvas::drawText(
    PrintRect rect, double fontSize, TextAlignment alignment, std::string const& text)
{
    auto const string = QString::fromStdString(text);
    auto const font = printFont();
    QFontMetricsF const metrics(font);
    double const scale = fontSize / measuringSize;
    double const width = metrics.horizontalAdvance(string) * scale;
    double const squeeze = width > rect.width ? rect.width / width : 1.0;
    double const room = rect.width - width * squeeze;
    double const baseline = rect.y + (rect.height + capHeight(fontSize)) / 2.0;

    m_painter->save();
    m_painter->setPen(Qt::black);
    m_painter->setFont(font);
    m_painter->translate(rect.x + startOf(alignment, room), baseline);
    m_painter->scale(scale * squeeze, scale);
    m_painter->drawText(QPointF(0.0, 0.0), string);
    m_painter->restore();
}

void QtPrintCanvas::strokeRect(PrintRect rect)
{
    m_painter->setBrush(Qt::NoBrush);
    m_painter->setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    m_painter->drawRect(QRectF(rect.x, rect.y, rect.width, rect.height));
}

} // namespace tensio
