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
#include "toolkit/DesignFrame.h"

#include <QAction>
#include <QBuffer>
#include <QFile>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgGenerator>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// A line for each shape and text that is drawn.
QString drawn(std::function<void(QPaintDevice&)> const& draw)
{
    static QRegularExpression const element(
        QStringLiteral("<(g|path|rect|circle|polygon|text)\\s([^>]*?)/?>([^<]*)"));
    static QRegularExpression const decimals(
        QStringLiteral("((?:[1-9]|\\d\\d)\\.\\d)\\d+(?=[^<>]*>)"));
    static QRegularExpression const noise(
        u"\nfont.*| (vector|fill-rule|xml|font-(fam|sty)|stroke-[lm])[^ ]*=\"[^\"]*\""
        "| [a-z-]*=\"(1|none|matrix\\(1,0,0,1,0,0\\))\""_qs);
    static QRegularExpression const ink(QStringLiteral("(fill|stroke)\\S*"));
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    draw(generator);
    auto svg = QString::fromUtf8(buffer.data());
    svg.replace(decimals, QStringLiteral("\\1")).remove(noise);
    QString group;
    QString lines;
    for (auto const& match : element.globalMatch(svg)) {
        auto const name = match.captured(1);
        if (name == u"g") {
            group = match.captured(2);
            continue;
        }
        auto context = group;
        if (name == u"text")
            context.remove(ink);
        QStringList const words {name, context, match.captured(2), match.captured(3)};
        lines += words.join(u' ').simplified() + u'\n';
    }
    return lines;
}

QString drawn(QWidget& widget)
{
    return drawn([&](QPaintDevice& device) { widget.render(&device, {}, {}, {}); });
}

// Where the colour changes, down the middle of the picture.
QString column(QImage const& picture)
{
    QString lines;
    QColor last;
    for (int y = 0; y < picture.height(); ++y) {
        auto const color = picture.pixelColor(picture.width() / 2, y);
        if (color != last)
            lines += QString::number(y) + u' ' + color.name() + u'\n';
        last = color;
    }
    return lines;
}

void expectLook(char const* name, QString const& look)
{
    QFile kept(QStringLiteral(TENSIO_LOOKS "/%1.txt").arg(QString::fromLatin1(name)));
    if (qEnvironmentVariableIsSet("TENSIO_WRITE_LOOKS") && kept.open(QIODevice::WriteOnly)) {
        kept.write(look.toUtf8());
        kept.close();
    }
    EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll().toStdString(), look.toStdString())
        << name << "; TENSIO_WRITE_LOOKS=1 writes it anew";
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
    expectLook("gauge", column(gauge.grab().toImage()));
}

TEST(Looks, HistoryTile)
{
    Session session;
    QWidget strip;
    auto const measurement = finishedMeasurements(1).front();
    HistorySlice tile(session.manager, measurement, 0, strip);
    expectLook("tile", drawn(tile));
    measurement->isCounted.setValue(true);
    expectLook("tile-selected", drawn(tile));
    measurement->isCounted.setValue(false);
    measurement->isEnabled.setValue(false);
    expectLook("tile-locked", drawn(tile));
}

TEST(Looks, Buttons)
{
    DopeRadioButton radio;
    radio.setText(QStringLiteral("一覧"));
    radio.resize(116, 34);
    radio.setBgImageName(QStringLiteral("radio_on"));
    expectLook("radio-button", drawn(radio));
    radio.setChecked(true);
    expectLook("radio-button-on", drawn(radio));
    radio.setEnabled(false);
    expectLook("radio-button-disabled", drawn(radio));

    PopUpButton popUp;
    popUp.addItem({QStringLiteral("70%"), 0});
    popUp.setTitle(QStringLiteral("70%"));
    popUp.resize(112, 28);
    expectLook("pop-up", drawn(popUp));
    popUp.setDown(true);
    expectLook("pop-up-pressed", drawn(popUp));

    DropDownButton dropDown;
    dropDown.setText(QStringLiteral("印刷"));
    dropDown.resize(120, 40);
    dropDown.setTextColor(Qt::red);
    expectLook("drop-down", drawn(dropDown));
    dropDown.setEnabled(false);
    expectLook("drop-down-disabled", drawn(dropDown));
}

TEST(Looks, MenuRow)
{
    QMenu menu;
    auto* item = menu.addAction(QStringLiteral("70%"));
    OrvMenuItemView row(*item, menu);
    expectLook("menu-row", drawn(row));
    menu.setActiveAction(item);
    expectLook("menu-row-highlighted", drawn(row));
}

TEST(Looks, PrintedBlock)
{
    GridPrintView grid("山田 花子", finishedMeasurements(1));
    grid.paginate(printInfo(defaultPageLayout()), QtPrintCanvas());
    grid.rectForPage(1);
    expectLook("printed-block", drawn([&](QPaintDevice& device) {
        QPainter painter(&device);
        QtPrintCanvas canvas(&painter);
        grid.draw(canvas);
    }));
}
