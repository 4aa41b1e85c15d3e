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
    int delivered = 0;
    for (auto const key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space, Qt::Key_unknown}) {
        queue.post([&] { ++delivered; });
        bool const isClick = key == Qt::Key_unknown;
        QTimer::singleShot(0, [&] {
            auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            EXPECT_EQ(box.text(), "削除");
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            QCoreApplication::processEvents();
            EXPECT_EQ(delivered, 0);
            if (isClick)
                box.buttons().constFirst()->click();
            else
                QTest::keyClick(box.focusWidget(), key);
        });
        EXPECT_EQ(
            alerts.runModal(AlertStyle::Warning, "削除", {"OK", "Cancel"}), isClick ? 0U : 1U);
    }
}
