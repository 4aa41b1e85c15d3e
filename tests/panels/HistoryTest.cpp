#include "core/SessionRecorder.h"
#include "panels/HistorySlice.h"
#include "panels/HistoryViewController.h"
#include "panels/SessionNotices.h"
#include "panels/StatusViewModel.h"
#include "support/FakeSessionStore.h"
#include "support/Session.h"
#include "support/Ui.h"
#include "toolkit/DesignFrame.h"

#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Strip {
    Session session;
    QWidget view;
    HistoryViewController controller {session.manager, view};

    explicit Strip(std::vector<double> const& presses)
    {
        session.connect();
        for (auto const pressure : presses)
            session.press({pressure});
    }

    QAccessible::State state(int index) const
    {
        return QAccessible::queryAccessibleInterface(tiles().at(index))->state();
    }
    void key(Qt::Key key) const
    {
        QTest::keyClick(view.focusWidget(), key);
        QCoreApplication::processEvents();
    }
    QList<HistorySlice*> tiles() const { return view.findChildren<HistorySlice*>(); }
    // The page, with the tile that has the focus in brackets: "2[3]456".
    std::string page() const
    {
        std::string page;
        for (auto const* tile : tiles()) {
            auto const number = std::to_string(tile->measurement()->number);
            page += tile == view.focusWidget() ? "[" + number + "]" : number;
        }
        return page;
    }
    void finish() { session.manager.disconnectAction.apply(Nothing {}); }
    void press(int index) const { QTest::mousePress(tiles().at(index), Qt::LeftButton); }
    std::string average() const { return find<QLabel>(view, "averageLabel").text().toStdString(); }
};

} // namespace

TEST(History, SelectsUpToThreeBetweenSessionsOnly)
{
    Strip strip({20.0, 30.0, 40.5, 60.0});
    EXPECT_EQ(
        strip.tiles().at(1)->accessibleName(), QStringLiteral("2回目 最大圧 30.0 kPa 14:07:09"));
    EXPECT_EQ(designFrame(*strip.tiles().at(1)), QRectF(225.0, 5.0, 82.0, 64.0));
    strip.press(0);
    EXPECT_EQ(strip.average(), "0.0");
    EXPECT_TRUE(strip.state(0).disabled);
    EXPECT_TRUE(strip.tiles().at(0)->toolTip().contains(QStringLiteral("「終了」")));
    auto const fixed = strip.tiles().at(0)->grab().toImage();
    strip.finish();
    EXPECT_NE(strip.tiles().at(0)->grab().toImage(), fixed) << "it may be selected now";
    strip.press(0);
    EXPECT_TRUE(strip.state(0).checked && strip.state(0).selected && !strip.state(0).disabled);
    strip.press(1);
    QTest::keyClick(strip.tiles().at(2), Qt::Key_Space);
    EXPECT_EQ(strip.average(), "30.2");
    strip.press(3);
    EXPECT_EQ(strip.average(), "30.2") << "a fourth cannot be selected";
    EXPECT_TRUE(strip.tiles().at(3)->toolTip().contains(QStringLiteral("3回まで")));
    strip.press(0);
    strip.press(3);
    EXPECT_EQ(strip.average(), "43.5");
}

TEST(History, SaysTheStateTheNextStepAndTheCount)
{
    Session session;
    StatusViewModel const status(session.manager);
    auto const expect = [&](char const* state, std::string const& hint, char const* count) {
        EXPECT_EQ(status.state.value(), state);
        EXPECT_NE(status.hint.value().find(hint), std::string::npos) << status.hint.value();
        EXPECT_EQ(status.count.value(), count);
    };
    expect("待機中", "「開始」", "");
    session.manager.connectAction.apply(Nothing {});
    expect("接続中…", "接続", "");
    session.port->delegate->serialPortWasOpened();
    expect("測定待ち", "待っています", "");
    session.receive({0.0});
    expect("記録中", "途切れる", "");
    session.runLoop.advance(Seconds(2.5));
    for (int press = 0; press < 12; ++press)
        session.press({20.0});
    expect("測定待ち", "「終了」", "全12回中 8〜12");
    session.receive({20.0});
    session.manager.disconnectAction.apply(Nothing {});
    session.manager.measurementList.measurements().back()->isCounted.setValue(true);
    expect("待機中", "選べます", "全13回中 9〜13　選択 1/3");
    session.connect();
    for (int press = 0; press < 99; ++press)
        session.press({20.0});
    expect("測定待ち", "99回", "全99回中 95〜99");
}

TEST(History, TurnsThePageWhileTheFocusStaysWithItsMeasurement)
{
    Strip strip({1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0});
    strip.view.show();
    EXPECT_EQ(strip.page(), "34567");
    strip.tiles().at(1)->setFocus();
    std::string pages;
    for (auto const key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Right}) {
        strip.key(key);
        pages += strip.page() + " ";
    }
    EXPECT_EQ(pages, "[3]4567 [2]3456 [1]2345 [1]2345 1[2]345 ");
    click(strip.view, "forwardButton");
    click(strip.view, "forwardButton");
    EXPECT_EQ(strip.page(), "[3]4567") << "at the end where its own left the page";
    click(strip.view, "backButton");
    EXPECT_EQ(strip.page(), "2[3]456");
    EXPECT_EQ(find(strip.view, "backButton").nextInFocusChain(), strip.tiles().at(0));
    strip.finish();
    strip.session.connect();
    EXPECT_EQ(strip.page(), "");
}

TEST(SessionNotices, MarksASimulatedSessionAndTakesAProblemAway)
{
    for (bool const isSimulated : {true, false}) {
        Session session;
        FakeSessionStore store;
        store.begin({{}, "山田", 30.0f, 1.0f, isSimulated});
        SessionRecorder recorder(session.manager, store, session.runLoop, session.clock);
        QWidget unsaved;
        QWidget problem;
        SessionNotices const notices(session.manager, recorder, store, unsaved, problem);
        EXPECT_EQ(find<QLabel>(unsaved, "unsavedSimulatedLabel").isVisible(), isSimulated);
        for (auto const& [kind, words] : {std::pair {StoreProblem::NoSpace, "空き容量"},
                 {StoreProblem::Damaged, "壊れ"}, {StoreProblem::None, ""}}) {
            recorder.problem.setValue(kind);
            EXPECT_TRUE(find<QLabel>(problem, "storeProblemLabel")
                            .text()
                            .contains(QString::fromUtf8(words)));
            EXPECT_EQ(problem.isVisible(), kind != StoreProblem::None);
        }
    }
}
