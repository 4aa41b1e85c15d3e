#include "printing/QtPrintCanvas.h"

#include "toolkit/Colors.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <array>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// Measured and drawn large, then scaled down, because font sizes are whole pixels and screen
// hinting would distort the widths.
constexpr int measuringSize = 1000;

QFont printFont(bool isBold = false)
{
    QFont font;
    font.setFamilies({u"VL PGothic"_s, u"Noto Sans CJK JP"_s, u"Yu Gothic UI"_s, u"Meiryo"_s,
        u"Hiragino Sans"_s});
    font.setPixelSize(measuringSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(isBold);
    return font;
}

QColor colorOf(Ink ink)
{
    // In the order of Ink.
    static constexpr std::array<QColor, 8> inks {QColor(0, 0, 0), colors::text, colors::caption,
        colors::hairline, colors::accent, colors::printedTarget, colors::printedBest,
        QColor(255, 255, 255)};
    return inks.at(static_cast<std::size_t>(ink));
}

// The part of the free room that lies before a text.
double shareBefore(TextAlignment alignment)
{
    // In the order of TextAlignment.
    static constexpr std::array shares {0.0, 0.5, 1.0};
    return shares.at(static_cast<std::size_t>(alignment));
}

} // namespace

double QtPrintCanvas::capHeight(double fontSize) const
{
    return QFontMetricsF(printFont()).capHeight() * fontSize / measuringSize;
}

void QtPrintCanvas::drawText(PrintRect rect, TextStyle style, std::string const& text)
{
    auto const string = QString::fromStdString(text);
    auto const font = printFont(style.isBold);
    QFontMetricsF const metrics(font);
    double const scale = style.fontSize / measuringSize;
    double const width = metrics.horizontalAdvance(string) * scale;
    double const squeeze = width > rect.width ? rect.width / width : 1.0;
    double const room = rect.width - width * squeeze;
    double const baseline = rect.y + (rect.height + capHeight(style.fontSize)) / 2.0;

    m_painter->save();
    m_painter->setPen(colorOf(style.ink));
    m_painter->setFont(font);
    m_painter->translate(rect.x + shareBefore(style.alignment) * room, baseline);
    m_painter->scale(scale * squeeze, scale);
    m_painter->drawText(QPointF(0.0, 0.0), string);
    // Qt thickens the glyphs of a typeface that has no bold face in PDF files, not in a preview.
    if (style.isBold && m_painter->paintEngine()->type() == QPaintEngine::Picture) {
        QPainterPath outline;
        outline.addText({}, font, string);
        m_painter->strokePath(outline, QPen(colorOf(style.ink), measuringSize / 30.0));
    }
    m_painter->restore();
}

void QtPrintCanvas::strokeRect(PrintRect rect)
{
    m_painter->setBrush(Qt::NoBrush);
    m_painter->setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    m_painter->drawRect(QRectF(rect.x, rect.y, rect.width, rect.height));
}

void QtPrintCanvas::strokeLine(std::vector<PrintPoint> const& points, Stroke stroke)
{
    QPolygonF line;
    for (auto const& point : points)
        line << QPointF(point.x, point.y);
    m_painter->setPen(
        QPen(colorOf(stroke.ink), stroke.width, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    m_painter->drawPolyline(line);
}

void QtPrintCanvas::fillCircle(PrintPoint centre, double radius, Ink ink)
{
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(colorOf(ink));
    m_painter->drawEllipse(QPointF(centre.x, centre.y), radius, radius);
}

} // namespace tensio
