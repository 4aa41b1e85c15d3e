#include "platform/qt/QtAlerts.h"

#include "platform/qt/MainQueue.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace tensio;

TEST(QtAlerts, AnswersKeysWithTheLastButton)
{
    MainQueue queue;
    QtAlerts alerts(queue);
    auto const answer = [&](AlertStyle style, std::function<void(QMessageBox&)> const& user) {
        QTimer::singleShot(0, [&] {
            auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            EXPECT_EQ(box.text(), QStringLiteral("削除"));
            EXPECT_EQ(box.icon(),
                style == AlertStyle::Critical ? QMessageBox::Critical : QMessageBox::Warning);
            EXPECT_EQ(box.buttons().constFirst()->text(), QStringLiteral("OK"));
            user(box);
        });
        return alerts.runModal(style, "削除", {"OK", "Cancel"});
    };
    for (auto const key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space})
        EXPECT_EQ(answer(AlertStyle::Warning,
                      [&](QMessageBox& box) { QTest::keyClick(box.focusWidget(), key); }),
            1U);
    EXPECT_EQ(
        answer(AlertStyle::Critical, [](QMessageBox& box) { box.buttons().constFirst()->click(); }),
        0U);
}
