#include "controls/DopeRadioButton.h"
#include "controls/DropDownButton.h"
#include "controls/OrvMenuItemView.h"
#include "controls/PopUpButton.h"
#include "feedback/GaugeView.h"
#include "output/GridPrintView.h"
#include "panels/HistorySlice.h"
#include "printing/PageDrawing.h"
#include "printing/QtPrintCanvas.h"
#include "support/Reports.h"
#include "support/Session.h"
#include "support/Ui.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QLibraryInfo>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgGenerator>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// As an SVG file, which a browser shows, to the first decimal.
void expectLook(char const* name, std::function<void(QPaintDevice&)> const& draw)
{
    static QRegularExpression const noise("(\\d\\.\\d)\\d+(?=[^<>]*>)| +(?=\\n)");
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    draw(generator);
    auto const look = QString(buffer.data()).replace(noise, "\\1");
    QFile kept(QString(TENSIO_LOOKS "/%1.svg").arg(name));
    if (qEnvironmentVariableIsSet("TENSIO_WRITE_LOOKS") && kept.open(QIODevice::WriteOnly))
        kept.write(look.toUtf8());
    kept.close();
    EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll().toStdString(), look.toStdString())
        << name << "; TENSIO_WRITE_LOOKS=1 writes it";
}

void expectLook(char const* name, QWidget& widget)
{
    expectLook(name, [&](QPaintDevice& device) { widget.render(&device, {}, {}, {}); });
}

} // namespace

// Another Qt draws the same in other paths, and rounds otherwise.
struct Looks : testing::Test {
    void SetUp() override
    {
        if (QLibraryInfo::version().minorVersion() != 4)
            GTEST_SKIP() << "The kept looks are those of Qt 6.4.";
    }
};

TEST_F(Looks, Gauge)
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

TEST_F(Looks, HistoryTile)
{
    Session session;
    QWidget strip;
    // 100.0 is squeezed.
    auto const measurement = finishedMeasurements(91).back();
    HistorySlice tile(session.manager, measurement, 0, strip);
    expectLook("tile", tile);
    measurement->isCounted.setValue(true);
    tile.setAttribute(Qt::WA_UnderMouse);
    expectLook("tile-selected", tile);
    measurement->isCounted.setValue(false);
    measurement->isEnabled.setValue(false);
    expectLook("tile-locked", tile);
}

TEST_F(Looks, Buttons)
{
    DopeRadioButton radio;
    radio.setText("一覧");
    radio.resize(116, 34);
    radio.setBgImageName("radio_on");
    radio.setChecked(true);
    radio.setAttribute(Qt::WA_UnderMouse);
    expectLook("radio-button-on", radio);

    PopUpButton popUp;
    popUp.addItem({"70%", 0});
    popUp.setTitle("70%");
    popUp.resize(112, 26);
    expectLook("pop-up", popUp);
    popUp.setDown(true);
    expectLook("pop-up-pressed", popUp);

    ImageView lamp;
    lamp.setPicture(Picture::named("ind_on"));
    lamp.resize(20, 20);
    expectLook("lamp", lamp);

    DropDownButton dropDown;
    dropDown.setText("印刷");
    dropDown.resize(120, 40);
    dropDown.setTextColor(Qt::red);
    expectLook("drop-down", dropDown);
    dropDown.setEnabled(false);
    expectLook("drop-down-disabled", dropDown);

    QMenu menu;
    auto* item = menu.addAction("70%");
    OrvMenuItemView row(*item, menu);
    QEnterEvent hover({}, {}, {});
    QApplication::sendEvent(&row, &hover);
    expectLook("menu-row-highlighted", row);
}

TEST_F(Looks, PrintedBlock)
{
    GridPrintView grid("山田 花子", finishedMeasurements(1));
    grid.paginate(printInfo(defaultPageLayout()), QtPrintCanvas());
    grid.rectForPage(1);
    expectLook("printed-block", [&](QPaintDevice& device) {
        QPainter painter(&device);
        QtPrintCanvas canvas(&painter);
        grid.draw(canvas);
    });
}
