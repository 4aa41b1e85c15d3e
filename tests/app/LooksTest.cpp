#include "feedback/GaugeView.h"
#include "output/GridPrintView.h"
#include "panels/HistorySlice.h"
#include "printing/PageDrawing.h"
#include "printing/QtPrintCanvas.h"
#include "support/Reports.h"
#include "support/Session.h"
#include "support/Ui.h"
#include "toolkit/DesignFrame.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QSvgGenerator>
#include <QSvgRenderer>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

QImage pictureOf(QByteArray const& look, QRect area)
{
    QSvgRenderer renderer(look);
    renderer.setViewBox(area);
    QImage picture(area.size() * 2, QImage::Format_RGB32);
    picture.fill(Qt::gray);
    QPainter painter(&picture);
    renderer.render(&painter);
    return picture;
}

// The look is kept as an SVG file, which a browser shows. Another Qt draws the same in other paths,
// and rounds otherwise: pictures of both are compared, with a tolerance.
void expectLook(char const* name, QRect area, std::function<void(QPaintDevice&)> const& draw)
{
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    draw(generator);
    QFile file(QString(TENSIO_LOOKS "/%1.svg").arg(name));
    if (qEnvironmentVariableIsSet("TENSIO_WRITE_LOOKS") && file.open(QIODevice::WriteOnly))
        file.write(buffer.data());
    file.close();
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    auto const kept = pictureOf(file.readAll(), area);
    auto const look = pictureOf(buffer.data(), area);
    int differing = 0;
    for (int at = 0; at < look.width() * look.height(); ++at) {
        QPoint const place(at % look.width(), at / look.width());
        auto const a = look.pixelColor(place);
        auto const b = kept.pixelColor(place);
        differing += std::abs(a.red() - b.red()) + std::abs(a.green() - b.green())
                + std::abs(a.blue() - b.blue())
            > 60;
    }
    EXPECT_LE(differing, 8) << name << "; TENSIO_WRITE_LOOKS=1 writes it";
}

} // namespace

TEST(Looks, Gauge)
{
    GaugeView gauge;
    setDesignFrame(gauge, QRectF(0.0, 0.0, 64.0, 104.0));
    gauge.upperBoundPressure.setValue(20.0f);
    gauge.maxPressure.setValue(17.0f);
    gauge.targetPressure.setValue(12.0f);
    gauge.targetColor.setValue(QColor(0xe60012));
    gauge.currentPressure.setValue(8.0f);
    auto const picture = gauge.grab().toImage();
    for (auto const& [row, color] : {std::pair {1, "#000000"}, {13, "#434343"}, {15, "#4dd736"},
             {39, "#434343"}, {42, "#e60012"}, {61, "#434343"}, {63, "#009cff"}})
        EXPECT_EQ(colorAt(picture, 32, row), QColor(color)) << row;
    EXPECT_LT(colorAt(picture, 32, 25).red(), 0x40) << "a line of the scale";
}

TEST(Looks, HistoryTile)
{
    Session session;
    QWidget strip;
    // 100.0 is squeezed.
    auto const measurement = finishedMeasurements(91).back();
    HistorySlice tile(session.manager, measurement, 0, strip);
    auto const expectTile = [&](char const* name) {
        expectLook(
            name, tile.rect(), [&](QPaintDevice& device) { tile.render(&device, {}, {}, {}); });
    };
    expectTile("tile");
    measurement->isCounted.setValue(true);
    tile.setAttribute(Qt::WA_UnderMouse);
    expectTile("tile-selected");
    measurement->isCounted.setValue(false);
    measurement->isEnabled.setValue(false);
    expectTile("tile-locked");
}

TEST(Looks, PrintedBlock)
{
    GridPrintView grid("山田 花子", finishedMeasurements(1));
    grid.paginate(printInfo(defaultPageLayout()), QtPrintCanvas());
    grid.rectForPage(1);
    expectLook("printed-block", {60, 60, 180, 220}, [&](QPaintDevice& device) {
        QPainter painter(&device);
        QtPrintCanvas canvas(&painter);
        grid.draw(canvas);
    });
}
