#include "feedback/GaugeView.h"
#include "feedback/GraphView.h"
#include "panels/UserInfoWindow.h"
#include "support/Desk.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

QAccessibleInterface& spoken(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

QString nameOf(QWidget& widget)
{
    return spoken(widget).text(QAccessible::Name);
}

// Where Tab stops, from the control with this name on.
QString tabStops(QWidget& window, char const* first)
{
    QStringList stops;
    QApplication::setActiveWindow(&window);
    find<QWidget>(window, first).setFocus();
    do {
        stops << nameOf(*window.focusWidget()).section(u' ', 0, 0);
        QTest::keyClick(&window, Qt::Key_Tab);
    } while (stops.size() < 30 && window.focusWidget()->objectName() != first);
    return stops.join(u' ');
}

} // namespace

TEST(Accessibility, TabGoesAsTheEyeReadsToNamedControls)
{
    Desk desk;
    desk.connect();
    desk.press({20.0});
    desk.finish();
    EXPECT_EQ(tabStops(desk.window, "printButton"),
        "測定結果を印刷 測定結果をCSVファイルに保存 画面を画像ファイルに保存 "
        "圧力目盛を下げる 圧力目盛を上げる 時間目盛を短くする 時間目盛を長くする "
        "目標圧を下げる 目標圧を上げる 目標の割合 開始 "
        "前の測定 1回目 次の測定");
    click(desk.window, "segueButton");
    EXPECT_EQ(tabStops(find<UserInfoWindow>(desk.window), "nameInput"),
        "氏名 目標圧を下げる 目標圧（kPa） 目標圧を上げる キャンセル OK");
}

TEST(Accessibility, DescribesTheLiveAreaAndStepsWithTheArrowKeys)
{
    Desk desk;
    desk.connect();
    desk.receive({35.0, 32.0});
    desk.runLoop.advance(Seconds(0.6));
    EXPECT_EQ(spoken(find<GaugeView>(desk.window)).valueInterface()->currentValue(), 32.0);
    EXPECT_EQ(spoken(find<QWidget>(desk.window, "percentPopup")).role(), QAccessible::ComboBox);
    auto& graph = find<GraphView>(desk.window);
    EXPECT_EQ(spoken(graph).text(QAccessible::Description),
        "圧力目盛 0〜80 kPa、時間目盛 30秒、目標 30.0 kPa 達成、最大圧 35.0 kPa");
    for (auto const& [label, name] : {std::pair {"currentPressureLabel", "現在の圧力 32.0 kPa"},
             {"targetPressureImage", "目標圧 30.0 kPa 達成"},
             {"maxPressureImage", "最大圧 35.0 kPa"}, {"statusLabel", "状態 記録中"},
             {"gaugeView", "圧力ゲージ（kPa）"}, {"percentPopup", "目標の割合 100%"},
             {"statusImageView", "表示灯 点灯"},
             {"hintLabel", "値が途切れると、1回分として記録されます"}})
        EXPECT_EQ(nameOf(find<QWidget>(desk.window, label)), name);
    for (auto const& [button, key] : {std::pair {"downButton", Qt::Key_Up},
             {"leftButton", Qt::Key_Right}, {"targetPressureDownButton", Qt::Key_Up}}) {
        find(desk.window, button).setFocus();
        QTest::keyClick(&find(desk.window, button), key);
    }
    EXPECT_EQ(graph.upperBoundPressure.value(), 85.0f);
    EXPECT_EQ(graph.timeWindow.value(), 35.0f);
    EXPECT_EQ(desk.manager.targetPressure.value(), 30.1f);
}
