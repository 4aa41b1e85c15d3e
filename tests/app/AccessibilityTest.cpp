#include "feedback/GaugeView.h"
#include "feedback/GraphView.h"
#include "panels/UserInfoWindow.h"
#include "support/Desk.h"

#include <QRegularExpression>
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

// The main window after two measurements.
struct Clinic : Desk {
    Clinic()
    {
        connect();
        press({20.0});
        press({35.24});
        finish();
    }

    UserInfoWindow& openDialog()
    {
        click(window, "segueButton");
        return find<UserInfoWindow>(window);
    }
};

// Where Tab stops, from the first on.
QStringList tabStops(QWidget const& window, QWidget& first)
{
    QStringList stops;
    auto* stop = &first;
    do {
        bool const isStop = stop->window() == &window && stop->isVisible() && stop->isEnabled()
            && (stop->focusPolicy() & Qt::TabFocus);
        if (isStop)
            stops << nameOf(*stop).section(u' ', 0, 0);
        stop = stop->nextInFocusChain();
    } while (stop != &first);
    return stops;
}

} // namespace

TEST(Accessibility, EveryControlHasAJapaneseNameAndARole)
{
    Clinic clinic;
    QRegularExpression const japanese(QStringLiteral("[ぁ-ヿ一-鿿]|^OK$"));
    int controls = 0;
    clinic.openDialog();
    for (auto* widget : clinic.window.findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus))
            continue;
        ++controls;
        auto const what = widget->objectName().toStdString();
        EXPECT_TRUE(japanese.match(nameOf(*widget)).hasMatch()) << what;
        EXPECT_NE(spoken(*widget).role(), QAccessible::Client) << what;
    }
    EXPECT_GE(controls, 22);
}

TEST(Accessibility, TabGoesAsTheEyeReads)
{
    Clinic clinic;
    EXPECT_EQ(tabStops(clinic.window, find(clinic.window, "printButton")).join(u' '),
        QStringLiteral("測定結果を印刷 測定結果をCSVファイルに保存 画面を画像ファイルに保存 "
                       "圧力目盛を下げる 圧力目盛を上げる 時間目盛を短くする 時間目盛を長くする "
                       "目標圧を下げる 目標圧を上げる 目標の割合 開始 "
                       "前の測定 1回目 2回目 次の測定"));
    auto& dialog = clinic.openDialog();
    EXPECT_EQ(tabStops(dialog, find<QWidget>(dialog, "nameInput")).join(u' '),
        QStringLiteral("氏名 目標圧を下げる 目標圧（kPa） 目標圧を上げる キャンセル OK"));
}

TEST(Accessibility, DescribesTheLiveAreaAndStepsWithTheArrowKeys)
{
    Clinic clinic;
    clinic.connect(30.0f);
    clinic.receive({35.0});
    clinic.runLoop.advance(Seconds(0.6));
    auto const* value = spoken(find<GaugeView>(clinic.window)).valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue(), 35.0);
    EXPECT_EQ(value->maximumValue(), 80.0);
    EXPECT_EQ(spoken(find<GraphView>(clinic.window)).text(QAccessible::Description),
        QStringLiteral("圧力目盛 0〜80 kPa、時間目盛 30秒、目標 30.0 kPa 達成、最大圧 35.0 kPa"));
    for (auto const& [label, name] :
        {std::pair {"currentPressureLabel", QStringLiteral("現在の圧力 35.0 kPa")},
            {"targetPressureImage", QStringLiteral("目標圧 30.0 kPa 達成")},
            {"maxPressureImage", QStringLiteral("最大圧 35.0 kPa")},
            {"statusLabel", QStringLiteral("状態 記録中")},
            {"percentPopup", QStringLiteral("目標の割合 100%")}})
        EXPECT_EQ(nameOf(find<QWidget>(clinic.window, label)), name);

    auto const press = [&](char const* button, Qt::Key key) {
        auto& control = find(clinic.window, button);
        control.setFocus();
        QTest::keyClick(&control, key);
    };
    auto const& graph = find<GraphView>(clinic.window);
    press("downButton", Qt::Key_Up);
    EXPECT_EQ(graph.upperBoundPressure.value(), 85.0f);
    press("leftButton", Qt::Key_Right);
    EXPECT_EQ(graph.timeWindow.value(), 35.0f);
    press("targetPressureDownButton", Qt::Key_Up);
    EXPECT_EQ(clinic.manager.targetPressure.value(), 30.1f);
}
