#include "feedback/GaugeView.h"
#include "feedback/GraphView.h"
#include "feedback/VisualFeedbackViewController.h"
#include "support/Session.h"
#include "support/Ui.h"
#include "toolkit/ImageView.h"

#include <QApplication>
#include <QPaintEvent>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct LiveArea {
    Session session;
    QWidget view;
    VisualFeedbackViewController controller {session.manager, session.runLoop, view};
    GaugeView& gauge {find<GaugeView>(view)};
    GraphView& graph {find<GraphView>(view)};

    LiveArea()
    {
        controller.viewWillAppear();
        session.connect(40.0f);
    }

    void click(char const* name, int times = 1) const
    {
        for (; times > 0; --times)
            tensio::click(view, name);
    }

    void receive(double pressure, Seconds afterwards = Seconds(0.0))
    {
        session.receive({pressure});
        session.runLoop.advance(afterwards);
        QCoreApplication::processEvents();
    }

    // 'u' or 'a', of the usual or the alternative marker.
    char phase() const
    {
        auto const& marker = find<ImageView>(view, "targetPressureImage");
        return marker.picture().name() == u"gauge_target" ? 'u' : 'a';
    }
};

struct PaintCounter : public QObject {
    int paints = 0;
    QRegion painted;
    // Of all paints, in the window.
    QRegion all;

    explicit PaintCounter(QObject& watched) { watched.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            auto const& widget = static_cast<QWidget&>(*watched);
            ++paints;
            painted = static_cast<QPaintEvent*>(event)->region();
            all |= painted.translated(widget.mapTo(widget.window(), QPoint()));
        }
        return false;
    }
};

} // namespace

TEST(VisualFeedbackScreen, TheMarkerBlinksWhileThePressureIsAboveZeroAndAtTheEffectiveTarget)
{
    using Row = std::tuple<float, double, std::string>;
    for (auto const& [target, pressure, phases] : {Row(40.0f, 32.0, "uauau"),
             Row(40.0f, 31.9, "uuuuu"), Row(0.0f, 0.0, "uuuuu"), Row(0.0f, 0.1, "uauau")}) {
        LiveArea screen;
        screen.session.manager.targetPressure.setValue(target);
        screen.session.manager.targetPressurePercent.setValue(0.8f);
        std::string seen;
        for (int tick = 0; tick < 5; ++tick) {
            screen.receive(pressure);
            seen += screen.phase();
            screen.session.runLoop.advance(Seconds(0.2));
        }
        EXPECT_EQ(seen, phases) << pressure;
        screen.receive(0.0, Seconds(0.4));
        EXPECT_EQ(screen.phase(), 'u');
    }
}

TEST(VisualFeedbackScreen, ASweepEndsAtTheWindowOrAtTheCapWhenTheWindowWasFullAlready)
{
    LiveArea screen;
    auto& plotter = *screen.graph.plotter();
    screen.session.receive({1.0, -2.0, 50.0});
    EXPECT_EQ(plotter.pressurePoints(), (std::vector {1.0f, 0.0f, 50.0f}));
    screen.session.manager.shouldReset.setValue(true);
    screen.session.receive(std::vector(500, 1.0));
    screen.click("leftButton", 4);
    screen.session.receive(std::vector(701 + 199, 1.0));
    std::string sweeps;
    for (auto const& sweep : plotter.paths())
        sweeps += std::to_string(sweep.count) + " ";
    EXPECT_EQ(sweeps, "1200 200 0 ");
}

TEST(VisualFeedbackScreen, PaintsOnceAFrameAndOnlyWhatAReadingChanges)
{
    LiveArea screen;
    screen.view.show();
    screen.receive(50.0, Seconds(0.1));
    PaintCounter gauge(screen.gauge);
    PaintCounter graph(screen.graph);
    for (int record = 0; record < 2 * 320; ++record)
        screen.receive(30.0 + record % 7, Seconds(1.0 / 320.0));
    for (auto const* counter : {&gauge, &graph}) {
        EXPECT_GE(counter->paints, 2 * 50);
        EXPECT_LE(counter->paints, 2 * 61);
        EXPECT_LT(counter->painted.boundingRect().height(), 60);
    }
    EXPECT_LT(graph.painted.boundingRect().width(), 30);
}

TEST(VisualFeedbackScreen, RepaintsAllThatChangesAtAFractionalRatioToo)
{
    LiveArea screen;
    screen.view.show();
    for (double const pressure : {50.0, 50.0, 50.0, 51.3, 0.0, 67.7, 33.3}) {
        auto const before = screen.view.grab().toImage();
        PaintCounter paints(*qApp);
        screen.receive(pressure, Seconds(0.3));
        qApp->removeEventFilter(&paints);
        auto const after = screen.view.grab().toImage();
        // Qt shows only pixels that belong to the repainted area entirely.
        double const unit = 1.0 / after.devicePixelRatio();
        int stale = 0;
        for (int index = 0; index < after.width() * after.height(); ++index) {
            QPoint const at(index % after.width(), index / after.width());
            QRect const units = QRectF(QPointF(at) * unit, QSizeF(unit, unit)).toAlignedRect();
            stale
                += before.pixel(at) != after.pixel(at) && !(QRegion(units) - paints.all).isEmpty();
        }
        EXPECT_EQ(stale, 0) << pressure;
    }
}
